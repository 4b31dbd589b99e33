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
    QByteArray file; ///< File name of the tool.
    int line = 0;
    int column = 0;
    QByteArray code; ///< The tool's name for the kind of message, for example "UNSUPPORTED".
    QByteArray text;
    QString advice;         ///< Advice for users after the text; the text may be empty.
    QByteArray cause;       ///< Errors with the same cause have one reason; null when unknown.
    bool followsUp = false; ///< Says nothing that another message does not say.
};

/// Beginnings of errors. The name follows in quotes.
constexpr char UnknownInterface[] = "Cannot find file containing interface: ";
constexpr char UnknownModule[] = "Cannot find file containing module: ";
constexpr char UnknownType[] = "Unknown type: "; ///< Not of the tool: see FaultHints.

/// Whether the parser of the tool failed.
bool isSyntaxError(const ToolMessage &message);

/// The text between the first and the last quote.
QByteArray quotedName(const QByteArray &text);

/// The messages in the error output of the tool, without source excerpts, advice on options of the
/// tool and closing remarks.
QVector<ToolMessage> parseToolOutput(const QByteArray &errorOutput);

/// Maps the place of a message to the user's files.
using PlaceMap = std::function<Place(const ToolMessage &)>;

/// The messages for users: one line each, with "ERROR" or "WARNING" in front, places mapped by @p
/// placeOf, without repetition. Errors that follow from an earlier one are only counted, in one
/// line at the end: errors of the same cause, and syntax errors within a few lines of another one.
/// Long lists end with the number of omitted messages.
QStringList toUserMessages(const QVector<ToolMessage> &messages, const PlaceMap &placeOf);

} // namespace NETWEIR::Internal
