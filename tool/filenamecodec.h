// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTextCodec>

namespace Tool {

/// UTF-8 that keeps every byte, for arguments and the names of files.
///
/// On the system a file name is a row of bytes, and old ones are no UTF-8. Each byte that is none
/// becomes one of the code units U+DC80 to U+DCFF, which occur in no text, and back. So the tool
/// opens and names such files in every locale, also in "C".
class FileNameCodec final : public QTextCodec
{
public:
    /// Makes it the codec for everything from and to the system.
    static void install();

    QByteArray name() const override { return "UTF-8 with all bytes"; }
    /// Not registered for any other.
    int mibEnum() const override { return 30000; }

protected:
    QString convertToUnicode(const char *bytes, int length, ConverterState *state) const override;
    QByteArray convertFromUnicode(const QChar *text, int length,
                                  ConverterState *state) const override;

private:
    FileNameCodec() = default;
};

} // namespace Tool
