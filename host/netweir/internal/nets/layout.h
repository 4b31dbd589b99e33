// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "indexevaluator.h"

namespace NETWEIR::Internal {

/// Calls @p visit for every variable that @p target, the left side of an assignment or something
/// connected to an output, writes: the parts of concatenations from the most significant on.
void forEachReference(const Occurrence &target,
                      const std::function<void(const Reference &)> &visit);

/// Bits of a definition: [low, low + width) and every step further up to [high, high + width), as
/// far as they lie before end.
struct BitRange
{
    bool isSingle() const { return low == high; }

    qint64 low = 0;
    qint64 high = -1;
    qint64 step = 1;
    qint64 width = 0;
    qint64 end = 0;
};

/// A design of more bits than that is refused.
constexpr qint64 MostBits = qint64(1) << 24;

/// Where variables and their parts lie among the bits of a definition.
///
/// An unpacked array that is reached by a computed index, or holds more than 4096 bits, is a memory
/// and takes one place.
class Layout
{
public:
    explicit Layout(const TypeTable &types)
        : m_types(types)
    {
    }

    /// Remembers that the array under @p selection, an "arraysel" over @p variable, is a memory.
    void addMemory(Variable *variable, const Reference &selected) const;

    /// Gives every net of @p definition its place and lists its nets and buses.
    void placeVariables(Definition *definition) const;

    /// Number of places that the variable takes.
    qint64 widthOf(const Variable &variable) const;

    /// The places that @p reference takes of @p variable, which it names. An empty range when it
    /// lies outside.
    BitRange locate(const Variable &variable, const Reference &reference,
                    const IndexEvaluator &indexes) const;

private:
    /// What a chain of selections has led to so far.
    struct Part
    {
        int type = -1;    ///< Negative within a vector.
        std::string path; ///< Names of the members passed, joined with '.'.
        bool isMemory = false;
        IndexRange start;
        qint64 width = 0;
    };

    bool isMemory(const Variable &variable, int type, const std::string &path) const;
    qint64 storedWidth(const Variable &variable, int type, const std::string &path) const;
    void selectElement(const Variable &variable, const IndexRange &index, Part *part) const;
    void selectSlice(const Variable &variable, qint64 lowest, qint64 count, Part *part) const;
    void selectMember(const Variable &variable, std::string_view name, Part *part) const;
    void addLeafs(const Variable &variable, int type, const QString &name, const std::string &path,
                  qint64 bit, Definition *definition) const;
    void addVector(const QString &name, bool ranged, int left, int right, qint64 bit,
                   Definition *definition) const;
    void addExcluded(const QString &name, qint64 bit, Definition *definition) const;

    const TypeTable &m_types;
};

} // namespace NETWEIR::Internal
