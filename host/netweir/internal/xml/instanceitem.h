// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace NETWEIR::Internal {

struct Definition;

/// An instance or an array of instances in a definition. Refers to another definition of the
/// design.
struct InstanceItem
{
    QString name;
    const Definition *definition = nullptr; ///< Null when it is not in the XML.
    int scope = 0;
    bool isArray = false;
    int left = 0;
    int right = 0;
    /// Index of its first node among the child nodes of the definition; negative when it has no
    /// hierarchy node.
    qint64 firstChild = -1;

    qint64 count() const { return isArray ? qAbs(qint64(left) - right) + 1 : 1; }
    /// Position, from the left, of the element with the index; negative when there is none.
    qint64 positionOf(int index) const;
    int indexAt(qint64 position) const;
};

} // namespace NETWEIR::Internal
