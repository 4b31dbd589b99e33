// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <QVector>

namespace NETWEIR::Internal {

class TokenReader;
struct Token;

/// A port as far as the text tells.
struct ModulePort
{
    enum Direction { Unknown, Input, Output, Inout };

    QByteArray name;
    Direction direction = Unknown;
    /// Declared with a range, or with a type that is not a single bit.
    bool isVector = false;
};

/// The ports and parameters of a module, in the order of their declaration.
struct ModuleHeader
{
    QVector<ModulePort> ports;
    QByteArrayList parameters;

    QHash<QByteArray, int> portNumbers; ///< Indexes of the ports by name.
    bool hasParameterList = false;      ///< Then parameters in the body are local.
};

/// Reads "#(...)" and "(...)" behind the name of a module. Stops in front of the semicolon, or
/// where the text is something else.
void readModuleHeader(TokenReader *reader, ModuleHeader *header);

/// At the first word of an item in the body of a module: reads a declaration of ports or parameters
/// and adds what it tells. Does nothing at another item.
void readHeaderItem(TokenReader *reader, ModuleHeader *header);

} // namespace NETWEIR::Internal
