// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/ground/messages.h>

#include <QByteArray>
#include <QVector>

#include <functional>

namespace NETWEIR::Internal {

/// One message of the elaborator.
struct ToolMessage
{
    bool error = false;
    QByteArray file; ///< As the tool names it.
    int line = 0;
    int column = 0;
    QByteArray code; ///< The tool's own name for its kind, for instance "UNSUPPORTED".
    QByteArray text;
    QString advice;         ///< For users, behind the text; it may stand alone.
    QByteArray cause;       ///< Errors with the same one have one reason; null for an unknown one.
    bool followsUp = false; ///< It tells nothing that another one does not tell.
};

/// What the text of an error about an unknown type begins with.
constexpr char UnknownType[] = "Unknown type: ";

/// The messages in the tool's error output. Source excerpts, advice on the tool's own options and
/// closing remarks are left out.
QVector<ToolMessage> parseToolOutput(const QByteArray &errorOutput);

/// Where the place of a message is, in the user's files.
using PlaceMap = std::function<Place(const ToolMessage &)>;

/// The messages as users read them: one line each, "ERROR" or "WARNING" in front, places mapped by
/// @p placeOf, none twice. Errors that follow from one listed before are only counted, in one line
/// at the end: those of the same cause, and syntax errors within some lines of another one. Long
/// lists end with the number of messages left out.
QStringList toUserMessages(const QVector<ToolMessage> &messages, const PlaceMap &placeOf);

} // namespace NETWEIR::Internal
