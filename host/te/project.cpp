// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "project.h"

#include <QFileInfo>

namespace TE {

QStringList libraryExtensionsOf(const Project &project)
{
    if (project.libraryExtensions.isEmpty())
        return {QStringLiteral(".v"), QStringLiteral(".sv")};
    return project.libraryExtensions;
}

int fileTypeOf(const QString &path)
{
    const QString extension = QFileInfo(path).suffix().toLower();
    if (extension == QLatin1String("v") || extension == QLatin1String("vh"))
        return VerilogFile;
    if (extension == QLatin1String("sv") || extension == QLatin1String("svh"))
        return SystemVerilogFile;
    if (extension == QLatin1String("vhd") || extension == QLatin1String("vhdl"))
        return VhdlFile;
    if (extension == QLatin1String("tarn"))
        return TarnFile;
    if (extension == QLatin1String("sdc") || extension == QLatin1String("pdc"))
        return ConstraintFile;
    return UnknownFile;
}

QStringList fileTypeNames()
{
    return {QStringLiteral("Other"),   QStringLiteral("Constraint"),
            QStringLiteral("Verilog"), QStringLiteral("SystemVerilog"),
            QStringLiteral("VHDL"),    QStringLiteral("TARN")};
}

QString fileTypeName(int type)
{
    return fileTypeNames().value(type, fileTypeNames().first());
}

int fileTypeFromName(const QString &name)
{
    return fileTypeNames().indexOf(name);
}

} // namespace TE
