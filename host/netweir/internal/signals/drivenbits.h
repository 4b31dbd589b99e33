// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/parts/part.h>

#include <vector>

namespace NETWEIR::Internal {

struct VhdlPartContent;
struct WaveSignal;

/// Which scalars below a root are driven, from inside or through its ports. Made for one building
/// of the root; takes one bit per net below it.
class DrivenBits
{
public:
    /// @p content must outlive this object. @p driven tells which bits of the ports of @p root are
    /// driven from outside; those of a top are.
    DrivenBits(const VhdlPartContent &content, int root, const DrivenPorts &driven);

    bool isDriven(qint64 scalar) const;

    /// The driven bits of the inputs and inouts of an instance of a unit of the other language,
    /// leftmost first. What drives an inout in place of this unit does not count.
    DrivenPorts portsOf(int scope) const;

private:
    void addRange(int scope);
    void addPort(const WaveSignal &port, const std::vector<bool> *driven);
    bool isDrivenFromOutside(int net) const;
    bool isDrivenByOthers(qint64 scalar) const;

    const VhdlPartContent &m_content;
    int m_firstNet = 0; ///< The nets below the root are these, and perhaps others among them.
    std::vector<bool> m_isDrivenOutside;
};

} // namespace NETWEIR::Internal
