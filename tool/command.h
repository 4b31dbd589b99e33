// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace Tool {

class Console;
struct Invocation;

/// What the program returns to its caller.
enum ExitCode {
    Success = 0,
    Found = 1,   ///< The work was done, and there are findings; or nothing matches.
    Failure = 2, ///< Wrong usage, unusable input, or the result cannot be written.
};

/// An option of a command.
struct Option
{
    QString name;  ///< "--format"
    QString value; ///< What follows it: "text|json" are the values allowed, "RULE" stands for any,
                   ///< "FILE" and "FOLDER" for paths. Empty for a flag.
    QString help;  ///< One phrase, without a full stop at the end.
    bool repeated = false; ///< May be given several times.
    bool alone = false;    ///< With it the command needs no files and no words.
};

/// A command of the tool: what it takes, what --help says about it, and what runs it. Help texts,
/// the parser of arguments and the tests of manual page and completion all go by this table.
struct Command
{
    /// The files (configurations, as a rule) that a command takes. Beside a design these are the
    /// arguments that end in ".tarn", without one all that are no options.
    enum class Files { None, One, Many };

    /// The arguments that are neither options nor files nor the design.
    enum class Words {
        None,
        LastIsWord, ///< The last argument that is no option.
        Steps, ///< From the first of stepNames on, everything that is no option of the command.
    };

    QString name;            ///< "check", "export map"
    QString synopsis;        ///< What follows the options: "[DESIGN] FILE..."
    QString summary;         ///< For the list of commands: "list nets of the design by name"
    QString description;     ///< For --help: sentences in lines of at most 80 characters.
    QVector<Option> options; ///< Besides -h, --help and, with hasOutput, -o, --output FILE.
    bool takesDesign = false;
    bool hasOutput = false;
    Files files = Files::One;
    Words words = Words::None;
    QStringList stepNames; ///< For Words::Steps.

    /// Does the work and returns an ExitCode. Errors have been written to the console.
    int (*run)(const Invocation &invocation, Console *console) = nullptr;
};

/// The option that Command::hasOutput adds, whose short form is "-o".
constexpr char OutputOption[] = "--output";

/// All commands, in the order of the list of commands.
const QVector<const Command *> &commands();

/// All options of @p command: its own and those that many commands have.
QVector<Option> allOptions(const Command &command);

/// The command with the longest name that @p words begin with, null when there is none.
const Command *findCommand(const QStringList &words);

} // namespace Tool
