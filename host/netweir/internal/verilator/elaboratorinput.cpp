// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "elaboratorinput.h"

#include "faulthints.h"
#include "sourcereading.h"
#include "toolfolder.h"

#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/xml/readoptions.h>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

const char TextPrefix[] = "text";
const char StubFile[] = "stubs.sv";

/// Instantiates a top that instantiates itself: the elaborator would drop instances of its top.
const char WrapperFile[] = "wrapper.v";
const char WrapperModule[] = "netweir_top";

/// Name of a piece of the text of @p file for the elaborator: "text7.sv", or "text7_2.sv" for its
/// blocks from the third one on that come first. The suffix selects the language.
QString pieceName(const SourceFile &file, const TextPiece &piece)
{
    // The elaborator reads library files in the order of their names, and the first of two
    // definitions counts.
    constexpr int Digits = 6;
    const bool isSystemVerilog = file.systemVerilog || !piece.blocks.isEmpty();
    QString name = QString::number(piece.text);
    if (file.library)
        name = name.rightJustified(Digits, QLatin1Char('0'));
    if (!piece.blocks.isEmpty())
        name += QLatin1Char('_') + QString::number(piece.blocks.first());
    return QLatin1String(TextPrefix) + name + QLatin1String(isSystemVerilog ? ".sv" : ".v");
}

/// By text: whether it is SystemVerilog.
QVector<bool> languagesOf(const DesignSources &sources)
{
    QVector<bool> result;
    for (int i = 0; i < sources.files.size(); ++i)
        result.append(isSystemVerilog(sources, i));
    return result;
}

/// The elaborator reads the texts under the names that pieceName() gives them.
TextLine textLineOf(const ToolMessage &message)
{
    const QByteArray prefix(TextPrefix);
    bool isText = message.file.startsWith(prefix);
    QByteArray number = message.file.mid(prefix.size(), message.file.indexOf('.') - prefix.size());
    number = number.split('_').first();
    const int text = isText ? number.toInt(&isText) : -1;
    return isText ? TextLine{text, message.line} : TextLine();
}

} // namespace

QStringList elaboratorArguments(const QString &top, const QString &standard, bool timed)
{
    return {
        QStringLiteral("--xml-only"),
        QStringLiteral("--xml-output"),
        QLatin1String(ElaboratedFile),
        QStringLiteral("-O0"), // The default optimisation deletes nets of the user.
        timed ? QStringLiteral("--timing") : QStringLiteral("--no-timing"),
        QStringLiteral("-Wno-fatal"),
        QStringLiteral("-Wno-lint"),
        QStringLiteral("-Wno-style"),
        QStringLiteral("-Wno-context"),
        QStringLiteral("-Wno-ASSIGNIN"),     // Other tools let modules write to their inputs.
        QStringLiteral("-Wno-MODDUP"),       // A library module that the sources define too.
        QStringLiteral("-Wno-TIMESCALEMOD"), // Stubs have no time scale.
        QStringLiteral("-Wno-STMTDLY"),      // Delays have no bearing on nets.
        QStringLiteral("--bbox-sys"),
        QStringLiteral("--bbox-unsup"),
        QStringLiteral("--error-limit"),
        QStringLiteral("100000"),
        QStringLiteral("--unroll-count"),
        QStringLiteral("100000"),
        QStringLiteral("--Mdir"),
        QStringLiteral("."),
        QStringLiteral("--top-module"),
        top,
        QStringLiteral("--default-language"),
        standard,
        QStringLiteral("+1800-2017ext+sv"),
    };
}

ElaboratorInput::ElaboratorInput(const DesignSources &sources, const SourceReading &reading)
    : m_sources(sources)
    , m_reading(reading)
    , m_omissions(reading.text().texts(), languagesOf(sources), reading.chosenTop().toUtf8())
    , m_stubs(reading.unknownInstantiations(), reading.scanned())
    , m_primitives(reading.scanned())
    , m_wrapsTop(reading.topInstantiatesItself())
{
}

bool ElaboratorInput::write(const ToolFolder &folder) const
{
    bool ok = true;
    for (const TextPiece &piece : m_reading.order().pieces()) {
        QByteArray content = m_omissions.texts()[piece.text];
        if (piece.blocks.isEmpty()) // In the others there are no instances.
            content = m_stubs.withoutArrays(piece.text, content);
        content = m_reading.order().contentOf(piece, content);
        if (piece.blocks.isEmpty())
            content = m_primitives.named(piece.text, content);
        ok = ok && folder.write(pieceName(m_sources.files[piece.text], piece), content);
    }
    if (m_wrapsTop && ok)
        ok = folder.write(QLatin1String(WrapperFile), QByteArray("module ") + WrapperModule +
                                                          "; \\" + m_reading.chosenTop().toUtf8() +
                                                          " top();\nendmodule\n");
    if (!m_stubs.isEmpty() && ok)
        ok = folder.write(QLatin1String(StubFile), m_stubs.text());
    return ok;
}

QStringList ElaboratorInput::arguments() const
{
    QStringList result = elaboratorArguments(m_wrapsTop ? QString(QLatin1String(WrapperModule))
                                                        : m_reading.chosenTop(),
                                             m_sources.standard, m_timed);
    for (const TextPiece &piece : m_reading.order().pieces()) {
        const SourceFile &file = m_sources.files[piece.text];
        if (file.library && piece.blocks.isEmpty())
            result.append(QStringLiteral("-v"));
        result.append(pieceName(file, piece));
    }
    if (m_wrapsTop)
        result.append(QLatin1String(WrapperFile));
    if (!m_stubs.isEmpty())
        result.append(QLatin1String(StubFile));
    return result;
}

bool ElaboratorInput::learn(const QVector<ToolMessage> &messages)
{
    bool learned = false;
    for (const ToolMessage &message : messages) {
        if (message.code == "NOTIMING" && !m_timed)
            learned = m_timed = true;
        learned = addMissingPin(message) || addTypeParameter(message) || learned;
    }
    return learned;
}

/// A pin that the scan did not see.
bool ElaboratorInput::addMissingPin(const ToolMessage &message)
{
    static const QByteArray pin("Pin not found: '");
    static const QByteArray parameter("Parameter pin not found: '");
    const bool isParameter = message.text.startsWith(parameter);
    if (!isParameter && !message.text.startsWith(pin))
        return false;
    QByteArray name = message.text.mid(isParameter ? parameter.size() : pin.size());
    name.chop(1);
    return m_stubs.addMissing(textLineOf(message), name, isParameter);
}

/// An unknown module may have types as parameters.
bool ElaboratorInput::addTypeParameter(const ToolMessage &message)
{
    static const QByteArray beginning("Can't convert defparam value to constant: Param '");
    if (!message.text.startsWith(beginning))
        return false;
    const int end = message.text.indexOf("' of '", beginning.size());
    const QByteArray name = message.text.mid(beginning.size(), end - beginning.size());
    return m_stubs.addType(textLineOf(message), name);
}

QStringList ElaboratorInput::leaveOut(const QVector<ToolMessage> &messages)
{
    const int modules = m_omissions.modules().size();
    const QStringList found =
        m_omissions.leaveOut(messages, textLineOf,
                             [this](const TextLine &line) { return m_reading.text().place(line); });
    if (m_omissions.modules().size() > modules)
        m_stubs = Stubs(m_reading.unknownWithout(m_omissions.modules()), m_reading.scanned());
    return found;
}

QStringList ElaboratorInput::userMessages(const QVector<ToolMessage> &messages) const
{
    QStringList result;
    if (std::any_of(messages.begin(), messages.end(),
                    [](const ToolMessage &message) { return message.error; }))
        result = m_reading.order().suspicions();
    for (const ToolMessage &message : messages) {
        if (isBadUnknownPin(message))
            result.append(
                errorMessage(placeOf(message),
                             Text::tr("An interface or an array is connected to a module that no "
                                      "file defines. Add the file that defines the module.")));
    }
    return result + toUserMessages(explained(messages),
                                   [this](const ToolMessage &message) { return placeOf(message); });
}

QVector<ToolMessage> ElaboratorInput::explained(QVector<ToolMessage> messages) const
{
    const QSet<QByteArray> names = m_reading.knownNames();
    FaultHints hints(m_sources, m_reading.text().texts(), names);
    for (ToolMessage &message : messages) {
        const TextLine place = textLineOf(message);
        if (message.error)
            hints.explain(&message, place);
        if (message.error && place.text >= 0 && m_reading.order().usesMissing(place.text))
            message.followsUp = true;
    }
    return messages;
}

/// The elaborator takes neither an interface nor an unpacked array for the vectors that the pins of
/// stubs are.
bool ElaboratorInput::isBadUnknownPin(const ToolMessage &message) const
{
    return message.text.startsWith("Illegal input port connection '") &&
           m_stubs.isUnknownAt(textLineOf(message));
}

Place ElaboratorInput::placeOf(const ToolMessage &message) const
{
    Place place = m_reading.text().place(textLineOf(message));
    place.column = message.column;
    return place;
}

void ElaboratorInput::describe(ReadOptions *options) const
{
    options->topIsWrapped = m_wrapsTop;
    options->unknownModules = m_stubs.unknownModules();
    options->primitiveModules = m_stubs.primitiveModules();
    options->tiedNets = m_reading.tiedNets();
    options->omittedWrites = m_omissions.writes();
}

} // namespace NETWEIR::Internal
