// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "dump.h"

#include <cstdlib>

namespace TarnCompare {

QString quoted(const QString &text)
{
    QString result(QLatin1Char('"'));
    for (const QChar character : text) {
        const ushort code = character.unicode();
        if (code >= ' ' && code <= '~' && code != '"' && code != '\\')
            result += character;
        else
            result += QStringLiteral("\\%1").arg(code, 4, 16, QLatin1Char('0'));
    }
    return result + QLatin1Char('"');
}

QString quoted(const QStringList &texts)
{
    QString result(QLatin1Char('['));
    for (const QString &text : texts)
        result += quoted(text) + QLatin1Char(' ');
    return result + QLatin1Char(']');
}

Dump::Dump(const QString &path)
    : m_file(std::fopen(path.toLocal8Bit().constData(), "w"))
{
    if (!m_file) {
        std::perror(path.toLocal8Bit().constData());
        std::exit(2);
    }
}

Dump::~Dump()
{
    const bool isComplete = std::ferror(m_file) == 0;
    if (std::fclose(m_file) != 0 || !isComplete) {
        std::perror("the dump is not complete");
        std::exit(2);
    }
}

void Dump::line(const QString &text)
{
    QString shown = text;
    if (!m_hidden.isEmpty())
        shown.replace(m_hidden, QStringLiteral("@"));
    const QByteArray bytes = shown.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), m_file);
}

void LongText::line(const QString &text)
{
    constexpr int ShownLines = 300;
    ++m_count;
    m_digest.addData(text.toUtf8() + '\n');
    if (m_count <= ShownLines)
        m_first.append(text);
}

void LongText::writeTo(Dump *dump) const
{
    for (const QString &line : m_first)
        dump->line(line);
    if (m_count > m_first.size())
        dump->line(QStringLiteral("... %1 lines, digest %2")
                       .arg(m_count)
                       .arg(QString::fromLatin1(m_digest.result().toHex())));
}

} // namespace TarnCompare
