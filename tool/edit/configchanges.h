// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

namespace TARN {
struct ConfigSnapshot;
}

namespace Tool {

class EditedConfig;

/// What an edit changes, for readers: a block for each core that differs from @p before, the
/// content of the file, with its ports and signals. "+" marks what comes, "-" what goes. Empty when
/// nothing changes.
QByteArray changesText(const TARN::ConfigSnapshot &before, const EditedConfig &after);

} // namespace Tool
