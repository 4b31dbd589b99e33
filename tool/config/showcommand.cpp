// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "showcommand.h"

#include "configjson.h"
#include "configtext.h"

#include <tool/command.h>
#include <tool/configfile.h>
#include <tool/console.h>
#include <tool/invocation.h>

namespace Tool {

namespace {

const QString JsonOption = QStringLiteral("--json");

int runShow(const Invocation &invocation, Console *console)
{
    OwnedCores cores;
    if (!readConfig(invocation.files.first(), console, &cores))
        return Failure;
    console->write(invocation.isSet(JsonOption) ? configToJson(cores.list())
                                                : configText(cores.list()));
    return Success;
}

Command makeCommand()
{
    Command command;
    command.name = QStringLiteral("show");
    command.synopsis = QStringLiteral("FILE");
    command.summary = QStringLiteral("show a configuration");
    command.description =
        QStringLiteral("Prints the cores of a configuration, their ports and the signals in them, "
                       "most\nsignificant first.");
    command.options = {
        {JsonOption, QString(), QStringLiteral("print the JSON form, which \"tarn write\" reads")}};
    command.hasOutput = true;
    command.run = runShow;
    return command;
}

} // namespace

const Command &showCommand()
{
    static const Command command = makeCommand();
    return command;
}

} // namespace Tool
