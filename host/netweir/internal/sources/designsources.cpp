// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designsources.h"

#include "hiddencode.h"

#include <files/regularfile.h>
#include <netweir/internal/ground/messages.h>
#include <te/designinfo.h>
#include <te/fileinfo.h>
#include <te/teconstants.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <cstring>

namespace NETWEIR::Internal {

namespace {

constexpr qint64 LongestLine = 1024 * 1024;
constexpr qint64 LargestFile = 1024 * 1024 * 1024;

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

/// Adds those of @p paths that are not among @p files yet, and each once.
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

/// Reads the file; what is wrong with it when it cannot be read.
QString readProblem(const QString &path, QByteArray *content)
{
    QString reason;
    switch (Files::readRegularFile(path, LargestFile, content, &reason)) {
    case Files::Access::Granted:
        break;
    case Files::Access::Folder:
        return Text::tr("This is a folder. Add the source files in it instead.");
    case Files::Access::Special:
        return Text::tr("This is no regular file.");
    case Files::Access::TooLarge:
        return Text::tr("The file is larger than 1 GB.");
    case Files::Access::Failed:
        return Text::tr("The file cannot be read: %1.").arg(reason);
    }
    return {};
}

/// Checks files one by one and follows their include lines.
class SourceCheck
{
public:
    explicit SourceCheck(const DesignSources &sources)
        : m_sources(sources)
    {
    }

    QStringList run();

    const SourceWords &words() const { return m_words; }

private:
    void checkFile(const QString &path, bool library);
    void checkContent(const QString &path, const QByteArray &content);
    void collectIncludes(const QString &path, const QByteArray &content);
    void warnOfSpecialFile(const QString &path);
    QString findInclude(const QString &includingFile, const QString &name) const;

    const DesignSources &m_sources;
    QStringList m_messages;
    SourceWords m_words;
    QStringList m_pending; ///< Included files still to be checked.
    QSet<QString> m_seen;
};

QStringList SourceCheck::run()
{
    for (const QString &folder : m_sources.includePaths) {
        if (!QFileInfo(folder).isDir())
            m_messages.append(
                warningMessage({folder}, Text::tr("The include folder does not exist.")));
    }
    for (const QString &folder : m_sources.libraryFolders) {
        if (!QFileInfo(folder).isDir())
            m_messages.append(
                warningMessage({folder}, Text::tr("The library folder does not exist.")));
    }
    for (const SourceFile &file : m_sources.files) {
        if (file.vhdl) {
            m_messages.append(
                errorMessage({file.path}, Text::tr("VHDL is not supported yet. Disable the file or "
                                                   "replace it by a Verilog source.")));
        } else {
            checkFile(file.path, file.library);
        }
    }
    while (!m_pending.isEmpty())
        checkFile(m_pending.takeLast(), false);
    return m_messages;
}

void SourceCheck::checkFile(const QString &path, bool library)
{
    const QFileInfo info(path);
    const QString id = info.exists() ? info.canonicalFilePath() : path;
    if (m_seen.contains(id))
        return;
    m_seen.insert(id);

    QByteArray content;
    QString problem;
    if (!info.exists())
        problem = library ? Text::tr("The library file does not exist. Remove it from the options.")
                          : Text::tr("The file does not exist. Restore it or remove it from the "
                                     "project.");
    else
        problem = readProblem(path, &content);

    if (!problem.isEmpty())
        m_messages.append(errorMessage({path}, problem));
    else
        checkContent(path, content);
}

void SourceCheck::checkContent(const QString &path, const QByteArray &content)
{
    if (content.isEmpty()) {
        m_messages.append(warningMessage({path}, Text::tr("The file is empty.")));
        return;
    }
    if (content.contains('\0')) {
        m_messages.append(errorMessage(
            {path}, Text::tr("The file is no text: it contains NUL bytes. Binary files and UTF-16 "
                             "text cannot be read.")));
        return;
    }
    int line = 1;
    for (int begin = 0; begin < content.size(); ++line) {
        int end = content.indexOf('\n', begin);
        if (end < 0)
            end = content.size();
        if (end - begin > LongestLine) {
            m_messages.append(errorMessage(
                {path, line}, Text::tr("The line is longer than 1 MB. Break it into shorter "
                                       "lines.")));
            return;
        }
        begin = end + 1;
    }
    m_words.namesTool = m_words.namesTool || content.contains(ToolMacro);
    m_words.hidesCode = m_words.hidesCode || mayHideCode(content);
    collectIncludes(path, content);
}

void SourceCheck::collectIncludes(const QString &path, const QByteArray &content)
{
    static const QByteArray directive("`include");
    int at = content.indexOf(directive);
    for (; at >= 0; at = content.indexOf(directive, at)) {
        at += directive.size();
        while (at < content.size() && (content[at] == ' ' || content[at] == '\t'))
            ++at;
        if (at >= content.size() || (content[at] != '"' && content[at] != '<'))
            continue;
        const char close = content[at] == '"' ? '"' : '>';
        int end = at + 1;
        while (end < content.size() && content[end] != close && content[end] != '\n')
            ++end;
        const int begin = at + 1;
        at = end; // Also without a closing sign, so that no text is searched twice.
        if (end == content.size() || content[end] != close)
            continue;
        const QString found = findInclude(path, QFile::decodeName(content.mid(begin, end - begin)));
        if (QFileInfo(found).isFile())
            m_pending.append(found);
        else if (!found.isEmpty())
            warnOfSpecialFile(found);
    }
}

QString SourceCheck::findInclude(const QString &includingFile, const QString &name) const
{
    QStringList folders = m_sources.includePaths;
    folders.append(QFileInfo(includingFile).absolutePath());
    for (const QString &folder : qAsConst(folders)) {
        const QString path = QDir::cleanPath(QDir(folder).filePath(name));
        // A folder the elaborator reports by itself.
        const QFileInfo info(path);
        if (info.exists() && !info.isDir())
            return path;
    }
    return {};
}

/// The line may be one that the preprocessor leaves out, so that this is no error yet.
void SourceCheck::warnOfSpecialFile(const QString &path)
{
    if (m_seen.contains(path))
        return;
    m_seen.insert(path);
    m_messages.append(
        warningMessage({path}, Text::tr("A source includes this, which is a pipe or a "
                                        "device. Reading it may last until the "
                                        "timeout.")));
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

bool DesignSources::defines(const QString &macro) const
{
    return std::any_of(macros.begin(), macros.end(), [&macro](const QString &definition) {
        return definition.section(QLatin1Char('='), 0, 0) == macro;
    });
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
        if (isDesignSource(type))
            result.files.append(sourceFile(path, type));
    }
    addLibraryFiles(value(DesignInfo::LibraryFiles).toStringList(), &result.files);
    result.libraryFolders = value(DesignInfo::LibraryFolders).toStringList();
    result.libraryExtensions = value(DesignInfo::LibraryExtensions).toStringList();
    result.includePaths = value(DesignInfo::IncludePaths).toStringList();
    result.macros = value(DesignInfo::Macros).toStringList();
    result.standard = knownStandard(value(DesignInfo::Standard).toString());
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

QStringList checkSources(const DesignSources &sources, SourceWords *words)
{
    SourceCheck check(sources);
    const QStringList messages = check.run();
    if (words)
        *words = check.words();
    return messages;
}

} // namespace NETWEIR::Internal
