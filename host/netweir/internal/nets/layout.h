// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bitrange.h"
#include "indexevaluator.h"
#include "placeddefinition.h"
#include "selection.h"

namespace NETWEIR::Internal {

class Memories;

/// Where variables and their parts lie among the bits of a definition.
///
/// An unpacked array that is reached by a computed index, or holds more than 4096 bits, is a memory
/// and takes one bit. Owns nothing and does not change; a variable costs time by the arrays and
/// structures within.
class Layout
{
public:
    /// Both arguments must outlive this object.
    Layout(const TypeTable &types, const Memories &memories)
        : m_types(types)
        , m_memories(memories)
    {
    }

    /// Gives every net of @p definition its bits and lists its nets and buses.
    PlacedDefinition place(const Definition &definition) const;

    /// The bits of @p placed that @p reference, which names this variable, selects. An empty range
    /// when they lie outside.
    BitRange locate(const PlacedVariable &placed, const Reference &reference,
                    const IndexEvaluator &indexes) const;
    /// The same for a reference of which only the selections are left.
    BitRange locate(const PlacedVariable &placed, const std::vector<Selection> &selections) const;

private:
    /// The part of a variable to which a chain of selections has led so far.
    struct Part
    {
        int type = -1;    ///< Negative within a vector.
        std::string path; ///< Names of the members passed, joined with '.'.
        bool isMemory = false;
        IndexRange start;
        qint64 width = 0;
    };

    /// A variable, or a part of it, and the name of its nets.
    struct NamedPart
    {
        int type = -1;
        QString name;
        std::string path; ///< Names of the members passed.
        qint64 bit = 0;   ///< Its least significant bit.
        /// Lengths of the identifiers in the name; empty if none has a point or a bracket in it.
        std::vector<int> identifiers;
    };

    static BitRange bitsOf(const PlacedVariable &placed, const Part &part);
    const DataType *arrayOf(const Part &part) const;
    bool isMemory(const Variable &variable, int type, const std::string &path) const;
    qint64 storedWidth(const Variable &variable, int type, const std::string &path) const;
    Part wholeOf(const PlacedVariable &placed) const;
    void select(const Variable &variable, const Selection &selection, Part *part) const;
    void selectElement(const Variable &variable, const IndexRange &index, Part *part) const;
    void selectSlice(const Variable &variable, qint64 lowest, qint64 count, Part *part) const;
    void selectMember(const Variable &variable, std::string_view name, Part *part) const;
    static std::vector<int> identifiersOf(const Definition &definition, const Variable &variable);
    void addNets(const Variable &variable, const NamedPart &part, PlacedDefinition *placed) const;
    void addMembers(const Variable &variable, const NamedPart &part,
                    PlacedDefinition *placed) const;
    void addElements(const Variable &variable, const NamedPart &part,
                     PlacedDefinition *placed) const;

    const TypeTable &m_types;
    const Memories &m_memories;
};

} // namespace NETWEIR::Internal
