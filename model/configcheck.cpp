// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configcheck.h"

#include "drivenbits.h"
#include "tarncore.h"

#include <sdk/netweir.h>

#include <QCoreApplication>

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

    QVector<ConfigError> run(const QList<TarnCore *> &cores);

    static QString textOf(ClockFault fault);

private:
    void checkCore(const TarnCore &core, int position);
    void collectDrivers(const TarnCore &core, int position);
    void checkDrivers();

    NETWEIR::RtlNetlist *m_netlist;
    QVector<ConfigError> m_errors;
    DrivenBits m_drivenBits;
    QStringList m_drivers; ///< The Probe Out ports by their numbers in m_drivenBits.
};

QVector<ConfigError> ConfigCheck::run(const QList<TarnCore *> &cores)
{
    for (int position = 0; position < cores.size(); ++position) {
        checkCore(*cores.at(position), position);
        collectDrivers(*cores.at(position), position);
    }
    checkDrivers();
    return m_errors;
}

void ConfigCheck::checkCore(const TarnCore &core, int position)
{
    const auto add = [&](ConfigError::Kind kind, const QString &text) {
        m_errors.append({kind, position, QString(), tr("Tarn %1: ").arg(core.index) + text});
    };
    if (core.getAvailableProbeIns().isEmpty() && core.getAvailableProbeOuts().isEmpty())
        add(ConfigError::EmptyCore,
            tr("At least one Probe In port or Probe Out port should be enabled"));
    const ClockFault fault = clockFault(core.syncUserClock, core.userClock, m_netlist);
    if (fault != ClockFault::None)
        add(ConfigError::UserClock, textOf(fault));
}

QString ConfigCheck::textOf(ClockFault fault)
{
    switch (fault) {
    case ClockFault::None:
        break;
    case ClockFault::NotGiven:
        return tr("No synchronization clock specified");
    case ClockFault::Missing:
        return tr("The output probe synchronizes with user clock does not exist");
    case ClockFault::NotUsable:
        return tr("Invalid user clock selected for output probe synchronization");
    }
    return QString();
}

void ConfigCheck::collectDrivers(const TarnCore &core, int position)
{
    const QList<ProbeOut *> ports = core.getAvailableProbeOuts();
    for (const ProbeOut *port : ports) {
        // Names the core by its position, while the prefix of the other messages has its index:
        // readers of the messages expect both numbers.
        m_drivers += tr("tarn_%1->Probe Out%2").arg(position).arg(port->index);
        m_drivenBits.add(port->signals);
    }
}

void ConfigCheck::checkDrivers()
{
    m_drivenBits.settle();
    for (int i = 0; i < m_drivenBits.severalCount(); ++i) {
        QStringList drivers;
        for (const DrivenBits::Driver &driver : m_drivenBits.drivers(i))
            drivers += m_drivers.at(driver.port);
        // The comma at the end stays: scripts that read the message rely on it.
        const QString &name = m_drivenBits.name(i);
        const QString text = tr("ERROR:Signal \"%1\" has multiple drivers(%2)")
                                 .arg(name, drivers.join(QStringLiteral(", ")) + QLatin1Char(','));
        m_errors.append({ConfigError::SeveralDrivers, -1, name, text});
    }
}

} // namespace

ClockFault clockFault(bool syncUserClock, const QString &userClock, NETWEIR::RtlNetlist *netlist)
{
    if (!syncUserClock)
        return ClockFault::None;
    if (userClock.isEmpty())
        return ClockFault::NotGiven;
    NETWEIR::RtlNet *net = netlist ? netlist->findNet(userClock) : nullptr;
    if (!net)
        return ClockFault::Missing;
    return net->excludedForProbeIn() ? ClockFault::NotUsable : ClockFault::None;
}

QString clockFaultText(ClockFault fault)
{
    return ConfigCheck::textOf(fault);
}

QVector<ConfigError> configErrors(const QList<TarnCore *> &cores, NETWEIR::RtlNetlist *netlist)
{
    return ConfigCheck(netlist).run(cores);
}

QStringList checkConfig(const QList<TarnCore *> &cores, NETWEIR::RtlNetlist *netlist)
{
    const QVector<ConfigError> errors = configErrors(cores, netlist);
    QStringList texts;
    for (const ConfigError &error : errors)
        texts += error.text;
    return texts;
}

} // namespace TARN
