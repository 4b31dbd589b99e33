// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "project.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QRegularExpression>

namespace TE {

namespace {

class VhdlLibrary
{
    Q_DECLARE_TR_FUNCTIONS(TE::VhdlLibrary)

public:
    /// What is wrong with @p name, which is in lower case; null when nothing is.
    static QString problemOf(const QString &name)
    {
        static const QRegularExpression form(QStringLiteral("\\A[a-z](_?[a-z0-9])*\\z"));
        if (!form.match(name).hasMatch())
            return tr("must be a VHDL identifier: letters, digits and single underscores, with a "
                      "letter first");
        if (name == QLatin1String("ieee") || name == QLatin1String("std"))
            return tr("is reserved for the packages of the standard; choose another name, and "
                      "use it in the library clauses too");
        return {};
    }
};

} // namespace

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

bool normalizeVhdlLibrary(QString *name, QString *error)
{
    const QString lower = name->toLower();
    const QString problem = VhdlLibrary::problemOf(lower);
    if (problem.isEmpty())
        *name = lower;
    else if (error)
        *error = problem;
    return problem.isEmpty();
}

} // namespace TE
