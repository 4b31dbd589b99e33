// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "../netweir_global.h"

#include <QSet>
#include <QString>

#include <memory>

namespace NETWEIR {

class RtlNetlist;

namespace Internal {

/// What the reader has to know of a design beyond the elaborated XML itself.
struct ReadOptions
{
    QString topModule; ///< Source name of the top module.
    /// Modules without a source, written as stubs: their pins have no known direction, so that
    /// whatever they connect to counts as driven. They are no hierarchy nodes.
    QSet<QString> unknownModules;
    /// Primitives of the device, whose pins have real directions. They are no hierarchy nodes
    /// either.
    QSet<QString> primitiveModules;
};

/// Reads the elaborator's XML file at @p xmlPath into a netlist. Null when the file is not complete
/// or not of the expected form; @p error then says what and where.
NETWEIR_EXPORT std::unique_ptr<RtlNetlist>
readElaboratedXml(const QString &xmlPath, const ReadOptions &options, QString *error);

} // namespace Internal
} // namespace NETWEIR
