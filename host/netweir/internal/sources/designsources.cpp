// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designsources.h"

#include <netweir/internal/ground/messages.h>
#include <te/designinfo.h>
#include <te/fileinfo.h>
#include <te/teconstants.h>

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

bool hasSuffix(const QString &path, const char *suffix)
{
    return path.endsWith(QLatin1String(suffix), Qt::CaseInsensitive);
}

SourceFile sourceFile(const QString &path, int type)
{
    SourceFile file;
    file.path = path;
    file.vhdl = type == TE::VhdlFile;
    file.systemVerilog = type == TE::SystemVerilogFile || hasSuffix(path, ".sv");
    return file;
}

SourceFile libraryFile(const QString &path)
{
    const bool isVhdl = hasSuffix(path, ".vhd") || hasSuffix(path, ".vhdl");
    SourceFile file = sourceFile(path, isVhdl ? TE::VhdlFile : TE::VerilogFile);
    file.library = true;
    return file;
}

/// Adds the @p paths that are not among @p files yet, each of them once.
void addLibraryFiles(const QStringList &paths, QVector<SourceFile> *files)
{
    QSet<QString> known;
    for (const SourceFile &file : qAsConst(*files))
        known.insert(file.path);
    for (const QString &path : paths) {
        if (!known.contains(path)) {
            known.insert(path);
            files->append(libraryFile(path));
        }
    }
}

/// The file for @p name in the library folders, null when there is none.
QString findLibraryFile(const DesignSources &sources, const QString &name)
{
    if (name.contains(QLatin1Char('/'))) // An escaped name.
        return {};
    for (const QString &folder : sources.libraryFolders) {
        for (const QString &extension : sources.libraryExtensions) {
            const QString path = QDir(folder).filePath(name + extension);
            if (QFileInfo(path).isFile())
                return path;
        }
    }
    return {};
}

QString knownStandard(const QString &standard)
{
    for (const char *known : TE::OPT::VerilogStandards) {
        if (standard == QLatin1String(known))
            return standard;
    }
    return QLatin1String(TE::OPT::DefaultVerilogStandard);
}

} // namespace

bool isSystemVerilog(const DesignSources &sources, int index)
{
    return sources.files[index].systemVerilog || sources.standard.startsWith(QLatin1String("1800"));
}

QString typeAdvice()
{
    return Text::tr(
        "Change its type to SystemVerilog in the project, or add -sv to the file list.");
}

QString libraryAdvice(const QString &library)
{
    return Text::tr("Add the files of the library to the project and set their library to %1, or "
                    "put them behind --work %1 in the file list.")
        .arg(library);
}

bool DesignSources::defines(const QString &macro) const
{
    return std::any_of(macros.begin(), macros.end(), [&macro](const QString &definition) {
        return definition.section(QLatin1Char('='), 0, 0) == macro;
    });
}

DesignSources DesignSources::inLanguage(bool vhdl) const
{
    DesignSources result = *this;
    result.files.erase(std::remove_if(result.files.begin(), result.files.end(),
                                      [vhdl](const SourceFile &file) { return file.vhdl != vhdl; }),
                       result.files.end());
    if (vhdl) {
        result.libraryFolders.clear();
        result.includePaths.clear();
    }
    return result;
}

DesignSources readDesignSources(const QMap<QString, QVariant> &info)
{
    using namespace TE;
    const auto value = [&info](const char *key) { return info.value(QLatin1String(key)); };

    DesignSources result;
    result.top = value(DesignInfo::Top).toString();
    const QVariantList files = value(DesignInfo::Files).toList();
    for (const QVariant &entry : files) {
        const QVariantMap file = entry.toMap();
        const QString path = file.value(QLatin1String(DesignInfo::Path)).toString();
        const int type = file.value(QLatin1String(DesignInfo::Type), VerilogFile).toInt();
        if (!isDesignSource(type))
            continue;
        result.files.append(sourceFile(path, type));
        const QString library = file.value(QLatin1String(DesignInfo::Library)).toString();
        if (!library.isEmpty())
            result.files.last().vhdlLibrary = library.toLower();
    }
    addLibraryFiles(value(DesignInfo::LibraryFiles).toStringList(), &result.files);
    result.libraryFolders = value(DesignInfo::LibraryFolders).toStringList();
    result.libraryExtensions = value(DesignInfo::LibraryExtensions).toStringList();
    result.includePaths = value(DesignInfo::IncludePaths).toStringList();
    result.macros = value(DesignInfo::Macros).toStringList();
    result.standard = knownStandard(value(DesignInfo::Standard).toString());
    if (value(DesignInfo::VhdlStandard).toString() == QLatin1String(OPT::Vhdl1993))
        result.vhdlStandard = QStringLiteral("93");
    const int timeout = value(DesignInfo::Timeout).toInt();
    if (timeout > 0)
        result.timeoutSeconds = timeout;
    return result;
}

int addFilesOfLibraryFolders(const QByteArrayList &names, DesignSources *sources)
{
    QStringList found;
    for (const QByteArray &name : names) {
        const QString path = findLibraryFile(*sources, QString::fromUtf8(name));
        if (!path.isEmpty())
            found.append(path);
    }
    const int before = sources->files.size();
    addLibraryFiles(found, &sources->files);
    return sources->files.size() - before;
}

} // namespace NETWEIR::Internal
