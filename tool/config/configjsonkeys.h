// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// The keys of the JSON form that are no attributes of the file.
namespace Tool::ConfigJson {

inline const QString Version = QStringLiteral("version");
inline const QString Cores = QStringLiteral("cores");
inline const QString ProbeIns = QStringLiteral("probeIns");
inline const QString ProbeOuts = QStringLiteral("probeOuts");
inline const QString Signals = QStringLiteral("signals");
inline const QString Members = QStringLiteral("members");

} // namespace Tool::ConfigJson
