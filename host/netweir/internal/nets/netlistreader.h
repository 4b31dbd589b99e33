// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/xml/readoptions.h>

#include <QString>

#include <memory>

namespace NETWEIR {
class RtlNetlist;
} // namespace NETWEIR

namespace NETWEIR::Internal {

/// Reads the XML file of the elaborator at @p xmlPath into a netlist. Null when the file is
/// incomplete or has an unexpected form, and when reading is cancelled or takes too much time or
/// memory; @p error then says why and where.
std::unique_ptr<RtlNetlist> readElaboratedXml(const QString &xmlPath, const ReadOptions &options,
                                              QString *error);

} // namespace NETWEIR::Internal
