// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "instanceitem.h"
#include "namescope.h"
#include "readoptions.h"
#include "reference.h"
#include "variable.h"

#include <map>
#include <string>

namespace NETWEIR::Internal {

/// A module, interface or primitive as the XML holds it, read once however often it is
/// instantiated.
///
/// Written by DefinitionReader alone and constant from then on. Owns what it lists and refers into
/// the document; time and memory are linear in the elements of the definition.
struct Definition
{
    enum class Role { Module, Interface, Primitive, Stub };

    pugi::xml_node node;
    int number = 0;      ///< Among the definitions of the design.
    std::string rawName; ///< As instances name it.
    QString sourceName;
    Role role = Role::Module;

    std::vector<NameScope> scopes;
    std::vector<Variable> variables;
    std::vector<InstanceItem> instances;
    qint64 childCount = 0; ///< Nodes of the hierarchy among the instances.
    std::vector<Occurrence> writes;
    /// Arrays used as a memory: "arraysel" elements whose index is no constant, and what is read
    /// from a file.
    std::vector<Occurrence> computedIndexes;
    std::vector<Occurrence> calls;
    std::vector<Occurrence> supplies;
    std::vector<pugi::xml_node> routines;
    std::vector<int> ports; ///< Variables in the order of their pin numbers, negative for gaps.
    /// Of an interface: modport name to the names of its outputs.
    std::map<std::string_view, std::vector<std::string_view>> modportOutputs;
    QVector<OmittedWrite> omittedWrites;

    bool isNode() const { return role == Role::Module || role == Role::Interface; }

    /// Looks @p name up in @p scope and the scopes around it.
    Symbol find(int scope, std::string_view name) const;
    /// What the names of nets and instances of @p scope begin with: "g[0].h.".
    QString prefixOf(int scope) const;
    /// The port that a pin of that name belongs to: its name, or "__pinNumber3" for the third.
    /// Negative when there is none.
    int portOfPin(std::string_view pinName) const;
};

} // namespace NETWEIR::Internal
