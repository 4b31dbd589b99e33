// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "instantiation.h"
#include "moduleheader.h"

#include <netweir/internal/ground/textrange.h>

#include <QByteArray>
#include <QByteArrayList>
#include <QVector>

namespace NETWEIR::Internal {

/// A parameter set from outside: defparam instance.parameter = value.
struct Defparam
{
    QByteArray instance; ///< The last component in front of the parameter.
    QByteArray parameter;
};

/// A module or one of its relatives.
struct DesignUnit
{
    enum Kind { Module, Interface, Program, Primitive, Checker };

    QByteArray name;
    Kind kind = Module;
    TextLine line;
    bool nested = false;  ///< Declared in another unit and visible only there.
    bool library = false; ///< From a library file: counts only if no source defines the unit.
    ModuleHeader header;
    QVector<Instantiation> instantiations;
    QVector<Defparam> defparams;
    /// All names in the connections of bidirectional switches ("tran" and the like) and aliases.
    QByteArrayList tiedNets;
};

/// The units and instantiations of a text, in the order of the text.
struct ModuleScan
{
    QVector<DesignUnit> units;
    QVector<Instantiation> bindings; ///< Instantiations by bind statements.
    bool balanced = true;            ///< Each unit has an end, and each end a unit.
};

/// Finds the modules and their instantiations in preprocessed Verilog text, including those in
/// branches that are not generated. It is not a parser: it only knows where statements begin and
/// end. Accepts any text; time and memory are linear. Appends to @p result, in whose lines @p index
/// is the number of the text.
void scanModules(const QByteArray &text, int index, bool systemVerilog, ModuleScan *result);

} // namespace NETWEIR::Internal
