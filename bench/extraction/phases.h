// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

#include <string>
#include <utility>
#include <vector>

/// The names of the phases of an extraction and the seconds that each of them takes by the clock.
using PhaseTimes = std::vector<std::pair<std::string, double>>;

/// Reads a design in Verilog with the parts of the extractor, one after the other, and never two at
/// the same time. So the sum is what an extraction takes that overlaps nothing. @p info is what
/// the extractor is told about the design.
PhaseTimes timePhases(const QMap<QString, QVariant> &info);
