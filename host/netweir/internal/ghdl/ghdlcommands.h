// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

namespace NETWEIR::Internal {

/// The arguments of GHDL for a design with several libraries. Each library has a folder of its own
/// in the working folder; file names are relative to the working folder.
class GhdlCommands
{
public:
    /// @p edition is "93" or "08".
    GhdlCommands(const QString &edition, const QStringList &libraries);

    /// Name of the folder of @p library.
    static QString folderOf(const QString &library);

    /// Notes which units @p files declare. Of several architectures of an entity, GHDL takes the
    /// one of the file that comes first here. Fails at the first syntax error.
    QStringList import(const QString &library, const QStringList &files) const;

    /// Analyses one file, whose packages must have been analysed.
    QStringList analyse(const QString &library, const QString &file) const;

    /// Analyses what @p unit needs. Fails at the first unit with errors.
    QStringList make(const QString &library, const QString &unit) const;

    /// Elaborates @p unit and prints its instances and signals. Names and types of the signals go
    /// to the file @p wave.
    QStringList run(const QString &library, const QString &unit, const QString &wave) const;

private:
    QStringList with(const QString &command, const QString &library) const;

    QString m_edition;
    QStringList m_libraries;
};

} // namespace NETWEIR::Internal
