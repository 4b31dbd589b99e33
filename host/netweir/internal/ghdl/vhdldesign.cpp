// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "vhdldesign.h"

#include <files/regularfile.h>
#include <netweir/internal/signals/vhdltext.h>
#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/vhdl/vhdlhiddencode.h>
#include <netweir/internal/vhdl/vhdlname.h>
#include <netweir/internal/vhdl/vhdlscan.h>
#include <netweir/internal/vhdl/vhdltokens.h>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

constexpr qint64 LargestFile = 1024 * 1024 * 1024;

/// Keeps the length of the text, so that all places stay as they are.
void replaceUnreadableBytes(QByteArray *text)
{
    if (text->startsWith("\xef\xbb\xbf"))
        text->replace(0, 3, "   ");
    // Not in Latin-1, the character set of VHDL, but in the UTF-8 form of many letters.
    std::replace_if(
        text->begin(), text->end(),
        [](char c) {
            const auto byte = static_cast<unsigned char>(c);
            return byte >= 0x80 && byte < 0xa0;
        },
        '?');
}

/// The text of a unit with its context clauses.
TextRange rangeWithContext(const VhdlUnit &unit)
{
    const bool hasContext =
        unit.context.range.end > unit.context.range.begin && unit.kind != VhdlUnit::Context;
    return {hasContext ? unit.context.range.begin : unit.range.begin, unit.range.end};
}

} // namespace

QByteArray primaryNameOf(const VhdlUnit &unit)
{
    const bool isSecondary = unit.kind == VhdlUnit::Architecture && !unit.of.isEmpty();
    return foldedVhdlName(isSecondary ? unit.of.last() : unit.name);
}

VhdlDesign::VhdlDesign(const DesignSources &sources)
    : m_edition(sources.vhdlStandard)
{
    for (const SourceFile &file : sources.files) {
        if (file.vhdl)
            add(file.path, file.vhdlLibrary, file.library);
    }
    blankReplacedUnits();
}

void VhdlDesign::add(const QString &path, const QString &library, bool isBackup)
{
    VhdlSource source;
    source.library = library.toLatin1();
    QString error;
    Files::readRegularFile(path, LargestFile, &source.text, &error);
    replaceUnreadableBytes(&source.text);
    blankHiddenVhdl(&source.text);
    source.file = scanVhdl(source.text);
    m_sources.append(source);
    m_paths.append(path);
    m_isBackup.append(isBackup);
    if (!m_libraries.contains(library))
        m_libraries.append(library);
}

void VhdlDesign::blankReplacedUnits()
{
    QSet<QPair<QByteArray, QByteArray>> declared;
    for (int file = 0; file < size(); ++file) {
        if (isBackup(file))
            continue;
        for (const VhdlUnit &unit : source(file).file.units)
            declared.insert({source(file).library, primaryNameOf(unit)});
    }
    for (int file = 0; file < size(); ++file) {
        if (!isBackup(file))
            continue;
        VhdlSource &source = m_sources[file];
        QVector<VhdlUnit> &units = source.file.units;
        const auto isReplaced = [&](const VhdlUnit &unit) {
            return declared.contains({source.library, primaryNameOf(unit)});
        };
        for (const VhdlUnit &unit : qAsConst(units)) {
            if (isReplaced(unit))
                blank(&source.text, rangeWithContext(unit));
        }
        units.erase(std::remove_if(units.begin(), units.end(), isReplaced), units.end());
    }
}

QString VhdlDesign::library(int file) const
{
    return QString::fromLatin1(source(file).library);
}

bool VhdlDesign::hasText(int file) const
{
    return VhdlTokens(source(file).text).next().kind != VhdlToken::EndOfText;
}

qint64 VhdlDesign::textSize() const
{
    qint64 result = 0;
    for (const VhdlSource &source : m_sources)
        result += source.text.size();
    return result;
}

} // namespace NETWEIR::Internal
