// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <pugixml.hpp>

namespace NETWEIR::Internal {

struct Definition;

/// An instance, or an array of instances, within a definition. Refers into the document and to
/// another definition of the same design.
struct InstanceItem
{
    QString name;
    pugi::xml_node node;
    const Definition *definition = nullptr; ///< Null when the XML does not hold it.
    int scope = 0;
    bool isArray = false;
    int left = 0;
    int right = 0;
    /// Number of the first of them among the child nodes of the definition; negative for what is no
    /// node of the hierarchy.
    qint64 firstChild = -1;

    qint64 count() const { return isArray ? qAbs(qint64(left) - right) + 1 : 1; }
    /// Position of the element with that index, counted from the left; negative when there is none.
    qint64 positionOf(int index) const;
    int indexAt(qint64 position) const;
};

} // namespace NETWEIR::Internal
