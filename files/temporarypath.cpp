// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "temporarypath.h"

#include <QDir>

namespace Files {

QString temporaryPath()
{
    const QString path = QDir::tempPath();
    return path.isEmpty() ? qEnvironmentVariable("TMPDIR") : path;
}

QString temporaryTemplate()
{
    return temporaryPath() + QStringLiteral("/tarn-XXXXXX");
}

} // namespace Files
