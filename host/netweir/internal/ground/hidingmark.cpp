// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "hidingmark.h"

#include <QByteArrayList>
#include <QRegularExpression>

#include <algorithm>
#include <cstring>

namespace NETWEIR::Internal {

HidingMark hidingMarkOf(const QByteArray &comment)
{
    static const QRegularExpression mark(
        QStringLiteral("^(?:/[/*]|--)[\\s*]*"
                       "([a-z_][\\w-]*)\\s+translate_(on|off)\\b(.*)$"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    static const QByteArrayList reserved = {"synthesis", "synopsys", "pragma"};
    static const QRegularExpression prose(QStringLiteral("^\\s*\\w"));
    const QRegularExpressionMatch match = mark.match(QString::fromLatin1(comment));
    if (!match.hasMatch())
        return HidingMark::None;
    if (!reserved.contains(match.captured(1).toLower().toLatin1()) &&
        prose.match(match.captured(3)).hasMatch())
        return HidingMark::None;
    return match.captured(2).compare(QLatin1String("on"), Qt::CaseInsensitive) == 0
               ? HidingMark::On
               : HidingMark::Off;
}

bool mentionsHidingMark(const QByteArray &text)
{
    static const char mark[] = "translate_o";
    return std::search(text.begin(), text.end(), mark, mark + strlen(mark),
                       [](char a, char b) { return (a | 0x20) == (b | 0x20); }) != text.end();
}

} // namespace NETWEIR::Internal
