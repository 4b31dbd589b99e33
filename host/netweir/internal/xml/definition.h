// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "readoptions.h"
#include "typetable.h"

#include <QString>

#include <pugixml.hpp>

#include <map>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace NETWEIR::Internal {

class SourceTexts;
struct Definition;

enum class Direction { None, Input, Output, Inout, Ref };

/// The two exclusion marks as bits of one number.
enum Mark : quint8 {
    MarkIn = 1,
    MarkOut = 2,
    MarkBoth = MarkIn | MarkOut,
    MarkWritten = 4, ///< Something is known to drive it: through an input that drives outwards too.
};

/// What a name means within a scope of a definition.
struct Symbol
{
    enum class Kind { None, Variable, Instance, Scope, Routine };

    Kind kind = Kind::None;
    int index = -1;
};

/// A naming level of a definition: itself, a generate scope, or a block with variables of its own.
struct NameScope
{
    int parent = -1;
    QString name; ///< What it adds to the names within, as "g[0]."; empty for blocks.
    std::unordered_map<std::string_view, Symbol> symbols;
};

struct Variable
{
    QString name; ///< Within its scope.
    pugi::xml_node node;
    int scope = 0;
    int type = 0;
    Direction direction = Direction::None;
    int pinNumber = 0;  ///< Of a port, from 1.
    bool isNet = false; ///< Appears in the netlist; locals, parameters, genvars do not.
    bool isInterfacePort = false;
    bool isSupply = false;
    bool isDrivenByConstant = false;
    bool isTied = false; ///< Connected by something that the XML does not hold.
    qint64 bit = 0;      ///< Place of its least significant bit within its definition.
    /// Unpacked arrays within the variable that are reached by a computed index: the member names
    /// that lead to each, joined with '.'; empty for the variable itself.
    std::vector<std::string> memories;
};

/// A place where one thing is written or read: an expression and the scope of its names.
struct Occurrence
{
    pugi::xml_node node;
    int scope = 0;
};

/// A reference to a variable together with the selections around it.
struct Reference
{
    pugi::xml_node node;               ///< "varref" or "varxref".
    std::vector<pugi::xml_node> steps; ///< Selections, innermost first.
    int scope = 0;

    bool isHierarchical() const;
    /// No selection depends on anything but constants.
    bool isConstant() const;
};

/// An instance, or an array of instances, within a definition.
struct InstanceItem
{
    QString name;
    pugi::xml_node node;
    Definition *definition = nullptr; ///< Null when the XML does not hold it.
    int scope = 0;
    bool isArray = false;
    int left = 0;
    int right = 0;

    qint64 count() const { return isArray ? qAbs(qint64(left) - right) + 1 : 1; }
    /// Place of the element with that index, counted from the left; negative when there is none.
    qint64 positionOf(int index) const;
    int indexAt(qint64 position) const;
};

/// Part of what is connected to a port, seen from the side of the instance.
struct Segment
{
    enum class Kind { Own, Elsewhere, Driven };

    Kind kind = Kind::Driven;
    qint64 bit = 0; ///< Of own bits the first; of bits elsewhere the number of the reference.
    qint64 width = 0;
};

/// A port through which the nets of an instance depend on those of its parent.
struct Connection
{
    int item = 0; ///< The instance or array of instances.
    int port = 0; ///< The variable in its definition.
    qint64 width = 0;
    std::vector<Segment> segments; ///< From the least significant on.
};

/// An interface port of an instance and the expression that names the interface.
struct InterfacePin
{
    int item = 0;
    int port = 0;
    Occurrence expression;
};

/// A net or bus of a definition, under its local name.
struct Leaf
{
    QString name;
    bool isBus = false;
    int left = 0;
    int right = 0;
    qint64 bit = 0; ///< Place of the least significant bit.

    qint64 width() const { return isBus ? qAbs(qint64(left) - right) + 1 : 1; }
};

/// A module, interface or primitive of the XML, read once however often it is instantiated.
struct Definition
{
    enum class Role { Module, Interface, Primitive, Stub };

    std::string rawName; ///< As instances name it.
    QString sourceName;
    Role role = Role::Module;
    pugi::xml_node node;
    std::vector<NameScope> scopes;
    std::vector<Variable> variables;
    std::vector<InstanceItem> instances;
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

    std::vector<Leaf> leafs; ///< In the order of the source.
    qint64 bits = 0;
    std::vector<quint8> marks; ///< What holds for every instance, a Mark a bit.

    std::vector<qint64> childOffsets; ///< Of each instance item among the child nodes.
    qint64 childCount = 0;
    std::vector<Connection> connections;
    std::vector<InterfacePin> interfacePins;
    QVector<OmittedWrite> omittedWrites;
    std::vector<Reference> writesElsewhere;
    std::vector<Reference> connectedElsewhere;

    bool isNode() const { return role == Role::Module || role == Role::Interface; }

    /// Looks @p name up in @p scope and the scopes around it.
    Symbol find(int scope, std::string_view name) const;
    /// What the names of nets and instances of @p scope begin with: "g[0].h.".
    QString prefixOf(int scope) const;
    /// The port that a pin of that name belongs to: its name, or "__pinNumber3" for the third.
    /// Negative when there is none.
    int portOfPin(std::string_view pinName) const;
};

/// Reads the declarations of one definition and collects where things are written; a single walk
/// over its elements, without recursion.
class DefinitionReader
{
public:
    DefinitionReader(Definition *definition, const TypeTable &types, SourceTexts *sources);

    void read();

private:
    /// An element whose names live in a scope of their own, or in which declarations are local.
    struct Level
    {
        pugi::xml_node node;
        int scope = 0;
        bool isLocal = false;
    };

    bool enter(const pugi::xml_node &node);
    void enterBlock(const pugi::xml_node &node);
    void openScope(const pugi::xml_node &node, const QString &name, bool isLocal);
    void addVariable(const pugi::xml_node &node);
    void addInstance(const pugi::xml_node &node);
    void addRoutine(const pugi::xml_node &node);
    void addModport(const pugi::xml_node &node);
    void addAssignment(const pugi::xml_node &node);
    void addConstantInput(const pugi::xml_node &assignment);
    void addWrite(const pugi::xml_node &lvalue);
    void numberPorts();
    bool isGenvar(const pugi::xml_node &node) const;
    const Level &level() const { return m_levels.back(); }
    NameScope &scope() { return m_definition->scopes[std::size_t(level().scope)]; }

    Definition *m_definition;
    const TypeTable &m_types;
    SourceTexts *m_sources;
    std::vector<Level> m_levels;
};

} // namespace NETWEIR::Internal
