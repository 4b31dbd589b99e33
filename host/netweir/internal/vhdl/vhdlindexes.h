// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "vhdlfile.h"

#include <QByteArray>
#include <QVector>

namespace NETWEIR::Internal {

/// A signal or port that is indexed by something that is not constant, as a memory is.
struct VhdlComputedIndex
{
    int scope = 0;   ///< In which it is declared; the root for ports and signals of the entity.
    QByteArray name; ///< Folded, with fields: "rec.mem".
    /// The number of indexes behind the name in front of the computed one: 0 for "mem(i)", 1 for
    /// "mem(3)(i)". Ranges, as in "mem(7 downto 4)(i)", do not count.
    int depth = 0;
};

/// The computed indexes in an architecture, in the order of @p text. @p entity may be null.
///
/// An index is computed if it contains the name of a signal, port, variable or parameter of a
/// subprogram at any depth. Constants, generics, and parameters of loops and generates are
/// constant, unless their values or ranges are computed. Names of packages count as constant.
/// Linear in the text; not recursive.
QVector<VhdlComputedIndex> computedIndexes(const QByteArray &text, const VhdlUnit &architecture,
                                           const VhdlUnit *entity);

} // namespace NETWEIR::Internal
