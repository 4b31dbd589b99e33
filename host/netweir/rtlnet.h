// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "netweir_global.h"
#include "processwrites.h"

#include <QString>

namespace NETWEIR {

namespace Internal {
class NetName;
class PathPrefix;
} // namespace Internal

class RtlNetlist;
class NetlistBuilder;

/// A single net, or one bit of a bus. Owned by the RtlNetlist and valid as long as it; immutable.
///
/// Stores no full name, but what it shares with other nets: the path of the node and the name of
/// the net or bus in the source. A call joins them in about 20 ns.
class NETWEIR_EXPORT RtlNet
{
public:
    RtlNet()
        : m_nameShape(0)
        , m_isBit(false)
        , m_processWrites(0)
        , m_excludedForProbeIn(false)
        , m_excludedForProbeOut(false)
    {
    }
    Q_DISABLE_COPY(RtlNet)

    /// Name within its hierarchy node: "clk", "data[3]", "g[0].w", "st.valid". That of a single net
    /// is stored, that of a bit is built.
    QString name() const;

    /// Name within the design, with '/' between the levels: "top/u0/data[3]". Built by each call.
    QString fullPathName() const;

    /// Sets @p name to fullPathName(). Allocates nothing if @p name has the memory, so a loop over
    /// many nets uses one string for all. If it has the full name of @p before, the path of a
    /// common node stays as it is. Returns the number of letters at the beginning that stayed; the
    /// names may have more in common.
    int copyFullPathName(QString *name, const RtlNet *before = nullptr) const;

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

    Q_DECL_HIDDEN Internal::NetName parts() const;

    const Internal::PathPrefix *m_prefix = nullptr;
    const QString *m_name = nullptr; ///< Without the index of a bit: the name of its bus.
    int m_index = 0;
    // One word for all, because a design may have millions of nets.
    quint32 m_nameShape : 27; ///< See RtlNetlist::nameStepsOf().
    bool m_isBit : 1;
    quint32 m_processWrites : 2;
    bool m_excludedForProbeIn : 1;
    bool m_excludedForProbeOut : 1;
};

} // namespace NETWEIR
