// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "signalitem.h"

#include <QList>

namespace TARN {

// The set operations that keep a list of signals free of repeats. Items are compared by whole names
// only: no name is ever taken apart, and nothing is sorted.

/// True when @p bus has members, @p signal has none, and a member of @p bus carries the name of
/// @p signal.
bool isBussignalInBus(SignalItem bus, SignalItem signal);

/// Removes the first entry of @p list with the name of @p signal.
void CheckRepeatSignal(SignalItem &signal, QList<SignalItem> &list);

/// Appends @p item to @p list unless it is a single that a bus there covers; a bus first removes
/// the singles that it covers.
void CheckBus(QList<SignalItem> &list, SignalItem item);

/// Drops the members that are not enabled, then splits @p all into buses, by their kind, and the
/// rest.
void Grouped(QList<SignalItem> all, QList<SignalItem> &buses, QList<SignalItem> &singles);

/// The list @p shown with what @p chosen adds: without the signals that a chosen bus covers, and
/// with the new buses and then the rest behind them. The rows of mergeSignals() show the same.
QList<SignalItem> mergedSignals(const QList<SignalItem> &shown, const QList<SignalItem> &chosen);

} // namespace TARN
