// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configfile.h"

#include "console.h"

#include <model/configwriter.h>
#include <model/replacefile.h>
#include <model/tarnconfig.h>
#include <model/tarncore.h>

#include <QDir>

namespace Tool {

OwnedCores::~OwnedCores()
{
    qDeleteAll(m_cores);
}

OwnedCores &OwnedCores::operator=(OwnedCores &&other) noexcept
{
    m_cores.swap(other.m_cores);
    return *this;
}

void OwnedCores::removeAt(int i)
{
    delete m_cores.takeAt(i);
}

bool readConfig(const QString &path, Console *console, OwnedCores *cores)
{
    bool ok = false;
    QString error;
    *cores = OwnedCores(TARN::readTARNConfigFromXml(path, &ok, &error));
    if (!ok)
        console->error(error);
    return ok;
}

bool writeConfig(const OwnedCores &cores, const QString &path, Console *console)
{
    TARN::ConfigWriter writer(cores.list());
    const QByteArray content = writer.content();
    QString error = writer.errorText();
    if (error.isEmpty() && TARN::replaceFile(path, content, &error))
        return true;
    console->error(
        QStringLiteral("cannot write %1: %2").arg(QDir::toNativeSeparators(path), error));
    return false;
}

} // namespace Tool
