// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QIODevice>

namespace TARN {

/// Hands the bytes of a file to the XML reader as long as they look harmless.
///
/// The XML reader compares every attribute of a tag with every other, so that a tag with a million
/// of them would keep it busy for hours; and it follows byte order marks into other encodings than
/// the one of the format. Either ends the input here, at the cost of a look at each byte.
class GuardedInput final : public QIODevice
{
public:
    enum Verdict {
        Harmless,
        TooManyAttributes,
        OtherEncoding,
    };

    /// Attributes of one tag; a comment may hold as many quoted words.
    static constexpr int MaximumAttributes = 1000;

    /// @p source is open for reading and outlives this device.
    explicit GuardedInput(QIODevice *source);

    Verdict verdict() const { return m_verdict; }

    // QIODevice
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 maximum) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    bool isOtherEncoding(const char *data, qint64 size) const;
    qint64 harmlessSize(const char *data, qint64 size);

    QIODevice *m_source;
    Verdict m_verdict = Harmless;
    char m_quote = '\0'; ///< The open quote, null outside quotes.
    int m_quoted = 0;    ///< Quoted values since the last '<'.
};

} // namespace TARN
