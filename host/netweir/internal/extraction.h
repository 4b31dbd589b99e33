// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "designsources.h"
#include "modulescan.h"
#include "preprocessedtext.h"
#include "stubs.h"

#include <QStringList>

#include <memory>

class QTemporaryDir;

namespace NETWEIR {

class RtlNetlist;

namespace Internal {

class ExtractionProgress;
class ToolProcess;
struct ToolMessage;

/// What the elaborator writes into its working folder.
constexpr char ElaboratedFile[] = "design.xml";

/// The elaborator's arguments, but for the files to be read, with module @p top and the language
/// @p standard of the files that are not SystemVerilog. Delays and events are left out unless
/// @p timed.
NETWEIR_EXPORT QStringList elaboratorArguments(const QString &top, const QString &standard,
                                               bool timed);

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
    bool prepareFolder(QStringList *messages);
    bool linkSources();
    bool preprocess(ExtractionProgress *progress, QStringList *messages);
    QStringList preprocessorArguments() const;
    bool filterComments(QStringList *messages);
    bool addPreprocessorMessages(QStringList *messages) const;
    void scan(QStringList *messages);
    void startElaboration(const QString &top, bool wrap, QStringList *messages);
    bool writeElaboratorInput();
    void runElaborator();
    void elaborate(ExtractionProgress *progress, int limit, QStringList *messages);
    bool finishElaboration(QStringList *messages);
    bool runsOnceMore();
    bool addMissingPins();
    bool addTypeParameters();
    QStringList unknownPinErrors() const;
    TextLine textLineOf(const ToolMessage &message) const;
    QString failureOf(const ToolProcess &process, const QString &phase) const;
    std::unique_ptr<RtlNetlist> readNetlist(ExtractionProgress *progress, QStringList *messages);
    void reset();

    DesignSources m_sources;
    State m_state = Idle;
    QString m_program;
    SourceWords m_words;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<ToolProcess> m_process;
    QVector<PathAlias> m_files;
    QVector<PathAlias> m_folders;
    std::unique_ptr<PreprocessedText> m_text;
    std::unique_ptr<Stubs> m_stubs;
    QStringList m_tops;
    QStringList m_modules;
    QString m_top; ///< Being elaborated.
    bool m_wrapsTop = false;
    QHash<QString, QSet<QString>> m_tiedNets; ///< By module.
    int m_runs = 0;
    bool m_timed = false; ///< The tool looks at delays and events; by default it leaves them out.
    qint64 m_spent = 0;
};

} // namespace Internal
} // namespace NETWEIR
