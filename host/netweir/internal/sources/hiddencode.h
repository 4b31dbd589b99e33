// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/ground/hidingmark.h>

#include <QByteArray>
#include <QVector>

namespace NETWEIR::Internal {

/// A hidden part of a text, in lines counted from 1.
struct HiddenRegion
{
    int mark = 0;  ///< The line of the mark that hides it.
    int first = 0; ///< The first line after the mark.
    int last = 0;  ///< The last line that is hidden as a whole; before first if there is none.
    bool closed = false; ///< Another mark ends it.
};

/// Whether @p content, a source as it is on disk, may contain marks, itself or through an included
/// file whose name comes from a macro.
bool mayHideCode(const QByteArray &content);

/// Blanks the code between marks in preprocessed text and returns its regions. Keeps line ends and
/// directives that affect the following code. Marks do not nest. A region without an end extends to
/// the end of the text. Linear in the text.
QVector<HiddenRegion> blankHiddenCode(QByteArray *text);

/// The filter for the preprocessor, a Perl script. The preprocessor drops comments; the script
/// turns those that mark hidden code into comments that it keeps.
QByteArray commentFilter();

} // namespace NETWEIR::Internal
