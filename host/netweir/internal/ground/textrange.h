// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QVector>

namespace NETWEIR::Internal {

/// A line of one of the design's preprocessed texts, of which there is one for each source.
struct TextLine
{
    int text = -1; ///< The number of its source.
    int line = 0;  ///< Counted from 1.
};

/// The bytes of a text from @p begin up to @p end.
struct TextRange
{
    int begin = 0;
    int end = 0;
};

/// Overwrites a range with blanks. Line ends stay, so that all other text keeps its line and
/// column.
void blank(QByteArray *text, const TextRange &range);

/// Where the line of @p offset begins.
int lineStart(const QByteArray &text, int offset);

/// Where the lines of a text begin, in order. A line end at the end of the text begins an empty
/// line.
QVector<int> lineStarts(const QByteArray &text);

} // namespace NETWEIR::Internal
