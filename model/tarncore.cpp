// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "tarncore.h"

#include "signalbits.h"

namespace TARN {

namespace {

template <typename Port>
void append(QList<Port *> *ports, int index)
{
    auto *port = new Port;
    port->index = index;
    ports->append(port);
}

template <typename Port>
void remove(QList<Port *> *ports, int position)
{
    if (position >= 0 && position < ports->size())
        delete ports->takeAt(position);
}

template <typename Port>
void renumber(const QList<Port *> &ports)
{
    for (int i = 0; i < ports.size(); ++i)
        ports.at(i)->index = i;
}

template <typename Port>
QList<Port *> withSignals(const QList<Port *> &ports)
{
    QList<Port *> available;
    for (Port *port : ports) {
        if (!port->signals.isEmpty())
            available.append(port);
    }
    return available;
}

} // namespace

QStringList ProbeIn::singleSignals() const
{
    QStringList names;
    forEachBit(signals, [&names](const QString &name, int, int) { names.append(name); });
    return names;
}

TarnCore::TarnCore(int coreIndex)
    : index(coreIndex)
{
}

TarnCore::~TarnCore()
{
    qDeleteAll(probeIns);
    qDeleteAll(probeOuts);
}

void TarnCore::addProbeIn(int portIndex)
{
    append(&probeIns, portIndex);
}

void TarnCore::addProbeOut(int portIndex)
{
    append(&probeOuts, portIndex);
}

void TarnCore::removeProbeIn(int position)
{
    remove(&probeIns, position);
}

void TarnCore::removeProbeOut(int position)
{
    remove(&probeOuts, position);
}

void TarnCore::updateProbeIn()
{
    renumber(probeIns);
}

void TarnCore::updateProbeOut()
{
    renumber(probeOuts);
}

ProbeIn *TarnCore::getProbeIn(int i) const
{
    return probeIns.value(i);
}

ProbeOut *TarnCore::getProbeOut(int i) const
{
    return probeOuts.value(i);
}

QList<ProbeIn *> TarnCore::getAvailableProbeIns() const
{
    return withSignals(probeIns);
}

QList<ProbeOut *> TarnCore::getAvailableProbeOuts() const
{
    return withSignals(probeOuts);
}

} // namespace TARN
