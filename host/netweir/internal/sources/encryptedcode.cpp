// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "encryptedcode.h"

#include <QRegularExpression>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

enum class Directive { None, Other, Begin, End };

/// The encryption directive of a line.
Directive directiveOf(const char *line, const char *end)
{
    static const QRegularExpression protect(QStringLiteral(
        "^\\s*`(?:pragma\\s+protect\\b(?:\\s+(\\w+))?|(protected|endprotected)\\b)"));
    const QByteArray text = QByteArray::fromRawData(line, int(end - line));
    if (!text.contains('`'))
        return Directive::None;
    const QRegularExpressionMatch match = protect.match(QString::fromLatin1(text));
    if (!match.hasMatch())
        return Directive::None;
    const QString word = match.captured(match.lastCapturedIndex());
    if (word == QLatin1String("begin_protected") || word == QLatin1String("protected"))
        return Directive::Begin;
    if (word == QLatin1String("end_protected") || word == QLatin1String("endprotected"))
        return Directive::End;
    return Directive::Other;
}

} // namespace

QVector<EncryptedRegion> blankEncryptedCode(QByteArray *text)
{
    QVector<EncryptedRegion> regions;
    if (!text->contains("protect"))
        return regions;
    bool open = false;
    int number = 1;
    char *const end = text->data() + text->size();
    for (char *line = text->data(); line < end; ++number) {
        char *const next = std::find(line, end, '\n');
        const Directive directive = directiveOf(line, next);
        if (directive == Directive::Begin && !open) {
            regions.append({number, number});
            open = true;
        }
        if (open || directive != Directive::None)
            std::fill(line, next, ' ');
        if (open) {
            regions.last().last = number;
            open = directive != Directive::End;
        }
        line = next == end ? end : next + 1;
    }
    return regions;
}

} // namespace NETWEIR::Internal
