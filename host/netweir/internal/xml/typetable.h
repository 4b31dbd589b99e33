// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "namepool.h"

#include <netweir/internal/ground/itemat.h>

#include <QtGlobal>

#include <pugixml.hpp>

#include <string_view>
#include <unordered_map>
#include <vector>

namespace NETWEIR::Internal {

/// A data type, reduced to the layout of its bits.
///
/// All types, including unpacked ones, have a sequence of bits, in which the first member and the
/// leftmost element are the most significant. A type without bits (real, string, event, class,
/// dynamic array) is Opaque and takes one bit.
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
    bool ranged = false; ///< A vector with a range, even if it has a single bit.
    bool isSigned = false;
    bool isIntegerKeyword = false; ///< Declared as "integer", like genvars in the XML.
    bool holdsUnpackedArray = false;
    int left = 0;
    int right = 0;
    int element = -1; ///< Type of the elements of an array, or target of an alias.
    std::vector<Member> members;
    std::string_view modport; ///< Modport of an interface port.
    qint64 width = 1;
    int depth = 0; ///< Levels of nested types.
};

/// The type table of the elaborated design. Aliases are resolved on reading. Owns all names.
class TypeTable
{
public:
    void read(const pugi::xml_node &typeTable);

    const DataType &at(int type) const { return itemAt(m_types, type); }

    /// The type of the attribute "dtype_id" of @p node; an opaque type when it is unknown.
    int typeOf(const pugi::xml_node &node, const char *attributeName = "dtype_id") const;

    /// The interface type of an interface port or of an array of them, null for other types.
    const DataType *interfaceType(int type) const;

private:
    void numberType(const pugi::xml_node &node);
    void readType(const pugi::xml_node &node, DataType *type);
    void resolveAliases();
    int resolved(int type) const;
    void measure(int type, std::vector<char> *state);
    void measureByParts(DataType *type) const;

    NamePool m_names;
    std::vector<DataType> m_types;
    std::unordered_map<std::string_view, int> m_indexes;
};

} // namespace NETWEIR::Internal
