// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "tiednets.h"

#include "tokenreader.h"

namespace NETWEIR::Internal {

namespace {

/// At the opening parenthesis; ends after the closing one. The first two terminals are connected.
void readTerminals(TokenReader *reader, QByteArrayList *names)
{
    int depth = 0;
    int terminal = 0;
    do {
        const Token &token = reader->token();
        if (token.is('[')) {
            reader->skipGroup();
            continue;
        }
        if (opensGroup(token))
            ++depth;
        else if (token.is(')') || token.is('}'))
            --depth;
        else if (token.is(',') && depth == 1)
            ++terminal;
        else if (token.kind == Token::Identifier && terminal < 2)
            names->append(toBytes(token.text));
        reader->advance();
    } while (depth > 0 && !reader->atUnitEnd());
}

} // namespace

/// tran #DELAY NAME [RANGE] (NET, NET, CONTROL), ... ;
void readSwitches(TokenReader *reader, QByteArrayList *names)
{
    do {
        reader->advance();
        if (reader->token().is('#')) {
            reader->advance();
            reader->advanceOverGroup();
        }
        if (reader->token().kind == Token::Identifier)
            reader->advance();
        while (reader->token().is('['))
            reader->skipGroup();
        if (reader->token().is('('))
            readTerminals(reader, names);
    } while (reader->token().is(','));
    reader->skipToSemicolon();
}

/// alias NET = NET = ... ;
void readAlias(TokenReader *reader, QByteArrayList *names)
{
    while (!reader->atUnitEnd() && !reader->token().is(';')) {
        if (reader->token().is('[')) {
            reader->skipGroup();
            continue;
        }
        if (reader->token().kind == Token::Identifier)
            names->append(toBytes(reader->token().text));
        reader->advance();
    }
    reader->skipToSemicolon();
}

} // namespace NETWEIR::Internal
