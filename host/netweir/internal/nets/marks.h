// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "countingloops.h"
#include "layout.h"

#include <netweir/internal/xml/elaborateddesign.h>

#include <QHash>
#include <QMultiHash>

namespace NETWEIR::Internal {

/// Finds what drives the nets of a definition from within, once for all its instances: assignments,
/// outputs of routines and instances, pins of stubs. What needs an instance to be known is left in
/// the definition: writes to other nodes and connections of ports.
class MarkReader
{
public:
    MarkReader(ElaboratedDesign *design, const Layout &layout, Definition *definition);

    /// The definitions of all instances have to be marked before.
    void read();

private:
    void markWrites(const Occurrence &target, int marks);
    void markWrite(const Reference &reference, const IndexEvaluator &indexes, int marks);
    void markVariable(const Variable &variable, int marks);
    void markSupplies();
    void markOmitted();
    void markOmitted(const OmittedWrite &write);
    void markOwn(const OmittedWrite &write);
    void readPins(int item);
    void readPin(int item, const pugi::xml_node &pin);
    void connect(int item, int port, const pugi::xml_node &expression);
    void addSegments(const pugi::xml_node &expression, int scope, Connection *connection);
    void addSegment(const Reference &reference, Connection *connection);
    void addSegment(Segment::Kind kind, qint64 bit, qint64 width, Connection *connection);
    void markDrivenWithin(const Connection &connection);
    bool isConnectable(const Occurrence &expression) const;
    Variable *variableOf(const Reference &reference) const;

    ElaboratedDesign *m_design;
    const Layout &m_layout;
    Definition *m_definition;
    IndexEvaluator m_indexes; ///< With no variable known.
    CountingLoops m_loops;
    QMultiHash<QString, int> m_nets; ///< Variables by name; filled for omitted writes only.
    QHash<qint64, int> m_buses;      ///< Leafs by their place; likewise.
};

} // namespace NETWEIR::Internal
