// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "ghdlcommands.h"

namespace NETWEIR::Internal {

GhdlCommands::GhdlCommands(const QString &edition, const QStringList &libraries)
    : m_edition(edition)
    , m_libraries(libraries)
{
}

QString GhdlCommands::folderOf(const QString &library)
{
    return QStringLiteral("lib_") + library;
}

/// The rules are relaxed as in most synthesis tools: packages of older tools in the library ieee,
/// operators that a package declares once more, shared variables of any type, and any bytes in
/// comments.
QStringList GhdlCommands::with(const QString &command, const QString &library) const
{
    QStringList result{command,
                       QStringLiteral("--std=") + m_edition,
                       QStringLiteral("-frelaxed"),
                       QStringLiteral("-fsynopsys"),
                       QStringLiteral("-fexplicit"),
                       QStringLiteral("--mb-comments"),
                       QStringLiteral("-fno-caret-diagnostics"),
                       QStringLiteral("--work=") + library,
                       QStringLiteral("--workdir=") + folderOf(library)};
    for (const QString &other : m_libraries) {
        if (other != library)
            result.append(QStringLiteral("-P") + folderOf(other));
    }
    return result;
}

QStringList GhdlCommands::import(const QString &library, const QStringList &files) const
{
    return with(QStringLiteral("-i"), library) + files;
}

QStringList GhdlCommands::analyse(const QString &library, const QString &file) const
{
    return with(QStringLiteral("-a"), library) << file;
}

QStringList GhdlCommands::make(const QString &library, const QString &unit) const
{
    return with(QStringLiteral("-m"), library) << unit;
}

QStringList GhdlCommands::run(const QString &library, const QString &unit,
                              const QString &wave) const
{
    return with(QStringLiteral("-r"), library)
           << unit << QStringLiteral("--stop-time=0ns") << QStringLiteral("--asserts=disable")
           << QStringLiteral("--disp-tree=port") << QStringLiteral("--disp-signals-map")
           << QStringLiteral("--disp-signals-table") << QStringLiteral("--wave=") + wave;
}

} // namespace NETWEIR::Internal
