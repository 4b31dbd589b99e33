// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pugixml.hpp>

#include <QtGlobal>

#include <string_view>

namespace NETWEIR::Internal {

/// A run of the children of an element, as bytes of the file.
struct XmlRun
{
    qint64 begin = 0;
    qint64 end = 0; ///< The last run includes the end tag.
};

/// An element of an elaborated design that is read by itself.
struct XmlElement
{
    enum class Kind {
        Files,
        TypeTable,
        Package,
        Definition, ///< A module, interface or primitive.
        Other       ///< One or more elements that say nothing about nets.
    };

    /// The kind of an element with this @p name below "netlist".
    static Kind kindInNetlist(std::string_view name)
    {
        if (name == "module" || name == "iface" || name == "primitive")
            return Kind::Definition;
        if (name == "package")
            return Kind::Package;
        return name == "typetable" ? Kind::TypeTable : Kind::Other;
    }

    Kind kind = Kind::Other;
    qint64 begin = 0;    ///< Where it is in the file, in bytes.
    qint64 startEnd = 0; ///< End of its first tag.
    qint64 end = 0;
    pugi::xml_node node; ///< In a document in memory; null for an element of a file.
};

} // namespace NETWEIR::Internal
