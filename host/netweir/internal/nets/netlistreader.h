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

/// Reads the elaborator's XML file at @p xmlPath into a netlist. Null when the file is not complete
/// or not of the expected form, or when reading was cancelled or took too much time or memory;
/// @p error then says what and where.
std::unique_ptr<RtlNetlist> readElaboratedXml(const QString &xmlPath, const ReadOptions &options,
                                              QString *error);

} // namespace NETWEIR::Internal
