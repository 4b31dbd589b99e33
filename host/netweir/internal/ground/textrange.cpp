// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "textrange.h"

#include <algorithm>

namespace NETWEIR::Internal {

void blank(QByteArray *text, const TextRange &range)
{
    std::replace_if(
        text->begin() + range.begin, text->begin() + range.end,
        [](char c) { return c != '\n' && c != '\r'; }, ' ');
}

int lineStart(const QByteArray &text, int offset)
{
    return offset == 0 ? 0 : text.lastIndexOf('\n', offset - 1) + 1;
}

QVector<int> lineStarts(const QByteArray &text)
{
    QVector<int> starts{0};
    for (int end = text.indexOf('\n'); end >= 0; end = text.indexOf('\n', end + 1))
        starts.append(end + 1);
    return starts;
}

} // namespace NETWEIR::Internal
