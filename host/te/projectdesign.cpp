// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "project.h"

#include "designinfo.h"
#include "options.h"
#include "teconstants.h"

#include <QDir>

namespace TE {

namespace {

QVariantList designSources(const Project &project)
{
    QVariantList files;
    for (const ProjectSource &source : project.sources) {
        if (source.enabled && isDesignSource(source.type)) {
            QMap<QString, QVariant> file{{QLatin1String(DesignInfo::Path), source.path},
                                         {QLatin1String(DesignInfo::Type), source.type}};
            if (source.type == VhdlFile)
                file.insert(QLatin1String(DesignInfo::Library), source.library);
            files.append(file);
        }
    }
    return files;
}

QStringList includePaths(const Project &project)
{
    QStringList paths = optionValueOf(project, QLatin1String(OPT::INCLUDEPATH)).toStringList();
    for (QString &path : paths)
        path = absolutePathIn(project, path);
    return paths;
}

} // namespace

QString absolutePathIn(const Project &project, const QString &path)
{
    return QDir::cleanPath(QDir(project.workingDir).absoluteFilePath(path));
}

QVariant optionValueOf(const Project &project, const QString &name)
{
    if (name == QLatin1String(OPT::MACROS))
        return project.macros;
    if (name == QLatin1String(OPT::LIBRARYFOLDERS))
        return project.libraryFolders;
    return project.options.value(name, Options::defaultValue(name));
}

QMap<QString, QVariant> designInfoOf(const Project &project)
{
    const auto option = [&project](const char *name) {
        return optionValueOf(project, QLatin1String(name));
    };
    return {{QLatin1String(DesignInfo::Top), option(OPT::TOPMODULE)},
            {QLatin1String(DesignInfo::Files), designSources(project)},
            {QLatin1String(DesignInfo::IncludePaths), includePaths(project)},
            {QLatin1String(DesignInfo::Macros), project.macros},
            {QLatin1String(DesignInfo::LibraryFiles), project.libraryFiles},
            {QLatin1String(DesignInfo::LibraryFolders), project.libraryFolders},
            {QLatin1String(DesignInfo::LibraryExtensions), libraryExtensionsOf(project)},
            {QLatin1String(DesignInfo::Standard), option(OPT::Verilog_Standard)},
            {QLatin1String(DesignInfo::VhdlStandard), option(OPT::VHDL_Standard)},
            {QLatin1String(DesignInfo::Timeout), option(OPT::EXTRACTION_TIMEOUT)}};
}

} // namespace TE
