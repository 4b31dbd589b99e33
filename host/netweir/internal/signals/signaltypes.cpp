// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "signaltypes.h"

#include "wavestream.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/ground/messages.h>
#include <netweir/internal/ground/readguard.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace NETWEIR::Internal {

namespace {

/// The kinds of types and ranges in the file.
enum Code : quint8 {
    CodeEnumerationOfTwo = 22,
    CodeEnumeration = 23,
    CodeInteger = 25,
    CodeLongInteger = 26,
    CodeReal = 27,
    CodePhysical = 28,
    CodeLongPhysical = 29,
    CodeArray = 31,
    CodeRecord = 32,
    CodeScalarSubtype = 34,
    CodeArraySubtype = 35,
    CodeOpenArraySubtype = 37,
    CodeRecordSubtype = 38,
    CodeOpenRecordSubtype = 39,
};

constexpr quint8 CodeIsDown = 0x80;
constexpr int BytesOfReal = 8;
constexpr int Deepest = 100; ///< Arrays and records within each other.
constexpr qint64 IntegerBits = 32;

qint64 product(qint64 a, qint64 b)
{
    return b != 0 && a > SignalTypes::Most / b ? SignalTypes::Most : a * b;
}

/// The bits of the smallest number that holds all of @p value and 0: 0 for 0.
int bitsOf(quint64 value)
{
    int bits = 0;
    for (; value != 0; value >>= 1)
        ++bits;
    return bits;
}

/// A number without sign, or of two's complement if there are negative ones. At least one bit.
int bitsOfRange(qint64 low, qint64 high)
{
    if (low >= 0)
        return std::max(1, bitsOf(quint64(high)));
    const int negative = bitsOf(~quint64(low));
    return 1 + std::max(negative, high > 0 ? bitsOf(quint64(high)) : 0);
}

QString damage()
{
    return Text::tr("a type is damaged");
}

} // namespace

void SignalTypes::read(WaveStream *stream, const WaveStrings &strings)
{
    stream->skip(4);
    const qint64 types = stream->word();
    for (qint64 i = 0; i < types && stream->isGood(); ++i) {
        ReadGuard::check();
        readType(stream, strings);
    }
    if (stream->byte() != 0)
        stream->fail(damage());
}

void SignalTypes::readWellKnown(WaveStream *stream)
{
    stream->skip(4);
    while (stream->byte() != 0) { // Boolean, bit or std_ulogic.
        ReadGuard::check();
        const int type = checked(stream, stream->count());
        if (!at(type).letters.empty())
            itemAt(m_types, type).kind = SignalType::Net;
    }
    for (SignalType &type : m_types) {
        ReadGuard::check();
        if (!type.isScalar()) {
            count(&type);
        } else if (at(type.base).kind == SignalType::Net) {
            type.kind = SignalType::Net;
            type.bits = 1;
        }
    }
}

int SignalTypes::checked(WaveStream *stream, quint64 number) const
{
    if (number > 0 && number < m_numbers.size())
        return itemAt(m_numbers, qint64(number));
    stream->fail(Text::tr("a type is missing"));
    return 0;
}

std::string SignalTypes::readValue(WaveStream *stream, int type, const WaveStrings &strings) const
{
    const SignalType &scalar = at(type);
    if (!scalar.isScalar() || scalar.kind == SignalType::NoNet) {
        stream->fail(damage());
        return {};
    }
    if (scalar.letters.empty())
        return std::to_string(stream->integer());
    const quint8 letter = stream->byte();
    if (letter < scalar.letters.size())
        return itemAt(strings, itemAt(scalar.letters, letter));
    stream->fail(damage());
    return {};
}

std::string SignalTypes::indexText(const Dimension &dimension, int value,
                                   const WaveStrings &strings) const
{
    if (dimension.letters < 0)
        return std::to_string(value);
    return itemAt(strings, itemAt(at(dimension.letters).letters, value));
}

void SignalTypes::readType(WaveStream *stream, const WaveStrings &strings)
{
    const quint8 code = stream->byte();
    stream->count(); // The name.
    switch (code) {
    case CodeEnumerationOfTwo:
    case CodeEnumeration:
        return readEnumeration(stream, strings);
    case CodeInteger:
    case CodeLongInteger: {
        SignalType integer;
        integer.kind = SignalType::Number;
        integer.bits = IntegerBits;
        return add(integer);
    }
    case CodeReal:
        return add({});
    case CodePhysical:
    case CodeLongPhysical:
        readUnits(stream);
        return add({});
    case CodeScalarSubtype:
        return readSubtype(stream);
    case CodeArray:
        return readArray(stream);
    case CodeRecord:
        return readRecord(stream, strings);
    case CodeArraySubtype:
    case CodeRecordSubtype:
        return readConstrained(stream);
    case CodeOpenArraySubtype:
    case CodeOpenRecordSubtype:
        return m_numbers.push_back(checked(stream, stream->count()));
    default:
        stream->fail(Text::tr("a type has the unknown kind %1").arg(code));
    }
}

void SignalTypes::readEnumeration(WaveStream *stream, const WaveStrings &strings)
{
    SignalType type;
    const quint64 letters = stream->count();
    for (quint64 i = 0; i < letters && stream->isGood(); ++i) {
        const quint64 name = stream->count();
        if (name >= strings.size() || type.letters.size() > std::numeric_limits<quint8>::max())
            stream->fail(damage());
        type.letters.push_back(int(name));
    }
    type.kind = SignalType::Number;
    type.bits = letters < 2 ? 1 : bitsOf(letters - 1);
    add(type);
}

void SignalTypes::readUnits(WaveStream *stream)
{
    const quint64 units = stream->count();
    for (quint64 i = 0; i < units && stream->isGood(); ++i) {
        stream->count(); // The name.
        stream->integer();
    }
}

/// An enumeration keeps the bits of all its letters.
void SignalTypes::readSubtype(WaveStream *stream)
{
    SignalType type = at(checked(stream, stream->count()));
    const Range range = readRange(stream);
    if (!type.isScalar())
        stream->fail(damage());
    if (type.kind == SignalType::Number && type.letters.empty())
        type.bits =
            bitsOfRange(std::min(range.left, range.right), std::max(range.left, range.right));
    add(type);
}

/// The declaration of an array has no ranges; the type of a signal is a subtype of it.
void SignalTypes::readArray(WaveStream *stream)
{
    SignalType type;
    type.kind = SignalType::Array;
    type.isOpen = true;
    type.element = checked(stream, stream->count());
    const quint64 dimensions = stream->count();
    for (quint64 i = 0; i < dimensions && stream->isGood(); ++i) {
        Dimension dimension;
        const int index = checked(stream, stream->count());
        if (!at(index).letters.empty())
            dimension.letters = index;
        type.dimensions.push_back(dimension);
    }
    if (type.dimensions.empty())
        stream->fail(damage());
    type.depth = at(type.element).depth + 1;
    finish(stream, &type);
    add(type);
}

void SignalTypes::readRecord(WaveStream *stream, const WaveStrings &strings)
{
    SignalType type;
    type.kind = SignalType::Record;
    const quint64 fields = stream->count();
    for (quint64 i = 0; i < fields && stream->isGood(); ++i) {
        ReadGuard::check();
        const quint64 name = stream->count();
        const int field = checked(stream, stream->count());
        if (name >= strings.size())
            stream->fail(damage());
        type.fields.push_back({int(name), field});
        type.isOpen |= at(field).isOpen;
        type.depth = std::max(type.depth, at(field).depth + 1);
    }
    finish(stream, &type);
    add(type);
}

void SignalTypes::readConstrained(WaveStream *stream)
{
    m_numbers.push_back(constrained(stream, checked(stream, stream->count())));
}

/// Reads the ranges that @p type lacks, from the outside in.
int SignalTypes::constrained(WaveStream *stream, int type)
{
    ReadGuard::check();
    if (!at(type).isOpen || !stream->isGood())
        return type;
    SignalType result = at(type);
    for (Dimension &dimension : result.dimensions)
        dimension = readDimension(stream, dimension);
    if (result.kind == SignalType::Array)
        result.element = constrained(stream, result.element);
    for (SignalType::Field &field : result.fields) {
        ReadGuard::check();
        field.type = constrained(stream, field.type);
    }
    result.isOpen = false;
    finish(stream, &result);
    m_types.push_back(std::move(result));
    return countOf(m_types) - 1;
}

Dimension SignalTypes::readDimension(WaveStream *stream, const Dimension &declared) const
{
    Dimension dimension = declared;
    const Range range = readRange(stream);
    const qint64 low = std::min(range.left, range.right);
    const qint64 high = std::max(range.left, range.right);
    dimension.left = int(range.left);
    dimension.right = int(range.right);
    dimension.isDown = range.isDown;
    const bool isInteger =
        low >= std::numeric_limits<int>::min() && high <= std::numeric_limits<int>::max();
    const bool isLetter = dimension.letters >= 0 && range.hasLetters &&
                          (dimension.size() == 0 || high < countOf(at(dimension.letters).letters));
    if (range.isReal || !isInteger || (range.hasLetters != (dimension.letters >= 0)) ||
        (range.hasLetters && !isLetter))
        stream->fail(damage());
    return dimension;
}

SignalTypes::Range SignalTypes::readRange(WaveStream *stream)
{
    Range range;
    const quint8 code = stream->byte();
    range.isDown = code & CodeIsDown;
    switch (code & ~CodeIsDown) {
    case CodeEnumerationOfTwo:
    case CodeEnumeration:
        range.hasLetters = true;
        range.left = stream->byte();
        range.right = stream->byte();
        break;
    case CodeReal:
        range.isReal = true;
        stream->skip(2 * BytesOfReal);
        break;
    case CodeInteger:
    case CodeLongInteger:
    case CodePhysical:
    case CodeLongPhysical:
        range.left = stream->integer();
        range.right = stream->integer();
        break;
    default:
        stream->fail(damage());
    }
    return range;
}

void SignalTypes::finish(WaveStream *stream, SignalType *type) const
{
    if (type->depth > Deepest)
        stream->fail(Text::tr("arrays and records are nested too deeply"));
    count(type);
}

/// Counts the scalars and bits of an array or record. Those of open ones have no meaning.
void SignalTypes::count(SignalType *type) const
{
    if (type->kind == SignalType::Array) {
        type->scalars = at(type->element).scalars;
        type->bits = at(type->element).bits;
        for (const Dimension &dimension : type->dimensions) {
            type->scalars = product(type->scalars, dimension.size());
            type->bits = product(type->bits, dimension.size());
        }
        return;
    }
    type->scalars = type->bits = 0;
    for (const SignalType::Field &field : type->fields) {
        ReadGuard::check();
        type->scalars = std::min(type->scalars + at(field.type).scalars, Most);
        type->bits = std::min(type->bits + at(field.type).bits, Most);
    }
}

void SignalTypes::add(SignalType type)
{
    m_numbers.push_back(countOf(m_types));
    if (type.isScalar() && type.base == 0)
        type.base = countOf(m_types);
    m_types.push_back(std::move(type));
}

} // namespace NETWEIR::Internal
