// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "instantiation.h"

#include "tokenreader.h"

namespace NETWEIR::Internal {

namespace {

/// A list in parentheses, of parameters or of pins.
struct Connections
{
    QByteArrayList named;
    bool anyNamed = false; ///< ".*" too.
    int elements = 0;

    int positional() const { return anyNamed ? 0 : elements; }
};

/// Reads one element of a list up to the comma or the end of the list. False when it is empty.
bool readConnection(TokenReader *reader, Connections *connections)
{
    while (reader->atAttribute())
        reader->skipAttribute();
    if (reader->token().is('.')) {
        connections->anyNamed = true;
        reader->advance();
        if (reader->token().kind == Token::Identifier)
            connections->named.append(toBytes(reader->token().text));
    }
    bool isEmpty = true;
    while (!reader->atUnitEnd() && !reader->token().is(',') && !reader->token().is(')')) {
        isEmpty = false;
        reader->advanceOverGroup();
    }
    return !isEmpty;
}

/// At the opening parenthesis; ends after the closing one. An element is ".name", ".name(...)",
/// ".*", or anything else, which counts by its position.
Connections readConnections(TokenReader *reader)
{
    Connections result;
    bool isLast = false;
    reader->advance();
    while (!isLast && !reader->atUnitEnd()) {
        const bool isEmpty = !readConnection(reader, &result);
        isLast = reader->token().is(')');
        if (!isLast || !isEmpty || result.elements > 0) // "()" has no element.
            ++result.elements;
        if (!reader->atUnitEnd())
            reader->advance();
    }
    return result;
}

/// At the hash: parameters, or the delay of a primitive.
void readValues(TokenReader *reader, Instantiation *instantiation)
{
    const int begin = reader->token().offset;
    reader->advance();
    if (reader->token().is('(')) {
        const Connections parameters = readConnections(reader);
        instantiation->parameters = parameters.named;
        instantiation->positionalParameters = parameters.positional();
    } else {
        instantiation->positionalParameters = 1;
        reader->advance();
        if (reader->token().is('.')) { // A delay with a fraction.
            reader->advance();
            reader->advance();
        }
    }
    instantiation->values.append({begin, reader->token().offset});
}

/// At the first of some groups in brackets.
void readRanges(TokenReader *reader, int text, Instantiation *instantiation)
{
    const Token first = reader->token();
    reader->skipGroup();
    if (reader->token().is('['))
        instantiation->multidimensional = {text, first.line};
    while (reader->token().is('['))
        reader->skipGroup();
    instantiation->arrays.append(
        {instantiation->instances.value(instantiation->instances.size() - 1),
         {first.offset, reader->token().offset},
         0});
}

/// INSTANCE [RANGE] (PINS). Names may be missing.
void readInstance(TokenReader *reader, int text, Instantiation *instantiation)
{
    if (reader->token().is('(')) {
        instantiation->unnamed.append(reader->token().offset);
    } else {
        instantiation->instances.append(toBytes(reader->token().text));
        reader->advance();
    }
    const bool isArray = reader->token().is('[');
    if (isArray)
        readRanges(reader, text, instantiation);
    if (reader->token().is('(')) {
        const Connections pins = readConnections(reader);
        instantiation->pins += pins.named;
        instantiation->positionalPins = qMax(instantiation->positionalPins, pins.positional());
        instantiation->bare = false;
    }
    if (isArray)
        instantiation->arrays.last().end = reader->end();
}

/// Ends at the semicolon, or where the text stops looking like instances.
bool readInstances(TokenReader *reader, int text, Instantiation *instantiation)
{
    instantiation->bare = true;
    while (reader->token().kind == Token::Identifier || reader->token().is('(')) {
        readInstance(reader, text, instantiation);
        if (!reader->token().is(','))
            break;
        reader->advance();
    }
    const bool isNamed = instantiation->unnamed.isEmpty(); // Otherwise it may be a label.
    return (!instantiation->bare && isNamed) || reader->token().is(';');
}

} // namespace

/// NAME #(PARAMETERS) INSTANCE [RANGE] (PINS), ... ; A primitive may have strengths in parentheses
/// before its delays.
bool readInstantiation(TokenReader *reader, int text, Instantiation *instantiation)
{
    const Token module = reader->token();
    instantiation->module = toBytes(module.text);
    instantiation->first = {text, module.line};
    reader->advance();
    if (reader->token().is('(') && reader->following().kind == Token::Reserved) {
        const int begin = reader->token().offset;
        reader->skipGroup();
        instantiation->values.append({begin, reader->token().offset});
    }
    if (reader->token().is('#'))
        readValues(reader, instantiation);
    const bool mayBegin = reader->token().kind == Token::Identifier ||
                          (reader->token().is('(') && !isSystemName(module));
    const bool isInstantiation = mayBegin && readInstances(reader, text, instantiation);
    instantiation->last = {text, reader->token().line};
    return isInstantiation;
}

} // namespace NETWEIR::Internal
