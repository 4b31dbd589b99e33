// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArrayList>

namespace NETWEIR::Internal {

class TokenReader;

/// At the keyword "tran" or a similar one: adds all names in the connections of the switches to @p
/// names. Ends after the semicolon.
void readSwitches(TokenReader *reader, QByteArrayList *names);

/// The same at the keyword "alias".
void readAlias(TokenReader *reader, QByteArrayList *names);

} // namespace NETWEIR::Internal
