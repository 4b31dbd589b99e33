// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QVector>

namespace NETWEIR::Internal {

class VerilogTokens;

/// A name that a process assigns to.
struct WrittenName
{
    QByteArray name; ///< The last component.
    QByteArray path; ///< The other components, joined with '.'.
    /// The index or range after the name if it is the only one and a plain number, otherwise
    /// negative.
    int left = -1;
    int right = -1;
};

/// The names that the procedural statements in @p tokens may write, in order: the left sides of
/// assignments and the arguments of tasks, except variables that the statements declare.
QVector<WrittenName> writtenNames(const VerilogTokens &tokens);

} // namespace NETWEIR::Internal
