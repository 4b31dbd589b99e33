// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "toolmessages.h"

#include <netweir/internal/tool/messagelist.h>

#include <QHash>
#include <QSet>

#include <cstring>

namespace NETWEIR::Internal {

namespace {

const char InternalError[] = "Internal Error: ";
const char UndefinedMacro[] = "Define or directive not defined: ";
const char UnknownInclude[] = "Cannot find include file: ";
const char Unsupported[] = "UNSUPPORTED";

bool isAdvice(const QByteArray &text)
{
    static const char *const beginnings[] = {"Exiting due to", "Cannot continue",
                                             "This may be because there's no search path",
                                             "Verilator aborted", "Command Failed"};
    for (const char *beginning : beginnings) {
        if (text.startsWith(beginning))
            return true;
    }
    return false;
}

/// Removes "FILE:LINE:COLUMN: " from the text. The file name may contain colons and blanks.
void takePlace(ToolMessage *message)
{
    QByteArray &text = message->text;
    for (int end = text.indexOf(": "); end > 0; end = text.indexOf(": ", end + 1)) {
        const int column = text.lastIndexOf(':', end - 1);
        const int line = column > 0 ? text.lastIndexOf(':', column - 1) : -1;
        if (line <= 0)
            continue;
        bool isLine = false;
        bool isColumn = false;
        message->line = text.mid(line + 1, column - line - 1).toInt(&isLine);
        message->column = text.mid(column + 1, end - column - 1).toInt(&isColumn);
        if (isLine && isColumn) {
            message->file = text.left(line);
            text = text.mid(end + 2);
            return;
        }
    }
    message->line = 0;
    message->column = 0;
}

/// Removes the tool's source from an internal error: "FILE:LINE:COLUMN: ../V3Some.cpp:12: TEXT".
void takeInternalPlace(ToolMessage *message)
{
    takePlace(message);
    const int source = message->text.indexOf(".cpp:");
    const int end = source < 0 ? -1 : message->text.indexOf(": ", source);
    if (end >= 0)
        message->text = message->text.mid(end + 2);
    message->text.prepend(InternalError);
}

/// The text of a message, with advice if the text of the tool has none.
QString userText(const QByteArray &text)
{
    const QString name = QString::fromUtf8(quotedName(text));
    if (text.startsWith(UnknownInclude))
        return Text::tr("Cannot find the include file \"%1\". Add its folder to the include paths.")
            .arg(QString::fromUtf8(text.mid(int(strlen(UnknownInclude)))));
    if (text.startsWith(UndefinedMacro))
        return Text::tr("The macro %1 is not defined. Define it in the options or in a file that "
                        "is read earlier.")
            .arg(name);
    if (text.startsWith(UnknownInterface))
        return Text::tr("The interface \"%1\" is not defined. Add the file that defines it.")
            .arg(name);
    if (text.startsWith(UnknownModule))
        return Text::tr("The module or type \"%1\" is not defined. Add the file that defines it.")
            .arg(name);
    if (text.startsWith(UnknownType))
        return Text::tr("The type \"%1\" is not defined. Add the file that defines it.").arg(name);
    if (text.startsWith(InternalError))
        return Text::tr("The elaborator cannot read this construct (%1).")
            .arg(QString::fromUtf8(text));
    return QString::fromUtf8(text);
}

/// The text of an error that the tool reports for each use of something missing.
QByteArray causeOf(const ToolMessage &message)
{
    static const char *const ofDesign[] = {UnknownInterface,
                                           UnknownModule,
                                           UnknownInclude,
                                           UndefinedMacro,
                                           "Importing from missing package ",
                                           "Package/class "};
    for (const char *beginning : ofDesign) {
        if (message.text.startsWith(beginning))
            return message.text;
    }
    return message.text.startsWith("Can't find definition of ") ? message.file + ' ' + message.text
                                                                : QByteArray();
}

/// Separates causes from errors that follow from them.
class CauseList
{
public:
    /// Call it for each error in order.
    bool follows(const ToolMessage &error)
    {
        const QByteArray cause = error.cause.isNull() ? causeOf(error) : error.cause;
        const bool isRepeated = !cause.isNull() && m_causes.contains(cause);
        if (!cause.isNull())
            m_causes.insert(cause);
        return followsInText(error) || isRepeated || error.followsUp;
    }

private:
    /// The parser needs some lines to recover.
    bool followsInText(const ToolMessage &error)
    {
        constexpr int FewLines = 3;
        const bool isSyntax = isSyntaxError(error);
        const bool confuses = isSyntax || error.text.startsWith(UndefinedMacro);
        if (!confuses)
            return false;
        const auto known = m_confused.constFind(error.file);
        const bool result = isSyntax && known != m_confused.constEnd() && error.line >= *known &&
                            error.line - *known <= FewLines;
        m_confused.insert(error.file, error.line);
        return result;
    }

    QSet<QByteArray> m_causes;
    QHash<QByteArray, int> m_confused; ///< The line of the last syntax error, by file.
};

QString userLine(const ToolMessage &message, const Place &place)
{
    QString text = userText(message.text);
    if (!text.isEmpty() && !message.advice.isEmpty())
        text += text.endsWith(QLatin1Char('.')) ? QStringLiteral(" ") : QStringLiteral(". ");
    text += message.advice;
    return message.error ? errorMessage(place, text) : warningMessage(place, text);
}

/// A line after an error may say that the elaborator does not support something.
void noteReason(const QByteArray &line, QVector<ToolMessage> *messages)
{
    const int reason = line.indexOf(": Unsupported: ");
    if (reason < 0 || messages->isEmpty() || !messages->last().error)
        return;
    messages->last().code = Unsupported;
    messages->last().text += " (" + line.mid(reason + 2) + ')';
}

} // namespace

bool isSyntaxError(const ToolMessage &message)
{
    return message.error && message.text.startsWith("syntax error");
}

QByteArray quotedName(const QByteArray &text)
{
    const int begin = text.indexOf('\'') + 1;
    return text.mid(begin, text.lastIndexOf('\'') - begin);
}

QVector<ToolMessage> parseToolOutput(const QByteArray &errorOutput)
{
    QVector<ToolMessage> result;
    for (int begin = 0; begin < errorOutput.size();) {
        int end = errorOutput.indexOf('\n', begin);
        if (end < 0)
            end = errorOutput.size();
        const QByteArray line = errorOutput.mid(begin, end - begin);
        begin = end + 1;

        ToolMessage message;
        message.error = line.startsWith("%Error");
        if (!message.error && !line.startsWith("%Warning")) {
            noteReason(line, &result);
            continue;
        }
        const int head = line.indexOf(": ");
        if (head < 0)
            continue;
        const int code = line.indexOf('-');
        if (code >= 0 && code < head)
            message.code = line.mid(code + 1, head - code - 1);
        message.text = line.mid(head + 2);
        if (message.text.startsWith(InternalError)) {
            message.text.remove(0, int(strlen(InternalError)));
            takeInternalPlace(&message);
        } else {
            takePlace(&message);
        }
        if (message.text == "Unterminated string")
            --message.line; // Detected at the end of the line, which counts as the next line.
        if (!isAdvice(message.text))
            result.append(message);
    }
    return result;
}

QStringList toUserMessages(const QVector<ToolMessage> &messages, const PlaceMap &placeOf)
{
    MessageList list;
    CauseList causes;
    for (const ToolMessage &message : messages) {
        const QString line = userLine(message, placeOf(message));
        if (!list.contains(line))
            list.add(line, message.error && causes.follows(message));
    }
    return list.lines();
}

} // namespace NETWEIR::Internal
