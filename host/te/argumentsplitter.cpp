// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "argumentsplitter.h"

#include <QCoreApplication>

namespace TE {

namespace {

class Splitter
{
    Q_DECLARE_TR_FUNCTIONS(TE::ArgumentSplitter)

public:
    explicit Splitter(const QString &text)
        : m_text(text)
    {
    }

    bool split(QStringList *arguments);
    QString error() const { return m_error; }

private:
    bool startsWith(const char *token) const
    {
        return m_text.midRef(m_position).startsWith(QLatin1String(token));
    }
    bool skipBlanksAndComments();
    void skipLine();
    bool skipBlockComment();
    bool readArgument(QString *argument);
    bool readQuoted(QString *argument);
    bool fail(int position, const QString &what);

    const QString &m_text;
    int m_position = 0;
    QString m_error;
};

bool Splitter::split(QStringList *arguments)
{
    while (skipBlanksAndComments()) {
        if (m_position == m_text.size())
            return true;
        QString argument;
        if (!readArgument(&argument))
            return false;
        arguments->append(argument);
    }
    return false;
}

bool Splitter::skipBlanksAndComments()
{
    while (m_position < m_text.size()) {
        if (m_text.at(m_position).isSpace())
            ++m_position;
        else if (startsWith("//") || startsWith("#"))
            skipLine();
        else if (!startsWith("/*"))
            return true;
        else if (!skipBlockComment())
            return false;
    }
    return true;
}

void Splitter::skipLine()
{
    const int end = m_text.indexOf(QLatin1Char('\n'), m_position);
    m_position = end < 0 ? m_text.size() : end + 1;
}

bool Splitter::skipBlockComment()
{
    const int end = m_text.indexOf(QLatin1String("*/"), m_position + 2);
    if (end < 0)
        return fail(m_position, tr("the comment is not closed"));
    m_position = end + 2;
    return true;
}

bool Splitter::readArgument(QString *argument)
{
    while (m_position < m_text.size() && !m_text.at(m_position).isSpace()) {
        const QChar c = m_text.at(m_position);
        if (c == QLatin1Char('"') || c == QLatin1Char('\'')) {
            if (!readQuoted(argument))
                return false;
            continue;
        }
        if (c == QLatin1Char('\\') && m_position + 1 < m_text.size())
            ++m_position;
        argument->append(m_text.at(m_position++));
    }
    return true;
}

bool Splitter::readQuoted(QString *argument)
{
    const int start = m_position;
    const QChar quote = m_text.at(m_position++);
    const bool escapes = quote == QLatin1Char('"');
    while (m_position < m_text.size() && m_text.at(m_position) != quote) {
        if (escapes && m_text.at(m_position) == QLatin1Char('\\') && m_position + 1 < m_text.size())
            ++m_position;
        argument->append(m_text.at(m_position++));
    }
    if (m_position == m_text.size())
        return fail(start, tr("the quote is not closed"));
    ++m_position;
    return true;
}

bool Splitter::fail(int position, const QString &what)
{
    const int line = m_text.leftRef(position).count(QLatin1Char('\n')) + 1;
    m_error = QStringLiteral("%1: %2").arg(QString::number(line), what);
    return false;
}

} // namespace

bool splitArguments(const QString &text, QStringList *arguments, QString *error)
{
    Splitter splitter(text);
    if (splitter.split(arguments))
        return true;
    *error = splitter.error();
    return false;
}

} // namespace TE
