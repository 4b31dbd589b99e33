// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/processwrites.h>

#include <QString>

namespace NETWEIR::Internal {

enum class Direction : quint8 { None, Input, Output, Inout, Ref };

/// A variable, net, port or parameter of a definition.
///
/// Later steps identify variables by their address, because definitions do not change any more.
struct Variable
{
    QString name; ///< Name within its scope.
    int scope = 0;
    int type = 0;
    int pinNumber = 0; ///< Number of the port, from 1.
    Direction direction = Direction::None;
    bool isNet = false; ///< Appears in the netlist; locals, parameters, genvars do not.
    bool isInterfacePort = false;
    bool hasConstant = false; ///< A value in the declaration.
    bool isDrivenByConstant = false;
    ProcessWrites processWrites = ProcessWrites::None;
    bool isTied = false; ///< Connected by something that is not in the XML.
};

} // namespace NETWEIR::Internal
