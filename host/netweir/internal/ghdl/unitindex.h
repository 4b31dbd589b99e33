// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/vhdl/vhdlfile.h>

#include <QByteArray>
#include <QHash>
#include <QPair>
#include <QVector>

namespace NETWEIR::Internal {

class VhdlDesign;

/// A unit of the design.
struct UnitAt
{
    int file = -1;
    const VhdlUnit *unit = nullptr; ///< Null when there is none.
};

/// A component and the unit that declares it.
struct ComponentAt
{
    UnitAt in;
    const VhdlComponent *component = nullptr; ///< Null when there is none.
};

/// Finds the units and components of a design by their names. Each search takes constant time, or
/// time linear in the components of one name. Refers to the design.
class UnitIndex
{
public:
    explicit UnitIndex(const VhdlDesign &design);

    // Names are folded.

    UnitAt entity(const QByteArray &library, const QByteArray &name) const;
    UnitAt package(const QByteArray &library, const QByteArray &name) const;
    bool declares(const QByteArray &library, const QByteArray &name) const;

    /// The entity with this name, or that of the configuration with this name.
    UnitAt entityOf(const QByteArray &library, const QByteArray &name) const;

    /// The component that @p instance in @p architecture names: of the architecture itself,
    /// otherwise of a package that the context names, otherwise of any package.
    ComponentAt componentOf(const VhdlInstance &instance, const UnitAt &architecture) const;

    /// The texts of the context clauses that hold in @p unit: its own and those of its entity.
    QByteArray contextOf(const UnitAt &unit) const;

    /// The name of the type behind @p type, which is a subtype as written, folded and without
    /// libraries, packages and ranges. Subtypes are followed to their types.
    QByteArray baseType(const QByteArray &type) const;

    /// The types of the elements of an array type and of a field of a record type, as written.
    /// Names are folded. Empty when no text declares the type.
    QByteArray elementType(const QByteArray &type) const;
    QByteArray fieldType(const QByteArray &record, const QByteArray &field) const;

    /// Whether @p type or a subtype behind it has a range.
    bool isConstrained(const QByteArray &type) const;

private:
    using Key = QPair<QByteArray, QByteArray>;

    QByteArrayList chainOf(const QByteArray &type) const;

    const VhdlDesign &m_design;
    QHash<Key, UnitAt> m_entities;
    QHash<Key, UnitAt> m_primaries;
    QHash<QByteArray, QVector<ComponentAt>> m_components; ///< Of packages, by folded name.
    QHash<QByteArray, QByteArray> m_subtypes;
    QHash<QByteArray, QByteArray> m_types; ///< Definitions by folded name.
    QHash<Key, QByteArray> m_fields;       ///< Types by folded names of record and field.
};

/// The text of @p range.
QByteArray textIn(const QByteArray &text, const TextRange &range);

/// The name of a type or subtype at the beginning of @p type, as written: "work.types.word".
QByteArray typeMark(const QByteArray &type);

} // namespace NETWEIR::Internal
