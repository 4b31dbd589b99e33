// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "toolmessages.h"

#include <netweir/internal/sources/preprocessedtext.h>

#include <QHash>
#include <QSet>
#include <QString>
#include <QVector>

namespace NETWEIR::Internal {

struct DesignSources;

/// Adds to the elaborator's errors what its own words leave out: that a file is read as Verilog and
/// uses words of SystemVerilog, that a name may be a type without a definition. Looks at the words
/// around a place; the cost of an error does not depend on the size of the design.
class FaultHints
{
public:
    /// @p names are the names that are types, modules or the like. All must live as long as this.
    FaultHints(const DesignSources &sources, const QVector<QByteArray> &texts,
               const QSet<QByteArray> &names);

    /// To be called for each error in turn, with its place in the texts. Changes text, advice and
    /// cause.
    void explain(ToolMessage *message, const TextLine &place);

private:
    QVector<QByteArray> wordsBefore(const TextLine &place, int column);
    bool explainLanguage(ToolMessage *message, const TextLine &place,
                         const QVector<QByteArray> &words);
    void explainType(ToolMessage *message, const QVector<QByteArray> &words) const;
    int offsetOf(const TextLine &place);

    const DesignSources &m_sources;
    const QVector<QByteArray> &m_texts;
    const QSet<QByteArray> &m_names;
    QHash<int, QVector<int>> m_lines; ///< Offset of each line, by text.
    QSet<int> m_misread;              ///< Texts with words of another language.
    int m_explained = 0;
};

} // namespace NETWEIR::Internal
