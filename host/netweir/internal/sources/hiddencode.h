// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QVector>

namespace NETWEIR::Internal {

/// Where a text is hidden, in lines counted from 1.
struct HiddenRegion
{
    int mark = 0;  ///< The line where it begins.
    int first = 0; ///< The first and the last line of which nothing is seen, but for the line of
    int last = 0;  ///< the mark.
    bool closed = false;
};

/// Whether a comment hides the text behind it ("synopsys translate_off"), or shows it again.
enum class HidingMark { None, Off, On };

/// What a comment says; @p comment comes with its slashes. One word of any kind stands in front of
/// the mark. Prose may follow where that word is one that synthesis tools reserve; behind any other
/// one it would turn "see translate_off below" into a mark.
HidingMark hidingMarkOf(const QByteArray &comment);

/// Whether @p content, a source as it is on disk, may hold marks, itself or by an included file
/// whose name a macro gives.
bool mayHideCode(const QByteArray &content);

/// Blanks the code between marks in preprocessed text and returns where it was. Line ends stay, and
/// so do directives that act on the code behind. Marks do not nest; a region without an end lasts
/// to the end of the text. Linear in the text.
QVector<HiddenRegion> blankHiddenCode(QByteArray *text);

/// The preprocessor drops comments. This script, run by perl as its filter, turns those that mark
/// hidden code into ones that it hands on.
QByteArray commentFilter();

} // namespace NETWEIR::Internal
