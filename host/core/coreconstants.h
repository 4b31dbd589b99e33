// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Core::Constants {

/// Id of the shared Save command of the File menu.
constexpr char A_FILE_SAVE[] = "Core.Action.Save";

} // namespace Core::Constants
