// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "definition.h"

#include <unordered_map>

namespace NETWEIR::Internal {

class NamePool;
class SourceTexts;
class TypeTable;
enum class ElementKind;

/// The definitions of a design by raw name. The keys are views into the definitions.
using DefinitionNames = std::unordered_map<std::string_view, const Definition *>;

/// Reads a definition from its XML element in one walk without recursion. Used once. Owns nothing.
class DefinitionReader
{
public:
    /// The heading of the definition at @p node: number, names and role.
    static Definition readHeading(const pugi::xml_node &node, int number,
                                  const ReadOptions &options, const SourceTexts &sources);

    /// The headings of all definitions in @p definitions must already be read. @p names keeps the
    /// names that the definition refers to.
    DefinitionReader(const TypeTable &types, const SourceTexts &sources,
                     const DefinitionNames &definitions, NamePool *names, Definition *definition);

    /// Sets everything except the heading, from the element at @p node.
    void read(const pugi::xml_node &node, const ReadOptions &options);

private:
    /// An element that is a scope for names, or in which declarations are local.
    struct Level
    {
        pugi::xml_node node;
        int scope = 0;
        bool isLocal = false;
    };

    bool enter(const pugi::xml_node &node);
    pugi::xml_node leave(pugi::xml_node node);
    void declare(ElementKind kind, const pugi::xml_node &node);
    void use(ElementKind kind, const pugi::xml_node &node);
    void enterBlock(const pugi::xml_node &node);
    int identifierOf(std::string_view name, const QString &prefix);
    void openScope(const pugi::xml_node &node, const QString &name, bool isLocal);
    void addVariable(const pugi::xml_node &node);
    bool isInterfaceReference(const pugi::xml_node &node);
    bool isNet(const Variable &variable) const;
    bool isGenvar(const pugi::xml_node &node) const;
    bool isVerilogVariable(const pugi::xml_node &node) const;
    void addInstance(const pugi::xml_node &node);
    bool takeRange(const InstanceItem &instance);
    void addRoutine(const pugi::xml_node &node);
    void addModport(const pugi::xml_node &node);
    void addAssignment(const pugi::xml_node &node);
    void addConstantInput(const pugi::xml_node &assignment);
    void addWrite(const pugi::xml_node &lvalue);
    void noteProcessWrites();
    void numberPorts();
    void listInterfacePins();
    void addInterfacePin(int item, const pugi::xml_node &pin);
    void declareName(const pugi::xml_node &node, Symbol::Kind kind, int index);
    const Level &level() const { return m_levels.back(); }
    NameScope &scope();

    const TypeTable &m_types;
    const SourceTexts &m_sources;
    const DefinitionNames &m_definitions;
    NamePool *m_names;
    Definition *m_definition;
    std::vector<Level> m_levels;
    std::vector<int> m_processWrites; ///< Indexes among the writes of the definition.
};

} // namespace NETWEIR::Internal
