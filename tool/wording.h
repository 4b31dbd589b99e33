// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace Tool {

// Pieces of messages.

/// A name in a sentence.
inline QString quoted(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

/// "1 bit", "2 bits"
inline QString counted(int number, const QString &thing)
{
    return QStringLiteral("%1 %2%3").arg(QString::number(number), thing,
                                         number == 1 ? QString() : QStringLiteral("s"));
}

} // namespace Tool
