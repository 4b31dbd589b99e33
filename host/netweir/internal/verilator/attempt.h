// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "elaboratorinput.h"
#include "elaboratorrun.h"
#include "sourcereading.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace NETWEIR::Internal {

/// One attempt to read a design: reads the sources, then runs the elaborator until it succeeds or
/// its messages tell nothing new.
class Attempt
{
public:
    /// Without @p reasonForMacro, reads like synthesis. Otherwise defines the macro of the tool
    /// because of that error.
    explicit Attempt(const QString &program, const QString &reasonForMacro = QString());

    /// Reads the sources and starts the elaboration when they have one top.
    void begin(const DesignSources &design, ExtractionProgress *progress);

    /// Waits for each run, at most @p limit milliseconds unless that is negative.
    void elaborate(ExtractionProgress *progress, int limit);

    /// Elaborates once more without the constructs that the last run could not read. False when
    /// there are no new ones.
    bool leaveOut();

    bool isRunning() const { return m_run && !m_run->isOver(); }
    bool isElaborated() const { return m_isElaborated; }
    bool hasOneTop() const { return tops().size() == 1; }

    QStringList tops() const;
    QStringList modules() const;
    QStringList messages() const { return m_notes + m_outcome; }

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
    ReadOptions readOptions() const { return m_input->readOptions(); }

private:
    void startRun();
    void finishRun();
    void end(const QString &error);

    const QString m_program;
    const QString m_reasonForMacro;
    std::unique_ptr<SourceReading> m_reading;
    std::unique_ptr<ElaboratorInput> m_input; ///< Null when there is nothing to elaborate.
    std::unique_ptr<ElaboratorRun> m_run;     ///< The last run of the elaborator.
    QStringList m_notes;                      ///< Messages that apply to every run.
    QStringList m_outcome;                    ///< Messages of the last run.
    int m_omissions = 0;                      ///< Number of runs that left something out.
    bool m_hasLearnt = false;                 ///< The input has changed since the last omission.
    bool m_isElaborated = false;
    bool m_isFinal = false;
};

} // namespace NETWEIR::Internal
