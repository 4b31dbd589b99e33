// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sourcelinks.h"

#include <netweir/internal/modules/designscan.h>
#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/sources/preprocessedtext.h>
#include <netweir/internal/sources/sourcecheck.h>
#include <netweir/internal/tool/workfolder.h>

#include <QByteArrayList>
#include <QString>
#include <QStringList>

#include <memory>

namespace NETWEIR::Internal {

class ElaboratorRun;
class ExtractionProgress;

/// The sources of a design on their way through check, preprocessor and scan. Owns the folder in
/// which the tool works.
class SourceReading
{
public:
    SourceReading(const DesignSources &sources, bool definesToolMacro);

    /// Goes as far as the sources let it.
    void read(const QString &program, ExtractionProgress *progress);

    const QStringList &messages() const { return m_messages; }

    /// Cancelled, ended by a limit or by a fault that other macros would not change.
    bool isFinal() const { return m_isFinal; }

    /// Errors of the preprocessor, those in hidden code included.
    int toolErrors() const { return m_toolErrors; }

    /// Modules and packages that a library folder may have a file for. None after an error.
    const QByteArrayList &missingNames() const { return m_missing; }

    const DesignSources &sources() const { return m_sources; }
    const SourceWords &words() const { return m_words; }
    const WorkFolder &folder() const { return m_folder; }

    /// Null when the preprocessor gave no text.
    const DesignScan *scan() const { return m_scan.get(); }
    /// What was scanned.
    const PreprocessedText &text() const { return *m_text; }

private:
    bool check();
    QString preprocess(const QString &program, ExtractionProgress *progress);
    void takeMessages(const ElaboratorRun &run);

    const DesignSources m_sources;
    const bool m_definesToolMacro;
    SourceWords m_words;
    WorkFolder m_folder;
    SourceLinks m_links;
    std::unique_ptr<PreprocessedText> m_text;
    std::unique_ptr<DesignScan> m_scan;
    QByteArrayList m_missing;
    QStringList m_messages;
    int m_toolErrors = 0;
    bool m_isFinal = false;
};

} // namespace NETWEIR::Internal
