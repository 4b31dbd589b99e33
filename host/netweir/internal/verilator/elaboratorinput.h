// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "elaborationroots.h"
#include "foreignstubs.h"
#include "omissions.h"
#include "toolmessages.h"

#include <netweir/internal/modules/primitiveinstances.h>
#include <netweir/internal/modules/stubs.h>
#include <netweir/internal/xml/readoptions.h>

#include <QString>
#include <QStringList>
#include <QVector>

namespace NETWEIR::Internal {

class DesignScan;
class ForeignUnits;
class PreprocessedText;
class WorkFolder;
struct DesignSources;
struct TextPiece;

/// The output file of the elaborator in its working folder.
constexpr char ElaboratedFile[] = "design.xml";

/// The arguments of the elaborator without the files, for the top module @p top and the language @p
/// standard of the Verilog files. The elaborator ignores delays and events unless @p timed.
QStringList elaboratorArguments(const QString &top, const QString &standard, bool timed);

/// What most designs are for the elaborator, known before they are read.
struct GuessedInput
{
    QStringList files;     ///< In the order in which the elaborator reads them.
    QStringList arguments; ///< Those of the files included.
};

/// The texts in the order of the sources, then stubs, which may be empty, below the top of the
/// project.
GuessedInput guessInput(const DesignSources &sources);

/// The input of the elaborator: the texts of a design, stubs and arguments. Changes with the
/// messages of failed runs.
class ElaboratorInput
{
public:
    /// All arguments but the roots must outlive this object.
    ElaboratorInput(const DesignSources &sources, const PreprocessedText &text,
                    const DesignScan &scan, const ForeignUnits &foreign,
                    const ElaborationRoots &roots);

    /// Writes all files that arguments() names.
    bool write(const WorkFolder &folder, QString *error) const;
    QStringList arguments() const;

    /// The contents of the files of @p guess if they mean the same to the elaborator, otherwise
    /// none.
    QVector<QByteArray> contentsFor(const GuessedInput &guess) const;

    /// Adapts the input to the messages of a failed run. True when another run may get further.
    bool learn(const QVector<ToolMessage> &messages);

    /// Leaves out the constructs that a failed run could not read, according to its messages.
    /// Returns one message per item, none when nothing new was left out.
    QStringList leaveOut(const QVector<ToolMessage> &messages);

    const ElaborationRoots &roots() const { return m_roots; }
    const Stubs &stubs() const { return m_stubs; }

    /// The differences between the design and the input of the elaborator, for the reader of the
    /// result.
    ReadOptions readOptions() const;

private:
    ElaboratorInput(const DesignSources &sources, const PreprocessedText &text,
                    const DesignScan &scan, const ForeignUnits &foreign,
                    const ElaborationRoots &roots, QVector<Instantiation> unknown);

    QByteArray contentOf(const TextPiece &piece) const;
    bool addMissingPin(const ToolMessage &message);
    bool addTypeParameter(const ToolMessage &message);

    const DesignSources &m_sources;
    const PreprocessedText &m_text;
    const DesignScan &m_scan;
    const ForeignUnits &m_foreignUnits;
    const ElaborationRoots m_roots;
    Omissions m_omissions;
    ForeignStubs m_foreign;
    Stubs m_stubs;
    PrimitiveInstances m_primitives;
    bool m_timed = false; ///< The elaborator keeps delays and events.
};

} // namespace NETWEIR::Internal
