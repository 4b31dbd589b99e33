// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "dumpaudit.h"

#include "anyconfig.h"
#include "dump.h"
#include "dumpnetlist.h"

#include <audit/candidates.h>
#include <audit/configaudit.h>
#include <audit/designnames.h>
#include <audit/findingcandidates.h>
#include <audit/replacement.h>
#include <audit/signalmarks.h>
#include <model/configcheck.h>
#include <model/configsnapshot.h>
#include <model/tarncore.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>

#include <chrono>

using TARN::ConfigSnapshot;
using TARN::Place;
using TARN::Replacement;
using TARN::TarnCore;

namespace TarnCompare {

namespace {

QString placeText(const Place &place)
{
    return QStringLiteral("%1.%2.%3.%4.%5")
        .arg(place.core)
        .arg(int(place.type))
        .arg(place.port)
        .arg(place.signal)
        .arg(place.bit);
}

QString findingText(const TARN::Finding &finding)
{
    QString text = QStringLiteral("FINDING %1 at %2 %3 %4 others")
                       .arg(TARN::ruleId(finding.rule), placeText(finding.place),
                            quoted(finding.name), quoted(finding.text));
    for (const Place &place : finding.others)
        text += QLatin1Char(' ') + placeText(place);
    return text;
}

QString replacementText(const Replacement &by)
{
    return QStringLiteral("OFFER %1 %2 to %3 bus%4 explains%5")
        .arg(int(by.kind))
        .arg(quoted(by.from), quoted(by.to))
        .arg(int(by.bus))
        .arg(by.explains);
}

QString configText(const ConfigSnapshot &config)
{
    const QList<TarnCore *> cores = TARN::newCores(config);
    const QString text = textOf(cores);
    qDeleteAll(cores);
    return text;
}

class AuditSession
{
public:
    AuditSession(Dump *dump, const NumberedNetlist &design, Choice *choice)
        : m_dump(dump)
        , m_design(design)
        , m_choice(choice)
        , m_names(design.netlist())
        , m_cores(anyCores(design, 3, choice))
        , m_audit(choice->chance(50) ? TARN::ConfigAudit::Notes::Included
                                     : TARN::ConfigAudit::Notes::LeftOut)
    {
        m_marks.setNames(&m_names);
    }
    ~AuditSession() { qDeleteAll(m_cores); }
    Q_DISABLE_COPY(AuditSession)

    void run()
    {
        for (const TARN::Finding &finding : TARN::auditConfig(m_cores, m_design.netlist()))
            m_dump->line(QStringLiteral("ALL ") + findingText(finding));
        if (m_choice->chance(90))
            m_audit.setNames(&m_names);
        for (int i = 0; i < 4; ++i) {
            m_config = TARN::snapshotOf(m_cores, m_config);
            m_audit.update(m_config);
            writeFindings();
            editCores(&m_cores, m_design, m_choice);
        }
        m_dump->line(QStringLiteral("CHECK ") +
                     quoted(TARN::checkConfig(m_cores, m_design.netlist())));
        writeMarks();
        replace();
    }

private:
    void writeFindings()
    {
        m_dump->line(QStringLiteral("AUDIT %1 marked %2")
                         .arg(configText(m_config))
                         .arg(m_audit.markedCount()));
        for (int i = 0; i < m_audit.count(); ++i) {
            m_dump->line(findingText(m_audit.at(i)));
            m_dump->line(quoted(m_audit.placeText(m_audit.placeAt(i))));
        }
    }

    void writeMarks()
    {
        for (const TarnCore *core : qAsConst(m_cores)) {
            for (const TARN::ProbeIn *port : core->probeIns)
                writeMarksOf(port->signals, TARN::ProbeTypeIn);
            for (const TARN::ProbeOut *port : core->probeOuts)
                writeMarksOf(port->signals, TARN::ProbeTypeOut);
        }
    }

    void writeMarksOf(const QList<TARN::SignalItem> &items, TARN::ProbeType type)
    {
        m_dump->line(QStringLiteral("PORT MARK ") + quoted(m_marks.ofPort(items, type).text));
        for (const TARN::SignalItem &item : items) {
            m_dump->line(QStringLiteral("MARK ") + quoted(m_marks.of(item, type).text));
            m_dump->line(QStringLiteral("BIT MARK ") + quoted(m_marks.ofBit(item, 0, type).text));
        }
    }

    void replace()
    {
        QVector<TARN::MissingName> missing;
        for (int i = 0; i < m_audit.count(); ++i) {
            const auto name = TARN::missingNameOf(m_audit.ruleAt(i), m_audit.placeAt(i), m_config);
            if (name)
                missing.append(*name);
        }
        TARN::CandidateSearch search(m_names);
        search.setMissing(missing);
        while (!search.step(std::chrono::seconds(1))) {
        }
        QVector<Replacement> offers = search.prefixChanges();
        for (int i = 0; i < m_audit.count(); ++i)
            offers += TARN::candidatesOf(m_audit.at(i), search, m_names);
        for (const Replacement &by : qAsConst(offers))
            m_dump->line(replacementText(by));
        if (!offers.isEmpty())
            apply(m_choice->any(offers));
    }

    void apply(const Replacement &by)
    {
        ConfigSnapshot config = m_config;
        const int named = TARN::replaceName(&config, by.from, by.to, m_names);
        m_dump->line(QStringLiteral("REPLACED %1%2").arg(named).arg(configText(config)));
        config = m_config;
        const int moved = TARN::replacePrefix(&config, by.from, by.to, m_names);
        m_dump->line(QStringLiteral("MOVED %1%2").arg(moved).arg(configText(config)));
        const int taken = TARN::takeOverBuses(&config, m_names);
        m_dump->line(QStringLiteral("TAKEN %1%2").arg(taken).arg(configText(config)));
    }

    Dump *m_dump;
    const NumberedNetlist &m_design;
    Choice *m_choice;
    TARN::DesignNames m_names;
    TARN::SignalMarks m_marks;
    QList<TarnCore *> m_cores;
    TARN::ConfigAudit m_audit;
    ConfigSnapshot m_config;
};

void writeNames(Dump *dump, const NumberedNetlist &design, Choice *choice)
{
    const TARN::DesignNames names(design.netlist());
    constexpr int Count = 100;
    for (int i = 0; i < Count && !design.buses().isEmpty(); ++i) {
        QString name = choice->any(design.buses())->fullBusName();
        if (choice->chance(30))
            name = alike(name, choice);
        const QStringView base = TARN::baseOfBusName(name);
        QString line = QStringLiteral("BASE %1 bus %2 all")
                           .arg(quoted(base.toString()), design.numberOf(names.bus(name)));
        for (const NETWEIR::RtlNetBus *bus : names.busesOfBase(base))
            line += QLatin1Char(' ') + design.numberOf(bus);
        dump->line(line);
    }
}

} // namespace

void dumpAudits(Dump *dump, const NumberedNetlist &design, int count, Choice *choice)
{
    writeNames(dump, design, choice);
    for (int i = 0; i < count; ++i)
        AuditSession(dump, design, choice).run();
}

} // namespace TarnCompare
