// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <string>
#include <vector>

namespace NETWEIR::Internal {

class WaveStream;

/// The strings of a wave file by number: names in lower case, extended identifiers and character
/// literals as written. 0 stands for no name.
using WaveStrings = std::vector<std::string>;

/// The range of one dimension of an array. Letters of an enumeration are numbered from 0.
struct Dimension
{
    int left = 0;
    int right = 0;
    bool isDown = false;
    int letters = -1; ///< The enumeration whose letters are the indexes; negative for integers.

    qint64 size() const
    {
        return qMax<qint64>(0, 1 + (isDown ? qint64(left) - right : qint64(right) - left));
    }
    /// The index at @p position from the left.
    int at(qint64 position) const { return int(isDown ? left - position : left + position); }
};

/// The type of a signal or of a part of it.
struct SignalType
{
    enum Kind {
        Net,    ///< One net: std_ulogic, bit, boolean.
        Number, ///< Another enumeration or an integer: one scalar with one or more bits.
        NoNet,  ///< A scalar that is no hardware: real, time.
        Array,
        Record,
    };
    struct Field
    {
        int name = 0;
        int type = 0;
    };

    Kind kind = NoNet;
    bool isOpen = false;      ///< An array in it has no range yet, so no signal can have this type.
    int base = 0;             ///< Of a scalar: the type itself or the one that it is a subtype of.
    int depth = 1;            ///< 1 for a scalar.
    qint64 scalars = 1;       ///< At most SignalTypes::Most.
    qint64 bits = 1;          ///< The same; numbers have several.
    std::vector<int> letters; ///< Enumeration: the numbers of their names.
    std::vector<Dimension> dimensions; ///< Array.
    int element = 0;                   ///< Array.
    std::vector<Field> fields;         ///< Record.

    bool isCharacter() const { return letters.size() == 256; }
    bool isScalar() const { return kind < Array; }
};

/// The types of a wave file, by their number there; more are added for arrays within constrained
/// arrays and records. Takes memory by the size of the declarations, not of the signals.
class SignalTypes
{
public:
    static constexpr qint64 Most = qint64(1) << 40; ///< Larger counts are cut to this.

    /// Reads the section of types. Faults are noted at @p stream.
    void read(WaveStream *stream, const WaveStrings &strings);
    /// Reads the section that tells which enumerations are single nets. Kinds and bits are known
    /// only after it.
    void readWellKnown(WaveStream *stream);

    /// The type with this number in the file. Fails at @p stream when there is none.
    int checked(WaveStream *stream, quint64 number) const;
    const SignalType &at(int type) const { return m_types[std::size_t(type)]; }

    /// Reads a value of a scalar type as it is written in the hierarchy: the text that the maps of
    /// signals show.
    std::string readValue(WaveStream *stream, int type, const WaveStrings &strings) const;

    /// The text of the index @p value in maps of signals: "3", "red".
    std::string indexText(const Dimension &dimension, int value, const WaveStrings &strings) const;

private:
    struct Range
    {
        bool isDown = false;
        bool isReal = false;
        bool hasLetters = false;
        qint64 left = 0;
        qint64 right = 0;
    };

    static Range readRange(WaveStream *stream);
    static void readUnits(WaveStream *stream);
    void readType(WaveStream *stream, const WaveStrings &strings);
    void readEnumeration(WaveStream *stream, const WaveStrings &strings);
    void readSubtype(WaveStream *stream);
    void readArray(WaveStream *stream);
    void readRecord(WaveStream *stream, const WaveStrings &strings);
    void readConstrained(WaveStream *stream);
    int constrained(WaveStream *stream, int type);
    Dimension readDimension(WaveStream *stream, const Dimension &declared) const;
    void count(SignalType *type) const;
    void add(SignalType type);
    void finish(WaveStream *stream, SignalType *type) const;

    std::vector<SignalType> m_types{SignalType()}; ///< The first stands for none.
    std::vector<int> m_numbers{0};                 ///< Types by their number in the file.
};

} // namespace NETWEIR::Internal
