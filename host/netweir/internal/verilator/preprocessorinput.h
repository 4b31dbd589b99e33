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

/// The input of the preprocessor: links to the sources, macros, and a filter for comments that hide
/// code.
class PreprocessorInput
{
public:
    /// Sources and links must outlive this object. Without @p definesToolMacro the sources are read
    /// like in synthesis, otherwise with the macro of the tool defined.
    PreprocessorInput(const DesignSources &sources, const SourceWords &words,
                      const SourceLinks &links, bool definesToolMacro);

    /// Warnings about code that is not read as it should be.
    QStringList warnings() const;

    /// Writes the files that arguments() names in addition to the links.
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
