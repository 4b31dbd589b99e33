// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configcheck.h"

#include "tarncore.h"

#include <sdk/netweir.h>

#include <QCoreApplication>
#include <QMap>

namespace TARN {

namespace {

class ConfigCheck
{
    Q_DECLARE_TR_FUNCTIONS(TARN::ConfigCheck)

public:
    explicit ConfigCheck(NETWEIR::RtlNetlist *netlist)
        : m_netlist(netlist)
    {
    }

    QStringList run(const QList<TarnCore *> &cores);

private:
    void checkCore(const TarnCore &core);
    QString clockError(const TarnCore &core) const;
    void collectDrivers(const TarnCore &core, int position);
    void checkDrivers();

    NETWEIR::RtlNetlist *m_netlist;
    QStringList m_errors;
    /// The Probe Out ports that drive a bit, by the bit's name, sorted by UTF-16 code units.
    QMap<QString, QStringList> m_drivers;
};

QStringList ConfigCheck::run(const QList<TarnCore *> &cores)
{
    for (int position = 0; position < cores.size(); ++position) {
        checkCore(*cores.at(position));
        collectDrivers(*cores.at(position), position);
    }
    checkDrivers();
    return m_errors;
}

void ConfigCheck::checkCore(const TarnCore &core)
{
    const QString prefix = tr("Tarn %1: ").arg(core.index);
    if (core.getAvailableProbeIns().isEmpty() && core.getAvailableProbeOuts().isEmpty())
        m_errors += prefix + tr("At least one Probe In port or Probe Out port should be enabled");
    const QString error = clockError(core);
    if (!error.isEmpty())
        m_errors += prefix + error;
}

/// Empty when there is no error.
QString ConfigCheck::clockError(const TarnCore &core) const
{
    if (!core.syncUserClock)
        return QString();
    if (core.userClock.isEmpty())
        return tr("No synchronization clock specified");
    NETWEIR::RtlNet *net = m_netlist ? m_netlist->findNet(core.userClock) : nullptr;
    if (!net)
        return tr("The output probe synchronizes with user clock does not exist");
    if (net->excludedForProbeIn())
        return tr("Invalid user clock selected for output probe synchronization");
    return QString();
}

void ConfigCheck::collectDrivers(const TarnCore &core, int position)
{
    const QList<ProbeOut *> ports = core.getAvailableProbeOuts();
    for (const ProbeOut *port : ports) {
        // Names the core by its position, while the prefix of the other messages has its index:
        // readers of the messages expect both numbers.
        const QString driver = tr("tarn_%1->Probe Out%2").arg(position).arg(port->index);
        const QStringList bits = port->singleSignals();
        for (const QString &bit : bits)
            m_drivers[bit] += driver;
    }
}

void ConfigCheck::checkDrivers()
{
    for (auto it = m_drivers.cbegin(); it != m_drivers.cend(); ++it) {
        // The comma at the end stays: scripts that read the message rely on it.
        if (it->size() > 1)
            m_errors += tr("ERROR:Signal \"%1\" has multiple drivers(%2)")
                            .arg(it.key(), it->join(QStringLiteral(", ")) + QLatin1Char(','));
    }
}

} // namespace

QStringList checkConfig(const QList<TarnCore *> &cores, NETWEIR::RtlNetlist *netlist)
{
    return ConfigCheck(netlist).run(cores);
}

} // namespace TARN
