// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace TARN {

// The folder "tarn" in the user's state folder ($XDG_STATE_HOME or ~/.local/state). It keeps what
// belongs to a file but can not be in the file's own folder.

/// The one path of the file at @p path, whatever links lead to it. The file, and even its folder,
/// need not exist.
QString realPath(const QString &path);

/// Where the folder keeps something for the file whose real path is @p realPath. The name is made
/// from that path and ends with @p ending, so that it can be found again.
QString stateFile(const QString &realPath, const QString &ending);

/// Creates the folder, for this user alone, unless it exists.
void makeStateFolder();

} // namespace TARN
