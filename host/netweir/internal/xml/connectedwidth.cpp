// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "connectedwidth.h"

#include "attributes.h"
#include "pinexpression.h"
#include "sourcetexts.h"
#include "typetable.h"

#include <netweir/internal/ground/readguard.h>

#include <algorithm>
#include <array>
#include <vector>

namespace NETWEIR::Internal {

namespace {

/// What the width of an expression depends on.
enum class Operands { None, First, All, AllButFirst };

Operands operandsOf(const pugi::xml_node &expression)
{
    static constexpr std::array<std::string_view, 14> OfAll{
        "add",  "and",    "div", "divs", "moddiv", "moddivs", "mul",
        "muls", "negate", "not", "or",   "sub",    "xnor",    "xor"};
    static constexpr std::array<std::string_view, 5> OfFirst{"shiftl", "shiftr", "shiftrs", "pow",
                                                             "pows"};
    const std::string_view name = expression.name();
    if (std::find(OfAll.begin(), OfAll.end(), name) != OfAll.end())
        return Operands::All;
    if (std::find(OfFirst.begin(), OfFirst.end(), name) != OfFirst.end())
        return Operands::First;
    return name == "cond" ? Operands::AllButFirst : Operands::None;
}

/// The width in front of the base of a number: "8'h3". 0 for anything else.
qint64 widthOfLiteral(const QByteArray &text)
{
    const int base = text.indexOf('\'');
    return base > 0 ? text.left(base).replace('_', "").trimmed().toLongLong() : 0;
}

} // namespace

qint64 connectedWidth(const pugi::xml_node &expression, const TypeTable &types,
                      const SourceTexts &sources)
{
    qint64 width = 0;
    std::vector<pugi::xml_node> pending{expression};
    while (!pending.empty()) {
        ReadGuard::check();
        const pugi::xml_node part = connectedPart(pending.back());
        pending.pop_back();
        const Operands operands = operandsOf(part);
        if (operands == Operands::None) {
            const qint64 own = is(part, "const")
                                   ? widthOfLiteral(sources.textAt(attribute(part, "loc")))
                                   : types.at(types.typeOf(part)).width;
            if (own == 0)
                return 0;
            width = std::max(width, own);
            continue;
        }
        pugi::xml_node operand = part.first_child();
        if (operands == Operands::First) {
            pending.push_back(operand);
            continue;
        }
        if (operands == Operands::AllButFirst)
            operand = operand.next_sibling();
        for (; operand; operand = operand.next_sibling())
            pending.push_back(operand);
    }
    return width;
}

} // namespace NETWEIR::Internal
