// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "../netweir_global.h"

#include "messages.h"

#include <QByteArray>
#include <QVector>

namespace NETWEIR {
namespace Internal {

class PreprocessedText;

/// One message of the elaborator.
struct ToolMessage
{
    bool error = false;
    QByteArray file; ///< As the tool names it.
    int line = 0;
    int column = 0;
    QByteArray text;
};

/// The messages in the tool's error output. Source excerpts, advice on the tool's own options and
/// closing remarks are left out.
NETWEIR_EXPORT QVector<ToolMessage> parseToolOutput(const QByteArray &errorOutput);

/// The messages as users read them: one line each, "ERROR" or "WARNING" in front, paths of the
/// design's files, none twice. Long lists end with the number of messages left out.
NETWEIR_EXPORT QStringList toUserMessages(const QVector<ToolMessage> &messages,
                                          const PreprocessedText &text);

} // namespace Internal
} // namespace NETWEIR
