// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tarnconfig.h"

#include <QString>

namespace TARN {

/// What reader and writer of the configuration file have to agree on. The format is described in
/// docs/file-format.md. The names are members so that they cost no allocation where they are used
/// and no static object.
struct ConfigFormat
{
    const QString root = QLatin1String(NODE_TARN_CONFIG);
    const QString version = QLatin1String(NODE_VERSION);
    const QString core = QStringLiteral("Core");
    const QString probeIn = QStringLiteral("ProbeIn");
    const QString probeOut = QStringLiteral("ProbeOut");
    const QString signal = QStringLiteral("Signal");
    const QString member = QStringLiteral("Member");

    const QString index = QStringLiteral("index");
    const QString module = QStringLiteral("module");
    const QString userClock = QStringLiteral("userClock");
    const QString syncUserClock = QStringLiteral("syncUserClock");
    const QString initialValue = QStringLiteral("initialValue");
    const QString name = QStringLiteral("name");
    const QString displayName = QStringLiteral("displayName");
    const QString kind = QStringLiteral("kind");
    const QString enabled = QStringLiteral("enabled");
    const QString usable = QStringLiteral("usable");

    const QString yes = QStringLiteral("true");
    const QString no = QStringLiteral("false");
    const QString kindNet = QStringLiteral("net");
    const QString kindBus = QStringLiteral("bus");

    const QString encoding = QStringLiteral("UTF-8");
    const QString currentVersion = QStringLiteral("1.0");

    /// Elements inside each other, the root included.
    static constexpr int MaximumDepth = 16;
    /// Depth of the signals of a port; each level of members is one deeper.
    static constexpr int SignalDepth = 4;
    /// Of the whole file, in bytes.
    static constexpr qint64 MaximumSize = 256 * 1024 * 1024;
};

} // namespace TARN
