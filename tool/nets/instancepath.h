// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace NETWEIR {
class Hierachy;
class RtlNetlist;
} // namespace NETWEIR

namespace Tool {

/// The node of the design with that path: the names of the instances from the top on, with '/'
/// between them, as in the names of its nets; a slash at the end is allowed. Null when there is
/// none; then @p error says how far the path leads.
NETWEIR::Hierachy *findInstance(NETWEIR::RtlNetlist *netlist, const QString &written,
                                QString *error);

} // namespace Tool
