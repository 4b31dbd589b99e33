// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "deviceprimitives.h"

#include <QDir>
#include <QFile>
#include <QSet>

namespace NETWEIR {
namespace Internal {

namespace {

const char Folder[] = ":/netweir/primitives/";

QSet<QString> primitiveNames()
{
    QSet<QString> names;
    const QStringList files = QDir(QLatin1String(Folder)).entryList(QDir::Files);
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
    QFile file(QLatin1String(Folder) + name + QLatin1String(".v"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace Internal
} // namespace NETWEIR
