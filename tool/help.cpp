// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "help.h"

#include "command.h"

#include <algorithm>

namespace Tool {

namespace {

struct Row
{
    QString left;
    QString right;
};

constexpr int WidestLeft = 26;  ///< Longer ones have a line of their own.
constexpr int WidestRight = 70; ///< Up to which texts are broken into lines.

/// @p text in lines of at most @p width characters.
QStringList wrapped(const QString &text, int width)
{
    QStringList lines;
    QString line;
    for (const QString &word : text.split(QLatin1Char(' '))) {
        if (!line.isEmpty() && line.size() + 1 + word.size() > width) {
            lines.append(line);
            line.clear();
        }
        line += line.isEmpty() ? word : QLatin1Char(' ') + word;
    }
    lines.append(line);
    return lines;
}

/// @p rows as two columns.
QString table(const QVector<Row> &rows)
{
    int width = 0;
    for (const Row &row : rows) {
        if (row.left.size() <= WidestLeft)
            width = std::max(width, row.left.size());
    }
    QString text;
    for (const Row &row : rows) {
        QString left = row.left;
        if (left.size() > width) {
            text += QLatin1String("  ") + left + QLatin1Char('\n');
            left.clear();
        }
        for (const QString &line : wrapped(row.right, WidestRight - width)) {
            text += QLatin1String("  ") + left.leftJustified(width) + QLatin1String("  ") + line +
                    QLatin1Char('\n');
            left.clear();
        }
    }
    return text;
}

QString optionNames(const Option &option)
{
    QString names = option.name;
    if (names == QLatin1String(OutputOption))
        names.prepend(QLatin1String("-o, "));
    else if (names == QLatin1String("--help"))
        names.prepend(QLatin1String("-h, "));
    return option.value.isEmpty() ? names : names + QLatin1Char(' ') + option.value;
}

QString optionHelp(const Option &option)
{
    return option.repeated ? option.help + QLatin1String("; may be repeated") : option.help;
}

constexpr char MoreHelp[] = "\"tarn COMMAND --help\" tells what a command takes.\n";

/// The commands whose names begin with @p beginning.
QVector<Row> commandRows(const QString &beginning)
{
    QVector<Row> rows;
    for (const Command *command : commands()) {
        if (command->name.startsWith(beginning))
            rows.append({command->name, command->summary});
    }
    return rows;
}

} // namespace

QString groupHelp(const QString &group)
{
    return QStringLiteral("Usage: tarn %1 COMMAND [ARGUMENT...]\n\nCommands:\n%2\n%3")
        .arg(group, table(commandRows(group + QLatin1Char(' '))), QLatin1String(MoreHelp));
}

QString programHelp()
{
    return QLatin1String(
               "Usage: tarn COMMAND [ARGUMENT...]\n"
               "       tarn --help | --version\n"
               "\n"
               "Works with the configurations of virtual I/O debug cores (\".tarn\" files) "
               "without\na window.\n"
               "\n"
               "Commands:\n") +
           table(commandRows(QString())) + QLatin1Char('\n') + QLatin1String(MoreHelp) +
           QLatin1String("\n"
                         "Exit codes: 0 success; 1 findings, or nothing matches; 2 wrong usage, "
                         "unusable\ninput, or the result cannot be written.\n");
}

QString commandHelp(const Command &command)
{
    QVector<Row> rows;
    for (const Option &option : allOptions(command))
        rows.append({optionNames(option), optionHelp(option)});
    QString text = QStringLiteral("Usage: tarn %1 [OPTION...] %2\n\n%3\n\nOptions:\n%4")
                       .arg(command.name, command.synopsis, command.description, table(rows));
    if (command.takesDesign) {
        text += QLatin1String(
            "\n"
            "DESIGN is a project file (\"*.json\") or a list of sources and arguments, such as\n"
            "\"-f files.f --top hub\". Without it, the one project file beside FILE, or in the\n"
            "current folder, is read.\n");
    }
    return text;
}

} // namespace Tool
