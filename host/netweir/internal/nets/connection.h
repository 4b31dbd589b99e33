// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <vector>

namespace NETWEIR::Internal {

/// Part of what is connected to a port, seen from the side of the instance.
struct Segment
{
    enum class Kind { Own, Elsewhere, Driven };

    Kind kind = Kind::Driven;
    int reference = -1; ///< Elsewhere: among the references of the definition to other nodes.
    qint64 bit = 0;     ///< Own: the first bit of the definition.
    qint64 width = 0;
};

/// A port through which the nets of an instance depend on those of its parent. A value.
struct Connection
{
    int item = 0;                  ///< The instance or array of instances.
    int port = 0;                  ///< The variable in its definition.
    qint64 width = 0;              ///< Of all segments.
    std::vector<Segment> segments; ///< From the least significant on.

    void add(const Segment &segment)
    {
        segments.push_back(segment);
        width += segment.width;
    }
};

} // namespace NETWEIR::Internal
