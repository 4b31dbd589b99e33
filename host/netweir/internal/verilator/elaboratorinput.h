// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

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
class PreprocessedText;
class WorkFolder;
struct DesignSources;
struct TextPiece;

/// What the elaborator writes into its working folder.
constexpr char ElaboratedFile[] = "design.xml";

/// The elaborator's arguments, but for the files to be read, with module @p top and the language
/// @p standard of the files that are not SystemVerilog. Delays and events are left out unless
/// @p timed.
QStringList elaboratorArguments(const QString &top, const QString &standard, bool timed);

/// What the elaborator is given: the texts of a design, stubs, and how to read them. Changes with
/// what runs that fail tell.
class ElaboratorInput
{
public:
    /// All must live as long as this.
    ElaboratorInput(const DesignSources &sources, const PreprocessedText &text,
                    const DesignScan &scan);

    /// Writes all files that arguments() names.
    bool write(const WorkFolder &folder, QString *error) const;
    QStringList arguments() const;

    /// Learns from the messages of a run that failed. True when another run may go further.
    bool learn(const QVector<ToolMessage> &messages);

    /// Leaves out of the texts what the messages of a run that failed say it cannot read. Returns a
    /// message for each item; none when nothing new was left out.
    QStringList leaveOut(const QVector<ToolMessage> &messages);

    const Stubs &stubs() const { return m_stubs; }

    /// What the reader of the result has to know: what the elaborator was given in place of the
    /// design.
    ReadOptions readOptions() const;

private:
    QByteArray contentOf(const TextPiece &piece) const;
    QByteArray wrapper() const;
    bool addMissingPin(const ToolMessage &message);
    bool addTypeParameter(const ToolMessage &message);

    const DesignSources &m_sources;
    const PreprocessedText &m_text;
    const DesignScan &m_scan;
    Omissions m_omissions;
    Stubs m_stubs;
    PrimitiveInstances m_primitives;
    bool m_wrapsTop;
    bool m_timed = false; ///< The elaborator looks at delays and events instead of dropping them.
};

} // namespace NETWEIR::Internal
