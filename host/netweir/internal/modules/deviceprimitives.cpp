// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "deviceprimitives.h"

#include <netweir/internal/ground/resources.h>

#include <QDir>
#include <QFile>
#include <QSet>

namespace NETWEIR::Internal {

namespace {

QString primitivePath(const QString &name)
{
    return resourcePath(QLatin1String("primitives/") + name);
}

QSet<QString> primitiveNames()
{
    QSet<QString> names;
    const QStringList files = QDir(primitivePath({})).entryList(QDir::Files);
    for (const QString &file : files)
        names.insert(file.chopped(2));
    return names;
}

} // namespace

bool isDevicePrimitive(const QString &name)
{
    static const QSet<QString> names = primitiveNames();
    return names.contains(name);
}

QByteArray devicePrimitiveSource(const QString &name)
{
    if (!isDevicePrimitive(name))
        return {};
    QFile file(primitivePath(name + QLatin1String(".v")));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace NETWEIR::Internal
