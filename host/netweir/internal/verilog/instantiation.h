// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/ground/textrange.h>

#include <QByteArray>
#include <QByteArrayList>
#include <QVector>

namespace NETWEIR::Internal {

class TokenReader;

/// An array of instances.
struct InstanceArray
{
    QByteArray name;
    TextRange range; ///< With the brackets; several ranges in one.
    int end = 0;     ///< Behind the connections.
};

/// One instantiation statement: any number of instances of one module.
struct Instantiation
{
    QByteArray module;
    TextLine first;
    TextLine last;
    QByteArrayList instances;  ///< Their names.
    QByteArrayList parameters; ///< Parameters that are set by name.
    QByteArrayList pins;       ///< Pins that are connected by name in any of the instances.
    QVector<InstanceArray> arrays;
    TextLine multidimensional; ///< Where an array with several ranges is, if there is one.
    /// The opening parentheses of instances without a name. Only primitives can have such
    /// instances.
    QVector<int> unnamed;
    /// "#(...)" and, of a primitive, its strengths.
    QVector<TextRange> values;
    int positionalParameters = 0;
    int positionalPins = 0;
    /// Within a generate block that may be left out.
    bool conditional = false;
    /// There is no list of connections. Then it may also be the declaration of a variable, unless a
    /// module has that name.
    bool bare = false;
};

/// Reads an instantiation that may begin with the identifier at @p reader, up to the semicolon. If
/// it is something else, returns false with the reader at the first token that does not fit. The
/// caller handles the semicolon and Instantiation::conditional. @p text is the number of the text.
bool readInstantiation(TokenReader *reader, int text, Instantiation *instantiation);

} // namespace NETWEIR::Internal
