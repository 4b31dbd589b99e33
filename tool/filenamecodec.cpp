// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "filenamecodec.h"

namespace Tool {

namespace {

constexpr ushort FirstByte = 0xDC00; ///< The code unit for the byte 0; those below 0x80 are ASCII.

bool isByte(QChar c)
{
    return c.unicode() >= FirstByte + 0x80 && c.unicode() <= FirstByte + 0xFF;
}

/// Length of the UTF-8 sequence that begins at @p bytes, as its first byte says; 0 for none.
int sequenceLength(uchar first)
{
    if (first < 0x80)
        return 1;
    if (first >= 0xC2 && first <= 0xDF)
        return 2;
    if (first >= 0xE0 && first <= 0xEF)
        return 3;
    return first >= 0xF0 && first <= 0xF4 ? 4 : 0;
}

/// The character of one sequence, null when these bytes are no UTF-8.
QString decodedSequence(const char *bytes, int length)
{
    const QString decoded = QString::fromUtf8(bytes, length);
    const bool isWhole = decoded.size() == (length == 4 ? 2 : 1);
    return isWhole && decoded.toUtf8() == QByteArray::fromRawData(bytes, length) ? decoded
                                                                                 : QString();
}

} // namespace

void FileNameCodec::install()
{
    // Qt keeps all codecs and deletes them.
    QTextCodec::setCodecForLocale(new FileNameCodec);
}

QString FileNameCodec::convertToUnicode(const char *bytes, int length, ConverterState *) const
{
    QString text;
    text.reserve(length);
    for (int i = 0; i < length;) {
        const int count = sequenceLength(uchar(bytes[i]));
        const QString decoded =
            count > 0 && count <= length - i ? decodedSequence(bytes + i, count) : QString();
        if (decoded.isNull())
            text += QChar(ushort(FirstByte + uchar(bytes[i++])));
        else
            i += count;
        text += decoded;
    }
    return text;
}

QByteArray FileNameCodec::convertFromUnicode(const QChar *text, int length, ConverterState *) const
{
    QByteArray bytes;
    bytes.reserve(length);
    for (int i = 0; i < length;) {
        int end = i;
        while (end < length && (!isByte(text[end]) || (end > i && text[end - 1].isHighSurrogate())))
            ++end;
        bytes += QString::fromRawData(text + i, end - i).toUtf8();
        if (end < length)
            bytes += char(text[end++].unicode() - FirstByte);
        i = end;
    }
    return bytes;
}

} // namespace Tool
