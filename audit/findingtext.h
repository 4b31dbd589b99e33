// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "finding.h"

namespace TARN {

class DesignNames;
struct ConfigSnapshot;

/// The sentence of @p finding, from its rule, places and name. @p config is the configuration with
/// these places, @p names the design. Null is enough for rules that need no design.
QString textOf(const Finding &finding, const ConfigSnapshot &config, const DesignNames *names);

/// @p place as the rows show it: "tarn_0" or "tarn_0, Probe Out3". Empty for a place that does not
/// exist.
QString placeText(const Place &place, const ConfigSnapshot &config);

} // namespace TARN
