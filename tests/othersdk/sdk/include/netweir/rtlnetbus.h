// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>

namespace NETWEIR {

class RtlNet;

class RtlNetBus
{
public:
    RtlNetBus(const QString &path, const QString &name, const QList<RtlNet *> &nets)
        : m_path(path)
        , m_name(name)
        , m_nets(nets)
    {
    }

    QString BusName() { return m_name; }
    QString fullBusName() { return m_path + QLatin1Char('/') + m_name; }
    QList<RtlNet *> nets() { return m_nets; }
    bool excludedForProbeIn() { return false; }
    bool excludedForProbeOut() { return false; }

private:
    QString m_path;
    QString m_name;
    QList<RtlNet *> m_nets;
};

} // namespace NETWEIR
