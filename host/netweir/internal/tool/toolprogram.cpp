// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "toolprogram.h"

#include <netweir/internal/ground/messages.h>

#include <QFileInfo>
#include <QStandardPaths>

namespace NETWEIR::Internal {

QString findToolProgram(const ToolProgram &tool, QString *error)
{
    const QString variable = QLatin1String(tool.variable);
    const QString chosen = qEnvironmentVariable(tool.variable);
    if (!chosen.isEmpty()) {
        const QFileInfo info(chosen);
        if (info.isFile() && info.isExecutable())
            return info.absoluteFilePath();
        *error = Text::tr("The elaborator \"%1\" named by the environment variable %2 is not a "
                          "program. Correct or unset the variable.")
                     .arg(chosen, variable);
        return {};
    }
    const QString name = QLatin1String(tool.name);
    QString found = QStandardPaths::findExecutable(name);
    if (found.isEmpty())
        found = QStandardPaths::findExecutable(QString::fromLocal8Bit(tool.built));
    if (found.isEmpty())
        *error = Text::tr("The elaborator \"%1\" is not installed. %2, or set the environment "
                          "variable %3 to the path of %1.")
                     .arg(name, tool.advice, variable);
    return found;
}

} // namespace NETWEIR::Internal
