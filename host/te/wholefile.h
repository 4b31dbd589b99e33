// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QString>

namespace TE {

/// A text file that is read at once.
class WholeFile
{
    Q_DECLARE_TR_FUNCTIONS(TE::WholeFile)

public:
    WholeFile() = delete;

    /// Reads the file at @p path, which may have up to 64 MB. Returns false and sets @p reason,
    /// without the path, when it cannot be read.
    static bool read(const QString &path, QByteArray *content, QString *reason);
};

} // namespace TE
