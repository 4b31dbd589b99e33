// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "editedconfig.h"

#include <model/bitstring.h>
#include <model/configdifference.h>
#include <model/limittexts.h>
#include <model/portbits.h>
#include <model/portlimits.h>

#include <numeric>

namespace Tool {

namespace {

using TARN::ProbeType;
using TARN::ProbeTypeOut;
using TARN::TarnCore;

QVector<int> positions(int count)
{
    QVector<int> all(count);
    std::iota(all.begin(), all.end(), 0);
    return all;
}

bool refuse(QString *error, const char *text)
{
    *error = QString::fromLatin1(text);
    return false;
}

QString shownValue(const TARN::ProbeOut &port)
{
    return TARN::valueText(TARN::storedBits(port.initialValue, TARN::widthOf(port.signals)));
}

} // namespace

EditedConfig::EditedConfig(OwnedCores cores)
    : m_cores(std::move(cores))
{
    if (m_cores.list().isEmpty()) {
        QString none;
        addCore(&none);
        return;
    }
    for (int i = 0; i < m_cores.list().size(); ++i) {
        const TarnCore &core = *m_cores.list().at(i);
        Lines lines;
        for (const TARN::ProbeOut *port : core.probeOuts)
            lines.append({shownValue(*port)});
        m_lines.append(lines);
        m_origins.append({i, positions(core.probeIns.size()), positions(core.probeOuts.size())});
    }
}

int EditedConfig::positionOf(int number) const
{
    const QList<TarnCore *> &all = cores();
    for (int i = 0; i < all.size(); ++i) {
        if (all.at(i)->index == number)
            return i;
    }
    return -1;
}

int EditedConfig::portCount(int position, ProbeType type) const
{
    return type == ProbeTypeOut ? core(position)->probeOuts.size()
                                : core(position)->probeIns.size();
}

const TARN::ProbeIn &EditedConfig::port(int position, ProbeType type, int port) const
{
    if (type == ProbeTypeOut)
        return *core(position)->probeOuts.at(port);
    return *core(position)->probeIns.at(port);
}

bool EditedConfig::addCore(QString *error)
{
    if (cores().size() >= TARN::MaxCores)
        return refuse(error, TARN::LimitTexts::TooManyCores);
    m_cores.append(new TarnCore(cores().size()));
    m_lines.append(Lines());
    m_origins.append(Origin());
    return true;
}

bool EditedConfig::removeCore(int position, QString *error)
{
    if (cores().size() == 1)
        return refuse(error, TARN::LimitTexts::OnlyCore);
    m_cores.removeAt(position);
    m_lines.removeAt(position);
    m_origins.removeAt(position);
    for (int i = 0; i < cores().size(); ++i)
        core(i)->index = i;
    return true;
}

bool EditedConfig::addPort(int position, ProbeType type, QString *error)
{
    const bool out = type == ProbeTypeOut;
    const int count = portCount(position, type);
    if (count >= TARN::MaxPorts)
        return refuse(error, out ? TARN::LimitTexts::TooManyOuts : TARN::LimitTexts::TooManyIns);
    if (out) {
        core(position)->addProbeOut(count);
        m_lines[position].append({TARN::valueText(QString())});
        m_origins[position].outs.append(-1);
    } else {
        core(position)->addProbeIn(count);
        m_origins[position].ins.append(-1);
    }
    return true;
}

bool EditedConfig::removePort(int position, ProbeType type, int port, QString *error)
{
    const bool out = type == ProbeTypeOut;
    if (portCount(position, type) == 1)
        return refuse(error, out ? TARN::LimitTexts::OnlyOut : TARN::LimitTexts::OnlyIn);
    if (out) {
        core(position)->removeProbeOut(port);
        core(position)->updateProbeOut();
        m_lines[position].removeAt(port);
        m_origins[position].outs.removeAt(port);
    } else {
        core(position)->removeProbeIn(port);
        core(position)->updateProbeIn();
        m_origins[position].ins.removeAt(port);
    }
    return true;
}

bool EditedConfig::setSignals(int position, ProbeType type, int port,
                              const QList<TARN::SignalItem> &items, QString *error)
{
    const int width = TARN::widthOf(items);
    if (width > TARN::MaxPortSignals)
        return refuse(error, TARN::LimitTexts::TooManySignals);
    if (type != ProbeTypeOut) {
        core(position)->probeIns.at(port)->signals = items;
        return true;
    }
    QList<TARN::SignalItem> &current = core(position)->probeOuts.at(port)->signals;
    const int former = TARN::widthOf(current);
    current = items;
    Line &line = m_lines[position][port];
    if (width != former)
        line.stored = false;
    line.text =
        TARN::valueText(TARN::fittedBits(TARN::stringHextoBinfor0x(line.text), former, width));
    return true;
}

bool EditedConfig::setValue(int position, int port, const QString &value, QString *error)
{
    const int width = TARN::widthOf(core(position)->probeOuts.at(port)->signals);
    const std::optional<QString> bits = TARN::enteredBits(value, width);
    if (!bits) {
        *error = QString::fromLatin1(TARN::LimitTexts::ValueTooWide)
                     .arg(TARN::maskedValue(value, width).mid(2), QString::number(port));
        return false;
    }
    const QString text = TARN::valueText(*bits);
    Line &line = m_lines[position][port];
    if (text != line.text)
        line = {text, false};
    return true;
}

void EditedConfig::setClock(int position, const QString &net)
{
    core(position)->userClock = net;
    core(position)->syncUserClock = !net.isEmpty();
}

/// The value of a port as an edit sees it. A page finds the line of a port by the port's own
/// number, which in files from elsewhere need not be its position.
QString EditedConfig::valueOf(const TARN::ProbeOut &port, const Lines &lines)
{
    const bool hasLine = port.index >= 0 && port.index < lines.size();
    if (!hasLine || lines.at(port.index).stored)
        return port.initialValue;
    return lines.at(port.index).text;
}

TARN::ConfigSnapshot EditedConfig::snapshot() const
{
    TARN::ConfigSnapshot config;
    for (int i = 0; i < cores().size(); ++i) {
        const TarnCore &from = *core(i);
        TARN::CoreSnapshot content;
        content.module = from.module;
        content.userClock = from.userClock;
        content.syncUserClock = from.syncUserClock;
        for (const TARN::ProbeIn *port : from.probeIns)
            content.probeIns.append(TARN::snapshotOf(*port, QString()));
        for (const TARN::ProbeOut *port : from.probeOuts)
            content.probeOuts.append(TARN::snapshotOf(*port, valueOf(*port, m_lines.at(i))));
        config.cores.append({from.index, TARN::shared(std::move(content), {})});
    }
    return config;
}

void EditedConfig::apply(const TARN::ConfigSnapshot &current, const TARN::ConfigSnapshot &target)
{
    const TARN::ChangedCores changed = TARN::changedCores(current, target);
    for (int i = changed.first; i < changed.first + changed.after; ++i)
        restore(core(i), &m_lines[i], *target.cores.at(i).content);
}

void EditedConfig::restore(TarnCore *core, Lines *lines, const TARN::CoreSnapshot &target)
{
    core->userClock = target.userClock;
    core->syncUserClock = target.syncUserClock;
    for (int i = 0; i < core->probeIns.size(); ++i)
        core->probeIns.at(i)->signals = target.probeIns.at(i)->signals;
    for (int i = 0; i < core->probeOuts.size(); ++i) {
        TARN::ProbeOut *port = core->probeOuts.at(i);
        const TARN::PortSnapshot &content = *target.probeOuts.at(i);
        Line &line = (*lines)[i];
        const QString value = line.stored ? port->initialValue : line.text;
        const bool differs =
            value != content.initialValue || !TARN::sameSignals(port->signals, content.signals);
        port->signals = content.signals;
        port->initialValue = content.initialValue;
        if (differs)
            line.text = shownValue(*port);
        line.stored = true;
    }
}

void EditedConfig::storeValues()
{
    for (int i = 0; i < cores().size(); ++i) {
        for (TARN::ProbeOut *port : qAsConst(core(i)->probeOuts)) {
            if (port->index >= 0 && port->index < m_lines.at(i).size())
                port->initialValue = m_lines.at(i).at(port->index).text;
        }
    }
}

void EditedConfig::setModules(const QString &top)
{
    for (TarnCore *core : cores())
        core->module = top;
}

} // namespace Tool
