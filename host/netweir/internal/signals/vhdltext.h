// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <string_view>

namespace NETWEIR::Internal {

/// A name or text from VHDL: UTF-8 if it is valid, otherwise Latin-1, in which VHDL is defined.
QString vhdlText(std::string_view bytes);
QString vhdlText(const QByteArray &bytes);

} // namespace NETWEIR::Internal
