// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "textreport.h"

#include "checkrules.h"

#include <tool/printable.h>

namespace Tool {

namespace {

QString idOf(int rule)
{
    return QLatin1String(" [") + checkRules().at(rule).id + QLatin1Char(']');
}

/// The lines of the further places, as many as fit on a line.
QString otherLines(const CheckResult &result)
{
    constexpr int Most = 8;
    QStringList lines;
    int last = result.place.line;
    int left = result.others.size();
    for (const CheckedPlace &place : result.others) {
        if (lines.size() == Most)
            break;
        --left;
        if (place.line != last)
            lines += QString::number(place.line);
        last = place.line;
    }
    if (left > 0)
        lines += QStringLiteral("and %1 more").arg(left);
    return lines.join(QLatin1String(", "));
}

QString hintText(const TARN::Replacement &by)
{
    if (by.kind == TARN::Replacement::Signal)
        return QStringLiteral("%1 has a similar name").arg(by.to);
    return QStringLiteral("%1 may be %2 now, which finds %3 names")
        .arg(by.from, by.to, QString::number(by.explains));
}

} // namespace

void TextReport::beginFile(const QString &path)
{
    m_path = printable(path);
}

void TextReport::addResult(const CheckResult &result)
{
    const auto writeMore = [this](const QString &text) { write("    " + printable(text) + '\n'); };
    // The messages of the save check name the core themselves.
    const bool needsPlace = result.rule != saveCheckRule();
    const QString place = needsPlace ? result.place.text + QLatin1String(": ") : QString();
    write(m_path + ':' + QByteArray::number(result.place.line) + ": " +
          printable(levelName(result.level) + QLatin1String(": ") + place + result.message +
                    idOf(result.rule)) +
          '\n');
    if (!result.saveMessage.isEmpty())
        writeMore(QLatin1String("save check: ") + result.saveMessage + idOf(saveCheckRule()));
    const QString others = otherLines(result);
    if (!others.isEmpty())
        writeMore(QLatin1String("also in line ") + others);
    // Of a changed bus, the message names what is in its place.
    const bool isChanged = result.rule == numberOf(TARN::Rule::BusChanged);
    if (!result.candidates.isEmpty() && !isChanged)
        writeMore(QLatin1String("hint: ") + hintText(result.candidates.first()));
}

} // namespace Tool
