// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "preprocessorinput.h"

#include "sourcelinks.h"

#include <netweir/internal/ground/messages.h>
#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/sources/hiddencode.h>
#include <netweir/internal/sources/sourcecheck.h>
#include <netweir/internal/tool/workfolder.h>

#include <QStandardPaths>

namespace NETWEIR::Internal {

namespace {

/// Keeps comments that hide code. See commentFilter().
const char FilterFile[] = "netweir_filter.pl";
const char FilterProgram[] = "perl";

} // namespace

PreprocessorInput::PreprocessorInput(const DesignSources &sources, const SourceWords &words,
                                     const SourceLinks &links, bool definesToolMacro)
    : m_sources(sources)
    , m_links(links)
    , m_definesToolMacro(definesToolMacro)
    , m_hidesCode(words.hidesCode)
    , m_usesFilter(m_hidesCode &&
                   !QStandardPaths::findExecutable(QLatin1String(FilterProgram)).isEmpty())
{
}

QStringList PreprocessorInput::warnings() const
{
    if (m_usesFilter || !m_hidesCode)
        return {};
    return {warningMessage({}, Text::tr("Code that comments hide from synthesis is read too, "
                                        "because Perl is not installed."))};
}

bool PreprocessorInput::write(const WorkFolder &folder, QString *error) const
{
    return !m_usesFilter || folder.write(QLatin1String(FilterFile), commentFilter(), error);
}

QStringList PreprocessorInput::arguments() const
{
    QStringList arguments = {QStringLiteral("-E"), QStringLiteral("--relative-includes"),
                             QStringLiteral("-Wno-fatal")};
    if (!m_definesToolMacro)
        arguments.append(QStringLiteral("-U") + QLatin1String(ToolMacro));
    if (m_usesFilter)
        arguments += {QStringLiteral("--pipe-filter"),
                      QLatin1String(FilterProgram) + QLatin1Char(' ') + QLatin1String(FilterFile)};
    if (!m_sources.defines(QStringLiteral("SYNTHESIS")))
        arguments.append(QStringLiteral("-DSYNTHESIS"));
    for (const QString &macro : m_sources.macros)
        arguments.append(QStringLiteral("-D") + macro);
    for (const PathAlias &folder : m_links.folders())
        arguments.append(QStringLiteral("-I") + QString::fromLatin1(folder.alias));
    // Library files too, because with -v they would be read in the order of their names.
    for (const PathAlias &file : m_links.files())
        arguments.append(QString::fromLatin1(file.alias));
    return arguments;
}

} // namespace NETWEIR::Internal
