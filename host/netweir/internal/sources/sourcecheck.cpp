// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "sourcecheck.h"

#include "designsources.h"
#include "hiddencode.h"

#include <files/regularfile.h>
#include <netweir/internal/ground/messages.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

namespace NETWEIR::Internal {

namespace {

constexpr qint64 LongestLine = 1024 * 1024;
constexpr qint64 LargestFile = 1024 * 1024 * 1024;

/// Reads the file. Returns the error when it cannot be read.
QString readProblem(const QString &path, QByteArray *content)
{
    QString reason;
    switch (Files::readRegularFile(path, LargestFile, content, &reason)) {
    case Files::Access::Granted:
        break;
    case Files::Access::Folder:
        return Text::tr("This is a folder. Add the source files in it instead.");
    case Files::Access::Special:
        return Text::tr("This is not a regular file.");
    case Files::Access::TooLarge:
        return Text::tr("The file is larger than 1 GB.");
    case Files::Access::Failed:
        return Text::tr("The file cannot be read: %1.").arg(reason);
    }
    return {};
}

/// The first line that is too long, 0 when there is none.
int longLine(const QByteArray &content)
{
    int line = 1;
    for (int begin = 0; begin < content.size(); ++line) {
        const int found = content.indexOf('\n', begin);
        const int end = found < 0 ? content.size() : found;
        if (end - begin > LongestLine)
            return line;
        begin = end + 1;
    }
    return 0;
}

SourceFile includedFile(const QString &path)
{
    SourceFile file;
    file.path = path;
    return file;
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
    void checkFolders(const QStringList &folders, const QString &missing);
    void checkFile(const SourceFile &file);
    void checkContent(const SourceFile &file, const QByteArray &content);
    void readWords(const QString &path, const QByteArray &content);
    void collectIncludes(const QString &path, const QByteArray &content);
    void warnOfSpecialFile(const QString &path);
    QString findInclude(const QString &includingFile, const QString &name) const;

    const DesignSources &m_sources;
    QStringList m_messages;
    SourceWords m_words;
    QVector<SourceFile> m_pending; ///< Included files that are not checked yet.
    QSet<QString> m_seen;
};

QStringList SourceCheck::run()
{
    checkFolders(m_sources.includePaths, Text::tr("The include folder does not exist."));
    checkFolders(m_sources.libraryFolders, Text::tr("The library folder does not exist."));
    for (const SourceFile &file : m_sources.files)
        checkFile(file);
    while (!m_pending.isEmpty())
        checkFile(m_pending.takeLast());
    return m_messages;
}

void SourceCheck::checkFolders(const QStringList &folders, const QString &missing)
{
    for (const QString &folder : folders) {
        if (!QFileInfo(folder).isDir())
            m_messages.append(warningMessage({folder}, missing));
    }
}

void SourceCheck::checkFile(const SourceFile &file)
{
    const QFileInfo info(file.path);
    const QString id = info.exists() ? info.canonicalFilePath() : file.path;
    if (m_seen.contains(id))
        return;
    m_seen.insert(id);

    QByteArray content;
    QString problem;
    if (!info.exists())
        problem = file.library
                      ? Text::tr("The library file does not exist. Remove it from the options.")
                      : Text::tr("The file does not exist. Restore it or remove it from the "
                                 "project.");
    else
        problem = readProblem(file.path, &content);

    if (!problem.isEmpty())
        m_messages.append(errorMessage({file.path}, problem));
    else
        checkContent(file, content);
}

void SourceCheck::checkContent(const SourceFile &file, const QByteArray &content)
{
    const QString &path = file.path;
    if (content.isEmpty()) {
        m_messages.append(warningMessage({path}, Text::tr("The file is empty.")));
        return;
    }
    if (content.contains('\0')) {
        m_messages.append(errorMessage(
            {path}, Text::tr("The file is not text: it contains NUL bytes. Binary files and UTF-16 "
                             "text cannot be read.")));
        return;
    }
    const int line = longLine(content);
    if (line > 0) {
        m_messages.append(errorMessage(
            {path, line}, Text::tr("The line is longer than 1 MB. Break it into shorter lines.")));
        return;
    }
    if (!file.vhdl)
        readWords(path, content);
}

void SourceCheck::readWords(const QString &path, const QByteArray &content)
{
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
        at = end; // Also without a closing mark, so no text is searched twice.
        if (end == content.size() || content[end] != close)
            continue;
        const QString found = findInclude(path, QFile::decodeName(content.mid(begin, end - begin)));
        if (QFileInfo(found).isFile())
            m_pending.append(includedFile(found));
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
        // The elaborator itself reports folders.
        const QFileInfo info(path);
        if (info.exists() && !info.isDir())
            return path;
    }
    return {};
}

/// Not an error yet: the preprocessor may leave out the line.
void SourceCheck::warnOfSpecialFile(const QString &path)
{
    if (m_seen.contains(path))
        return;
    m_seen.insert(path);
    m_messages.append(
        warningMessage({path}, Text::tr("A source includes this file, which is a pipe or a "
                                        "device. Reading it may last until the "
                                        "timeout.")));
}

} // namespace

QStringList checkSources(const DesignSources &sources, SourceWords *words)
{
    SourceCheck check(sources);
    const QStringList messages = check.run();
    if (words)
        *words = check.words();
    return messages;
}

} // namespace NETWEIR::Internal
