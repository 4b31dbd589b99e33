// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QVector>

namespace NETWEIR::Internal {

class DesignScopes;
class PreprocessedText;
struct DesignSources;

/// The types and imports outside of packages that texts and blocks use, by their ids.
struct TypeUses
{
    QVector<QVector<int>> ofText;  ///< By text: those of other texts.
    QVector<QVector<int>> ofBlock; ///< By id: those of other blocks.
};

/// Looks for the names of types in all texts. Linear in them.
TypeUses findTypeUses(const DesignSources &sources, const PreprocessedText &text,
                      const DesignScopes &scopes);

} // namespace NETWEIR::Internal
