// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "connection.h"
#include "elsewherereference.h"

#include <netweir/internal/xml/reference.h>

namespace NETWEIR::Internal {

class BitLocator;
class TypeTable;

/// Divides the connections of the instances' ports in a definition into segments. Linear in the
/// expressions and without recursion.
class ConnectionBuilder
{
public:
    /// All arguments must outlive this object. References to other nodes are appended to @p
    /// elsewhere.
    ConnectionBuilder(const TypeTable &types, const BitLocator &bits,
                      std::vector<ElsewhereReference> *elsewhere);

    Connection connect(int item, int port, const Occurrence &expression);

private:
    void addPart(const Occurrence &part, Connection *connection);
    Segment segmentOf(const Reference &reference);

    const TypeTable &m_types;
    const BitLocator &m_bits;
    std::vector<ElsewhereReference> *m_elsewhere;
};

} // namespace NETWEIR::Internal
