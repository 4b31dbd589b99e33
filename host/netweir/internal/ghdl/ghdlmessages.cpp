// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "ghdlmessages.h"

#include <netweir/internal/ground/messages.h>

#include <QRegularExpression>

#include <cstring>

namespace NETWEIR::Internal {

namespace {

/// What the texts of GHDL that have no place begin with, after its name.
const char ErrorMark[] = "error:";

/// Remarks that repeat that there were errors.
bool isRemark(const QByteArray &text)
{
    static const char *const remarks[] = {"importation has failed", "error during elaboration",
                                          "simulation failed",      "compilation error",
                                          "assertion failed",       "report failed",
                                          "during elaboration",     "analysis error"};
    for (const char *remark : remarks) {
        if (text.startsWith(remark))
            return true;
    }
    return false;
}

/// Splits "FILE:LINE:COLUMN:TEXT" or "FILE:LINE:TEXT". The file names that GHDL gets contain no
/// colons.
bool takePlace(const QByteArray &line, GhdlMessage *message)
{
    const int fileEnd = line.indexOf(".vhd:");
    if (fileEnd <= 0 || line.left(fileEnd).contains(' '))
        return false;
    const int begin = fileEnd + int(strlen(".vhd"));
    const int lineEnd = line.indexOf(':', begin + 1);
    bool isNumber = false;
    const int number = line.mid(begin + 1, lineEnd - begin - 1).toInt(&isNumber);
    if (lineEnd < 0 || !isNumber)
        return false;
    message->file = line.left(begin);
    message->line = number;
    int textBegin = lineEnd + 1;
    const int columnEnd = line.indexOf(':', textBegin);
    bool hasColumn = false;
    const int column = line.mid(textBegin, columnEnd - textBegin).toInt(&hasColumn);
    if (columnEnd > 0 && hasColumn) {
        message->column = column;
        textBegin = columnEnd + 1;
    }
    message->text = line.mid(textBegin).trimmed();
    return true;
}

/// Takes "FILE:LINE" at the end of @p text, after " at ", or "(FILE:LINE:COLUMN)".
void takePlaceInText(const QByteArray &text, GhdlMessage *message)
{
    static const QRegularExpression place(
        QStringLiteral("(?: at |\\()([^ :()]+\\.vhd):(\\d+)(?::(\\d+))?\\)?$"));
    const QRegularExpressionMatch match = place.match(QString::fromLatin1(text));
    if (!match.hasMatch())
        return;
    message->file = match.captured(1).toLatin1();
    message->line = match.captured(2).toInt();
    message->column = match.captured(3).toInt();
    message->text = text.left(match.capturedStart()).trimmed();
}

/// A signal below the wrapper of a root has the place of the text that the wrapper has.
void takePlaceOfWrapper(const QByteArray &signal, GhdlMessage *message)
{
    static const QRegularExpression wrapper(QStringLiteral("@(netweir_root\\d+_\\d+)\\("));
    const QRegularExpressionMatch match = wrapper.match(QString::fromUtf8(signal));
    if (match.hasMatch()) {
        message->file = match.captured(1).toLatin1() + ".vhd";
        message->line = 1;
    }
}

/// Reads the lines one by one.
class ErrorReader
{
public:
    void read(const QByteArray &line);
    QVector<GhdlMessage> take();

private:
    void readAtPlace(GhdlMessage message);
    bool readContinuation(const GhdlMessage &message);
    void readOfProgram(const QByteArray &text);
    void readInternal(const QByteArray &line);
    void append(const GhdlMessage &message) { m_messages.append(message); }

    QVector<GhdlMessage> m_messages;
    QByteArray m_subject; ///< "for signal: ..." belongs to the next error.
    bool m_isInternal = false;
    bool m_isExplained = false; ///< The internal error that follows.
    bool m_isWarning = false;   ///< What further lines belong to.
};

void ErrorReader::read(const QByteArray &line)
{
    if (m_isInternal || line.contains(" GHDL Bug occurred ")) {
        readInternal(line);
        return;
    }
    GhdlMessage message;
    if (takePlace(line, &message)) {
        readAtPlace(message);
        return;
    }
    static const char Subject[] = "for signal: ";
    static const char Origin[] = "  from: ";
    static const char Unhandled[] = ": cannot handle ";
    const int unhandled = line.indexOf(Unhandled);
    const int program = line.indexOf(": ");
    const int error = line.indexOf(":error: ");
    if (line.startsWith(Subject)) {
        m_subject = line.mid(int(strlen(Subject)));
    } else if (line.startsWith(Origin)) {
        if (!m_messages.isEmpty() && m_messages.last().line == 0) {
            const QByteArray text = m_messages.last().text;
            takePlaceInText(line, &m_messages.last());
            m_messages.last().text = text;
        }
    } else if (unhandled > 0) {
        message.text = "cannot handle " + line.mid(unhandled + int(strlen(Unhandled)));
        takePlaceInText(message.text, &message);
        append(message);
        m_isExplained = true;
    } else if (error > 0) {
        readOfProgram(line.mid(error + 1 + int(strlen(ErrorMark))).trimmed());
    } else if (program > 0 && line.startsWith('/')) {
        readOfProgram(line.mid(program + 2));
    }
}

/// Takes one more line of an error or warning, in brackets, or the earlier declaration of a name.
/// False when the line begins a message.
bool ErrorReader::readContinuation(const GhdlMessage &message)
{
    static const char Previous[] = "previous declaration: ";
    const bool isPrevious = message.text.startsWith(Previous) && !m_messages.isEmpty() &&
                            m_messages.last().file == message.file;
    if (!isPrevious && !message.text.startsWith('('))
        return false;
    if (m_isWarning || m_messages.isEmpty())
        return true;
    GhdlMessage &last = m_messages.last();
    last.text += isPrevious ? " in line " + QByteArray::number(message.line) : ' ' + message.text;
    if (last.line == 0) {
        last.file = message.file;
        last.line = message.line;
        last.column = message.column;
    }
    return true;
}

/// An error or warning with a place, or one more line of it.
void ErrorReader::readAtPlace(GhdlMessage message)
{
    if (message.text.startsWith("warning:") || message.text.startsWith("note:")) {
        m_isWarning = true;
        return;
    }
    if (readContinuation(message))
        return;
    if (message.text.startsWith('@')) { // "@0ms:(report failure): TEXT".
        const int kind = message.text.indexOf('(');
        const int end = message.text.indexOf("): ", kind);
        const QByteArray severity = message.text.mid(kind, end - kind);
        if (kind < 0 || end < 0 || !severity.endsWith(" failure"))
            return;
        message.text = severity.mid(1) + ": " + message.text.mid(end + 3);
    }
    m_isWarning = false;
    if (message.text.contains(" is obsoleted by "))
        return; // A file was analysed again; the reason stands in it.
    if (message.text.startsWith(ErrorMark))
        message.text = message.text.mid(int(strlen(ErrorMark))).trimmed();
    append(message);
}

void ErrorReader::readOfProgram(const QByteArray &text)
{
    m_isWarning = false;
    if (isRemark(text))
        return;
    GhdlMessage message;
    message.text = text;
    takePlaceInText(text, &message);
    if (!m_subject.isEmpty()) {
        message.text += ": " + m_subject;
        takePlaceOfWrapper(m_subject, &message);
    }
    m_subject.clear();
    append(message);
}

/// The last lines before the trace say what was raised and where in GHDL.
void ErrorReader::readInternal(const QByteArray &line)
{
    m_isInternal = true;
    static const char Raised[] = "raised ";
    if (!line.startsWith(Raised) || m_isExplained)
        return;
    GhdlMessage message;
    message.text = "internal error: " + line.mid(int(strlen(Raised)));
    append(message);
    m_isExplained = true;
}

QVector<GhdlMessage> ErrorReader::take()
{
    if (m_isInternal && !m_isExplained) {
        GhdlMessage message;
        message.text = "internal error";
        append(message);
    }
    return m_messages;
}

QByteArray firstQuoted(const QByteArray &text, char quote)
{
    const int begin = text.indexOf(quote) + 1;
    const int end = text.indexOf(quote, begin);
    return begin > 0 && end > begin ? text.mid(begin, end - begin) : QByteArray();
}

QString quoted(const QByteArray &text)
{
    return QString::fromLatin1(firstQuoted(text, '"'));
}

/// Advice on internal errors and on constructs that GHDL does not know.
QString internalErrorText(const QByteArray &text)
{
    if (text.contains("EXTERNAL_"))
        return Text::tr("External names (\"<< ... >>\") are not supported. Hide the code from "
                        "synthesis or connect the signal through ports.");
    if (text.contains("grt-rtis_utils"))
        return Text::tr("GHDL has failed (%1). It does not support signals whose type is declared "
                        "in an instance of a generic package. Declare the type in a plain package.")
            .arg(QString::fromLatin1(text));
    if (text.startsWith("cannot handle"))
        return Text::tr("GHDL cannot read what is written here (%1). Write it in another way, for "
                        "example with a signal in place of an expression.")
            .arg(QString::fromLatin1(text));
    return Text::tr("GHDL cannot read the design (%1). Reading fewer files may show which one it "
                    "cannot read.")
        .arg(QString::fromLatin1(text));
}

/// The signal as GHDL writes its path, from the top or from the unit below a wrapper.
QString severalSourcesText(const QByteArray &text)
{
    static const char Wrapper[] = "(netweir_wrapper)";
    QByteArray path = text.mid(text.indexOf(": ") + 2);
    const int wrapper = path.lastIndexOf(Wrapper);
    if (wrapper >= 0)
        path = path.mid(wrapper + int(strlen(Wrapper)));
    return Text::tr("The signal \"%1\" has several drivers, which its type does not allow. Remove "
                    "all but one, or use a resolved type such as std_logic.")
        .arg(QString::fromUtf8(path.mid(1)));
}

/// Without the advice of GHDL, which is about its own arguments. The project has all files in one
/// edition.
QString newerEditionText(const QByteArray &text)
{
    static const char Advice[] = ". Compile with --std=08";
    const QByteArray fact =
        text.endsWith(Advice) ? text.left(text.size() - int(strlen(Advice))) : text;
    return Text::tr("%1. Set the VHDL standard to 1076-2008 in the options of the project, or put "
                    "--std 08 into the file list.")
        .arg(QString::fromUtf8(fact));
}

} // namespace

QVector<GhdlMessage> parseGhdlErrors(const QByteArray &errorOutput)
{
    ErrorReader reader;
    for (int begin = 0; begin < errorOutput.size();) {
        int end = errorOutput.indexOf('\n', begin);
        if (end < 0)
            end = errorOutput.size();
        QByteArray line = errorOutput.mid(begin, end - begin);
        if (line.endsWith('\r'))
            line.chop(1);
        reader.read(line);
        begin = end + 1;
    }
    return reader.take();
}

QString ghdlErrorText(const QByteArray &text)
{
    const QString own = QString::fromUtf8(text);
    if (text.contains("not allowed before VHDL 2008") || text.endsWith("not allowed before vhdl08"))
        return newerEditionText(text);
    if (text.startsWith("internal error") || text.startsWith("cannot handle"))
        return internalErrorText(text);
    if (text.startsWith("several sources for unresolved signal: "))
        return severalSourcesText(text);
    if (text.startsWith("bound check failure") || text.startsWith("overflow detected") ||
        text.startsWith("value not in range"))
        return Text::tr("A value or a width does not fit (%1). Compare the widths of the ports and "
                        "what is connected to them, and the values of the generics.")
            .arg(own);
    if (text.startsWith("unit \"") && text.contains("not found in library"))
        return Text::tr("%1. Add the file that declares it.").arg(own);
    if (text.endsWith(" was not analysed"))
        return Text::tr("\"%1\" is not declared. Add the file that declares it.")
            .arg(QString::fromLatin1(firstQuoted(text, text.contains('"') ? '"' : '\'')));
    if (text.contains(" has no architecture in library ") ||
        text.startsWith("no architecture in library for entity "))
        return Text::tr("The entity \"%1\" has no architecture. Add the file with its "
                        "architecture.")
            .arg(quoted(text));
    if (text.startsWith("cannot find architecture "))
        return Text::tr("%1. Correct its name, or add the file with the architecture.").arg(own);
    if (text.startsWith("missing entity, architecture, package or configuration"))
        return Text::tr("%1. If the file is in another language, change its type in the project.")
            .arg(own);
    if (text.startsWith("cannot open file "))
        return Text::tr("The design reads the file \"%1\", which cannot be opened. Put it into the "
                        "folder of the source that reads it.")
            .arg(quoted(text));
    if (text.contains(" cannot be at the top of a design"))
        return Text::tr("The entity \"%1\" cannot be the top (%2). Give the port a range or a "
                        "default, or choose another top.")
            .arg(quoted(text), own.section(QLatin1Char('('), 1).remove(QLatin1Char(')')));
    return own;
}

QByteArray missingUnitOf(const GhdlMessage &message)
{
    const QByteArray &text = message.text;
    if (text.startsWith("unit \"") && text.contains("not found in library"))
        return firstQuoted(text, '"');
    if (text.contains(" was not analysed"))
        return firstQuoted(text, text.contains('"') ? '"' : '\'');
    return {};
}

QByteArray missingLibraryOf(const GhdlMessage &message)
{
    return message.text.startsWith("cannot find resource library") ? firstQuoted(message.text, '"')
                                                                   : QByteArray();
}

} // namespace NETWEIR::Internal
