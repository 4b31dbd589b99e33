// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "printable.h"

#include <algorithm>

namespace Tool {

namespace {

/// Also those of ISO 8859, which some terminals obey.
bool isControl(QChar c)
{
    return c < QChar(0x20) || (c >= QChar(0x7F) && c < QChar(0xA0));
}

} // namespace

QByteArray printable(const QString &text)
{
    if (std::none_of(text.begin(), text.end(), isControl))
        return text.toLocal8Bit();
    QString result;
    for (const QChar c : text) {
        if (isControl(c))
            result += QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0'));
        else
            result += c;
    }
    return result.toLocal8Bit();
}

} // namespace Tool
