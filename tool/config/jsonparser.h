// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>

namespace Tool {

/// A JSON value that holds no others.
struct JsonValue
{
    enum Kind {
        Null,
        Flag,
        WholeNumber, ///< Without fraction and exponent, and of 64 bits at most.
        OtherNumber,
        Text,
    };
    Kind kind = Null;
    QString text; ///< The text itself, or a number as it is written.
    qint64 number = 0;
    bool flag = false;
};

/// What a parser finds, in the order of the document. Every function returns false to end the
/// parsing.
class JsonHandler
{
public:
    virtual ~JsonHandler();

    virtual bool beginObject() = 0;
    virtual bool key(const QString &key) = 0;
    virtual bool endObject() = 0;
    virtual bool beginList() = 0;
    virtual bool endList() = 0;
    virtual bool value(const JsonValue &value) = 0;
};

/// Parses JSON in UTF-8, with or without a byte order mark, and hands it on piece by piece. Needs
/// no memory for the document and, but for a bit for each open level, none for its depth.
class JsonParser
{
public:
    /// Borrows @p json.
    explicit JsonParser(const QByteArray &json)
        : m_json(json)
    {
    }

    /// Parses the document, once. False when it is no JSON, with errorText(), or when @p handler
    /// ended the parsing.
    bool parse(JsonHandler *handler);

    /// What is wrong with the JSON, with line and column, and what to do about it.
    QString errorText() const { return m_error; }

    /// How many bytes have been read: up to the end of what the handler is told, or one more.
    std::size_t bytesRead() const { return m_read; }

    /// Line, from 1, of the last of the first @p count bytes. Takes time linear in it.
    int lineAfter(std::size_t count) const;

private:
    class Cursor;
    class Events;

    bool refuse(std::size_t count, const QString &reason);
    bool checkBytes();

    const QByteArray &m_json;
    std::size_t m_read = 0;
    QString m_error;
};

} // namespace Tool
