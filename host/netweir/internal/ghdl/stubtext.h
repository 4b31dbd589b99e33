// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QVector>

namespace NETWEIR::Internal {

/// A generic or port of a stub.
struct StubItem
{
    QByteArray name;
    QByteArray mode; ///< Of a port: "in", "out", "inout" or "buffer".
    QByteArray type;
    /// Of a generic: the folded name of the type behind all subtypes.
    QByteArray baseType;
};

/// An entity in place of one that no VHDL source declares.
struct StubEntity
{
    QByteArray context; ///< The context clauses that its types need.
    QByteArray name;
    QVector<StubItem> generics;
    QVector<StubItem> ports;
    bool isBorder = false; ///< It stands for a unit of the other language.
};

/// The VHDL text of a stub, in any edition. Its architecture drives each port that is not an input.
/// That of a border also reports the values of the generics: they stand in no table, and the unit
/// of the other language needs them.
QByteArray stubText(const StubEntity &entity);

/// Whether values of the type can be handed to a unit of the other language.
bool isReportable(const QByteArray &baseType);

} // namespace NETWEIR::Internal
