// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "netweir_global.h"
#include "processwrites.h"

#include <QString>

namespace NETWEIR {

class RtlNetlist;
class NetlistBuilder;

/// A single net, or one bit of a bus. Owned by the RtlNetlist and valid as long as it; immutable.
class NETWEIR_EXPORT RtlNet
{
public:
    RtlNet()
        : m_nameShape(0)
        , m_processWrites(0)
        , m_excludedForProbeIn(false)
        , m_excludedForProbeOut(false)
    {
    }
    Q_DISABLE_COPY(RtlNet)

    /// Name within its hierarchy node: "clk", "data[3]", "g[0].w", "st.valid".
    QString name() const { return m_fullPathName.mid(m_nameOffset); }

    /// Name within the design, with '/' between the levels: "top/u0/data[3]".
    QString fullPathName() const { return m_fullPathName; }

    /// The net cannot be read back, because it has no hardware value.
    bool excludedForProbeIn() const { return m_excludedForProbeIn; }

    /// The net cannot be driven, because it already has a driver or is not a wire.
    bool excludedForProbeOut() const { return m_excludedForProbeOut; }

    /// How processes write the variable to which the net belongs, or other bits of it. Who drives a
    /// free bit of such a variable from outside has to do it in a process too. None for nets of
    /// VHDL, and for what hierarchical names write.
    ProcessWrites processWrites() const { return ProcessWrites(m_processWrites); }

private:
    friend class NetlistBuilder;
    friend class RtlNetlist;

    QString m_fullPathName;
    int m_nameOffset = 0;
    // One word for all, because a design may have millions of nets.
    quint32 m_nameShape : 28; ///< See RtlNetlist::nameStepsOf().
    quint32 m_processWrites : 2;
    bool m_excludedForProbeIn : 1;
    bool m_excludedForProbeOut : 1;
};

} // namespace NETWEIR
