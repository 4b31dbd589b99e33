// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/sources/preprocessedtext.h>

#include <QByteArray>
#include <QByteArrayList>
#include <QVector>

namespace NETWEIR::Internal {

/// Part of a text: the bytes from @p begin up to @p end, in a whole number of tokens.
struct TextRange
{
    int begin = 0;
    int end = 0;
};

/// One instantiation statement: any number of instances of one module.
struct Instantiation
{
    QByteArray module;
    TextLine first;
    TextLine last;
    QByteArrayList instances;  ///< Their names.
    QByteArrayList parameters; ///< Those set by name.
    QByteArrayList pins;       ///< Those connected by name, in any of the instances.
    QVector<TextRange> ranges; ///< Those of arrays of instances, brackets included.
    TextLine multidimensional; ///< Where an array with several ranges is, if there is one.
    /// Where instances without a name begin, at their parenthesis. Only primitives have such.
    QVector<int> unnamed;
    /// "#(...)" and, of a primitive, its strengths.
    QVector<TextRange> values;
    int positionalParameters = 0;
    int positionalPins = 0;
    /// Within a generate block that may be left out.
    bool conditional = false;
    /// Without a list of connections. It may as well be the declaration of a variable, unless a
    /// module of that name exists.
    bool bare = false;
};

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
    TextLine place;
    bool nested = false;  ///< Declared within another unit and visible there only.
    bool library = false; ///< Stands in for a missing one only.
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
