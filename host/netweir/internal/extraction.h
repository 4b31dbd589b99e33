// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/sources/designsources.h>

#include <QSet>
#include <QStringList>

#include <memory>

namespace NETWEIR {
class RtlNetlist;
} // namespace NETWEIR

namespace NETWEIR::Internal {

class ExtractionProgress;
class ToolProcess;
struct Attempt;

/// The way of one design from its sources to its netlist.
///
/// The preprocessor runs first; its output tells the modules and, file by file, is what the
/// elaborator then reads. So macros carry over from file to file, nothing is preprocessed twice,
/// and the names that the tool sees are free of blanks.
///
/// The sources are read as synthesis reads them. When that fails and they ask for the tool by its
/// macro, they are read once more with the macro defined. Constructs that the elaborator cannot
/// read are then left out one by one, as long as that gets further. Owns the running tool and the
/// private folder it works in; both are gone as soon as they are not needed any more.
class Extraction
{
public:
    explicit Extraction(const DesignSources &sources);
    ~Extraction();

    /// Checks and reads the sources and fills the lists of modules. If there is one top, its
    /// elaboration starts and is waited for a while, so that most of what is wrong with a design is
    /// known at the end.
    void findModules(ExtractionProgress *progress, QStringList *tops, QStringList *modules,
                     QStringList *messages);

    /// Completes the elaboration, or does all again when its result has been used up, and reads the
    /// netlist. Null on failure.
    std::unique_ptr<RtlNetlist> buildNetlist(ExtractionProgress *progress, QStringList *messages);

    /// Time spent in the last findModules() and buildNetlist().
    qint64 spentMilliseconds() const { return m_spent; }

private:
    enum State { Idle, Elaborating, Elaborated, Broken };
    enum Stage { AsSynthesis, AsTheTool, Chosen };

    void prepare(ExtractionProgress *progress, QStringList *messages);
    void begin(ExtractionProgress *progress, bool asTheTool);
    bool preprocess(ExtractionProgress *progress);
    bool hasFolderProblem(QStringList *messages);
    void runElaborator();
    void elaborate(ExtractionProgress *progress, int limit);
    void finishElaboration(ExtractionProgress *progress);
    void tryOtherwise(ExtractionProgress *progress);
    void leaveOut();
    QString failureOf(const ToolProcess &process, const QString &phase) const;
    std::unique_ptr<RtlNetlist> readNetlist(ExtractionProgress *progress, QStringList *messages);
    bool hasOneTop() const;
    void takeMessages(QStringList *messages);
    void reset();

    const DesignSources m_design;
    State m_state = Idle;
    QString m_program;
    std::unique_ptr<ToolProcess> m_process;
    std::unique_ptr<Attempt> m_attempt;
    std::unique_ptr<Attempt> m_failed; ///< To be gone back to when the current one is no better.
    Stage m_stage = AsSynthesis;
    QSet<QString> m_said; ///< Messages handed out since the last reset.
    qint64 m_spent = 0;
};

} // namespace NETWEIR::Internal
