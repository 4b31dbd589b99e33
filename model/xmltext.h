// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace TARN {

/// True when XML 1.0 can represent @p text: no control characters but tab, line feed and carriage
/// return, no unpaired surrogate, neither U+FFFE nor U+FFFF.
bool isXmlText(const QString &text);

} // namespace TARN
