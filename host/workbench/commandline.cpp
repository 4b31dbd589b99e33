// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "commandline.h"

#include <te/project.h>

namespace Workbench {

bool CommandLine::parse(const QStringList &arguments, QString *error)
{
    for (int i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments.at(i);
        if (argument == QLatin1String("--help") || argument == QLatin1String("-h")) {
            showHelp = true;
        } else if (argument == QLatin1String("--version")) {
            showVersion = true;
        } else if (argument == QLatin1String("--plugins") ||
                   argument == QLatin1String("--session")) {
            if (!takeOption(arguments, &i, error))
                return false;
        } else if (argument.startsWith(QLatin1Char('-')) || argument.startsWith(QLatin1Char('+'))) {
            designArguments.append(argument);
            if (TE::takesNextArgument(argument) && i + 1 < arguments.size())
                designArguments.append(arguments.at(++i));
        } else if (!takeFile(argument, error)) {
            return false;
        }
    }
    return true;
}

bool CommandLine::check(QString *error) const
{
    if (projectFile.isEmpty() || designArguments.isEmpty())
        return true;
    *error = tr("a project file and design arguments cannot be combined");
    return false;
}

bool CommandLine::takeOption(const QStringList &arguments, int *index, QString *error)
{
    const QString &option = arguments.at(*index);
    const QString value = arguments.value(++*index);
    if (value.isEmpty()) {
        *error = tr("%1 needs a folder").arg(option);
        return false;
    }
    (option == QLatin1String("--plugins") ? pluginFolder : sessionFolder) = value;
    return true;
}

bool CommandLine::takeFile(const QString &path, QString *error)
{
    const TE::NamedFile kind = TE::namedFileOf(path);
    if (kind == TE::NamedFile::Config) {
        tarnFiles.append(path);
    } else if (kind == TE::NamedFile::Source) {
        designArguments.append(path);
    } else if (projectFile.isEmpty()) {
        projectFile = path;
    } else {
        *error = tr("only one project file can be opened");
        return false;
    }
    return true;
}

QString CommandLine::help()
{
    return tr(
        "Usage: tarn-workbench [options] [PROJECT.json | DESIGN...] [FILE.tarn...]\n"
        "\n"
        "Opens a design and the configuration files of its virtual I/O debug cores. Without\n"
        "PROJECT.json and DESIGN, takes the one project file beside the first FILE.tarn.\n"
        "\n"
        "Options:\n"
        "  -h, --help       show this text and exit\n"
        "  --version        show the version and exit\n"
        "  --plugins DIR    load the plug-ins of that folder\n"
        "  --session DIR    run without a user: open the files, add and remove a core, check and\n"
        "                   save a copy, write screenshots to that folder, print a report, exit\n"
        "\n"
        "DESIGN stands for source files and these arguments:\n"
        "  -f FILE                          more arguments from a file\n"
        "  -F FILE                          the same; relative paths in it start in its folder\n"
        "  -I DIR, +incdir+DIR+...          include folders\n"
        "  -D NAME[=VALUE], +define+NAME[=VALUE]+...\n"
        "                                   macros\n"
        "  -v FILE                          library file\n"
        "  -y DIR                           library folder: one file per module\n"
        "  +libext+EXT+...                  extensions of these files (default: .v and .sv)\n"
        "  --top NAME                       top module\n"
        "  -sv                              read Verilog files as SystemVerilog\n"
        "  --language EDITION               read Verilog files as 1364-1995, 1364-2001,\n"
        "                                   1364-2005 or 1800-2017\n"
        "  --work LIBRARY                   library of the VHDL files that follow (default: work)\n"
        "  --std EDITION                    read VHDL files as 93 or 08 (default: 08)\n"
        "In files, $NAME, ${NAME} and $(NAME) stand for environment variables, and unknown\n"
        "arguments are ignored with a warning.\n"
        "\n"
        "Exit codes: 0 success, 1 failure, 2 wrong usage.\n");
}

} // namespace Workbench
