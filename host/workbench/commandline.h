// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

namespace Workbench {

/// What the user asked for on the command line.
class CommandLine
{
    Q_DECLARE_TR_FUNCTIONS(Workbench::CommandLine)

public:
    /// Divides @p arguments (without the program's name). Returns false and sets @p error when an
    /// option lacks its value or a second project is named. The arguments of a design are not
    /// looked into.
    bool parse(const QStringList &arguments, QString *error);

    /// Whether the arguments go together. Not part of parse(), for which those of the toolkit,
    /// while they are still among the others, look like arguments of a design.
    bool check(QString *error) const;

    /// The text of --help, ending with a line feed.
    static QString help();

    bool showHelp = false;
    bool showVersion = false;
    QString pluginFolder;  ///< Empty: the one that belongs to the application.
    QString sessionFolder; ///< Empty: an interactive run.
    QString projectFile;
    QStringList designArguments; ///< See TE::projectFromArguments().
    QStringList tarnFiles;

private:
    bool takeOption(const QStringList &arguments, int *index, QString *error);
    bool takeFile(const QString &path, QString *error);
};

} // namespace Workbench
