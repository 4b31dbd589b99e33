// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

class QByteArray;

namespace Tool {

/// Opens /dev/null for those of the three standard streams that the caller closed. Otherwise the
/// next file that is opened, perhaps the user's configuration, would take the place of one of them
/// and get what is written there. Writing to a closed output still fails.
void keepStandardStreams();

/// Writes @p text as it is. What can not be written is lost: there is no place to tell it.
void writeToStandardError(const QByteArray &text);

/// Writes all of @p text to the standard output. Returns 0 or the error of the system, which is
/// EINTR when an end is requested meanwhile.
int writeToStandardOutput(const QByteArray &text);

/// Reads the standard input to its end, but not much more than @p limit bytes. Returns like
/// writeToStandardOutput().
int readStandardInput(qint64 limit, QByteArray *content);

} // namespace Tool
