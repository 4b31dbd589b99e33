// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/verilog/modulescan.h>

#include <QByteArray>
#include <QHash>
#include <QVector>

namespace NETWEIR::Internal {

/// Instances of primitives that users define, as the elaborator takes them: with a name, without
/// strengths and delays. Libraries of cells write them without a name.
class PrimitiveInstances
{
public:
    explicit PrimitiveInstances(const ModuleScan &scan);

    /// The text number @p index with such instances only. Lines keep their numbers, and what stands
    /// in front of the first inserted name of a line its column.
    QByteArray named(int index, const QByteArray &text) const;

private:
    struct Edits
    {
        QVector<TextRange> blanked;
        QVector<int> unnamed; ///< Rising.
    };

    QHash<int, Edits> m_edits; ///< By text.
};

} // namespace NETWEIR::Internal
