// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "connectionbuilder.h"

#include "bitlocator.h"

#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/xml/attributes.h>
#include <netweir/internal/xml/pinexpression.h>

namespace NETWEIR::Internal {

ConnectionBuilder::ConnectionBuilder(const TypeTable &types, const BitLocator &bits,
                                     std::vector<ElsewhereReference> *elsewhere)
    : m_types(types)
    , m_bits(bits)
    , m_elsewhere(elsewhere)
{
}

Connection ConnectionBuilder::connect(int item, int port, const Occurrence &expression)
{
    Connection connection;
    connection.item = item;
    connection.port = port;
    std::vector<pugi::xml_node> pending{expression.node};
    while (!pending.empty()) {
        ReadGuard::check();
        const pugi::xml_node part = pending.back();
        pending.pop_back();
        if (is(part, "concat")) {
            pending.push_back(part.first_child());
            pending.push_back(part.last_child());
        } else {
            addPart({part, expression.scope}, &connection);
        }
    }
    return connection;
}

/// Adds the bits of @p part. The rest of its width counts as driven.
void ConnectionBuilder::addPart(const Occurrence &part, Connection *connection)
{
    const qint64 end = connection->width + m_types.at(m_types.typeOf(part.node)).width;
    const bool isExtended = is(part.node, "extend") || is(part.node, "extends");
    const pugi::xml_node inner = isExtended ? part.node.first_child() : part.node;
    if (isConnectable(inner) && !isSelectionOfParts(inner)) {
        std::vector<Reference> references;
        forEachReference({inner, part.scope}, [&references](const Reference &reference) {
            references.push_back(reference);
        });
        // Most significant first; the segments grow from the other end.
        for (auto reference = references.rbegin(); reference != references.rend(); ++reference)
            connection->add(segmentOf(*reference));
    }
    if (connection->width < end)
        connection->add({Segment::Kind::Driven, -1, 0, end - connection->width});
}

Segment ConnectionBuilder::segmentOf(const Reference &reference)
{
    const pugi::xml_node outermost =
        reference.steps.empty() ? reference.node : reference.steps.back();
    const qint64 width = m_types.at(m_types.typeOf(outermost)).width;
    if (reference.isHierarchical()) {
        m_elsewhere->push_back(m_bits.elsewhere(reference));
        return {Segment::Kind::Elsewhere, countOf(*m_elsewhere) - 1, 0, width};
    }
    const BitRange range = m_bits.bitsOf(reference);
    if (range.width == width && range.low + width <= range.end)
        return {Segment::Kind::Own, -1, range.low, width};
    return {Segment::Kind::Driven, -1, 0, width};
}

} // namespace NETWEIR::Internal
