// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "moduleheader.h"

#include "tokenreader.h"

namespace NETWEIR::Internal {

namespace {

/// One entry of a list of declarations.
struct Entry
{
    QByteArray name;
    ModulePort::Direction direction = ModulePort::Unknown;
    bool hasDirection = false;
    bool isVector = false;
    bool hasType = false; ///< It says more than a name.
    bool isLocal = false; ///< A local parameter.
};

ModulePort::Direction directionOf(const Token &token)
{
    if (isWord(token, "input"))
        return ModulePort::Input;
    if (isWord(token, "output"))
        return ModulePort::Output;
    return isWord(token, "inout") ? ModulePort::Inout : ModulePort::Unknown;
}

bool isWideType(const Token &token)
{
    for (const char *type : {"integer", "int", "byte", "shortint", "longint", "time"}) {
        if (isWord(token, type))
            return true;
    }
    return false;
}

bool endsEntry(const TokenReader &reader)
{
    const Token &token = reader.token();
    return reader.atUnitEnd() || token.is(',') || token.is(')') || token.is(';');
}

/// Takes in one word of a declaration, before its default value.
void takeWord(const Token &token, Entry *entry)
{
    if (directionOf(token) != ModulePort::Unknown) {
        entry->direction = directionOf(token);
        entry->hasDirection = entry->hasType = true;
    } else if (token.kind == Token::Identifier) {
        if (!entry->name.isEmpty()) // The name before was that of a type.
            entry->hasType = entry->isVector = true;
        entry->name = toBytes(token.text);
    } else if (token.is('[')) {
        entry->isVector = true;
        entry->hasType = entry->hasType || entry->name.isEmpty();
    } else if (token.kind == Token::Reserved) {
        entry->hasType = true;
        entry->isVector = entry->isVector || isWideType(token);
        entry->isLocal = entry->isLocal || isWord(token, "localparam");
    }
}

/// Reads up to the comma or the end of the list.
Entry readEntry(TokenReader *reader)
{
    Entry entry;
    bool isDeclared = false; // The rest is a value.
    while (!endsEntry(*reader)) {
        if (reader->atAttribute()) {
            reader->skipAttribute();
            continue;
        }
        const Token token = reader->token();
        if (token.is('.') && entry.name.isEmpty()) { // .NAME(expression)
            reader->advance();
            if (reader->token().kind == Token::Identifier)
                entry.name = toBytes(reader->token().text);
            entry.hasType = isDeclared = true;
        }
        isDeclared = isDeclared || token.is('=');
        if (!isDeclared)
            takeWord(token, &entry);
        reader->advanceOverGroup();
    }
    return entry;
}

void setPort(const Entry &entry, ModulePort *port)
{
    port->direction = entry.direction;
    port->isVector = entry.isVector;
}

/// Calls @p take for each entry of a list. An entry that is only a name has the direction and type
/// of the one before it.
template <typename Take>
void readEntries(TokenReader *reader, const Take &take)
{
    Entry last;
    while (true) {
        Entry entry = readEntry(reader);
        if (!entry.hasType) {
            entry.direction = last.direction;
            entry.isVector = entry.isVector || last.isVector;
            entry.isLocal = last.isLocal;
        } else if (!entry.hasDirection) {
            entry.direction = last.direction;
        }
        if (!entry.name.isEmpty())
            take(entry);
        last = entry;
        if (!reader->token().is(','))
            return;
        reader->advance();
    }
}

void readParameters(TokenReader *reader, ModuleHeader *header)
{
    readEntries(reader, [header](const Entry &entry) {
        if (!entry.isLocal)
            header->parameters.append(entry.name);
    });
}

} // namespace

void readModuleHeader(TokenReader *reader, ModuleHeader *header)
{
    if (reader->token().is('#')) {
        header->hasParameterList = true;
        reader->advance();
        if (!reader->token().is('('))
            return;
        reader->advance();
        readParameters(reader, header);
        reader->advance();
    }
    if (!reader->token().is('('))
        return;
    reader->advance();
    readEntries(reader, [header](const Entry &entry) {
        ModulePort port;
        port.name = entry.name;
        setPort(entry, &port);
        header->portNumbers.insert(port.name, header->ports.size());
        header->ports.append(port);
    });
}

void readHeaderItem(TokenReader *reader, ModuleHeader *header)
{
    if (isWord(reader->token(), "parameter")) {
        if (!header->hasParameterList)
            readParameters(reader, header);
    } else if (directionOf(reader->token()) != ModulePort::Unknown) {
        readEntries(reader, [header](const Entry &entry) {
            const int port = header->portNumbers.value(entry.name, -1);
            if (port >= 0)
                setPort(entry, &header->ports[port]);
        });
    }
}

} // namespace NETWEIR::Internal
