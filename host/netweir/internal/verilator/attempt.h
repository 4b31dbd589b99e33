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

/// One way of reading a design, and how far it gets: the sources are read, then the elaborator runs
/// until it succeeds or learns nothing more.
class Attempt
{
public:
    /// Reads as synthesis does when @p reasonForMacro is empty. Otherwise that is the error for
    /// which the macro of the tool is defined.
    explicit Attempt(const QString &program, const QString &reasonForMacro = QString());

    /// Reads the sources and starts the elaboration when they have one top.
    void begin(const DesignSources &design, ExtractionProgress *progress);

    /// Waits for each run, at most @p limit milliseconds unless that is negative.
    void elaborate(ExtractionProgress *progress, int limit);

    /// Elaborates once more, without what the last run could not read. False when that is nothing
    /// new.
    bool leaveOut();

    bool isRunning() const { return m_run && !m_run->isOver(); }
    bool isElaborated() const { return m_isElaborated; }
    bool hasOneTop() const { return tops().size() == 1; }

    QStringList tops() const;
    QStringList modules() const;
    QStringList messages() const { return m_notes + m_outcome; }

    // How the attempt failed.

    bool hasErrors() const { return containsError(messages()); }

    /// Cancelled, ended by a limit or by a fault that no other attempt would change.
    bool isFinal() const { return m_isFinal; }

    /// The sources ask which tool reads them.
    bool namesTool() const { return m_reading->words().namesTool; }

    /// The first error, without the word in front. Null when there is none.
    QString firstError() const;

    /// Number of errors, for comparison. An attempt that ended without an error and without a
    /// result has not got far either: it has more than any other.
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
    QStringList m_notes;                      ///< What holds for every run.
    QStringList m_outcome;                    ///< What the last run has to say.
    int m_omissions = 0;                      ///< Runs that left something out.
    bool m_hasLearnt = false;                 ///< Since something was left out.
    bool m_isElaborated = false;
    bool m_isFinal = false;
};

} // namespace NETWEIR::Internal
