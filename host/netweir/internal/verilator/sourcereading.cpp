// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "sourcereading.h"

#include "toolfolder.h"
#include "toolmessages.h"

#include <netweir/internal/ground/messages.h>
#include <netweir/internal/modules/designmodules.h>
#include <netweir/internal/sources/hiddencode.h>
#include <netweir/internal/tool/toolprocess.h>

#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

/// Keeps comments that hide code. See commentFilter().
const char FilterFile[] = "netweir_filter.pl";
const char FilterProgram[] = "perl";

} // namespace

SourceReading::SourceReading(const DesignSources &sources, const SourceWords &words,
                             const ToolFolder &folder, bool asTheTool)
    : m_sources(sources)
    , m_words(words)
    , m_asTheTool(asTheTool)
    , m_folder(folder)
{
}

/// Lets the preprocessor keep the comments that hide code, if there may be some.
bool SourceReading::prepare(QStringList *messages)
{
    if (!m_words.hidesCode)
        return true;
    if (QStandardPaths::findExecutable(QLatin1String(FilterProgram)).isEmpty()) {
        messages->append(warningMessage({}, Text::tr("Code that comments hide from synthesis is "
                                                     "read too, because Perl is not installed.")));
        m_words.hidesCode = false;
        return true;
    }
    return m_folder.write(QLatin1String(FilterFile), commentFilter());
}

QStringList SourceReading::preprocessorArguments() const
{
    // The design is read as synthesis reads it, not as a simulation by this tool, if it can be.
    QStringList arguments = {QStringLiteral("-E"), QStringLiteral("--relative-includes"),
                             QStringLiteral("-Wno-fatal")};
    if (!m_asTheTool)
        arguments.append(QStringLiteral("-U") + QLatin1String(ToolMacro));
    if (m_words.hidesCode)
        arguments += {QStringLiteral("--pipe-filter"),
                      QLatin1String(FilterProgram) + QLatin1Char(' ') + QLatin1String(FilterFile)};
    if (!m_sources.defines(QStringLiteral("SYNTHESIS")))
        arguments.append(QStringLiteral("-DSYNTHESIS"));
    for (const QString &macro : m_sources.macros)
        arguments.append(QStringLiteral("-D") + macro);
    for (const PathAlias &folder : m_folder.folders())
        arguments.append(QStringLiteral("-I") + QString::fromLatin1(folder.alias));
    // Library files too: behind -v they would come in the order of their names.
    for (const PathAlias &file : m_folder.files())
        arguments.append(QString::fromLatin1(file.alias));
    return arguments;
}

bool SourceReading::takeTexts(const ToolProcess &process, QStringList *messages)
{
    if (QFileInfo(process.standardOutputPath()).size() > ToolProcess::MostOutput) {
        messages->append(errorMessage(Text::tr("The sources are larger than 1 GB.")));
        return false;
    }
    m_text = std::make_unique<PreprocessedText>(process.standardOutput(), m_folder.files(),
                                                m_folder.folders());
    *messages += m_text->warnings();
    addMessages(process, messages);
    return true;
}

/// What is wrong in hidden code is left out.
void SourceReading::addMessages(const ToolProcess &process, QStringList *messages)
{
    const auto placeOf = [this](const ToolMessage &message) {
        return Place{m_text->path(message.file), message.line, message.column};
    };
    QVector<ToolMessage> found = parseToolOutput(process.errorOutput());
    const auto visible =
        std::remove_if(found.begin(), found.end(),
                       [&](const ToolMessage &message) { return m_text->hides(placeOf(message)); });
    m_hasHiddenFaults = visible != found.end();
    found.erase(visible, found.end());
    *messages += toUserMessages(found, placeOf);
}

void SourceReading::scan(QStringList *messages)
{
    scanTexts();
    m_order = std::make_unique<SourceOrder>(m_sources, *m_text);
    *messages += m_order->warnings() + m_order->errors();
    const DesignModules modules(m_scan, *m_text);
    m_modules = modules.modules();
    m_tops = modules.tops(m_sources.top);
    if (!containsError(*messages))
        *messages += modules.topWarnings(m_sources.top);
    *messages += modules.duplicateErrors();
    const QString circle = modules.circleError(m_tops);
    const QString endless = m_tops.size() == 1 ? modules.endlessError(m_tops.first()) : QString();
    const QString mutual = m_tops.size() == 1 ? modules.mutualError(m_tops.first()) : QString();
    if (!circle.isEmpty())
        messages->append(circle);
    if (!endless.isEmpty())
        messages->append(endless);
    if (endless.isEmpty() && !mutual.isEmpty())
        messages->append(mutual);
    if (m_tops.size() == 1)
        *messages += modules.dimensionErrors(m_tops.first());
    m_tiedNets = modules.tiedNets();
    m_unknown = modules.unknownInstantiations();
    m_missing = modules.missingModules() + m_order->missingPackages();
    if (m_tops.size() == 1)
        m_chosenTop = m_tops.first();
    else if (!m_scan.balanced)
        m_chosenTop = m_modules.value(0, QStringLiteral("top"));
    m_topInstantiatesItself = m_tops.size() == 1 && modules.instantiatesItself(m_chosenTop);
}

QSet<QByteArray> SourceReading::knownNames() const
{
    QSet<QByteArray> result = m_order->types();
    for (const DesignUnit &unit : m_scan.units)
        result.insert(unit.name);
    return result;
}

QVector<Instantiation> SourceReading::unknownWithout(const QSet<QByteArray> &modules) const
{
    ModuleScan scan = m_scan;
    const auto gone =
        std::remove_if(scan.units.begin(), scan.units.end(),
                       [&](const DesignUnit &unit) { return modules.contains(unit.name); });
    scan.units.erase(gone, scan.units.end());
    return DesignModules(scan, *m_text).unknownInstantiations();
}

void SourceReading::scanTexts()
{
    for (int i = 0; i < m_sources.files.size(); ++i) {
        const SourceFile &file = m_sources.files[i];
        const int before = m_scan.units.size();
        scanModules(m_text->texts()[i], i, isSystemVerilog(m_sources, i), &m_scan);
        for (int unit = before; unit < m_scan.units.size(); ++unit)
            m_scan.units[unit].library = file.library;
    }
}

} // namespace NETWEIR::Internal
