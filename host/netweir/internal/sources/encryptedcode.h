// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QVector>

namespace NETWEIR::Internal {

/// Lines of a text, counted from 1, from the directive that begins encrypted code to the one that
/// ends it.
struct EncryptedRegion
{
    int first = 0;
    int last = 0;
};

/// Blanks encrypted code in preprocessed text and returns its regions. Also blanks the encryption
/// directives around readable code. Keeps line ends. A region without an end extends to the end of
/// the text. Linear in the text.
QVector<EncryptedRegion> blankEncryptedCode(QByteArray *text);

} // namespace NETWEIR::Internal
