// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "jsonparser.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>
#include <string>

#include <nlohmann/json.hpp>

namespace Tool {

namespace {

using nlohmann::json;

/// The reason in the message of an error, without what line and column tell already and without
/// the token, which can be as long as the document:
/// "[...] parse error at line 1, column 2: syntax error while parsing value - REASON; last read:
/// '...'; expected ']'"
QString reasonOf(const std::string &message)
{
    const std::string position = ", column ";
    const std::string token = "; last read: ";
    const std::string expected = "; expected ";
    std::size_t begin = message.find(position);
    begin = begin == std::string::npos ? 0 : message.find(": ", begin) + 2;
    const std::size_t end = message.find(token, begin);
    std::string reason = message.substr(begin, end == std::string::npos ? end : end - begin);
    const std::size_t rest = message.rfind(expected);
    if (end != std::string::npos && rest != std::string::npos && rest > end)
        reason += message.substr(rest);
    return QString::fromStdString(reason);
}

/// Qt would drop a byte order mark at the beginning of the text.
QString textOf(const std::string &utf8)
{
    constexpr char FirstOfMark = '\xef';
    if (!utf8.empty() && utf8.front() == FirstOfMark)
        return QString::fromStdString('.' + utf8).mid(1);
    return QString::fromStdString(utf8);
}

bool isContinuation(char c)
{
    return (static_cast<unsigned char>(c) & 0xc0U) == 0x80U;
}

} // namespace

JsonHandler::~JsonHandler() = default;

/// Goes over the bytes and keeps their number, which the library tells only after errors.
class JsonParser::Cursor
{
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char *;
    using reference = const char &;

    Cursor(const char *position, std::size_t *read)
        : m_position(position)
        , m_read(read)
    {
    }
    reference operator*() const { return *m_position; }
    Cursor &operator++()
    {
        ++m_position;
        ++*m_read;
        return *this;
    }
    bool operator==(const Cursor &other) const { return m_position == other.m_position; }
    bool operator!=(const Cursor &other) const { return m_position != other.m_position; }

private:
    const char *m_position;
    std::size_t *m_read;
};

/// What the library calls for each piece.
class JsonParser::Events
{
public:
    Events(JsonParser *parser, JsonHandler *handler)
        : m_parser(parser)
        , m_handler(handler)
    {
    }

    bool null() { return m_handler->value({}); }
    bool boolean(bool flag) { return m_handler->value({JsonValue::Flag, {}, 0, flag}); }
    bool number_integer(json::number_integer_t number) { return whole(number); }
    bool number_unsigned(json::number_unsigned_t number)
    {
        if (number <= json::number_unsigned_t(std::numeric_limits<qint64>::max()))
            return whole(qint64(number));
        return m_handler->value({JsonValue::OtherNumber, QString::number(number), 0, false});
    }
    bool number_float(json::number_float_t, const std::string &text) { return otherNumber(text); }
    bool string(const std::string &text)
    {
        return m_handler->value({JsonValue::Text, textOf(text), 0, false});
    }
    bool binary(const json::binary_t &) { return false; }
    bool start_object(std::size_t) { return m_handler->beginObject(); }
    bool key(const std::string &key) { return m_handler->key(textOf(key)); }
    bool end_object() { return m_handler->endObject(); }
    bool start_array(std::size_t) { return m_handler->beginList(); }
    bool end_array() { return m_handler->endList(); }

    bool parse_error(std::size_t position, const std::string &token, const json::exception &error)
    {
        constexpr int NumberOverflow = 406;
        if (error.id == NumberOverflow)
            return otherNumber(token);
        const QString reason = reasonOf(error.what());
        if (reason.contains(QLatin1String("ill-formed UTF-8")))
            return m_parser->refuse(
                position, QStringLiteral("The text is not encoded in UTF-8. Convert it."));
        return m_parser->refuse(
            position, QStringLiteral("Not well-formed JSON: %1. Correct it.").arg(reason));
    }

private:
    bool whole(qint64 number)
    {
        return m_handler->value({JsonValue::WholeNumber, QString::number(number), number, false});
    }
    bool otherNumber(const std::string &text)
    {
        return m_handler->value({JsonValue::OtherNumber, QString::fromStdString(text), 0, false});
    }

    JsonParser *m_parser;
    JsonHandler *m_handler;
};

bool JsonParser::parse(JsonHandler *handler)
{
    if (!checkBytes())
        return false;
    Events events(this, handler);
    return json::sax_parse(Cursor(m_json.constData(), &m_read),
                           Cursor(m_json.constData() + m_json.size(), &m_read), &events);
}

/// Refuses what the library would take for the end of the document, or for a strange character.
bool JsonParser::checkBytes()
{
    // Every other encoding has such a byte among its first four.
    const char *begin = m_json.constData();
    const char *end = begin + m_json.size();
    const bool isOtherEncoding = std::any_of(begin, std::min(begin + 4, end), [](char c) {
        return c == '\0' || c == '\xfe' || c == '\xff';
    });
    if (isOtherEncoding)
        return refuse(1, QStringLiteral("The text is not encoded in UTF-8. Convert it."));
    const char *null = std::find(begin, end, '\0');
    return null == end ||
           refuse(std::size_t(null - begin) + 1,
                  QStringLiteral("Not well-formed JSON: null character. Remove it."));
}

/// At the last of the first @p count bytes. Behind the last byte of all, @p count is one more than
/// there are.
bool JsonParser::refuse(std::size_t count, const QString &reason)
{
    const char *begin = m_json.constData();
    const char *character = begin + std::min(count - 1, std::size_t(m_json.size()));
    const auto lineBegin =
        std::find(std::make_reverse_iterator(character), std::make_reverse_iterator(begin), '\n')
            .base();
    const auto before =
        std::count_if(lineBegin, character, [](char c) { return !isContinuation(c); });
    m_error = QStringLiteral("Line %1, column %2: %3")
                  .arg(QString::number(lineAfter(count)), QString::number(before + 1), reason);
    return false;
}

int JsonParser::lineAfter(std::size_t count) const
{
    const std::size_t before = std::min(count - 1, std::size_t(m_json.size()));
    return 1 + int(std::count(m_json.constData(), m_json.constData() + before, '\n'));
}

} // namespace Tool
