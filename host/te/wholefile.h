// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

namespace TE {

/// Reads the file at @p path, of 64 MB at most. Returns false and sets @p reason, without the
/// path, when it cannot be read.
bool readWholeFile(const QString &path, QByteArray *content, QString *reason);

} // namespace TE
