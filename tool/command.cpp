// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "command.h"

#include <tool/check/checkcommand.h>
#include <tool/config/mapcommand.h>
#include <tool/config/showcommand.h>
#include <tool/config/writecommand.h>
#include <tool/edit/editcommand.h>
#include <tool/nets/netscommand.h>
#include <tool/simulation/simulationcommand.h>

#include <algorithm>

namespace Tool {

const QVector<const Command *> &commands()
{
    static const QVector<const Command *> all = {
        &checkCommand(), &netsCommand(), &showCommand(),      &writeCommand(),
        &editCommand(),  &mapCommand(),  &simulationCommand()};
    return all;
}

QVector<Option> allOptions(const Command &command)
{
    QVector<Option> options = command.options;
    if (command.hasOutput) {
        options.append({QLatin1String(OutputOption), QStringLiteral("FILE"),
                        QStringLiteral("write to FILE, which is replaced as a whole or stays as "
                                       "it is")});
    }
    options.append(
        {QStringLiteral("--help"), QString(), QStringLiteral("show this text and exit")});
    return options;
}

const Command *findCommand(const QStringList &words)
{
    const Command *found = nullptr;
    for (const Command *command : commands()) {
        const QStringList name = command->name.split(QLatin1Char(' '));
        const bool fits = words.mid(0, name.size()) == name;
        if (fits && (!found || command->name.size() > found->name.size()))
            found = command;
    }
    return found;
}

} // namespace Tool
