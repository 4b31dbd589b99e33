// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "declarationtext.h"

#include <algorithm>
#include <iterator>

namespace NETWEIR::Internal {

namespace {

constexpr std::string_view VariableKeywords[] = {"reg", "integer", "time"};
/// What begins another declaration, also in a list of ports.
constexpr std::string_view OtherBeginnings[] = {
    ";",     "input", "output", "inout",  "wire",   "tri",    "tri0",    "tri1",
    "wand",  "wor",   "uwire",  "triand", "trior",  "trireg", "supply0", "supply1",
    "logic", "bit",   "byte",   "int",    "genvar", "real"};

template <typename Words>
bool contains(const Words &words, std::string_view word)
{
    return std::find(std::begin(words), std::end(words), word) != std::end(words);
}

bool isOfWord(char letter)
{
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
           (letter >= '0' && letter <= '9') || letter == '_' || letter == '$' || letter == '`';
}

bool startsWith(std::string_view text, std::string_view beginning)
{
    return text.substr(0, beginning.size()) == beginning;
}

/// Up to and with @p end, which is looked for behind the first @p begin letters.
std::size_t lengthTo(std::string_view text, std::size_t begin, std::string_view end)
{
    const std::size_t found = text.find(end, begin);
    return found == std::string_view::npos ? text.size() : found + end.size();
}

/// A comment, a string, an escaped identifier, a word, or any other letter.
std::size_t tokenLength(std::string_view text)
{
    if (startsWith(text, "//"))
        return lengthTo(text, 2, "\n");
    if (startsWith(text, "/*"))
        return lengthTo(text, 2, "*/");
    if (text.front() == '"')
        return lengthTo(text, 1, "\"");
    if (text.front() == '\\')
        return std::min(text.find_first_of(" \t\r\n"), text.size());
    const auto end = std::find_if_not(text.begin(), text.end(), isOfWord);
    return std::max<std::size_t>(1, std::size_t(end - text.begin()));
}

} // namespace

std::optional<bool> declaresVariable(std::string_view text)
{
    std::optional<bool> isVariable;
    while (!text.empty()) {
        const std::string_view token = text.substr(0, tokenLength(text));
        if (contains(VariableKeywords, token))
            isVariable = true;
        else if (contains(OtherBeginnings, token))
            isVariable = false;
        text.remove_prefix(token.size());
    }
    return isVariable;
}

} // namespace NETWEIR::Internal
