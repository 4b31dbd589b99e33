// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ghdlcommands.h"
#include "ghdlinput.h"
#include "ghdlrun.h"

#include <QElapsedTimer>
#include <QStringList>
#include <QVector>

#include <memory>

namespace NETWEIR::Internal {

class ExtractionProgress;
class VhdlDesign;
struct GhdlFolder;

/// One elaboration with GHDL.
///
/// GHDL notes the units of all files, library by library, analyses what the unit needs, and prints
/// its signals. What an earlier elaboration in the same folder has noted is not noted again. When
/// one of the first two steps fails, all files are analysed one by one, so that all errors of all
/// files are known.
class GhdlElaboration
{
public:
    /// @p design and @p folder must outlive this object.
    GhdlElaboration(const QString &program, const VhdlDesign &design, const GhdlInput &input,
                    GhdlFolder *folder, int timeoutSeconds);

    /// Writes the files and starts the first run.
    void begin();

    /// Waits for each run, at most @p limit milliseconds unless that is negative.
    void elaborate(ExtractionProgress *progress, int limit);

    bool isRunning() const { return m_run && !m_run->isOver(); }
    bool isElaborated() const { return m_isElaborated; }

    // The results of the elaborated unit.

    /// The instances and signals that GHDL has printed.
    QString outputPath() const;
    /// The wave file. Only its header is complete.
    QString wavePath() const;

    const QStringList &messages() const { return m_messages; }

private:
    enum Step { Import, Make, Run, Analyse };

    static QString waveName() { return QStringLiteral("signals.ghw"); }
    bool hasOutdatedFiles() const;
    bool writeFiles();
    bool writeFile(const QString &name, const QByteArray &text);
    void writeDataFiles();
    bool writeLibraryFolders();
    void start(Step step, const QStringList &arguments);
    void importNext();
    void startAnalysis();
    void analyseNext();
    void finishRun();
    void noteFiles();
    void finishFailedRun();
    void fail(const QString &error);
    void report();
    QStringList filesOf(const QString &library) const;
    QByteArray textOf(int file) const;

    const QString m_program;
    const VhdlDesign &m_design;
    const GhdlInput m_input;
    const QStringList m_libraries; ///< Of the sources and of the input.
    const int m_timeoutSeconds;
    const GhdlCommands m_commands;
    const GhdlPlaces m_places;
    GhdlFolder &m_folder;

    Step m_step = Import;
    std::unique_ptr<GhdlRun> m_run; ///< The last one.
    bool m_isAnalysing = false;     ///< A step has failed.
    QStringList m_toImport;         ///< Libraries.
    QVector<int> m_toAnalyse;       ///< Files, last first.
    QElapsedTimer m_analysing;
    QVector<GhdlMessage> m_errors;       ///< Of the analysis of all files.
    QVector<GhdlMessage> m_failedErrors; ///< Of the step that failed.
    QString m_failure;                   ///< Why this step failed, if no error says it.
    bool m_isElaborated = false;
    QStringList m_messages;
};

} // namespace NETWEIR::Internal
