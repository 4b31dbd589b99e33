// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "commandline.h"

namespace Workbench {

bool CommandLine::parse(const QStringList &arguments, QString *error)
{
    static const QStringList withValue = {QStringLiteral("-f"), QStringLiteral("-I"),
                                          QStringLiteral("-D"), QStringLiteral("-v"),
                                          QStringLiteral("--top")};
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
            if (withValue.contains(argument) && i + 1 < arguments.size())
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
    *error = tr("a project file and arguments of a design exclude each other");
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
    if (path.endsWith(QLatin1String(".tarn"), Qt::CaseInsensitive)) {
        tarnFiles.append(path);
    } else if (!path.endsWith(QLatin1String(".json"), Qt::CaseInsensitive)) {
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
        "Opens a design and the configuration files of its virtual I/O debug cores.\n"
        "\n"
        "Options:\n"
        "  -h, --help       show this text and exit\n"
        "  --version        show the version and exit\n"
        "  --plugins DIR    load the plug-ins of that folder\n"
        "  --session DIR    without user: open the files, add and remove a core, check and save\n"
        "                   a copy, write screenshots to that folder, say what was done, exit\n"
        "\n"
        "DESIGN is a list of source files and of these arguments:\n"
        "  -f FILE                          more arguments from a file\n"
        "  -I DIR, +incdir+DIR+...          folders of include files\n"
        "  -D NAME[=VALUE], +define+NAME[=VALUE]+...\n"
        "                                   macros\n"
        "  -v FILE                          library file\n"
        "  --top NAME                       top module\n"
        "\n"
        "Exit codes: 0 success, 1 failure, 2 wrong usage.\n");
}

} // namespace Workbench
