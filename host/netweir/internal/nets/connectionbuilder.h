// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "connection.h"

#include <netweir/internal/xml/reference.h>

namespace NETWEIR::Internal {

class BitLocator;
class TypeTable;

/// Divides what a definition connects to the ports of its instances into segments. Linear in the
/// expressions; nothing recurses.
class ConnectionBuilder
{
public:
    /// All have to outlive this. References to other nodes are appended to @p elsewhere.
    ConnectionBuilder(const TypeTable &types, const BitLocator &bits,
                      std::vector<Reference> *elsewhere);

    Connection connect(int item, int port, const Occurrence &expression);

private:
    void addPart(const Occurrence &part, Connection *connection);
    Segment segmentOf(const Reference &reference);

    const TypeTable &m_types;
    const BitLocator &m_bits;
    std::vector<Reference> *m_elsewhere;
};

} // namespace NETWEIR::Internal
