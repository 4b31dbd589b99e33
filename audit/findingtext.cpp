// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "findingtext.h"

#include "portaudit.h"
#include "signalfit.h"

#include <model/configcheck.h>
#include <model/configsnapshot.h>
#include <model/portlimits.h>

#include <QCoreApplication>

namespace TARN {

namespace {

class FindingTexts
{
    Q_DECLARE_TR_FUNCTIONS(TARN::Finding)

public:
    FindingTexts(const ConfigSnapshot &config, const DesignNames *names)
        : m_config(config)
        , m_names(names)
    {
    }

    QString textOf(const Finding &finding) const;
    QString placeText(const Place &place) const;

private:
    const PortSnapshot *portAt(const Place &place) const;
    QString signalText(const Finding &finding) const;
    QString clockText(const Finding &finding) const;
    QString driversText(const Finding &finding) const;
    static QString repeatedText(const Finding &finding);
    static QString valueText(const PortSnapshot &port);

    const ConfigSnapshot &m_config;
    const DesignNames *m_names;
};

QString FindingTexts::textOf(const Finding &finding) const
{
    switch (finding.rule) {
    case Rule::NetMissing:
    case Rule::BusChanged:
    case Rule::NotUsable:
        return signalText(finding);
    case Rule::ClockMissing:
    case Rule::ClockNotUsable:
        return clockText(finding);
    case Rule::SeveralDrivers:
        return driversText(finding);
    case Rule::Repeated:
        return repeatedText(finding);
    case Rule::ValueWidth:
        return valueText(*portAt(finding.place));
    case Rule::EmptyCore:
        return tr("The core has no port that holds a signal.");
    case Rule::EmptyPort:
        return tr("The port holds no signal.");
    }
    return QString();
}

QString FindingTexts::signalText(const Finding &finding) const
{
    const Place &place = finding.place;
    const SignalItem &item = portAt(place)->signals.at(place.signal);
    if (finding.rule == Rule::NetMissing)
        return missingText(item);
    if (finding.rule == Rule::BusChanged)
        return changedText(item, *m_names);
    return unusableText(item, place.type, fitOf(item, place.type, *m_names));
}

QString FindingTexts::clockText(const Finding &finding) const
{
    if (finding.name.isEmpty())
        return clockFaultText(ClockFault::NotGiven) + QLatin1Char('.');
    if (finding.rule == Rule::ClockMissing)
        return tr("The design has no net %1, the user clock.").arg(finding.name);
    return tr("The net %1 cannot be the user clock: it has no value in the hardware.")
        .arg(finding.name);
}

/// Names the first ports, as many as fit on a line.
QString FindingTexts::driversText(const Finding &finding) const
{
    constexpr int Most = 4;
    QStringList ports{placeText(finding.place)};
    for (const Place &place : finding.others.mid(0, Most - 1))
        ports.append(placeText(place));
    QString drivers = ports.join(QStringLiteral("; "));
    const int more = finding.others.size() + 1 - ports.size();
    if (more > 0)
        drivers = tr("%1; and %2 more").arg(drivers, QString::number(more));
    return tr("The net %1 has several drivers: %2.").arg(finding.name, drivers);
}

QString FindingTexts::repeatedText(const Finding &finding)
{
    if (finding.others.size() == 1)
        return tr("The port holds %1 twice.").arg(finding.name);
    return tr("The port holds %1 %2 times.")
        .arg(finding.name, QString::number(finding.others.size() + 1));
}

/// A value from a file may be longer than a line.
QString FindingTexts::valueText(const PortSnapshot &port)
{
    constexpr int Longest = 66; // "0x" and the digits of the widest port.
    QString value = port.initialValue;
    if (value.size() > Longest)
        value = value.left(Longest) + QStringLiteral("...");
    return tr("The initial value %1 does not fit: its width is %2, that of the port is %3.")
        .arg(value, QString::number(significantBits(port.initialValue)),
             QString::number(widthOf(port.signals)));
}

/// Null for a place without a port.
const PortSnapshot *FindingTexts::portAt(const Place &place) const
{
    if (place.core < 0 || place.core >= m_config.cores.size())
        return nullptr;
    const CoreSnapshot &core = *m_config.cores.at(place.core).content;
    const auto &ports = place.type == ProbeTypeOut ? core.probeOuts : core.probeIns;
    const bool exists = place.port >= 0 && place.port < ports.size();
    return exists ? ports.at(place.port).get() : nullptr;
}

QString FindingTexts::placeText(const Place &place) const
{
    if (place.core < 0 || place.core >= m_config.cores.size())
        return QString();
    const qint32 core = m_config.cores.at(place.core).index;
    if (place.port == -1)
        return tr("tarn_%1").arg(core);
    const PortSnapshot *port = portAt(place);
    if (!port)
        return QString();
    return (place.type == ProbeTypeOut ? tr("tarn_%1, Probe Out%2") : tr("tarn_%1, Probe In%2"))
        .arg(core)
        .arg(port->index);
}

} // namespace

QString textOf(const Finding &finding, const ConfigSnapshot &config, const DesignNames *names)
{
    return FindingTexts(config, names).textOf(finding);
}

QString placeText(const Place &place, const ConfigSnapshot &config)
{
    return FindingTexts(config, nullptr).placeText(place);
}

} // namespace TARN
