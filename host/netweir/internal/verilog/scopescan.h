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

/// A block that other texts may need: a package, or a type or import outside of packages and
/// modules, which all later texts see.
struct ScopeBlock
{
    QByteArray package; ///< Its name; null for types and imports.
    TextRange range;
    int line = 0;
    QSet<QByteArray> types;
    QVector<PackageUse> uses; ///< One for each package.
    /// The imported names; a null name stands for everything in the package.
    QVector<QPair<QByteArray, QByteArray>> imports;
};

/// The declarations of a text for other texts, and its uses of theirs. Types are names that a
/// parser must know before their use: type definitions and classes.
struct TextScopes
{
    QVector<ScopeBlock> blocks;
    QVector<PackageUse> uses; ///< Outside of blocks, one for each package.
    QSet<QByteArray> types;   ///< All types declared in the text, including type parameters.
};

/// Finds packages, types and their uses in preprocessed text. Directives in the text may change the
/// language. It is not a parser: it accepts any text, and time and memory are linear.
TextScopes scanScopes(const QByteArray &text, bool systemVerilog);

/// A name and its position in a text.
struct NameMention
{
    QByteArray name;
    int offset = 0;
};

/// The positions at which the text mentions @p names without a scope, in order.
QVector<NameMention> mentionsOf(const QSet<QByteArray> &names, const QByteArray &text);

} // namespace NETWEIR::Internal
