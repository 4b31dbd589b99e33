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
/// Owns one byte per bit. Finding the marks of an instance takes constant time.
class InstanceMarks
{
public:
    /// False when the instances have too many bits. @p marked is indexed by the number of the
    /// definition.
    static bool fits(const InstanceTree &tree, const std::vector<MarkedDefinition> &marked);

    /// Gives each instance the marks of its definition. The instances must fit.
    void fill(const InstanceTree &tree, const std::vector<MarkedDefinition> &marked);

    /// The marks of an instance, from @p bit on.
    quint8 *at(int instance, qint64 bit = 0);
    const quint8 *at(int instance, qint64 bit = 0) const;

private:
    std::vector<qint64> m_first; ///< First bit of each instance.
    Marks m_marks;
};

} // namespace NETWEIR::Internal
