// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "designsources.h"

#include <QStringList>

#include <memory>

namespace NETWEIR {

class RtlNetlist;

namespace Internal {

class ElaboratorInput;
class ExtractionProgress;
class SourceReading;
class ToolFolder;
class ToolProcess;

/// The way of one design from its sources to its netlist.
///
/// The preprocessor runs first; its output tells the modules and, file by file, is what the
/// elaborator then reads. So macros carry over from file to file, nothing is preprocessed twice,
/// and the names that the tool sees are free of blanks. Owns the running tool and the private
/// folder it works in; both are gone as soon as they are not needed any more.
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

    void prepare(ExtractionProgress *progress, QStringList *messages);
    bool readSources(ExtractionProgress *progress, QStringList *messages);
    bool prepareFolder(QStringList *messages);
    bool preprocess(ExtractionProgress *progress, QStringList *messages);
    void runElaborator(QStringList *messages);
    void elaborate(ExtractionProgress *progress, int limit, QStringList *messages);
    bool finishElaboration(QStringList *messages);
    QString failureOf(const ToolProcess &process, const QString &phase) const;
    std::unique_ptr<RtlNetlist> readNetlist(ExtractionProgress *progress, QStringList *messages);
    bool hasOneTop() const;
    void reset();

    const DesignSources m_design;
    DesignSources m_sources; ///< The design and what is needed of its library folders.
    State m_state = Idle;
    QString m_program;
    SourceWords m_words;
    std::unique_ptr<ToolFolder> m_folder;
    std::unique_ptr<ToolProcess> m_process;
    std::unique_ptr<SourceReading> m_reading;
    std::unique_ptr<ElaboratorInput> m_input;
    int m_runs = 0;
    qint64 m_spent = 0;
};

} // namespace Internal
} // namespace NETWEIR
