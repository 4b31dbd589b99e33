// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

namespace Tool {

struct Command;

/// The design that a command works with, as its arguments name it.
struct DesignArguments
{
    QString projectFile;   ///< Empty: see arguments.
    QStringList arguments; ///< For TE::projectFromArguments().

    /// True when the command line names no design: then it is the one project file of the folder.
    bool isEmpty() const { return projectFile.isEmpty() && arguments.isEmpty(); }
};

/// The arguments of one run of a command.
struct Invocation
{
    bool isSet(const QString &option) const { return options.contains(option); }
    /// The value of @p option, empty when it is not set. Of a repeated one the last.
    QString value(const QString &option) const
    {
        const QStringList given = options.value(option);
        return given.isEmpty() ? QString() : given.last();
    }
    QStringList values(const QString &option) const { return options.value(option); }

    QMap<QString, QStringList> options; ///< Values by name; a flag that is set has an empty one.
    QStringList files;                  ///< As written, in order.
    QStringList words;                  ///< See Command::Words.
    DesignArguments design;
    bool showHelp = false; ///< Everything else is unchecked.
};

/// Sorts @p arguments, which follow the name of @p command. Returns false and sets @p error for an
/// unknown option, a missing or wrong value, and too few or too many files.
bool parseInvocation(const Command &command, const QStringList &arguments, Invocation *invocation,
                     QString *error);

} // namespace Tool
