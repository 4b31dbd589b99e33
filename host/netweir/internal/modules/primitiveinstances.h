// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/verilog/modulescan.h>

#include <QByteArray>
#include <QHash>
#include <QMap>
#include <QVector>

namespace NETWEIR::Internal {

/// Rewrites instances of user-defined primitives for the elaborator: with a name, without strengths
/// and delays. Cell libraries have them without names.
class PrimitiveInstances
{
public:
    explicit PrimitiveInstances(const ModuleScan &scan);

    /// The text @p index with rewritten instances and with @p insertions, which have no line ends,
    /// at their offsets. Lines keep their numbers. Columns before the first inserted name of a line
    /// do not change.
    QByteArray named(int index, const QByteArray &text,
                     QMap<int, QByteArray> insertions = {}) const;

private:
    struct Edits
    {
        QVector<TextRange> blanked;
        QVector<int> unnamed; ///< In rising order.
    };

    QHash<int, Edits> m_edits; ///< Edits by text.
};

} // namespace NETWEIR::Internal
