// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "elaboratorinput.h"
#include "elaboratorrun.h"

#include <netweir/internal/tool/pipedfiles.h>
#include <netweir/internal/tool/workfolder.h>

#include <QByteArray>
#include <QSet>
#include <QVector>

#include <memory>

namespace NETWEIR::Internal {

class PreprocessedText;
struct DesignSources;

/// A run of the elaborator that starts together with the preprocessor and reads the texts while it
/// still works on others.
///
/// The input is a guess: the texts as they are, in the order of the project. Whoever knows the real
/// input asks for a run with exactly that. Owns the working folder of the run.
class EarlyRun
{
public:
    /// Whether the input can be guessed before the sources are read.
    static bool isPossible(const DesignSources &sources);

    /// @p sources must outlive this object.
    EarlyRun(const QString &program, const DesignSources &sources);

    /// Lets the elaborator read the texts that are complete. Gives up when they have to be in
    /// another order.
    void offer(const PreprocessedText &text);

    /// Gives the elaborator what it has not read yet. False when it has read anything else than @p
    /// input, or does not run any more; then this object is of no use.
    bool complete(const ElaboratorInput &input);

    /// False when the elaborator could not get all files, also after complete(): whatever it says
    /// then means nothing.
    bool isGood() const { return m_files.isGood(); }

    const WorkFolder &folder() const { return m_folder; }

    /// Null before the run is complete().
    std::unique_ptr<ElaboratorRun> takeRun() { return std::move(m_run); }

private:
    bool isInOrder(const PreprocessedText &text, int index);

    const DesignSources &m_sources;
    WorkFolder m_folder;
    const GuessedInput m_input;
    PipedFiles m_files;
    QVector<QByteArray> m_offered; ///< Texts.
    QSet<QByteArray> m_packages;   ///< Declared in them.
    std::unique_ptr<ElaboratorRun> m_run;
};

} // namespace NETWEIR::Internal
