// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/ground/textrange.h>

#include <QByteArray>
#include <QPair>
#include <QSet>
#include <QVector>

namespace NETWEIR::Internal {

/// The first use of a package: "import NAME::..." or "NAME::...".
struct PackageUse
{
    QByteArray package;
    int offset = 0; ///< In the text.
    int line = 0;
    bool imported = false; ///< Here or later.
};

/// What other texts may need of a text: a package, or a type or import outside of packages and
/// modules, which all texts behind see.
struct ScopeBlock
{
    QByteArray package; ///< Its name; null for types and imports.
    TextRange range;
    int line = 0;
    QSet<QByteArray> types;
    QVector<PackageUse> uses; ///< One for each package.
    /// What an import brings, a null name for all that is in the package.
    QVector<QPair<QByteArray, QByteArray>> imports;
};

/// What a text declares for others, and what it needs of others. Types are the names that a parser
/// has to know before they are used: those of type definitions and classes.
struct TextScopes
{
    QVector<ScopeBlock> blocks;
    QVector<PackageUse> uses; ///< Outside of blocks, one for each package.
    QSet<QByteArray> types;   ///< All that are declared in the text, type parameters too.
};

/// Finds packages, types and their uses in preprocessed text. Directives may change the language
/// within it. No parser: any text is accepted, time and memory are linear in it.
TextScopes scanScopes(const QByteArray &text, bool systemVerilog);

/// A name and where it stands in a text.
struct NameMention
{
    QByteArray name;
    int offset = 0;
};

/// Where the text mentions @p names without a scope, in the order of the text.
QVector<NameMention> mentionsOf(const QSet<QByteArray> &names, const QByteArray &text);

} // namespace NETWEIR::Internal
