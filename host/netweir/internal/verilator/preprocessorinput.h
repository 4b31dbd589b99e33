// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

namespace NETWEIR::Internal {

class SourceLinks;
class WorkFolder;
struct DesignSources;
struct SourceWords;

/// What the preprocessor is given: the links to the sources, macros, and a filter for the comments
/// that hide code.
class PreprocessorInput
{
public:
    /// Sources and links must live as long as this. The sources are read as synthesis reads them,
    /// or, with @p definesToolMacro, with the macro of the tool defined.
    PreprocessorInput(const DesignSources &sources, const SourceWords &words,
                      const SourceLinks &links, bool definesToolMacro);

    /// What cannot be read as it should be.
    QStringList warnings() const;

    /// Writes what arguments() names beside the links.
    bool write(const WorkFolder &folder, QString *error) const;
    QStringList arguments() const;

private:
    const DesignSources &m_sources;
    const SourceLinks &m_links;
    bool m_definesToolMacro;
    bool m_hidesCode;
    bool m_usesFilter;
};

} // namespace NETWEIR::Internal
