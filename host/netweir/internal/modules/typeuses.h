// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QVector>

namespace NETWEIR::Internal {

class DesignScopes;
class PreprocessedText;
struct DesignSources;

/// The types and imports outside of packages that texts and blocks use, as ids of blocks.
struct TypeUses
{
    QVector<QVector<int>> ofText;  ///< By text: blocks of other texts.
    QVector<QVector<int>> ofBlock; ///< By id of a block: other blocks.
};

/// Searches all texts for the names of types. Linear in the texts.
TypeUses findTypeUses(const DesignSources &sources, const PreprocessedText &text,
                      const DesignScopes &scopes);

} // namespace NETWEIR::Internal
