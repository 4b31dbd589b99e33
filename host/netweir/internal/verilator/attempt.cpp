// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "attempt.h"

#include <netweir/internal/ground/messages.h>

#include <algorithm>
#include <limits>

namespace NETWEIR::Internal {

Attempt::Attempt(const DesignSources &design, bool definesToolMacro)
    : sources(design)
    , asTheTool(definesToolMacro)
{
}

bool Attempt::prepare()
{
    notes += checkSources(sources, &words);
    if (sources.files.isEmpty())
        notes.append(warningMessage({}, Text::tr("The design has no Verilog source. Add one, or "
                                                 "enable it.")));
    if (!hasErrors() && !sources.files.isEmpty() && !folder.linkSources(sources))
        notes.append(folder.writeError());
    isFinal = hasErrors() || sources.files.isEmpty();
    if (!isFinal)
        reading = std::make_unique<SourceReading>(sources, words, folder, asTheTool);
    return !isFinal;
}

void Attempt::take(const QVector<ToolMessage> &messages)
{
    said = messages;
    toolErrors = int(std::count_if(said.begin(), said.end(),
                                   [](const ToolMessage &message) { return message.error; }));
}

bool Attempt::hasErrors() const
{
    return containsError(notes) || containsError(outcome);
}

bool Attempt::hasOneTop() const
{
    return reading && reading->tops().size() == 1;
}

bool Attempt::canElaborate() const
{
    return reading && !hasErrors() && !reading->chosenTop().isEmpty();
}

int Attempt::errors() const
{
    const QStringList all = notes + outcome;
    const int errors = int(std::count_if(all.begin(), all.end(), isError));
    return errors > 0 ? qMax(errors, toolErrors) : std::numeric_limits<int>::max();
}

QString Attempt::reason() const
{
    const QStringList all = notes + outcome;
    const auto error = std::find_if(all.begin(), all.end(), isError);
    return error == all.end() ? QString() : error->section(QLatin1Char(' '), 1);
}

} // namespace NETWEIR::Internal
