// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace TARN {

/// Id of the new-file wizard in the host's gallery.
constexpr char ID_TARN_WIZARD[] = "MB.Wizard.TARN";

/// Context in which the plug-in's actions are active: the active view is an editor view.
constexpr char TARN_CONTEXT[] = "TARN.TarnViewManager.Context";

} // namespace TARN
