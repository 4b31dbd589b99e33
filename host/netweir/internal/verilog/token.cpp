// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "token.h"

namespace NETWEIR::Internal {

int blockStep(const Token &token, const Token &previous)
{
    switch (token.keyword) {
    case Keyword::Begin:
    case Keyword::Case:
    case Keyword::Randsequence:
        return 1;
    case Keyword::Fork:
        return previous.is(Keyword::Disable) ? 0 : 1;
    case Keyword::End:
    case Keyword::Endcase:
    case Keyword::Endsequence:
    case Keyword::Join:
        return -1;
    default:
        return 0;
    }
}

bool isWord(const Token &token, std::string_view word)
{
    return (token.kind == Token::Identifier || token.kind == Token::Reserved) && token.text == word;
}

bool isSystemName(const Token &token)
{
    return token.kind == Token::Identifier && !token.escaped && token.text.front() == '$';
}

} // namespace NETWEIR::Internal
