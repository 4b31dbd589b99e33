// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "instanceitem.h"
#include "interfacepin.h"
#include "namescope.h"
#include "readoptions.h"
#include "reference.h"
#include "variable.h"

#include <netweir/internal/parts/partroot.h>

#include <QMap>

#include <map>
#include <string>

namespace NETWEIR::Internal {

/// A module, interface or primitive in the XML. Read once, regardless of the number of its
/// instances.
///
/// Written only by DefinitionReader and constant afterwards, except for its elements: those of a
/// large definition are in memory run by run, see ElaboratedDesign. Owns its lists. Time and memory
/// are linear in the elements of the definition.
struct Definition
{
    /// Stubs stand for unknown modules, foreign definitions for units of the other language.
    enum class Role { Module, Interface, Primitive, Stub, Foreign };

    /// An instance that is in memory.
    struct InstanceElement
    {
        int item = 0; ///< Its index among the instances.
        pugi::xml_node node;
    };
    struct Routine
    {
        std::string_view name;
        std::vector<bool> arguments; ///< In order: true if the routine writes it.
    };

    int number = 0;      ///< Index among the definitions of the design.
    std::string rawName; ///< The name that instances use.
    QString sourceName;
    Role role = Role::Module;
    bool isTop = false;

    std::vector<NameScope> scopes;
    std::vector<Variable> variables;
    std::vector<InstanceItem> instances;
    qint64 childCount = 0;                   ///< Number of hierarchy nodes among the instances.
    std::vector<InterfacePin> interfacePins; ///< In the order of the instances.
    std::vector<Routine> routines;
    std::vector<int> ports; ///< Variables in the order of their pin numbers; negative for gaps.
    /// For an interface: the names of the outputs by modport.
    std::map<std::string_view, std::vector<std::string_view>> modportOutputs;
    QVector<OmittedWrite> omittedWrites;

    const DeclaredUnit *foreignUnit = nullptr; ///< If the role is Foreign.
    /// The generics of that unit which the instances of this definition set, by their declared
    /// names.
    QMap<QString, GenericValue> setGenerics;

    // What is in memory, until forgetElements():
    pugi::xml_node node;
    /// By the number of the variable, if the whole definition is in memory.
    std::vector<pugi::xml_node> variableElements;
    std::vector<InstanceElement> instanceElements;
    std::vector<Occurrence> writes;
    /// Arrays that are used as a memory: "arraysel" elements with an index that is not a constant,
    /// and arrays that are read from a file.
    std::vector<Occurrence> computedIndexes;
    std::vector<Occurrence> calls;
    std::vector<Occurrence> supplies;

    bool isForeign() const { return role == Role::Foreign; }
    bool isNode() const
    {
        return role == Role::Module || role == Role::Interface || role == Role::Foreign;
    }

    /// Finds @p name in @p scope or the scopes around it.
    Symbol find(int scope, std::string_view name) const;
    /// The prefix of names of nets and instances in @p scope: "g[0].h.".
    QString prefixOf(int scope) const;
    /// The lengths of the identifiers in that prefix.
    std::vector<int> identifiersOf(int scope) const;
    /// An identifier in that prefix has a point or a bracket in it.
    bool isEscaped(int scope) const;
    /// The port of the pin @p name: the name of a port, or "__pinNumber3" for the third port.
    /// Negative when there is none.
    int portOfPin(std::string_view pinName) const;

    /// Lets go of the document: of all its nodes, and of the lists of them.
    void forgetElements();
    /// Keeps only the instances, and the scopes without what is declared in them.
    void forgetDeclarations();
    /// Back to the heading, to be read once more.
    void forgetContent();
};

} // namespace NETWEIR::Internal
