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

/// Blanks encrypted code in preprocessed text and returns where it was, and blanks the directives
/// of the encryption around open code. Line ends stay. A region without an end lasts to the end of
/// the text. Linear in the text.
QVector<EncryptedRegion> blankEncryptedCode(QByteArray *text);

} // namespace NETWEIR::Internal
