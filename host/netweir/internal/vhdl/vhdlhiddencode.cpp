// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "vhdlhiddencode.h"

#include "vhdltokens.h"

#include <netweir/internal/ground/hidingmark.h>
#include <netweir/internal/ground/textrange.h>

#include <QVector>

namespace NETWEIR::Internal {

namespace {

/// The ranges between marks, with the marks.
QVector<TextRange> hiddenRanges(const QByteArray &text)
{
    QVector<TextRange> ranges;
    VhdlTokens tokens(text, VhdlTokens::KeepComments);
    int begin = -1;
    for (VhdlToken token = tokens.next(); token.kind != VhdlToken::EndOfText;
         token = tokens.next()) {
        if (token.kind != VhdlToken::Comment)
            continue;
        const HidingMark mark = hidingMarkOf(token.bytes());
        if (mark == HidingMark::Off && begin < 0) {
            begin = token.offset;
        } else if (mark == HidingMark::On && begin >= 0) {
            ranges.append({begin, token.end()});
            begin = -1;
        }
    }
    if (begin >= 0)
        ranges.append({begin, text.size()});
    return ranges;
}

} // namespace

void blankHiddenVhdl(QByteArray *text)
{
    if (!mentionsHidingMark(*text))
        return;
    for (const TextRange &range : hiddenRanges(*text))
        blank(text, range);
}

} // namespace NETWEIR::Internal
