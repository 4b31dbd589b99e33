// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/tarncore.h>

#include <QByteArray>
#include <QChar>
#include <QList>
#include <QString>

#include <functional>

namespace Tool {

/// One bit of a port, and what it connects to.
struct MappedBit
{
    qint32 core = 0; ///< Number of the core.
    TARN::ProbeType type = TARN::ProbeTypeIn;
    qint32 port = 0; ///< Number of the port among those of its type.
    int bit = 0;     ///< 0 is the least significant one, which is the last of the port.
    QString net;     ///< Full name.
    QString bus;     ///< To which the net belongs, empty for a net that was chosen alone.
    /// '0' or '1' on a Probe Out port with an initial value, otherwise null.
    QChar initialValue;
};

/// Calls @p visit for every bit of @p cores in the order of the file: the Probe In ports of a core
/// before the Probe Out ports, the bits of a port from the most significant one down.
void forEachMappedBit(const QList<TARN::TarnCore *> &cores,
                      const std::function<void(const MappedBit &)> &visit);

/// A line of a table by RFC 4180.
QByteArray csvLine(const QList<QByteArray> &fields);

} // namespace Tool
