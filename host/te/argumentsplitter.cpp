// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "argumentsplitter.h"

#include <QCoreApplication>
#include <QRegularExpression>

namespace TE {

namespace {

/// The work of splitArguments().
class ArgumentSplitter
{
    Q_DECLARE_TR_FUNCTIONS(TE::ArgumentSplitter)

public:
    explicit ArgumentSplitter(const QString &text)
        : m_text(text)
    {
    }

    bool split(QVector<Argument> *arguments);
    QString error() const { return m_error; }

private:
    bool atEnd() const { return m_position == m_text.size(); }
    QChar current() const { return m_text.at(m_position); }
    bool startsWith(const char *token) const
    {
        return m_text.midRef(m_position).startsWith(QLatin1String(token));
    }
    bool skipBlanksAndComments();
    void skipLine();
    bool skipBlockComment();
    bool skipLineJoint();
    bool readArgument(Argument *argument);
    bool isQuote(const Argument &argument) const;
    bool readQuoted(Argument *argument);
    void readCharacter(Argument *argument);
    bool readVariable(Argument *argument);
    int lineAt(int position);
    bool fail(int position, const QString &what);

    const QString &m_text;
    int m_position = 0;
    int m_line = 1;        ///< The line of m_counted.
    int m_counted = 0;     ///< Line feeds before this position are counted.
    bool m_quoted = false; ///< The argument being read has a quoted part.
    QString m_error;
};

bool ArgumentSplitter::split(QVector<Argument> *arguments)
{
    while (skipBlanksAndComments()) {
        if (atEnd())
            return true;
        Argument argument;
        argument.line = lineAt(m_position);
        if (!readArgument(&argument))
            return false;
        // An empty variable is no argument, except in quotes.
        if (m_quoted || !argument.text.isEmpty())
            arguments->append(argument);
    }
    return false;
}

bool ArgumentSplitter::skipBlanksAndComments()
{
    while (!atEnd()) {
        if (current().isSpace())
            ++m_position;
        else if (startsWith("//") || startsWith("#"))
            skipLine();
        else if (startsWith("/*")) {
            if (!skipBlockComment())
                return false;
        } else if (!skipLineJoint())
            return true;
    }
    return true;
}

void ArgumentSplitter::skipLine()
{
    const int end = m_text.indexOf(QLatin1Char('\n'), m_position);
    m_position = end < 0 ? m_text.size() : end + 1;
}

bool ArgumentSplitter::skipBlockComment()
{
    const int end = m_text.indexOf(QLatin1String("*/"), m_position + 2);
    if (end < 0)
        return fail(m_position, tr("the comment is not closed"));
    m_position = end + 2;
    return true;
}

/// Skips a backslash that is followed only by blanks up to the end of its line.
bool ArgumentSplitter::skipLineJoint()
{
    if (current() != QLatin1Char('\\'))
        return false;
    int end = m_position + 1;
    while (end < m_text.size() && m_text.at(end).isSpace() && m_text.at(end) != QLatin1Char('\n'))
        ++end;
    if (end < m_text.size() && m_text.at(end) != QLatin1Char('\n'))
        return false;
    m_position = qMin(end + 1, m_text.size());
    return true;
}

bool ArgumentSplitter::readArgument(Argument *argument)
{
    m_quoted = false;
    while (!atEnd() && !current().isSpace()) {
        if (isQuote(*argument)) {
            if (!readQuoted(argument))
                return false;
        } else if (!skipLineJoint() && !readVariable(argument)) {
            readCharacter(argument);
        }
    }
    return true;
}

/// False for the quote in a number, as in +define+W=8'hFF.
bool ArgumentSplitter::isQuote(const Argument &argument) const
{
    static const QRegularExpression number(
        QStringLiteral("'(?:[sS]?[bBoOdDhH][0-9a-fA-FxXzZ?_]+|[01xXzZ])(?!['\\w])"));
    if (current() != QLatin1Char('\''))
        return current() == QLatin1Char('"');
    const bool isFirst = argument.text.isEmpty();
    return isFirst || !number
                           .match(m_text, m_position, QRegularExpression::NormalMatch,
                                  QRegularExpression::AnchoredMatchOption)
                           .hasMatch();
}

bool ArgumentSplitter::readQuoted(Argument *argument)
{
    const int start = m_position;
    const QChar quote = current();
    const bool isPlain = quote == QLatin1Char('\'');
    m_quoted = true;
    ++m_position;
    while (!atEnd() && current() != quote) {
        if (isPlain)
            argument->text.append(m_text.at(m_position++));
        else if (!skipLineJoint() && !readVariable(argument))
            readCharacter(argument);
    }
    if (atEnd())
        return fail(start, tr("the quote is not closed"));
    ++m_position;
    return true;
}

void ArgumentSplitter::readCharacter(Argument *argument)
{
    if (current() == QLatin1Char('\\')) // Never the last character, which would join lines.
        ++m_position;
    argument->text.append(m_text.at(m_position++));
}

bool ArgumentSplitter::readVariable(Argument *argument)
{
    static const QRegularExpression form(QStringLiteral("\\$(?:(\\w+)|\\{(\\w+)\\}|\\((\\w+)\\))"));
    if (current() != QLatin1Char('$'))
        return false;
    const QRegularExpressionMatch match =
        form.match(m_text, m_position, QRegularExpression::NormalMatch,
                   QRegularExpression::AnchoredMatchOption);
    if (!match.hasMatch())
        return false;
    const QString name = match.captured(match.lastCapturedIndex());
    const QByteArray key = name.toLocal8Bit();
    const bool isSet = qEnvironmentVariableIsSet(key.constData());
    argument->text.append(isSet ? qEnvironmentVariable(key.constData()) : match.captured());
    if (!isSet && argument->unsetVariable.isEmpty())
        argument->unsetVariable = name;
    m_position = match.capturedEnd();
    return true;
}

/// The line of @p position. Counts each line feed once, so positions must not decrease from call to
/// call.
int ArgumentSplitter::lineAt(int position)
{
    m_line += m_text.midRef(m_counted, position - m_counted).count(QLatin1Char('\n'));
    m_counted = position;
    return m_line;
}

bool ArgumentSplitter::fail(int position, const QString &what)
{
    m_error = QStringLiteral("%1: %2").arg(QString::number(lineAt(position)), what);
    return false;
}

} // namespace

bool splitArguments(const QString &text, QVector<Argument> *arguments, QString *error)
{
    ArgumentSplitter splitter(text);
    if (splitter.split(arguments))
        return true;
    *error = splitter.error();
    return false;
}

} // namespace TE
