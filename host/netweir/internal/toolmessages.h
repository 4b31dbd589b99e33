// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "../netweir_global.h"

#include "messages.h"

#include <QByteArray>
#include <QVector>

#include <functional>

namespace NETWEIR {
namespace Internal {

/// One message of the elaborator.
struct ToolMessage
{
    bool error = false;
    QByteArray file; ///< As the tool names it.
    int line = 0;
    int column = 0;
    QByteArray code; ///< The tool's own name for its kind, for instance "UNSUPPORTED".
    QByteArray text;
};

/// The messages in the tool's error output. Source excerpts, advice on the tool's own options and
/// closing remarks are left out.
NETWEIR_EXPORT QVector<ToolMessage> parseToolOutput(const QByteArray &errorOutput);

/// Where the place of a message is, in the user's files.
using PlaceMap = std::function<Place(const ToolMessage &)>;

/// The messages as users read them: one line each, "ERROR" or "WARNING" in front, places mapped by
/// @p placeOf, none twice. Long lists end with the number of messages left out.
NETWEIR_EXPORT QStringList toUserMessages(const QVector<ToolMessage> &messages,
                                          const PlaceMap &placeOf);

} // namespace Internal
} // namespace NETWEIR
