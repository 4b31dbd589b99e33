// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "mark.h"

#include <netweir/internal/ground/itemat.h>

namespace NETWEIR::Internal {

class InstanceTree;
struct MarkedDefinition;

/// The marks of all bits of all instances of a design.
///
/// Takes a byte for each bit, which it owns, and finds those of an instance in one step.
class InstanceMarks
{
public:
    /// Gives each instance the marks of its definition; @p marked is by number. False when the
    /// design has too many bits.
    bool fill(const InstanceTree &tree, const std::vector<MarkedDefinition> &marked);

    /// The marks of an instance, of which @p bit is the first to be looked at.
    quint8 *at(int instance, qint64 bit = 0);
    const quint8 *at(int instance, qint64 bit = 0) const;

private:
    std::vector<qint64> m_first; ///< Of each instance, its first bit.
    Marks m_marks;
};

} // namespace NETWEIR::Internal
