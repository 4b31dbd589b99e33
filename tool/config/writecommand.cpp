// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "writecommand.h"

#include "configjson.h"

#include <tool/command.h>
#include <tool/configfile.h>
#include <tool/console.h>
#include <tool/invocation.h>

#include <unistd.h>

namespace Tool {

namespace {

/// All of the standard input. False after an error message.
bool readJson(Console *console, QByteArray *json)
{
    if (::isatty(STDIN_FILENO) == 1)
        console->tell(QStringLiteral("Reading the JSON form of a configuration from the terminal. "
                                     "End it with Ctrl+D."));
    QString error;
    if (!Console::readInput(MaximumJsonSize, json, &error)) {
        if (!console->isInterrupted())
            console->error(QStringLiteral("cannot read the standard input: %1").arg(error));
        return false;
    }
    if (!json->trimmed().isEmpty())
        return true;
    console->error(QStringLiteral("the standard input is empty; give it the JSON form of a "
                                  "configuration, as \"tarn show --json\" prints it: "
                                  "tarn write FILE < JSON"));
    return false;
}

int runWrite(const Invocation &invocation, Console *console)
{
    QByteArray json;
    if (!readJson(console, &json))
        return Failure;
    OwnedCores cores;
    QString error;
    if (!configFromJson(json, &cores, &error)) {
        console->error(QStringLiteral("cannot use the standard input. %1").arg(error));
        return Failure;
    }
    if (console->isInterrupted())
        return Failure;
    return writeConfig(cores, invocation.files.first(), console) ? Success : Failure;
}

Command makeCommand()
{
    Command command;
    command.name = QStringLiteral("write");
    command.synopsis = QStringLiteral("FILE < JSON");
    command.summary = QStringLiteral("write a configuration from its JSON form");
    command.description = QStringLiteral(
        "Reads the JSON form of a configuration, as \"tarn show --json\" prints it, from\n"
        "the standard input, and makes it the content of FILE, which is created if need\n"
        "be. The file is replaced as a whole, or stays as it is when the input is\n"
        "refused.");
    command.run = runWrite;
    return command;
}

} // namespace

const Command &writeCommand()
{
    static const Command command = makeCommand();
    return command;
}

} // namespace Tool
