// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tarncore.h"

#include <QList>
#include <QString>
#include <QVector>

#include <functional>
#include <memory>

namespace TARN {

/// The content of a port at one time. For Probe In ports initialValue stays empty.
struct PortSnapshot
{
    qint32 index = 0;
    QList<SignalItem> signals; ///< Shared with the port, as long as neither changes.
    QString initialValue;
};

/// Everything of one core but its number. Immutable, and shared between snapshots.
struct CoreSnapshot
{
    QString module; ///< Kept, but never compared: every save sets it.
    QString userClock;
    bool syncUserClock = false;
    QVector<std::shared_ptr<const PortSnapshot>> probeIns;
    QVector<std::shared_ptr<const PortSnapshot>> probeOuts;
};

/// The whole configuration at one time, a cheap value.
///
/// What did not change since the former snapshot is the same object in both. So a thousand
/// snapshots need little memory, and comparing pointers tells in little time what changed.
struct ConfigSnapshot
{
    struct Core
    {
        qint32 index = 0;
        std::shared_ptr<const CoreSnapshot> content; ///< Never null.
    };
    QVector<Core> cores;
};

/// Whether both lists hold the same items, in every field. Takes no time for lists that share their
/// memory.
bool sameSignals(const QList<SignalItem> &left, const QList<SignalItem> &right);

/// Whether both hold the same objects. Equal content in other objects is not the same.
bool sameObjects(const ConfigSnapshot &left, const ConfigSnapshot &right);

/// @p port with @p initialValue; @p former, which may be null, when that is equal.
std::shared_ptr<const PortSnapshot>
snapshotOf(const ProbeIn &port, const QString &initialValue,
           const std::shared_ptr<const PortSnapshot> &former = {});

/// @p core as it is; @p former, which may be null, when that is equal. A port shares with the port
/// at the same position.
std::shared_ptr<const CoreSnapshot>
snapshotOf(const TarnCore &core, const std::shared_ptr<const CoreSnapshot> &former = {});

/// @p core as an object for a snapshot; @p former, which may be null, when both have the same ports
/// and the same clock.
std::shared_ptr<const CoreSnapshot> shared(CoreSnapshot core,
                                           const std::shared_ptr<const CoreSnapshot> &former);

/// All @p cores as they are, sharing with @p former all that is equal, also behind a core that came
/// or went.
ConfigSnapshot snapshotOf(const QList<TarnCore *> &cores, const ConfigSnapshot &former = {});

/// The same for cores with these numbers, of which @p contentOf returns the content of the core at
/// a position: the former content that it is given, which may be null, when that is equal.
using ContentOf = std::function<std::shared_ptr<const CoreSnapshot>(
    int position, const std::shared_ptr<const CoreSnapshot> &former)>;
ConfigSnapshot snapshotOf(const QVector<qint32> &indexes, const ContentOf &contentOf,
                          const ConfigSnapshot &former = {});

/// Makes each list of signals of @p core share its memory with the equal one of @p content, which
/// shows the core as it is. The next comparison takes no time then.
void shareSignals(TarnCore *core, const CoreSnapshot &content);

/// A core as @p content shows it, owned by the caller.
std::unique_ptr<TarnCore> newCore(int index, const CoreSnapshot &content);

/// The cores as @p snapshot shows them, owned by the caller.
QList<TarnCore *> newCores(const ConfigSnapshot &snapshot);

} // namespace TARN
