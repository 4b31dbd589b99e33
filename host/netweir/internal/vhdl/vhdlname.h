// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <string_view>

namespace NETWEIR::Internal {

/// A name as VHDL compares it, and as GHDL prints it: in lower case, but an extended identifier as
/// written. Letters beyond ASCII fold as Latin-1, the character set of the language.
QByteArray foldedVhdlName(std::string_view name);
QByteArray foldedVhdlName(const QByteArray &name);

/// Whether two names are one to VHDL.
bool sameVhdlName(const QByteArray &a, const QByteArray &b);

/// The components of a selected name, such as {"work", "pkg", "comp"}, folded.
QByteArrayList foldedVhdlNames(const QByteArrayList &names);

} // namespace NETWEIR::Internal
