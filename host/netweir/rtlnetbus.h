// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "netweir_global.h"

#include <QList>
#include <QString>

namespace NETWEIR {

namespace Internal {
class NetName;
class PathPrefix;
} // namespace Internal

class RtlNet;
class NetlistBuilder;

/// A bus: a named vector of nets. Owned by the RtlNetlist and valid as long as it; immutable.
///
/// Builds its names when asked for them, as RtlNet does.
class NETWEIR_EXPORT RtlNetBus
{
public:
    RtlNetBus()
        : m_nameShape(0)
        , m_excludedForProbeIn(false)
        , m_excludedForProbeOut(false)
    {
    }
    Q_DISABLE_COPY(RtlNetBus)

    /// Name within its hierarchy node, range included: "data[7:0]".
    QString BusName() const;

    /// Name within the design: "top/u0/data[7:0]".
    QString fullBusName() const;

    /// Sets @p name to fullBusName(), see RtlNet::copyFullPathName().
    int copyFullBusName(QString *name, const RtlNetBus *before = nullptr) const;

    /// The bits in declaration order, left to right: data[7] first for data[7:0].
    const QList<RtlNet *> &nets() const { return m_nets; }

    /// True when any member net has the mark.
    bool excludedForProbeIn() const { return m_excludedForProbeIn; }
    bool excludedForProbeOut() const { return m_excludedForProbeOut; }

private:
    friend class NetlistBuilder;
    friend class RtlNetlist;

    Q_DECL_HIDDEN Internal::NetName parts() const;

    const Internal::PathPrefix *m_prefix = nullptr;
    QString m_name; ///< Without the range.
    QList<RtlNet *> m_nets;
    int m_left = 0;
    int m_right = 0;
    quint32 m_nameShape : 28; ///< See RtlNetlist::nameStepsOf().
    bool m_excludedForProbeIn : 1;
    bool m_excludedForProbeOut : 1;
};

} // namespace NETWEIR
