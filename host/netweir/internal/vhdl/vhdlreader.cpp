// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "vhdlreader.h"

#include <algorithm>

namespace NETWEIR::Internal {

VhdlReader::VhdlReader(const VhdlTokens &tokens)
    : m_tokens(tokens)
{
    for (VhdlToken &token : m_window)
        token = m_tokens.next();
}

void VhdlReader::advance()
{
    m_end = token().end();
    std::move(m_window.begin() + 1, m_window.end(), m_window.begin());
    m_window.back() = m_tokens.next();
}

bool VhdlReader::atUnitStart() const
{
    if (!token(1).isName())
        return false;
    if (token().is(VhdlKeyword::Entity))
        return token(2).is(VhdlKeyword::Is);
    if (token().is(VhdlKeyword::Architecture) || token().is(VhdlKeyword::Configuration))
        return token(2).is(VhdlKeyword::Of) && token(3).isName();
    return false;
}

bool VhdlReader::atRegionWord() const
{
    switch (token().keyword) {
    case VhdlKeyword::Begin:
    case VhdlKeyword::End:
    case VhdlKeyword::Generate:
    case VhdlKeyword::Process:
        return true;
    default:
        return atUnitEnd();
    }
}

bool VhdlReader::skip(char sign)
{
    const bool isHere = token().is(sign);
    if (isHere)
        advance();
    return isHere;
}

bool VhdlReader::skip(VhdlKeyword word)
{
    const bool isHere = token().is(word);
    if (isHere)
        advance();
    return isHere;
}

void VhdlReader::skipGroup()
{
    if (!token().is('('))
        return;
    int depth = 0;
    do {
        depth += token().is('(') ? 1 : token().is(')') ? -1 : 0;
        advance();
    } while (depth > 0 && !atRegionWord());
}

void VhdlReader::skipToSemicolon()
{
    while (!atRegionWord()) {
        if (skip(';'))
            return;
        advance();
    }
}

void VhdlReader::skipStatement()
{
    while (!atUnitEnd()) {
        if (skip(';'))
            return;
        advance();
    }
}

void VhdlReader::skipProcess()
{
    while (!atUnitEnd()) {
        const bool ends = skip(VhdlKeyword::End);
        if (!ends)
            advance();
        else if (token().is(VhdlKeyword::Process) || token().is(VhdlKeyword::Postponed))
            return skipStatement();
    }
}

void VhdlReader::skipSubprogram()
{
    int depth = 0;
    skipHeader(&depth);
    if (depth > 0)
        skipBody();
}

/// Skips the header of a subprogram or package up to "is" or the semicolon. Increases @p depth if a
/// body follows.
void VhdlReader::skipHeader(int *depth)
{
    advance();
    while (!atRegionWord() && !token().is(';') && !token().is(VhdlKeyword::Is)) {
        if (token().is('('))
            skipGroup();
        else
            advance();
    }
    if (skip(VhdlKeyword::Is) && !token().is(VhdlKeyword::New))
        ++*depth;
    else if (!atRegionWord())
        skipToSemicolon();
}

void VhdlReader::skipBody()
{
    int depth = 1;
    while (depth > 0 && !atUnitEnd()) {
        switch (token().keyword) {
        case VhdlKeyword::End:
            --depth;
            skipStatement();
            break;
        case VhdlKeyword::Function:
        case VhdlKeyword::Procedure:
        case VhdlKeyword::Package:
            skipHeader(&depth);
            break;
        case VhdlKeyword::Attribute: // Names classes such as "function" and "units".
        case VhdlKeyword::Alias:
        case VhdlKeyword::Group:
            skipToSemicolon();
            break;
        case VhdlKeyword::If:
        case VhdlKeyword::Case:
        case VhdlKeyword::Loop:
        case VhdlKeyword::Block:
        case VhdlKeyword::Record:
        case VhdlKeyword::Units:
            ++depth;
            advance();
            break;
        case VhdlKeyword::Is:
            advance();
            depth += token().isWord("protected") ? 1 : 0;
            break;
        default:
            advance();
        }
    }
}

QByteArrayList VhdlReader::takeSelectedName()
{
    QByteArrayList names;
    while (isVhdlNameOrString(token()) || token().is(VhdlKeyword::All) ||
           (!names.isEmpty() && token().kind == VhdlToken::Character)) {
        names.append(token().bytes());
        advance();
        if (!token().is('.'))
            break;
        advance();
    }
    return names;
}

bool isVhdlNameOrString(const VhdlToken &token)
{
    return token.isName() || token.kind == VhdlToken::String;
}

} // namespace NETWEIR::Internal
