// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <pugixml.hpp>

namespace NETWEIR::Internal {

enum class Direction { None, Input, Output, Inout, Ref };

/// A variable, net, port or parameter as a definition declares it.
///
/// A value that refers into the document. Its address stands for it in later steps, as definitions
/// no longer change then.
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
    bool isDrivenByConstant = false;
    bool isTied = false; ///< Connected by something that the XML does not hold.
};

} // namespace NETWEIR::Internal
