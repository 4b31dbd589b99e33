// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "packagecheck.h"

#include "designscopes.h"

#include <netweir/internal/ground/depthfirstwalk.h>
#include <netweir/internal/ground/messages.h>
#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/sources/preprocessedtext.h>

#include <algorithm>
#include <numeric>

namespace NETWEIR::Internal {

PackageCheck::PackageCheck(const DesignSources &sources, const PreprocessedText &text,
                           const DesignScopes &scopes)
    : m_sources(sources)
    , m_text(text)
    , m_scopes(scopes)
    , m_usesMissing(scopes.texts(), false)
{
    findMissing();
}

void PackageCheck::findMissing()
{
    QHash<QByteArray, int> indexes;
    for (int i = 0; i < m_scopes.texts(); ++i) {
        for (const PackageUse &use : m_scopes.usesOf(i)) {
            if (!isMissing(use))
                continue;
            m_usesMissing[i] = true;
            if (!indexes.contains(use.package)) {
                indexes.insert(use.package, m_missing.size());
                m_missing.append({i, use});
            }
            m_missing[indexes[use.package]].use.imported |= use.imported;
        }
    }
}

/// A name in front of a "::" may be that of a class as well; that of an import may not.
bool PackageCheck::isMissing(const PackageUse &use) const
{
    return m_scopes.package(use.package) < 0 &&
           (use.imported || !m_scopes.types().contains(use.package));
}

QStringList PackageCheck::errors() const
{
    QStringList result = messagesOfMissing(true);
    const QString circle = circleError();
    if (!circle.isEmpty())
        result.append(circle);
    return result;
}

QStringList PackageCheck::suspicions() const
{
    return messagesOfMissing(false);
}

QByteArrayList PackageCheck::missingPackages() const
{
    QByteArrayList result;
    for (const MissingPackage &missing : m_missing)
        result.append(missing.use.package);
    return result;
}

/// The elaborator silently reads the first declaration.
QStringList PackageCheck::warnings() const
{
    QStringList result;
    for (int i = 0; i < m_scopes.texts(); ++i) {
        if (m_scopes.isLibrary(i))
            continue;
        for (const ScopeBlock &block : m_scopes.scopes(i).blocks) {
            const int known = m_scopes.package(block.package);
            if (known < 0 || &m_scopes.block(known) == &block)
                continue;
            const TextLine first{m_scopes.textOf(known), m_scopes.block(known).line};
            result.append(warningMessage(
                m_text.place({i, block.line}),
                Text::tr("The package \"%1\" is declared a second time; the first declaration, in "
                         "%2, is read.")
                    .arg(QString::fromUtf8(block.package), fileAndLine(m_text.place(first)))));
        }
    }
    return result;
}

QStringList PackageCheck::messagesOfMissing(bool imported) const
{
    const QHash<QByteArray, QString> misread =
        m_missing.isEmpty() ? QHash<QByteArray, QString>() : misreadPackages();
    QStringList result;
    for (const MissingPackage &missing : m_missing) {
        if (missing.use.imported == imported)
            result.append(messageOf(missing, misread));
    }
    return result;
}

QString PackageCheck::messageOf(const MissingPackage &missing,
                                const QHash<QByteArray, QString> &misread) const
{
    const QString name = QString::fromUtf8(missing.use.package);
    const QString file = misread.value(missing.use.package);
    const QString words =
        file.isEmpty()
            ? Text::tr("No file declares the package \"%1\". Add the file that declares it.")
                  .arg(name)
            : Text::tr("The package \"%1\" is declared in %2, which is read as Verilog.")
                      .arg(name, file) +
                  QLatin1Char(' ') + typeAdvice();
    return messageAt(missing.text, missing.use, words);
}

/// The packages in texts that are read as Verilog, which has no packages, and their places.
QHash<QByteArray, QString> PackageCheck::misreadPackages() const
{
    QHash<QByteArray, QString> result;
    for (int i = 0; i < m_scopes.texts(); ++i) {
        if (isSystemVerilog(m_sources, i))
            continue;
        for (const ScopeBlock &block : scanScopes(m_text.texts()[i], true).blocks)
            result.insert(block.package, fileAndLine(m_text.place({i, block.line})));
    }
    return result;
}

QString PackageCheck::circleError() const
{
    QVector<int> all(m_scopes.blocks());
    std::iota(all.begin(), all.end(), 0);
    const QVector<int> circle = DepthFirstWalk::firstCircle(
        all.size(), all, [this](int id) { return m_scopes.packagesNeededBy(id); });
    if (circle.isEmpty())
        return {};
    QStringList names;
    for (const int package : circle)
        names.append(QString::fromUtf8(m_scopes.block(package).package));
    names.append(names.first());
    const ScopeBlock &first = m_scopes.block(circle.first());
    const QByteArray &second = m_scopes.block(circle.size() > 1 ? circle[1] : circle[0]).package;
    const auto use =
        std::find_if(first.uses.begin(), first.uses.end(), [&second](const PackageUse &candidate) {
            return candidate.package == second;
        });
    return messageAt(m_scopes.textOf(circle.first()), *use,
                     Text::tr("Packages need each other in a circle (%1). Move what they share "
                              "into a package of its own.")
                         .arg(names.join(QLatin1String(" -> "))));
}

QString PackageCheck::messageAt(int text, const PackageUse &use, const QString &words) const
{
    Place place = m_text.place({text, use.line});
    place.column = use.offset - lineStart(m_text.texts()[text], use.offset) + 1;
    return errorMessage(place, words);
}

} // namespace NETWEIR::Internal
