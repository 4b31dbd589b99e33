// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "candidates.h"
#include "finding.h"

#include <QString>
#include <QVector>

#include <optional>

namespace TARN {

class DesignNames;
struct ConfigSnapshot;

// What to search for on account of a finding, and what was found.

/// A net, a bus or a user clock is missing.
bool isMissing(Rule rule);

/// Full name of the signal at @p place, a bit standing for its bus; without a port, the name of the
/// user clock. Empty when there is none.
QString nameAt(const ConfigSnapshot &config, const Place &place);

/// The kind of port whose signals fit @p place. User clocks are chosen among the nets for Probe In
/// ports.
ProbeType typeOf(const Place &place);

/// What a finding of that rule and place says to be missing. Nothing for other rules, and when no
/// clock is given.
std::optional<MissingName> missingNameOf(Rule rule, const Place &place,
                                         const ConfigSnapshot &config);

/// What can take the place of what @p finding is about, the best first: for something missing what
/// @p search has found, for a changed bus the bus of the design. Empty for other rules.
QVector<Replacement> candidatesOf(const Finding &finding, const CandidateSearch &search,
                                  const DesignNames &names);

} // namespace TARN
