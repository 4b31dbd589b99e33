// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/tarncore.h>

#include <QString>

namespace NETWEIR {
class RtlNet;
class RtlNetBus;
} // namespace NETWEIR

namespace TARN {

class DesignNames;

// What the design has under the name that something missing gets by another prefix.

/// Whether @p name is that of something in the instance, or in one below.
bool isBelow(const QString &name, const QString &instance);

/// @p name with the instance @p from in front replaced by @p to. Empty when it is not below @p
/// from.
QString movedName(const QString &name, const QString &from, const QString &to);

/// The net, or the bus, of that full name. Null when the design has none or ports of the type
/// cannot hold all of it.
NETWEIR::RtlNet *usableNet(const QString &name, ProbeType type, const DesignNames &names);
NETWEIR::RtlNetBus *usableBus(const QString &name, ProbeType type, const DesignNames &names);

} // namespace TARN
