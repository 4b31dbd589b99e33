// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <optional>
#include <string>

namespace NETWEIR::Internal {

/// A pin of an instance that may be an interface port, and what is connected to it.
struct InterfacePin
{
    int item = 0;     ///< The instance or array of instances.
    std::string port; ///< As portOfPin() takes it.
    std::string name; ///< Of the connected interface.
    std::string path; ///< The names before it in a hierarchical reference, joined with '.'.
    bool isHierarchical = false;
    std::optional<qint64> element; ///< Its place in an array, counted from the lowest index.
};

} // namespace NETWEIR::Internal
