// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace TARN {

/// Whether text that the user typed, but did not apply yet, counts.
enum class Typing { LeftOut, Included };

} // namespace TARN
