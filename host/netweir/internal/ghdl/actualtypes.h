// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "unitindex.h"

#include <QByteArray>
#include <QHash>
#include <QSet>

namespace NETWEIR::Internal {

class VhdlDesign;

/// What an expression that an instance connects tells about the port or generic.
struct ActualType
{
    /// The name of a type; only an integer that may be an output has its range. Empty when the text
    /// does not tell it.
    QByteArray type;
    QByteArray mode; ///< "in", "inout" or "out": the strongest that the expression allows.
};

/// The types of expressions in one architecture, from the declarations in the texts. Knows names,
/// their elements, slices and fields, literals, and the usual conversions.
class ActualTypes
{
public:
    /// All must outlive this object.
    ActualTypes(const VhdlDesign &design, const UnitIndex &index, const UnitAt &architecture);

    ActualType typeOf(const QByteArray &expression) const;

private:
    struct Object
    {
        QByteArray type; ///< As written.
        QByteArray mode;
    };

    void addInterface(const QByteArray &text, const VhdlInterface &interface);
    void noteAssigned(const QByteArray &text);
    ActualType typeOfName(const QByteArray &expression) const;
    bool usesObjects(const QByteArray &type) const;
    QByteArray elementOf(const QByteArray &type) const;

    const UnitIndex &m_index;
    QHash<QByteArray, Object> m_objects; ///< By folded name.
    QSet<QByteArray> m_assigned;         ///< Signals that the architecture itself assigns.
};

} // namespace NETWEIR::Internal
