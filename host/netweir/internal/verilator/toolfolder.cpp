// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "toolfolder.h"

#include <netweir/internal/ground/messages.h>
#include <netweir/internal/sources/designsources.h>

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRandomGenerator>

#include <array>
#include <limits>
#include <sys/resource.h>

namespace NETWEIR::Internal {

namespace {

/// The tool cuts names at blanks and takes several characters for its own.
bool isPlainName(const QString &name)
{
    for (const QChar c : name) {
        const bool plain = (c >= QLatin1Char('a') && c <= QLatin1Char('z')) ||
                           (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) ||
                           (c >= QLatin1Char('0') && c <= QLatin1Char('9')) ||
                           c == QLatin1Char('_') || c == QLatin1Char('.');
        if (!plain)
            return false;
    }
    return !name.isEmpty();
}

/// The size that the session lets files have: to reach that is no fault of the folder.
qint64 largestFile()
{
    rlimit limit;
    const bool isLimited =
        getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur <= std::numeric_limits<int>::max();
    return isLimited ? qint64(limit.rlim_cur) : std::numeric_limits<int>::max();
}

/// Writes a file that is new even where one was before. Why that failed, or null.
QString writeNew(const QString &path, const QByteArray &content)
{
    QFile::remove(path);
    QFile file(path);
    bool ok = file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered);
    // A full disk takes a part at first; what is behind it then has a reason.
    for (qint64 written = 0; ok && written < content.size();) {
        const qint64 size = file.write(content.constData() + written, content.size() - written);
        ok = size > 0;
        written += size;
    }
    return ok ? QString() : file.errorString();
}

} // namespace

/// A source keeps its own name within a link to its folder, so that included files are found beside
/// it; one whose own name is not plain has its folder among the include folders instead.
bool ToolFolder::linkSources(const DesignSources &sources)
{
    QHash<QString, QString> links; // By source folder.
    bool ok = m_folder.isValid();
    for (const QString &folder : sources.includePaths)
        ok = ok && linkIncludeFolder(folder);
    for (int i = 0; i < sources.files.size(); ++i) {
        const QFileInfo info(sources.files[i].path);
        const QString folder = info.absolutePath();
        QString &linked = links[folder];
        if (linked.isEmpty()) {
            linked = QStringLiteral("netweir_s%1").arg(links.size());
            ok = ok && link(folder, linked);
        }
        QString alias = linked + QLatin1Char('/') + info.fileName();
        if (!isPlainName(info.fileName())) {
            alias = QStringLiteral("netweir_f%1").arg(i);
            ok = ok && link(info.absoluteFilePath(), alias) && linkIncludeFolder(folder);
        }
        m_files.append({alias.toLatin1(), info.filePath()});
    }
    return ok;
}

QString ToolFolder::problem() const
{
    if (!m_folder.isValid())
        return Text::tr("No temporary folder can be made in %1: %2. Make room there, or set the "
                        "environment variable TMPDIR to another folder.")
            .arg(Files::temporaryPath(), m_folder.errorString());
    std::array<quint32, 16 * 1024> room; // Of bytes that no file system can compress.
    QRandomGenerator::global()->fillRange(room.data(), int(room.size()));
    const qint64 size = qMin<qint64>(room.size() * sizeof(quint32), largestFile());
    const QString probe = path(QStringLiteral("netweir_probe"));
    const QString reason = writeNew(
        probe, QByteArray::fromRawData(reinterpret_cast<const char *>(room.data()), int(size)));
    QFile::remove(probe);
    if (reason.isEmpty())
        return {};
    return Text::tr("The temporary folder in %1 cannot be written: %2. Make room there, or set the "
                    "environment variable TMPDIR to another folder.")
        .arg(Files::temporaryPath(), reason);
}

QString ToolFolder::writeError() const
{
    const QString reason = problem();
    if (!reason.isEmpty())
        return errorMessage(reason);
    return errorMessage(Text::tr("A file in the temporary folder in %1 cannot be written: %2.")
                            .arg(Files::temporaryPath(), m_lastReason));
}

bool ToolFolder::link(const QString &target, const QString &name) const
{
    QFile file(target);
    const bool ok = file.link(path(name));
    m_lastReason = file.errorString();
    return ok;
}

bool ToolFolder::linkIncludeFolder(const QString &folder)
{
    const QString name = QStringLiteral("netweir_i%1").arg(m_folders.size());
    m_folders.append({name.toLatin1(), folder});
    return link(folder, name);
}

bool ToolFolder::write(const QString &name, const QByteArray &text) const
{
    m_lastReason = writeNew(path(name), text);
    return m_lastReason.isEmpty();
}

} // namespace NETWEIR::Internal
