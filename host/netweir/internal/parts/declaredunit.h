// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/ground/messages.h>

#include <QString>
#include <QStringList>

#include <vector>

namespace NETWEIR::Internal {

enum class Language { Verilog, Vhdl };

enum class PortDirection { Unknown, Input, Output, Inout };

/// A port as the text of a unit declares it.
struct DeclaredPort
{
    QString name;
    PortDirection direction = PortDirection::Unknown; ///< Input is also VHDL's "linkage".
    /// Of a module: declared with a range, or with a type that is not a single bit.
    bool isVector = false;
};

/// An instantiation statement, or another statement that names a unit.
struct UnitUse
{
    QString library;          ///< If the VHDL source names one: the library itself, never an alias.
    QString unit;             ///< As written.
    bool conditional = false; ///< Within a generate statement that may be left out.
    bool bare = false;        ///< An instantiation only if there is such a unit.
};

/// A unit that the sources declare, as far as the text tells.
struct DeclaredUnit
{
    enum Kind {
        Module,        ///< A module or an entity: can be the top, and is in the list of modules.
        Configuration, ///< A configuration of VHDL: can be the top if the user says so.
        Other,         ///< Interfaces, programs and the like. Not packages.
        Outside        ///< No unit: holds the uses of statements outside of units, such as bind.
    };

    Language language = Language::Verilog;
    Kind kind = Module;
    QString name;        ///< As declared.
    QString library;     ///< Of VHDL units, in lower case. Empty for Verilog.
    bool nested = false; ///< Declared in another unit and visible only there.
    bool backup = false; ///< From a library file: counts only if no source declares the unit.
    Place place;
    std::vector<UnitUse> uses;
    std::vector<DeclaredPort> ports; ///< In order of declaration.
    QStringList generics;            ///< Generics or parameters, in order of declaration.
};

} // namespace NETWEIR::Internal
