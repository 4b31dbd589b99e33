// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "messages.h"

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

const QLatin1String ErrorWord("ERROR");
const QLatin1String WarningWord("WARNING");

QString message(QLatin1String word, const Place &place, const QString &text)
{
    QString result = word + QLatin1String(": ");
    if (!place.file.isEmpty()) {
        result += place.file + QLatin1Char(':');
        if (place.line > 0)
            result += QString::number(place.line) + QLatin1Char(':');
        if (place.line > 0 && place.column > 0)
            result += QString::number(place.column) + QLatin1Char(':');
        result += QLatin1Char(' ');
    }
    return result + text;
}

} // namespace

QString fileAndLine(const Place &place)
{
    return QStringLiteral("%1:%2").arg(place.file).arg(place.line);
}

QString errorMessage(const Place &place, const QString &text)
{
    return message(ErrorWord, place, text);
}

QString errorMessage(const QString &text)
{
    return message(ErrorWord, {}, text);
}

QString warningMessage(const Place &place, const QString &text)
{
    return message(WarningWord, place, text);
}

bool isError(const QString &message)
{
    return message.startsWith(ErrorWord);
}

bool containsError(const QStringList &messages)
{
    return std::any_of(messages.begin(), messages.end(), isError);
}

} // namespace NETWEIR::Internal
