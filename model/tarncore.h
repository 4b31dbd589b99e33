// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <probes/signalitem.h>

#include <QList>
#include <QString>
#include <QStringList>

namespace TARN {

/// Kind of a probe port.
enum ProbeType : int {
    ProbeTypeIn = 0,
    ProbeTypeOut = 1,
};

/// One Probe In port. Also the base of ProbeOut, so that signals of both are edited in one way.
struct ProbeIn
{
    virtual ~ProbeIn() = default;

    /// The port's bits, one full net name each: buses expanded, in port order. The length is the
    /// port's width.
    QStringList singleSignals() const;

    qint32 index = 0;          ///< Number within the core, from 0.
    QList<SignalItem> signals; ///< Most significant first, in the user's order.
};

/// One Probe Out port.
struct ProbeOut : ProbeIn
{
    QString initialValue; ///< "0x" and hexadecimal digits, or empty when none was given.
};

/// One virtual I/O debug core. Owns its ports; the fields are edited directly.
class TarnCore
{
public:
    explicit TarnCore(int index);
    ~TarnCore();

    TarnCore(const TarnCore &) = delete;
    TarnCore &operator=(const TarnCore &) = delete;

    /// Appends an empty port with that index.
    void addProbeIn(int index);
    void addProbeOut(int index);

    /// Removes and deletes the port at that list position; an index out of range does nothing.
    void removeProbeIn(int index);
    void removeProbeOut(int index);

    /// Sets the index of each port to its list position.
    void updateProbeIn();
    void updateProbeOut();

    /// The port at list position @p i, null when there is none. Owned by the core.
    ProbeIn *getProbeIn(int i) const;
    ProbeOut *getProbeOut(int i) const;

    /// The ports that take part in the configuration: those that hold at least one signal.
    QList<ProbeIn *> getAvailableProbeIns() const;
    QList<ProbeOut *> getAvailableProbeOuts() const;

    qint32 index;              ///< Number of the core.
    QString module;            ///< Top module of the design into which the core is inserted.
    QString userClock;         ///< Net to which the Probe Out ports synchronise, may be empty.
    QList<ProbeIn *> probeIns; ///< Owned, in port order.
    QList<ProbeOut *> probeOuts;
    bool syncUserClock = false; ///< The Probe Out ports synchronise with userClock.
};

} // namespace TARN
