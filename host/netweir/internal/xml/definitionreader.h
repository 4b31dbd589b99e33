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

/// The definitions of a design by raw name.
using DefinitionNames = std::unordered_map<std::string_view, const Definition *>;

/// Reads a definition from its XML element in one walk without recursion: as a whole, or run by run
/// of its members. Used once. Owns nothing.
class DefinitionReader
{
public:
    /// How much of a definition is read.
    struct Counts
    {
        int scopes = 0;
        int instances = 0;
        int variables = 0;

        static Counts atBegin() { return {1, 0, 0}; } ///< The definition itself is a scope.
        bool operator==(const Counts &other) const
        {
            return scopes == other.scopes && instances == other.instances &&
                   variables == other.variables;
        }
    };

    /// The heading of the definition at @p node: number, names and role.
    static Definition readHeading(const pugi::xml_node &node, int number,
                                  const ReadOptions &options, const SourceTexts &sources);

    /// The headings of all definitions in @p definitions must already be read. @p names keeps the
    /// names that the definition refers to.
    DefinitionReader(const TypeTable &types, const SourceTexts &sources,
                     const DefinitionNames &definitions, NamePool *names, Definition *definition);

    /// The arguments of a routine in order: true if the routine writes it.
    static std::vector<bool> argumentsOf(const pugi::xml_node &routine);

    /// Sets everything except the heading, from the element at @p node.
    void read(const pugi::xml_node &node, const ReadOptions &options);

    /// Adds the members of @p node, which is the element with its next run of members. False when
    /// only the whole element tells what they mean.
    bool readRun(const pugi::xml_node &node);
    /// Sets what is known only after the last run; but for what processes write, for which the runs
    /// have to be read again.
    void finish(const ReadOptions &options);
    /// How much readRun() has read.
    const Counts &counts() const { return m_counts; }
    /// Processes write something in the elements in memory.
    bool hasProcessWrites() const { return !m_processWrites.empty(); }

    /// Brings the elements of a definition that is read already into memory once more: those in @p
    /// node, the element with the run of members from @p first on, or with all of them. Notes what
    /// processes write there. False when they do not end at @p end, because they are not the same
    /// any more.
    bool readAgain(const pugi::xml_node &node, const Counts &first, const Counts &end);

private:
    /// What the elements in memory are good for.
    enum class Mode { Whole, Run, Again };

    /// An element that is a scope for names, or in which declarations are local.
    struct Level
    {
        pugi::xml_node node;
        int scope = 0;
        bool isLocal = false;
    };

    void walk(const pugi::xml_node &element);
    bool enter(const pugi::xml_node &node);
    pugi::xml_node leave(pugi::xml_node node);
    void declare(ElementKind kind, const pugi::xml_node &node);
    void use(ElementKind kind, const pugi::xml_node &node);
    void enterBlock(const pugi::xml_node &node);
    int identifierOf(std::string_view name, const QString &prefix);
    void openScope(const pugi::xml_node &node, const QString &name, bool isLocal);
    void addVariable(const pugi::xml_node &node);
    static bool isInterfaceReference(const pugi::xml_node &node);
    void declareInterface(const pugi::xml_node &node);
    bool isNet(const Variable &variable, const pugi::xml_node &node);
    bool isGenvar(const pugi::xml_node &node);
    bool isVerilogVariable(const pugi::xml_node &node) const;
    void addInstance(const pugi::xml_node &node);
    InstanceItem instanceAt(const pugi::xml_node &node) const;
    bool isRange(const InstanceItem &instance) const;
    void takeRange(const InstanceItem &instance);
    void addRoutine(const pugi::xml_node &node);
    void addModport(const pugi::xml_node &node);
    void addAssignment(const pugi::xml_node &node);
    void addConstantInput(const pugi::xml_node &assignment);
    void addWrite(const pugi::xml_node &lvalue);
    void noteProcessWrites();
    void numberPorts();
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
    Mode m_mode = Mode::Whole;
    Counts m_counts = Counts::atBegin();
    bool m_needsWhole = false;
    std::vector<int> m_processWrites; ///< Indexes among the writes of the definition.
};

} // namespace NETWEIR::Internal
