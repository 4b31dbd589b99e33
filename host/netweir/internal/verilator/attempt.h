// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "elaboratorinput.h"
#include "elaboratorrun.h"
#include "sourcereading.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace NETWEIR::Internal {

/// One attempt to read a design: reads the sources, then runs the elaborator for some roots until
/// it succeeds or its messages tell nothing new. More roots may follow.
class Attempt
{
public:
    /// Without @p reasonForMacro, reads like synthesis. Otherwise defines the macro of the tool
    /// because of that error. @p foreign must outlive the attempt.
    Attempt(const QString &program, const ForeignUnits &foreign,
            const QString &reasonForMacro = QString());

    /// Reads the sources.
    void read(const DesignSources &design, ExtractionProgress *progress);

    /// Starts the elaboration of @p roots, unless the sources have errors.
    void begin(const std::vector<PartRoot> &roots);

    /// Waits for each run, at most @p limit milliseconds unless that is negative.
    void elaborate(ExtractionProgress *progress, int limit);

    /// Elaborates once more without the constructs that the last run could not read. False when
    /// there are no new ones.
    bool leaveOut();

    bool isRunning() const { return m_run && !m_run->isOver(); }
    bool isElaborated() const { return m_isElaborated; }
    /// Empty when the sources have no text.
    const std::vector<DeclaredUnit> &units() const { return m_units; }

    /// What is wrong with the sources themselves.
    const QStringList &sourceMessages() const { return m_sourceMessages; }

    /// What the elaborations found.
    QStringList elaborationMessages() const { return m_notes + m_outcome; }

    // How the attempt failed.

    bool hasErrors() const { return containsError(messages()); }

    /// Cancelled, stopped by a limit, or failed in a way that another attempt would not change.
    bool isFinal() const { return m_isFinal; }

    /// The sources use the macro of the tool.
    bool namesTool() const { return m_reading->words().namesTool; }

    /// The first error, without its prefix. Null when there is none.
    QString firstError() const;

    /// Number of errors, for comparison. An attempt without errors and without a result counts as
    /// worse than any other.
    int errorCount() const;

    // The result of the elaboration, and how to read it.

    QString resultPath() const;
    const std::vector<PartRoot> &roots() const { return m_input->roots().all(); }
    ReadOptions readOptions() const;

private:
    QStringList messages() const { return m_sourceMessages + m_unitErrors + m_notes + m_outcome; }
    void startRun();
    bool isToBeRepeated() const;
    const WorkFolder &folder() const;
    void finishRun();
    void end(const QString &error);

    const QString m_program;
    const ForeignUnits &m_foreign;
    const QString m_reasonForMacro;
    std::unique_ptr<SourceReading> m_reading;
    std::unique_ptr<ElaboratorInput> m_input; ///< Null when there is nothing to elaborate.
    std::unique_ptr<EarlyRun> m_earlyRun;     ///< Has the folder of the run if that began early.
    std::unique_ptr<ElaboratorRun> m_run;     ///< The last run of the elaborator.
    std::vector<DeclaredUnit> m_units;
    QStringList m_sourceMessages;
    QStringList m_unitErrors; ///< Of the units of the sources alone; somebody else reports them.
    QStringList m_notes;      ///< Messages that apply to every run.
    QStringList m_outcome;    ///< Messages of the last run.
    int m_omissions = 0;      ///< Number of runs that left something out.
    bool m_hasLearnt = false; ///< The input has changed since the last omission.
    bool m_isElaborated = false;
    bool m_isFinal = false;
};

} // namespace NETWEIR::Internal
