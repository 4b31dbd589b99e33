// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sourcenames.h"

#include <QByteArray>
#include <QVector>

namespace NETWEIR::Internal {

/// From line @p textLine of a text on, the lines come from a file, starting with its line @p line.
struct LineOrigin
{
    int textLine = 1;
    int file = 0; ///< Its number in the names.
    int line = 1;
};

/// The output of the preprocessor, one text per input file. Origins replace the `line directives of
/// the output.
struct PreprocessorOutput
{
    QVector<QByteArray> texts;            ///< Empty for a file that the tool did not reach.
    QVector<QVector<LineOrigin>> origins; ///< By text, in the order of its lines.
    SourceNames names;
};

/// Splits @p output. @p files are the files in the order given to the tool, @p folders the include
/// folders. Linear in the output.
PreprocessorOutput splitOutput(const QByteArray &output, const QVector<PathAlias> &files,
                               const QVector<PathAlias> &folders);

} // namespace NETWEIR::Internal
