// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "../netweir_global.h"

#include "scopescan.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <QStringList>
#include <QVector>

namespace NETWEIR {
namespace Internal {

class PreprocessedText;
struct DesignSources;

/// One file that the elaborator is given.
struct TextPiece
{
    int text = -1;
    int package = -1; ///< Index in the text's scopes of the only package in it; else a whole text.
};

/// The order in which the elaborator reads the texts: packages and types come before their uses,
/// and everything else stays in the order of the project.
///
/// Packages of library files, and those of files that need each other, come first, as pieces of
/// their own. Time and memory are linear in the texts.
class NETWEIR_EXPORT SourceOrder
{
public:
    SourceOrder(const DesignSources &sources, const PreprocessedText &text);

    const QVector<TextPiece> &pieces() const { return m_pieces; }

    /// Types that any text declares.
    const QSet<QByteArray> &types() const { return m_types; }

    /// Content of a piece, made of @p text, which is as long as the text that was scanned. Line and
    /// column of everything in it stay.
    QByteArray contentOf(const TextPiece &piece, const QByteArray &text) const;

    /// What cannot be put into order: packages that import each other in a circle, and imports of
    /// packages that no file declares.
    QStringList errors() const;

    /// Names in front of a "::" that are neither packages nor types. A reason when the elaborator
    /// fails.
    QStringList suspicions() const;

    /// The packages and other names that errors() and suspicions() name as undeclared, in the order
    /// of their uses.
    QByteArrayList missingPackages() const;

    /// Whether a text uses what errors() or suspicions() name.
    bool usesMissing(int text) const { return m_usesMissing[text]; }

private:
    /// Where a package is declared.
    struct PackagePlace
    {
        int text;
        int package; ///< Index in the scopes of the text.
    };

    /// Who makes a type known to all texts behind.
    struct TypeOwner
    {
        int text;
        QByteArray package; ///< That it imports the type from; null for a type of its own.
    };

    void scan();
    void indexPackages();
    void findMissing();
    void findTypeUses();
    QHash<QByteArray, TypeOwner> typeOwners() const;
    void findOrder();
    void hoistLibraries();
    void hoist(int package);
    QVector<int> orderOfTexts();
    QVector<int> neededTexts(int text) const;
    QVector<int> neededPackages(int package) const;
    QString circleError() const;
    QStringList messagesOfMissing(bool imported) const;
    QHash<QByteArray, QString> misreadPackages() const;
    bool isMissing(const PackageUse &use) const;
    QVector<PackageUse> usesOf(int text) const;
    QString messageAt(int text, const PackageUse &use, const QString &words) const;
    const PackageDeclaration &declaration(int package) const;

    const DesignSources &m_sources;
    const PreprocessedText &m_text;
    QVector<TextScopes> m_scopes;          ///< By text.
    QVector<PackagePlace> m_packages;      ///< Those that uses mean.
    QHash<QByteArray, int> m_packageOf;    ///< Index in m_packages; sources win over libraries.
    QSet<QByteArray> m_types;              ///< All of the design.
    QVector<bool> m_usesMissing;           ///< By text.
    QVector<QVector<int>> m_typeProviders; ///< By text: texts whose types it uses.
    QVector<bool> m_hoisted;               ///< By package: comes first, as a piece of its own.
    QVector<TextPiece> m_pieces;
};

} // namespace Internal
} // namespace NETWEIR
