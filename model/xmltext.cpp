// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "xmltext.h"

namespace TARN {

bool isXmlText(const QString &text)
{
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c.isHighSurrogate()) {
            ++i;
            if (i == text.size() || !text.at(i).isLowSurrogate())
                return false;
        } else if (c.isLowSurrogate() || c.unicode() >= 0xfffe ||
                   (c.unicode() < 0x20 && c != QLatin1Char('\t') && c != QLatin1Char('\n') &&
                    c != QLatin1Char('\r'))) {
            return false;
        }
    }
    return true;
}

} // namespace TARN
