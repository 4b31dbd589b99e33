// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "omissions.h"
#include "toolmessages.h"

#include <netweir/internal/modules/primitiveinstances.h>
#include <netweir/internal/modules/stubs.h>

#include <QString>
#include <QStringList>
#include <QVector>

namespace NETWEIR::Internal {

class SourceReading;
class ToolFolder;
struct DesignSources;
struct ReadOptions;

/// What the elaborator writes into its working folder.
constexpr char ElaboratedFile[] = "design.xml";

/// The elaborator's arguments, but for the files to be read, with module @p top and the language
/// @p standard of the files that are not SystemVerilog. Delays and events are left out unless
/// @p timed.
QStringList elaboratorArguments(const QString &top, const QString &standard, bool timed);

/// What the elaborator is given: the texts of a reading, stubs, and how to read them. Changes with
/// what runs that fail tell.
class ElaboratorInput
{
public:
    /// Both must live as long as this.
    ElaboratorInput(const DesignSources &sources, const SourceReading &reading);

    /// Writes all files that arguments() names.
    bool write(const ToolFolder &folder) const;
    QStringList arguments() const;

    /// Learns from the messages of a run that failed. True when another run may go further.
    bool learn(const QVector<ToolMessage> &messages);

    /// Leaves out of the texts what the messages of a run that failed say it cannot read. Returns a
    /// message for each item; none when nothing new was left out.
    QStringList leaveOut(const QVector<ToolMessage> &messages);

    /// The messages of a run as users read them.
    QStringList userMessages(const QVector<ToolMessage> &messages) const;

    /// Tells the reader of the result what the elaborator was given in place of the design.
    void describe(ReadOptions *options) const;

private:
    bool addMissingPin(const ToolMessage &message);
    bool addTypeParameter(const ToolMessage &message);
    QVector<ToolMessage> explained(QVector<ToolMessage> messages) const;
    bool isBadUnknownPin(const ToolMessage &message) const;
    Place placeOf(const ToolMessage &message) const;

    const DesignSources &m_sources;
    const SourceReading &m_reading;
    Omissions m_omissions;
    Stubs m_stubs;
    PrimitiveInstances m_primitives;
    bool m_wrapsTop;
    bool m_timed = false; ///< The tool looks at delays and events; by default it leaves them out.
};

} // namespace NETWEIR::Internal
