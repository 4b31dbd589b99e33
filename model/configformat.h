// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tarnconfig.h"

#include <QString>
#include <QVersionNumber>

/// What reader and writer of the configuration file have to agree on. The format is described in
/// docs/file-format.md. The XML writer takes a QString, and a file can have millions of names: as
/// QString constants they need no conversion.
namespace TARN::ConfigFormat {

inline const QString Root = QLatin1String(NODE_TARN_CONFIG);
inline const QString Version = QLatin1String(NODE_VERSION);
inline const QString Core = QStringLiteral("Core");
inline const QString ProbeIn = QStringLiteral("ProbeIn");
inline const QString ProbeOut = QStringLiteral("ProbeOut");
inline const QString Signal = QStringLiteral("Signal");
inline const QString Member = QStringLiteral("Member");

inline const QString Index = QStringLiteral("index");
inline const QString Module = QStringLiteral("module");
inline const QString UserClock = QStringLiteral("userClock");
inline const QString SyncUserClock = QStringLiteral("syncUserClock");
inline const QString InitialValue = QStringLiteral("initialValue");
inline const QString Name = QStringLiteral("name");
inline const QString DisplayName = QStringLiteral("displayName");
inline const QString Kind = QStringLiteral("kind");
inline const QString Enabled = QStringLiteral("enabled");
inline const QString Usable = QStringLiteral("usable");

inline const QString Yes = QStringLiteral("true");
inline const QString No = QStringLiteral("false");
inline const QString KindNet = QStringLiteral("net");
inline const QString KindBus = QStringLiteral("bus");

inline const QString Encoding = QStringLiteral("UTF-8");
inline const QString CurrentVersion = QStringLiteral("1.0");

/// Whether a newer release has written what has this version.
inline bool isNewerVersion(const QString &version)
{
    return QVersionNumber::fromString(version) > QVersionNumber::fromString(CurrentVersion);
}

/// Elements inside each other, the root included.
constexpr int MaximumDepth = 16;
/// Depth of the signals of a port; each level of members is one deeper.
constexpr int SignalDepth = 4;
/// Of the whole file, in bytes.
constexpr qint64 MaximumSize = 256 * 1024 * 1024;

} // namespace TARN::ConfigFormat
