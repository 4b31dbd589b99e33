// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "ghdlinput.h"

#include "vhdldesign.h"

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

constexpr char CopyPrefix[] = "source";
constexpr char CopySuffix[] = ".vhd";

/// The column in bytes of the column @p shown in line @p line of @p text, where each tab extends to
/// a multiple of 8.
int columnWithoutTabs(const QByteArray &text, int line, int shown)
{
    constexpr int TabWidth = 8;
    int begin = 0;
    for (int i = 1; i < line && begin >= 0; ++i)
        begin = text.indexOf('\n', begin) + 1;
    int column = 1;
    int at = begin;
    for (; at < text.size() && text[at] != '\n' && column < shown; ++at)
        column = text[at] == '\t' ? (column - 1) / TabWidth * TabWidth + TabWidth + 1 : column + 1;
    return at - begin + 1;
}

} // namespace

QString copyNameOf(int file)
{
    return QLatin1String(CopyPrefix) + QString::number(file) + QLatin1String(CopySuffix);
}

int fileOfCopy(const QByteArray &name)
{
    const int begin = int(sizeof CopyPrefix) - 1;
    const int end = name.size() - int(sizeof CopySuffix) + 1;
    bool isNumber = false;
    const int file = name.mid(begin, end - begin).toInt(&isNumber);
    return isNumber && name == copyNameOf(file).toLatin1() ? file : -1;
}

GhdlPlaces::GhdlPlaces(const VhdlDesign &design, const QVector<GeneratedText> &generated)
    : m_design(design)
    , m_generated(generated)
{
}

Place GhdlPlaces::place(const QByteArray &file, int line, int column) const
{
    const int number = fileOfCopy(file);
    if (number >= 0 && number < m_design.size()) {
        if (line > 0 && column > 0)
            column = columnWithoutTabs(m_design.source(number).text, line, column);
        return {m_design.path(number), line, column};
    }
    const auto found =
        std::find_if(m_generated.begin(), m_generated.end(), [&file](const GeneratedText &text) {
            return text.file == QString::fromLatin1(file);
        });
    return found == m_generated.end() ? Place() : found->place;
}

} // namespace NETWEIR::Internal
