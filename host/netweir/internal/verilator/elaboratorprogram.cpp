// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "elaboratorprogram.h"

#include <netweir/internal/ground/messages.h>

#include <QFileInfo>
#include <QStandardPaths>

namespace NETWEIR::Internal {

QString findElaborator(QString *error)
{
    const QString chosen = qEnvironmentVariable("TARN_VERILATOR");
    if (!chosen.isEmpty()) {
        const QFileInfo info(chosen);
        if (info.isFile() && info.isExecutable())
            return info.absoluteFilePath();
        *error = Text::tr("The elaborator \"%1\" named by the environment variable TARN_VERILATOR "
                          "is not a program. Correct or unset the variable.")
                     .arg(chosen);
        return {};
    }
    QString found = QStandardPaths::findExecutable(QStringLiteral("verilator_bin"));
    if (found.isEmpty())
        found = QStandardPaths::findExecutable(QStringLiteral(NETWEIR_VERILATOR));
    if (found.isEmpty())
        *error =
            Text::tr("The elaborator \"verilator_bin\" is not installed. Install Verilator, or "
                     "set the environment variable TARN_VERILATOR to the path of "
                     "verilator_bin.");
    return found;
}

} // namespace NETWEIR::Internal
