// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "signaltypes.h"

#include <QString>

#include <string>
#include <vector>

namespace NETWEIR::Internal {

class WaveStream;

/// A scope of the design: an instance, a block or one round of a generate statement.
struct WaveScope
{
    enum Kind { Instance, Block, Generate };

    Kind kind = Instance;
    int name = 0;      ///< Number of the string: the label; of the top, the entity.
    std::string index; ///< Of a round of a for generate: "3", "red"; empty for other scopes.
    int parent = -1;   ///< Negative for the top.
    int end = 0;       ///< The index after the last scope within this one.
    int firstSignal = 0;
    int endSignal = 0; ///< The index after the last signal of the scope itself.
};

/// A signal or port.
struct WaveSignal
{
    enum Mode { Signal, In, Out, Inout, Buffer, Linkage };

    Mode mode = Signal;
    int name = 0;           ///< Number of the string.
    int type = 0;           ///< In the types of the header; never an open one.
    qint64 firstScalar = 0; ///< Its scalars lie side by side in the order of the source.
};

/// What GHDL writes in front of the values of a wave file: strings, types and the hierarchy of
/// scopes and signals. Packages are left out.
///
/// Scopes and signals are in the order of the source, each scope before those within it. Takes four
/// bytes per scalar and some more per declaration.
class WaveHeader
{
public:
    /// False with a message when the file at @p path is no wave file, damaged or not complete.
    bool read(const QString &path, QString *error);

    const std::string &text(int string) const;
    const WaveStrings &strings() const { return m_strings; }
    const SignalTypes &types() const { return m_types; }
    const std::vector<WaveScope> &scopes() const { return m_scopes; }
    const std::vector<WaveSignal> &signalList() const { return m_signals; }
    /// For each scalar the number of its net. Scalars with one number are one net: a port has the
    /// numbers of the signal that it is associated with as a whole.
    const std::vector<quint32> &nets() const { return m_nets; }
    /// Nets are numbered from 1 to this in the order in which they appear in the file.
    quint32 lastNet() const { return m_lastNet; }
    /// Nets up to this number are signals of packages.
    quint32 lastPackageNet() const { return m_lastPackageNet; }

private:
    void readSections(WaveStream *stream);
    static void readSection(WaveStream *stream, quint32 name);
    void readStrings(WaveStream *stream);
    int readString(WaveStream *stream, std::size_t kept);
    void readHierarchy(WaveStream *stream);
    void readScope(WaveStream *stream, quint8 code);
    void readSignal(WaveStream *stream, quint8 code);
    void closeScope(WaveStream *stream);
    int readName(WaveStream *stream);

    WaveStrings m_strings;
    SignalTypes m_types;
    std::vector<WaveScope> m_scopes;
    std::vector<WaveSignal> m_signals;
    std::vector<quint32> m_nets;
    quint32 m_lastNet = 0;
    quint32 m_lastPackageNet = 0;
    std::vector<int> m_open; ///< The scopes around the place of reading.
    int m_openPackages = 0;  ///< In a package no scope counts.
};

} // namespace NETWEIR::Internal
