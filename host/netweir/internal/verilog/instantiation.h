// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/ground/textrange.h>

#include <QByteArray>
#include <QByteArrayList>
#include <QVector>

namespace NETWEIR::Internal {

class TokenReader;

/// One instantiation statement: any number of instances of one module.
struct Instantiation
{
    QByteArray module;
    TextLine first;
    TextLine last;
    QByteArrayList instances;  ///< Their names.
    QByteArrayList parameters; ///< Those set by name.
    QByteArrayList pins;       ///< Those connected by name, in any of the instances.
    QVector<TextRange> ranges; ///< Those of arrays of instances, brackets included.
    TextLine multidimensional; ///< Where an array with several ranges is, if there is one.
    /// Where instances without a name begin, at their parenthesis. Only primitives have such.
    QVector<int> unnamed;
    /// "#(...)" and, of a primitive, its strengths.
    QVector<TextRange> values;
    int positionalParameters = 0;
    int positionalPins = 0;
    /// Within a generate block that may be left out.
    bool conditional = false;
    /// Without a list of connections. It may as well be the declaration of a variable, unless a
    /// module of that name exists.
    bool bare = false;
};

/// Reads an instantiation that may begin with the identifier at @p reader, up to the semicolon.
/// False, with the reader where the text stops looking like one, when it is something else. Leaves
/// the semicolon and Instantiation::conditional to the caller. @p text is the number of the text.
bool readInstantiation(TokenReader *reader, int text, Instantiation *instantiation);

} // namespace NETWEIR::Internal
