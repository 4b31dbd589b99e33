// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace TE {

/// The options of a project: their names (TE::OPT), types, defaults and allowed values.
class Options
{
    Q_DECLARE_TR_FUNCTIONS(TE::Options)

public:
    Options() = delete;

    /// The options that the key "options" of a project file may hold, in alphabetical order. The
    /// top module is not among them: it has a key of its own.
    static QStringList names();

    /// The value of the option @p name while the project does not set it; invalid for an unknown
    /// name.
    static QVariant defaultValue(const QString &name);

    /// Converts @p value to the type of the option @p name. Returns false and sets @p error (may be
    /// null) when the option is unknown or cannot have that value.
    static bool normalize(const QString &name, QVariant *value, QString *error);

private:
    static bool normalizeTimeout(QVariant *value, QString *error);
    static bool normalizeString(const QString &name, QVariant *value, QString *error);
};

/// The value of OPT::VHDL_Standard for an edition of VHDL as tools and users write it, such as
/// "93", "08", "2008" or "VHDL-2008"; null when @p edition is none. Editions up to 1993 are read as
/// 1993, later ones as 2008.
QString vhdlStandardOf(const QString &edition);

/// True for "NAME" and "NAME=VALUE".
bool isMacroDefinition(const QString &text);

} // namespace TE
