// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configsamples.h"

#include <model/configformat.h>
#include <probes/signalsamples.h>

#include <QRandomGenerator>
#include <QStringList>

#include <limits>

using TARN::ProbeIn;
using TARN::ProbeOut;
using TARN::SignalItem;
using TARN::TarnCore;
using TarnTest::bus;
using TarnTest::net;

namespace {

QString quoted(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

void appendSignals(const QList<SignalItem> &list, int level, QStringList *lines)
{
    for (const SignalItem &item : list) {
        lines->append(QString(level * 2, QLatin1Char(' ')) + quoted(item.name) + QLatin1Char(' ') +
                      quoted(item.displayName) +
                      QStringLiteral(" enabled %1 usable %2 kind %3")
                          .arg(int(item.enabled))
                          .arg(int(item.usable))
                          .arg(item.kind));
        appendSignals(item.members, level + 1, lines);
    }
}

/// Pieces of names, usual ones and such as readers and writers treat in a special way.
QString randomText(QRandomGenerator *random)
{
    static const QStringList pieces = {
        QStringLiteral("top/"),       QStringLiteral("u0/"),        QStringLiteral("data[3:0]"),
        QStringLiteral("gen[12].u1"), QStringLiteral("\\bus[0]/ "), QStringLiteral("\""),
        QStringLiteral("\\"),         QStringLiteral("\\u0041"),    QStringLiteral("'"),
        QStringLiteral("<&>"),        QStringLiteral("&#10;"),      QStringLiteral("]]>"),
        QStringLiteral(","),          QStringLiteral("%1"),         QStringLiteral("\t"),
        QStringLiteral("\n"),         QStringLiteral("\r"),         QStringLiteral(" "),
        QStringLiteral("\u007f"),     QStringLiteral("\u0085"),     QStringLiteral("\u00e4"),
        QStringLiteral("\u2028"),     QStringLiteral("\ufeff"),     QStringLiteral("\ufffd"),
        QStringLiteral("\U0001f600"), QStringLiteral("\U0010ffff"),
    };
    QString text;
    for (int i = random->bounded(4); i > 0; --i)
        text += pieces.at(random->bounded(pieces.size()));
    return text;
}

qint32 randomIndex(QRandomGenerator *random)
{
    static const QVector<qint32> numbers = {-1, std::numeric_limits<qint32>::min(),
                                            std::numeric_limits<qint32>::max()};
    const int choice = random->bounded(20);
    return choice < numbers.size() ? numbers.at(choice) : choice - numbers.size();
}

/// Rarely several levels, and then down to the limit.
QList<SignalItem> randomSignals(QRandomGenerator *random, int depth)
{
    QList<SignalItem> list;
    const bool goesDown = random->bounded(3) == 0;
    for (int i = random->bounded(4); i > 0; --i) {
        SignalItem item;
        item.name = randomText(random);
        item.displayName = random->bounded(4) == 0 ? randomText(random) : QString();
        item.kind = random->bounded(int(SignalItem::Unset), SignalItem::Bus + 1);
        item.enabled = random->bounded(4) != 0;
        item.usable = random->bounded(4) != 0;
        if (goesDown && depth < TARN::ConfigFormat::MaximumDepth)
            item.members = randomSignals(random, depth + 1);
        list.append(item);
    }
    return list;
}

} // namespace

Cores randomCores(QRandomGenerator *random)
{
    Cores cores;
    for (int i = random->bounded(5); i > 0; --i) {
        TarnCore *core = cores.add(randomIndex(random));
        core->module = randomText(random);
        core->userClock = randomText(random);
        core->syncUserClock = random->bounded(2) == 0;
        for (int port = random->bounded(4); port > 0; --port) {
            core->addProbeIn(randomIndex(random));
            core->probeIns.last()->signals = randomSignals(random, TARN::ConfigFormat::SignalDepth);
        }
        for (int port = random->bounded(4); port > 0; --port) {
            core->addProbeOut(randomIndex(random));
            core->probeOuts.last()->signals =
                randomSignals(random, TARN::ConfigFormat::SignalDepth);
            core->probeOuts.last()->initialValue =
                random->bounded(2) == 0 ? QStringLiteral("0x%1").arg(random->generate(), 0, 16)
                                        : randomText(random);
        }
    }
    return cores;
}

QString coresText(const QList<TarnCore *> &cores)
{
    QStringList lines;
    for (const TarnCore *core : cores) {
        lines.append(QStringLiteral("core %1 ").arg(core->index) + quoted(core->module) +
                     QStringLiteral(" clock ") + quoted(core->userClock) +
                     QStringLiteral(" sync %1").arg(int(core->syncUserClock)));
        for (const ProbeIn *port : core->probeIns) {
            lines.append(QStringLiteral(" in %1").arg(port->index));
            appendSignals(port->signals, 1, &lines);
        }
        for (const ProbeOut *port : core->probeOuts) {
            lines.append(QStringLiteral(" out %1 ").arg(port->index) + quoted(port->initialValue));
            appendSignals(port->signals, 1, &lines);
        }
    }
    return lines.join(QLatin1Char('\n'));
}

Cores sampleCores()
{
    Cores cores;
    TarnCore *first = cores.add(0);
    first->module = QStringLiteral("top");
    first->userClock = QStringLiteral("top/clk");
    first->syncUserClock = true;
    first->addProbeIn(0);
    first->probeIns.at(0)->signals = {
        bus(QStringLiteral("top/u0/data[1:0]"),
            {QStringLiteral("top/u0/data[1]"), QStringLiteral("top/u0/data[0]")}),
        net(QStringLiteral("top/valid"))};
    first->addProbeIn(1);
    first->addProbeOut(0);
    first->probeOuts.at(0)->initialValue = QStringLiteral("0x1F");
    SignalItem config = bus(QStringLiteral("top/cfg[1:0]"),
                            {QStringLiteral("top/cfg[1]"), QStringLiteral("top/cfg[0]")});
    config.usable = false;
    config.displayName = QStringLiteral("cfg");
    config.members[1].enabled = false;
    SignalItem plain;
    plain.enabled = false;
    plain.usable = false;
    first->probeOuts.at(0)->signals = {config, plain};
    first->addProbeOut(1);

    TarnCore *second = cores.add(7);
    second->addProbeOut(3);
    second->probeOuts.at(0)->signals = {net(QStringLiteral("top/en"))};
    return cores;
}
