// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "earlyrun.h"
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

/// Checks, preprocesses and scans the sources of a design, and lets the elaborator begin meanwhile
/// where that is possible. Owns the working folder of the preprocessor.
class SourceReading
{
public:
    SourceReading(const DesignSources &sources, bool definesToolMacro);

    /// Stops at the first step that fails.
    void read(const QString &program, const ForeignUnits &foreign, ExtractionProgress *progress);

    const QStringList &messages() const { return m_messages; }

    /// Cancelled, stopped by a limit, or failed in a way that other macros would not change.
    bool isFinal() const { return m_isFinal; }

    /// Number of errors of the preprocessor, including those in hidden code.
    int toolErrors() const { return m_toolErrors; }

    /// Missing modules and packages, to be searched in library folders. None after an error.
    const QByteArrayList &missingNames() const { return m_missing; }

    const DesignSources &sources() const { return m_sources; }
    const SourceWords &words() const { return m_words; }
    const WorkFolder &folder() const { return m_folder; }

    /// The elaborator that already reads the texts. Null when there is none, and after this call.
    std::unique_ptr<EarlyRun> takeEarlyRun() { return std::move(m_earlyRun); }

    /// Null when there is no preprocessed text.
    const DesignScan *scan() const { return m_scan.get(); }
    /// The texts of the scan.
    const PreprocessedText &text() const { return *m_text; }

private:
    bool check(const ForeignUnits &foreign);
    QString preprocess(const QString &program, ExtractionProgress *progress);
    void readOutput(ElaboratorRun *run, ExtractionProgress *progress);
    void takeMessages(const ElaboratorRun &run);

    const DesignSources m_sources;
    const bool m_definesToolMacro;
    SourceWords m_words;
    WorkFolder m_folder;
    SourceLinks m_links;
    std::unique_ptr<PreprocessedText> m_text;
    std::unique_ptr<DesignScan> m_scan;
    std::unique_ptr<EarlyRun> m_earlyRun;
    QByteArrayList m_missing;
    QStringList m_messages;
    int m_toolErrors = 0;
    bool m_isFinal = false;
};

} // namespace NETWEIR::Internal
