// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "toolmessages.h"

#include <QSet>

#include <cstring>

namespace NETWEIR {
namespace Internal {

namespace {

constexpr int MostMessages = 1000;
const char InternalError[] = "Internal Error: ";

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

/// Takes "FILE:LINE:COLUMN: " off the text. The file name may hold colons and blanks.
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

/// "FILE:LINE:COLUMN: ../V3Some.cpp:12: TEXT" of an internal error: the tool's own source is of no
/// use.
void takeInternalPlace(ToolMessage *message)
{
    takePlace(message);
    const int source = message->text.indexOf(".cpp:");
    const int end = source < 0 ? -1 : message->text.indexOf(": ", source);
    if (end >= 0)
        message->text = message->text.mid(end + 2);
    message->text.prepend(InternalError);
}

QString quotedPart(const QByteArray &text)
{
    const int begin = text.indexOf('\'');
    const int end = text.lastIndexOf('\'');
    return QString::fromUtf8(text.mid(begin + 1, end - begin - 1));
}

/// The text of a message, with what to do where the tool's own words do not say it.
QString userText(const QByteArray &text)
{
    const QByteArray include("Cannot find include file: ");
    if (text.startsWith(include))
        return Text::tr("Cannot find the include file \"%1\". Add its folder to the include paths.")
            .arg(QString::fromUtf8(text.mid(include.size())));
    if (text.startsWith("Define or directive not defined: "))
        return Text::tr("The macro %1 is not defined. Define it in the options or in a file that "
                        "is read earlier.")
            .arg(quotedPart(text));
    if (text.startsWith("Cannot find file containing interface: "))
        return Text::tr("The interface \"%1\" is not defined. Add the file that defines it.")
            .arg(quotedPart(text));
    if (text.startsWith(InternalError))
        return Text::tr("The elaborator cannot read this construct (%1).")
            .arg(QString::fromUtf8(text));
    return QString::fromUtf8(text);
}

} // namespace

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
        if (!message.error && !line.startsWith("%Warning"))
            continue;
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
            --message.line; // Noticed at the end of the line, which counts as the next one.
        if (!isAdvice(message.text))
            result.append(message);
    }
    return result;
}

QStringList toUserMessages(const QVector<ToolMessage> &messages, const PlaceMap &placeOf)
{
    QStringList result;
    QSet<QString> seen;
    int more = 0;
    for (const ToolMessage &message : messages) {
        const Place place = placeOf(message);
        const QString line = message.error ? errorMessage(place, userText(message.text))
                                           : warningMessage(place, userText(message.text));
        if (seen.contains(line))
            continue;
        if (result.size() == MostMessages) {
            ++more;
            continue;
        }
        seen.insert(line);
        result.append(line);
    }
    if (more > 0)
        result.append(Text::tr("%n more message(s)", nullptr, more));
    return result;
}

} // namespace Internal
} // namespace NETWEIR
