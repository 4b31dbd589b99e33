// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <vector>

namespace NETWEIR::Internal {

/// A part of the connection of a port.
struct Segment
{
    enum class Kind { Own, Elsewhere, Driven };

    Kind kind = Kind::Driven;
    int reference = -1; ///< Elsewhere: index in the references to other nodes.
    qint64 bit = 0;     ///< Own: the first bit in the definition.
    qint64 width = 0;
    qint64 offset = 0; ///< The first bit in the connection.

    qint64 end() const { return offset + width; }
};

/// A port through which the nets of an instance depend on the nets of its parent.
struct Connection
{
    int item = 0;                  ///< The instance or array of instances.
    int port = 0;                  ///< The variable in its definition.
    qint64 width = 0;              ///< Sum of the segments.
    std::vector<Segment> segments; ///< Least significant first.

    void add(Segment segment)
    {
        segment.offset = width;
        segments.push_back(segment);
        width += segment.width;
    }
};

} // namespace NETWEIR::Internal
