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

/// Adds hints to the errors of the elaborator: that a file is read as Verilog but uses keywords of
/// SystemVerilog, or that a name may be a type without a definition. Reads the words around a
/// place, so the cost of an error does not depend on the size of the design.
class FaultHints
{
public:
    /// @p names are the names of types, modules and the like. All arguments must outlive this
    /// object.
    FaultHints(const DesignSources &sources, const QVector<QByteArray> &texts,
               const QSet<QByteArray> &names);

    /// Call it for each error in order, with its line in the texts. Changes text, advice and
    /// cause.
    void explain(ToolMessage *message, const TextLine &line);

private:
    QVector<QByteArray> wordsBefore(const TextLine &line, int column);
    bool explainLanguage(ToolMessage *message, const TextLine &line,
                         const QVector<QByteArray> &words);
    void explainType(ToolMessage *message, const QVector<QByteArray> &words) const;
    int offsetOf(const TextLine &line);

    const DesignSources &m_sources;
    const QVector<QByteArray> &m_texts;
    const QSet<QByteArray> &m_names;
    QHash<int, QVector<int>> m_lines; ///< Offsets of the lines, by text.
    QSet<int> m_misread;              ///< Texts with keywords of another language.
    int m_explained = 0;
};

} // namespace NETWEIR::Internal
