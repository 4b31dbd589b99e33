// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QVector>

namespace NETWEIR::Internal {

class VerilogTokens;

/// What a process assigns to.
struct WrittenName
{
    QByteArray name; ///< The last component.
    QByteArray path; ///< Those in front of it, joined with '.'.
    /// The only index or range behind the name when it is a plain number, otherwise negative.
    int left = -1;
    int right = -1;
};

/// What the procedural statements in @p tokens may write, in the order of the text: the left sides
/// of assignments and the arguments of tasks, but for variables that the statements declare.
QVector<WrittenName> writtenNames(const VerilogTokens &tokens);

} // namespace NETWEIR::Internal
