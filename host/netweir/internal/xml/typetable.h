// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/ground/itemat.h>

#include <QtGlobal>

#include <pugixml.hpp>

#include <string_view>
#include <unordered_map>
#include <vector>

namespace NETWEIR::Internal {

/// A data type as the netlist needs it: how its values lie in bits.
///
/// All types, unpacked ones included, are laid out in one row of bits: the first member and the
/// leftmost element are the most significant. What holds no bits (real, string, event, class,
/// dynamic arrays) is Opaque and takes one place.
struct DataType
{
    enum class Kind { Vector, PackedArray, UnpackedArray, Struct, Union, Interface, Opaque, Alias };

    struct Member
    {
        std::string_view name;
        int type = -1;
    };

    qint64 elements() const { return qAbs(qint64(left) - right) + 1; }

    Kind kind = Kind::Opaque;
    bool ranged = false; ///< A vector with a range, even one of a single bit.
    bool isSigned = false;
    bool isIntegerKeyword = false; ///< Declared as "integer", as genvars seem to be.
    bool holdsUnpackedArray = false;
    int left = 0;
    int right = 0;
    int element = -1; ///< Of arrays, and what an alias stands for.
    std::vector<Member> members;
    std::string_view modport; ///< Of an interface port.
    qint64 width = 1;
    int depth = 0; ///< Levels of types within.
};

/// The type table of the elaborated design. Aliases are resolved on reading.
class TypeTable
{
public:
    void read(const pugi::xml_node &typeTable);

    const DataType &at(int type) const { return itemAt(m_types, type); }

    /// The type that the attribute "dtype_id" of @p node names; an opaque one when it is unknown.
    int typeOf(const pugi::xml_node &node, const char *attributeName = "dtype_id") const;

    /// The interface type of an interface port or of an array of them, null for other types.
    const DataType *interfaceType(int type) const;

private:
    void readType(const pugi::xml_node &node, DataType *type) const;
    int resolved(int type) const;
    void measure(int type, std::vector<char> *state);
    void measureByParts(DataType *type) const;

    std::vector<DataType> m_types;
    std::unordered_map<std::string_view, int> m_indexes;
};

} // namespace NETWEIR::Internal
