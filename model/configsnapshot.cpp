// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configsnapshot.h"

#include <QPair>

#include <algorithm>
#include <utility>

namespace TARN {

namespace {

using Ports = QVector<std::shared_ptr<const PortSnapshot>>;
using SignalLists = QPair<const QList<SignalItem> *, const QList<SignalItem> *>;

bool sameButMembers(const SignalItem &left, const SignalItem &right)
{
    return left.name == right.name && left.displayName == right.displayName &&
           left.enabled == right.enabled && left.usable == right.usable && left.kind == right.kind;
}

/// Compares the lists without their members. Adds to @p pending what members there are to compare.
bool sameLevel(const SignalLists &lists, QVector<SignalLists> *pending)
{
    const auto &[left, right] = lists;
    if (left->isSharedWith(*right))
        return true;
    if (left->size() != right->size())
        return false;
    for (int i = 0; i < left->size(); ++i) {
        if (!sameButMembers(left->at(i), right->at(i)))
            return false;
        if (!left->at(i).members.isSharedWith(right->at(i).members))
            pending->append(qMakePair(&left->at(i).members, &right->at(i).members));
    }
    return true;
}

QString initialValueOf(const ProbeIn *)
{
    return QString();
}

QString initialValueOf(const ProbeOut *port)
{
    return port->initialValue;
}

template <typename Port>
Ports portsOf(const QList<Port *> &ports, const Ports &former)
{
    Ports content;
    content.reserve(ports.size());
    for (int i = 0; i < ports.size(); ++i)
        content.append(snapshotOf(*ports.at(i), initialValueOf(ports.at(i)), former.value(i)));
    return content;
}

template <typename Port>
void shareSignals(const QList<Port *> &ports, const Ports &content)
{
    for (int i = 0; i < qMin(ports.size(), content.size()); ++i) {
        if (!ports.at(i)->signals.isSharedWith(content.at(i)->signals))
            ports.at(i)->signals = content.at(i)->signals;
    }
}

} // namespace

bool sameSignals(const QList<SignalItem> &left, const QList<SignalItem> &right)
{
    if (left.isSharedWith(right))
        return true;
    QVector<SignalLists> pending = {{&left, &right}};
    while (!pending.isEmpty()) {
        if (!sameLevel(pending.takeLast(), &pending))
            return false;
    }
    return true;
}

bool sameObjects(const ConfigSnapshot &left, const ConfigSnapshot &right)
{
    return std::equal(left.cores.cbegin(), left.cores.cend(), right.cores.cbegin(),
                      right.cores.cend(),
                      [](const ConfigSnapshot::Core &a, const ConfigSnapshot::Core &b) {
                          return a.index == b.index && a.content == b.content;
                      });
}

std::shared_ptr<const PortSnapshot> snapshotOf(const ProbeIn &port, const QString &initialValue,
                                               const std::shared_ptr<const PortSnapshot> &former)
{
    if (former && former->index == port.index && former->initialValue == initialValue &&
        sameSignals(former->signals, port.signals))
        return former;
    return std::make_shared<const PortSnapshot>(
        PortSnapshot{port.index, port.signals, initialValue});
}

std::shared_ptr<const CoreSnapshot> snapshotOf(const TarnCore &core,
                                               const std::shared_ptr<const CoreSnapshot> &former)
{
    return shared({core.module, core.userClock, core.syncUserClock,
                   portsOf(core.probeIns, former ? former->probeIns : Ports()),
                   portsOf(core.probeOuts, former ? former->probeOuts : Ports())},
                  former);
}

std::shared_ptr<const CoreSnapshot> shared(CoreSnapshot core,
                                           const std::shared_ptr<const CoreSnapshot> &former)
{
    if (former && former->userClock == core.userClock &&
        former->syncUserClock == core.syncUserClock && former->probeIns == core.probeIns &&
        former->probeOuts == core.probeOuts)
        return former;
    return std::make_shared<const CoreSnapshot>(std::move(core));
}

ConfigSnapshot snapshotOf(const QList<TarnCore *> &cores, const ConfigSnapshot &former)
{
    QVector<qint32> indexes;
    for (const TarnCore *core : cores)
        indexes.append(core->index);
    return snapshotOf(
        indexes,
        [&](int i, const std::shared_ptr<const CoreSnapshot> &twin) {
            return snapshotOf(*cores.at(i), twin);
        },
        former);
}

ConfigSnapshot snapshotOf(const QVector<qint32> &indexes, const ContentOf &contentOf,
                          const ConfigSnapshot &former)
{
    const int count = indexes.size();
    const int formerCount = former.cores.size();
    QVector<std::shared_ptr<const CoreSnapshot>> contents(count);
    const auto equalsFormer = [&](int i, int formerPosition) {
        const auto &twin = former.cores.at(formerPosition).content;
        contents[i] = contentOf(i, twin);
        return contents.at(i) == twin;
    };
    // From both ends as long as all is equal: a core may have come or gone between them.
    const int common = qMin(count, formerCount);
    int front = 0;
    while (front < common && equalsFormer(front, front))
        ++front;
    int back = 0;
    while (back < common - front && equalsFormer(count - 1 - back, formerCount - 1 - back))
        ++back;
    for (int i = front; i < count - back; ++i)
        contents[i] = contentOf(i, i < formerCount - back ? former.cores.at(i).content : nullptr);

    ConfigSnapshot snapshot;
    for (int i = 0; i < count; ++i)
        snapshot.cores.append({indexes.at(i), contents.at(i)});
    return snapshot;
}

void shareSignals(TarnCore *core, const CoreSnapshot &content)
{
    shareSignals(core->probeIns, content.probeIns);
    shareSignals(core->probeOuts, content.probeOuts);
}

std::unique_ptr<TarnCore> newCore(int index, const CoreSnapshot &content)
{
    auto core = std::make_unique<TarnCore>(index);
    core->module = content.module;
    core->userClock = content.userClock;
    core->syncUserClock = content.syncUserClock;
    for (const std::shared_ptr<const PortSnapshot> &port : content.probeIns) {
        core->addProbeIn(port->index);
        core->probeIns.last()->signals = port->signals;
    }
    for (const std::shared_ptr<const PortSnapshot> &port : content.probeOuts) {
        core->addProbeOut(port->index);
        core->probeOuts.last()->signals = port->signals;
        core->probeOuts.last()->initialValue = port->initialValue;
    }
    return core;
}

QList<TarnCore *> newCores(const ConfigSnapshot &snapshot)
{
    QList<TarnCore *> cores;
    for (const ConfigSnapshot::Core &core : snapshot.cores)
        cores.append(newCore(core.index, *core.content).release());
    return cores;
}

} // namespace TARN
