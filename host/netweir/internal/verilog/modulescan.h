// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "instantiation.h"

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
    bool nested = false;  ///< Declared within another unit and visible there only.
    bool library = false; ///< Of a library file: counts only when the sources define no such unit.
    QVector<Instantiation> instantiations;
    QVector<Defparam> defparams;
    /// Every name in what switches of both directions ("tran" and its relatives) and aliases
    /// connect.
    QByteArrayList tiedNets;
};

/// What a text defines and instantiates, each in the order of the text.
struct ModuleScan
{
    QVector<DesignUnit> units;
    QVector<Instantiation> bindings; ///< Instantiations by bind statements.
    bool balanced = true;            ///< Each unit ends and each end has its unit.
};

/// Finds the modules in preprocessed Verilog text and what they instantiate, branches that are not
/// generated included. No parser: of the language it knows where statements begin and end. Any text
/// is accepted, time and memory are linear in it. Appends to @p result; @p index is the text's
/// number in the lines noted there.
void scanModules(const QByteArray &text, int index, bool systemVerilog, ModuleScan *result);

} // namespace NETWEIR::Internal
