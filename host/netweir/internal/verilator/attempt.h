// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "elaboratorinput.h"
#include "sourcereading.h"
#include "toolfolder.h"
#include "toolmessages.h"

#include <netweir/internal/sources/designsources.h>

#include <QStringList>

#include <memory>

namespace NETWEIR::Internal {

/// One way of reading a design, and how far it came. Owns its folder.
struct Attempt
{
    Attempt(const DesignSources &design, bool definesToolMacro);

    /// Checks the sources, makes the folder and the reading. False when there is nothing to read.
    bool prepare();

    /// Takes what the tool said in a run.
    void take(const QVector<ToolMessage> &messages);

    bool hasErrors() const;
    bool hasOneTop() const;
    bool canElaborate() const;

    /// Number of errors, for comparison. One that ended without a top has not got far either.
    int errors() const;
    /// The first error, without the word in front.
    QString reason() const;

    DesignSources sources;
    bool asTheTool;
    SourceWords words;
    ToolFolder folder;
    std::unique_ptr<SourceReading> reading; ///< Null when prepare() failed.
    std::unique_ptr<ElaboratorInput> input; ///< Null when nothing can be elaborated.
    QStringList notes;                      ///< What holds for every run.
    QStringList outcome;                    ///< What the last run has to say.
    bool isFinal = false;      ///< Cancelled, ended by a limit or not begun: nothing else is tried.
    QVector<ToolMessage> said; ///< The tool's own words of the last run.
    int toolErrors = 0; ///< Of the last run; users are told less, as many follow from others.
    int runs = 0;       ///< Since something was left out.
    int omissions = 0;  ///< Runs that left something out.
};

} // namespace NETWEIR::Internal
