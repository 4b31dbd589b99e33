// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "declaredunit.h"

#include <QMap>
#include <QString>

#include <vector>

namespace NETWEIR::Internal {

/// A value that an instance gives to a generic or parameter of a unit in the other language.
struct GenericValue
{
    enum Kind {
        Integer, ///< Decimal digits, perhaps with a minus in front.
        Real,    ///< A decimal number with a point, perhaps with an exponent.
        Bits,    ///< The letters 0, 1, x and z, leftmost bit first.
        Text,    ///< The characters themselves.
        Boolean  ///< "true" or "false".
    };

    Kind kind = Integer;
    QString text;

    bool operator==(const GenericValue &other) const
    {
        return kind == other.kind && text == other.text;
    }
};

/// A port with its elaborated width. An array or record counts with all its bits.
struct PartPort
{
    QString name;
    PortDirection direction = PortDirection::Unknown;
    qint64 width = 1; ///< 0 at a root: the instance does not tell, so nothing is checked.

    bool operator==(const PartPort &other) const
    {
        return name == other.name && direction == other.direction && width == other.width;
    }
};

/// A module or entity at which a part of the design begins: the top, or a unit of the other
/// language that an instance names. Instances with equal values share one root.
struct PartRoot
{
    QString library;                      ///< VHDL library if the instance names one.
    QString unit;                         ///< As written at the instance.
    QMap<QString, GenericValue> generics; ///< Those that the instance sets.
    /// The ports that the instance connects, with the bits and, if the instantiating side has a
    /// declaration of its own, the direction that it sees.
    std::vector<PartPort> ports;
    Place place;        ///< Of the first such instance, for messages.
    bool isTop = false; ///< All inputs are driven from outside.

    /// Whether both stand for the same elaborated unit. The place does not count.
    bool isSame(const PartRoot &other) const
    {
        return library == other.library && unit == other.unit && generics == other.generics &&
               ports == other.ports && isTop == other.isTop;
    }
};

} // namespace NETWEIR::Internal
