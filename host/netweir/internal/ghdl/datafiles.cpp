// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "datafiles.h"

#include "vhdldesign.h"

#include <netweir/internal/signals/vhdltext.h>
#include <netweir/internal/vhdl/vhdltokens.h>

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

bool usesTextio(const VhdlDesign &design)
{
    const QVector<VhdlSource> &sources = design.sources();
    return std::any_of(sources.begin(), sources.end(), [](const VhdlSource &source) {
        return source.text.toLower().contains("textio");
    });
}

/// Whether a literal may name a file below the folder of a source.
bool mayBeName(const QString &literal)
{
    constexpr int LongestName = 255;
    return !literal.isEmpty() && literal.size() <= LongestName &&
           !literal.contains(QLatin1Char(' ')) && !literal.contains(QLatin1String("..")) &&
           QDir::isRelativePath(literal);
}

} // namespace

QVector<DataFile> dataFiles(const VhdlDesign &design)
{
    QVector<DataFile> result;
    if (!usesTextio(design))
        return result;
    QSet<QString> known;
    for (int file = 0; file < design.size(); ++file) {
        const QDir folder = QFileInfo(design.path(file)).absoluteDir();
        VhdlTokens tokens(design.source(file).text);
        for (VhdlToken token = tokens.next(); token.kind != VhdlToken::EndOfText;
             token = tokens.next()) {
            if (token.kind != VhdlToken::String || token.text.size() < 2)
                continue;
            const QString name = vhdlText(token.bytes().mid(1, int(token.text.size()) - 2));
            if (!mayBeName(name) || known.contains(name) ||
                !QFileInfo(folder.filePath(name)).isFile())
                continue;
            known.insert(name);
            result.append({name, folder.filePath(name)});
        }
    }
    return result;
}

} // namespace NETWEIR::Internal
