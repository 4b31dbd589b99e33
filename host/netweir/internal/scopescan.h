// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "../netweir_global.h"

#include "modulescan.h"

#include <QByteArray>
#include <QSet>
#include <QVector>

namespace NETWEIR {
namespace Internal {

/// The first use of a package: "import NAME::..." or "NAME::...".
struct PackageUse
{
    QByteArray package;
    int offset = 0; ///< In the text.
    int line = 0;
    bool imported = false; ///< Here or later.
};

/// What other texts may need of a text: a package, or the types and imports that stand between two
/// packages and outside of modules.
struct ScopeBlock
{
    QByteArray package; ///< Its name; null for types and imports.
    QVector<TextRange> ranges;
    int line = 0;
    QSet<QByteArray> types;
    QVector<PackageUse> uses; ///< One for each package.
};

/// An import outside of modules and packages: all texts behind see what it brings.
struct SharedImport
{
    QByteArray package;
    QByteArray name; ///< Null for all names.
};

/// What a text declares for others, and what it needs of others. Types are the names that a parser
/// has to know before they are used: those of type definitions and classes.
struct TextScopes
{
    QVector<ScopeBlock> blocks;
    QVector<PackageUse> uses; ///< Outside of blocks, one for each package.
    QVector<SharedImport> sharedImports;
    QSet<QByteArray> types; ///< All that are declared in the text, type parameters too.
};

/// Finds packages, types and their uses in preprocessed SystemVerilog text. No parser: any text is
/// accepted, time and memory are linear in it.
NETWEIR_EXPORT TextScopes scanScopes(const QByteArray &text);

/// Which of @p names the text mentions, in the order of the text.
NETWEIR_EXPORT QVector<QByteArray> mentionedNames(const QByteArray &text,
                                                  const QSet<QByteArray> &names);

} // namespace Internal
} // namespace NETWEIR
