// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/ground/textrange.h>

#include <QByteArray>
#include <QByteArrayList>
#include <QVector>

namespace NETWEIR::Internal {

// What a VHDL text declares. All names are as written (see vhdlname.h for comparing them), an
// extended identifier with its backslashes. Ranges are in bytes of the scanned text, without blanks
// and comments around them. Lines and columns count from 1. Lists of scopes and declarations are
// flat, and refer to each other by number, since designs nest scopes to any depth.

/// A generic, a port, or a generic of another kind.
struct VhdlInterfaceItem
{
    enum Kind { Object, Type, Subprogram, Package };
    enum Mode { In, Out, Inout, Buffer, Linkage };

    QByteArray name;
    Kind kind = Object;
    Mode mode = In;
    TextRange type;  ///< "std_logic_vector(7 downto 0)"; for other kinds what follows the name.
    TextRange value; ///< The default; empty if there is none.
    int line = 0;
    int column = 0;
};

/// The generics and ports of an entity, a component or a block, in order.
struct VhdlInterface
{
    QVector<VhdlInterfaceItem> generics;
    QVector<VhdlInterfaceItem> ports;
};

/// The context clauses in front of a unit.
struct VhdlContext
{
    TextRange range; ///< From the first clause to the last semicolon.
    QByteArrayList libraries;
    QVector<QByteArrayList> uses;     ///< "use a.b.all" as {"a", "b", "all"}.
    QVector<QByteArrayList> contexts; ///< References to context declarations, the same way.
};

/// One element of a generic map or port map.
struct VhdlAssociation
{
    /// The formal: for "port(3)" and "conversion(port)" the range has all of it, and names has
    /// every name in it that is not a record field, in order. Both are empty for an association by
    /// position.
    TextRange formal;
    QByteArrayList formalNames;
    TextRange actual;
    bool isOpen = false; ///< The actual is "open" and nothing else.
    int line = 0;        ///< Of the beginning.
    int column = 0;
};

/// An instance of a component, an entity or a configuration.
struct VhdlInstance
{
    enum Kind { Component, Entity, Configuration };

    QByteArray label;
    Kind kind = Component;
    QByteArrayList unit;     ///< "work.leaf" as {"work", "leaf"}; the last one is the unit.
    QByteArray architecture; ///< "entity work.leaf(rtl)"; empty if not given.
    QVector<VhdlAssociation> generics;
    QVector<VhdlAssociation> ports;
    int scope = 0;
    /// "label : name;" alone, which is the call of a procedure if no component has that name.
    bool bare = false;
    bool conditional = false; ///< Within a generate, whose body may be left out.
    TextRange range;          ///< From the label to the semicolon.
    int line = 0;             ///< Of the label.
    int column = 0;
};

struct VhdlComponent
{
    QByteArray name;
    VhdlInterface interface;
    int scope = 0;
    TextRange range; ///< From "component" to the semicolon.
    int line = 0;    ///< Of the name.
    int column = 0;
};

/// "for all : comp use entity work.leaf(rtl) port map (...)", in a declarative part or a
/// configuration.
struct VhdlBinding
{
    enum Kind { Entity, Configuration, Open };

    QByteArrayList labels; ///< Of the instances; "all" and "others" are keywords in lower case.
    QByteArrayList component;
    Kind kind = Open;
    QByteArrayList unit;
    QByteArray architecture;
    /// Formals are ports of the entity, actuals those of the component. Without them, ports of one
    /// name belong together.
    QVector<VhdlAssociation> ports;
    /// In a configuration: the architecture and the labels of blocks and generates around it.
    QByteArrayList path;
    int scope = 0; ///< In an architecture.
    int line = 0;
    int column = 0;
};

/// A declared name other than a generic, port, component or label.
struct VhdlDeclaration
{
    enum Kind {
        Signal,
        Constant,
        Variable,
        File,
        Alias,
        Type,
        Subtype,
        Attribute,
        Subprogram,
        Package,
        Group
    };

    Kind kind = Signal;
    QByteArray name;
    TextRange type;  ///< The subtype; for a type or alias what follows "is".
    TextRange value; ///< The initial value; empty if there is none.
    int scope = 0;
    int line = 0;
    int column = 0;
};

/// A field of a record type.
struct VhdlRecordField
{
    QByteArray record; ///< The name of the type.
    QByteArray name;
    TextRange type;
    int scope = 0;
};

/// A part of an architecture with declarations of its own. The alternatives of an if or case
/// generate are siblings with the same label.
struct VhdlScope
{
    enum Kind { Root, Block, ForGenerate, IfGenerate, CaseGenerate };

    Kind kind = Root;
    int parent = -1;         ///< Smaller than the number of the scope; negative for the root.
    QByteArray label;        ///< Of the statement; empty for the root.
    QByteArray alternative;  ///< The label of the alternative, if it has one.
    VhdlInterface interface; ///< Of a block.
    QVector<VhdlAssociation> ports; ///< The port map of a block.
    bool conditional = false;       ///< Within a generate, or one itself.
    TextRange range;                ///< The root: the whole unit.
    /// The name, condition or choices between the keyword and "generate" or "=>".
    TextRange head;
    TextRange selector; ///< Of a case generate: the expression behind "case".
    TextRange opening;  ///< Of a case generate: from "case" to "generate".
    int line = 0;       ///< Of the label.
    int column = 0;
};

/// A design unit. What it declares is in the order of the text.
struct VhdlUnit
{
    enum Kind {
        Entity,
        Architecture,
        Package,
        PackageBody,
        PackageInstance,
        Configuration,
        Context
    };

    Kind kind = Entity;
    QByteArray name;
    QByteArrayList of;   ///< The entity of an architecture or configuration; the generic package of
                         ///< an instance of it.
    VhdlContext context; ///< Of a context declaration: its content.
    VhdlInterface interface;   ///< Of an entity; the generics of a package.
    QVector<VhdlScope> scopes; ///< The first one is the unit itself.
    QVector<VhdlDeclaration> declarations;
    QVector<VhdlRecordField> fields;
    QVector<VhdlComponent> components;
    QVector<VhdlInstance> instances;
    QVector<VhdlBinding> bindings;
    TextRange range; ///< Without the context clauses, with the semicolon.
    int line = 0;    ///< Of the name.
    int column = 0;
    bool complete = false; ///< It has an end.
};

/// The design units of a text, in order.
struct VhdlFile
{
    QVector<VhdlUnit> units;
};

} // namespace NETWEIR::Internal
