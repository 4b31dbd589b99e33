// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

namespace Workbench {

/// The arguments of the program.
class CommandLine
{
    Q_DECLARE_TR_FUNCTIONS(Workbench::CommandLine)

public:
    /// Sorts @p arguments (without the program's name). Returns false and sets @p error when an
    /// option lacks its value or a second project is named. Does not check the arguments of a
    /// design.
    bool parse(const QStringList &arguments, QString *error);

    /// Whether the arguments can be combined. Not part of parse(), which may run before the toolkit
    /// has removed its own arguments: they look like arguments of a design.
    bool check(QString *error) const;

    /// The text of --help, ending with a line feed.
    static QString help();

    bool showHelp = false;
    bool showVersion = false;
    QString pluginFolder;  ///< Empty: the folder that belongs to the application.
    QString sessionFolder; ///< Empty: an interactive run.
    QString projectFile;
    QStringList designArguments; ///< See TE::projectFromArguments().
    QStringList tarnFiles;

private:
    bool takeOption(const QStringList &arguments, int *index, QString *error);
    bool takeFile(const QString &path, QString *error);
};

} // namespace Workbench
