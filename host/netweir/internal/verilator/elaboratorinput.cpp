// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "elaboratorinput.h"

#include "piecenames.h"

#include <netweir/internal/modules/designscan.h>
#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/tool/workfolder.h>

namespace NETWEIR::Internal {

namespace {

const char StubFile[] = "stubs.sv";
const char ForeignFile[] = "foreign.sv";

/// Whether each text is SystemVerilog.
QVector<bool> languagesOf(const DesignSources &sources)
{
    QVector<bool> result;
    for (int i = 0; i < sources.files.size(); ++i)
        result.append(isSystemVerilog(sources, i));
    return result;
}

/// The arguments that name the texts.
QStringList textArguments(const DesignSources &sources, const QVector<TextPiece> &pieces)
{
    QStringList result;
    for (const TextPiece &piece : pieces) {
        const SourceFile &file = sources.files[piece.text];
        if (file.library && piece.blocks.isEmpty())
            result.append(QStringLiteral("-v"));
        result.append(pieceName(file, piece));
    }
    return result;
}

} // namespace

QStringList elaboratorArguments(const QString &top, const QString &standard, bool timed)
{
    return {
        QStringLiteral("--xml-only"),
        QStringLiteral("--xml-output"),
        QLatin1String(ElaboratedFile),
        QStringLiteral("-O0"), // The default optimisation would delete nets of the user.
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

GuessedInput guessInput(const DesignSources &sources)
{
    QVector<TextPiece> pieces;
    GuessedInput guess;
    for (int i = 0; i < sources.files.size(); ++i) {
        pieces.append(TextPiece{i, {}});
        guess.files.append(pieceName(sources.files[i], pieces.last()));
    }
    guess.files.append(QLatin1String(StubFile));
    guess.arguments = elaboratorArguments(sources.top, sources.standard, false) +
                      textArguments(sources, pieces) + QStringList{QLatin1String(StubFile)};
    return guess;
}

ElaboratorInput::ElaboratorInput(const DesignSources &sources, const PreprocessedText &text,
                                 const DesignScan &scan, const ForeignUnits &foreign,
                                 const ElaborationRoots &roots)
    : ElaboratorInput(sources, text, scan, foreign, roots, scan.modules().unknownInstantiations())
{
}

ElaboratorInput::ElaboratorInput(const DesignSources &sources, const PreprocessedText &text,
                                 const DesignScan &scan, const ForeignUnits &foreign,
                                 const ElaborationRoots &roots, QVector<Instantiation> unknown)
    : m_sources(sources)
    , m_text(text)
    , m_scan(scan)
    , m_foreignUnits(foreign)
    , m_roots(roots)
    , m_omissions(text, languagesOf(sources), roots.modules())
    , m_foreign(foreign, &unknown)
    , m_stubs(unknown, scan.moduleScan())
    , m_primitives(scan.moduleScan())
{
}

bool ElaboratorInput::write(const WorkFolder &folder, QString *error) const
{
    const QVector<TextPiece> &pieces = m_scan.order().pieces();
    for (const TextPiece &piece : pieces) {
        const QString name = pieceName(m_sources.files[piece.text], piece);
        if (!folder.write(name, contentOf(piece), error))
            return false;
    }
    if (m_roots.areWrapped() && !folder.write(QLatin1String(WrapperFile), m_roots.wrapper(), error))
        return false;
    if (!m_foreign.isEmpty() && !folder.write(QLatin1String(ForeignFile), m_foreign.text(), error))
        return false;
    return m_stubs.isEmpty() || folder.write(QLatin1String(StubFile), m_stubs.text(), error);
}

QByteArray ElaboratorInput::contentOf(const TextPiece &piece) const
{
    const QByteArray &text = m_omissions.texts()[piece.text];
    if (!piece.blocks.isEmpty()) // No instances are in it.
        return m_scan.order().contentOf(piece, text);
    const QByteArray single =
        m_foreign.withoutArrays(piece.text, m_stubs.withoutArrays(piece.text, text));
    return m_primitives.named(piece.text, m_scan.order().contentOf(piece, single),
                              m_foreign.rangeInstances(piece.text, text));
}

QStringList ElaboratorInput::arguments() const
{
    QStringList result = elaboratorArguments(m_roots.top(), m_sources.standard, m_timed) +
                         textArguments(m_sources, m_scan.order().pieces());
    if (m_roots.areWrapped())
        result.append(QLatin1String(WrapperFile));
    if (!m_foreign.isEmpty())
        result.append(QLatin1String(ForeignFile));
    if (!m_stubs.isEmpty())
        result.append(QLatin1String(StubFile));
    return result;
}

QVector<QByteArray> ElaboratorInput::contentsFor(const GuessedInput &guess) const
{
    QStringList own = arguments();
    if (m_stubs.isEmpty())
        own.append(QLatin1String(StubFile));
    if (own != guess.arguments)
        return {};
    QVector<QByteArray> result;
    for (const TextPiece &piece : m_scan.order().pieces())
        result.append(contentOf(piece));
    result.append(m_stubs.isEmpty() ? QByteArray() : m_stubs.text());
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

/// Handles a pin that the scan did not find.
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

/// Handles an unknown module with a type as a parameter.
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
    const QStringList found = m_omissions.leaveOut(messages);
    if (m_omissions.modules().size() > modules) {
        QVector<Instantiation> unknown = m_scan.unknownWithout(m_omissions.modules());
        m_foreign = ForeignStubs(m_foreignUnits, &unknown);
        m_stubs = Stubs(unknown, m_scan.moduleScan());
    }
    return found;
}

ReadOptions ElaboratorInput::readOptions() const
{
    ReadOptions options;
    options.rootsAreWrapped = m_roots.areWrapped();
    options.unknownModules = m_stubs.unknownModules();
    options.primitiveModules = m_stubs.primitiveModules();
    options.foreignUnits = m_foreign.units();
    options.tiedNets = m_scan.modules().tiedNets();
    options.omittedWrites = m_omissions.writes();
    return options;
}

} // namespace NETWEIR::Internal
