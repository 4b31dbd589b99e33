// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "waveheader.h"

#include "wavestream.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/ground/messages.h>
#include <netweir/internal/ground/readguard.h>

#include <algorithm>
#include <cstring>

namespace NETWEIR::Internal {

namespace {

/// Kinds of entries in the hierarchy.
enum Code : quint8 {
    CodeEnd = 0,
    CodeBlock = 3,
    CodeIfGenerate = 4,
    CodeForGenerate = 5,
    CodeInstance = 6,
    CodePackage = 7,
    CodeProcess = 13,
    CodeEndOfScope = 15,
    CodeSignal = 16,
    CodeInput = 17,
    CodeOutput = 18,
    CodeInout = 19,
    CodeBuffer = 20,
    CodeLinkage = 21,
};

constexpr char Magic[] = "GHDLwave\n";
constexpr quint8 LittleEndian = 1;
constexpr qint64 MostScalars = qint64(1) << 24; ///< A design with more is refused.
constexpr qint64 LettersOfWork = 64;

constexpr quint32 sectionNamed(const char (&name)[4])
{
    return quint32(quint8(name[0])) | quint32(quint8(name[1])) << 8 |
           quint32(quint8(name[2])) << 16;
}

QString noWaveFile()
{
    return Text::tr("it is no wave file of GHDL");
}

/// Strings end with the number of letters that the next one shares with them.
bool endsString(quint8 letter)
{
    return letter < 0x20 || (letter >= 0x80 && letter < 0xA0);
}

WaveSignal::Mode modeOf(quint8 code)
{
    switch (code) {
    case CodeInput:
        return WaveSignal::In;
    case CodeOutput:
        return WaveSignal::Out;
    case CodeInout:
        return WaveSignal::Inout;
    case CodeBuffer:
        return WaveSignal::Buffer;
    case CodeLinkage:
        return WaveSignal::Linkage;
    default:
        return WaveSignal::Signal;
    }
}

} // namespace

bool WaveHeader::read(const QString &path, QString *error)
{
    WaveStream stream;
    if (stream.open(path)) {
        readSections(&stream);
        ReadGuard::checkNow();
    }
    *error = stream.error();
    return stream.isGood();
}

const std::string &WaveHeader::text(int string) const
{
    return itemAt(m_strings, string);
}

void WaveHeader::readSections(WaveStream *stream)
{
    for (const char *letter = Magic; *letter; ++letter) {
        if (stream->byte() != quint8(*letter))
            stream->fail(noWaveFile());
    }
    stream->skip(3); // Length of this beginning, and the version.
    if (stream->byte() != LittleEndian)
        stream->fail(noWaveFile());
    stream->skip(3); // Sizes that only the values need.
    readSection(stream, sectionNamed("STR"));
    readStrings(stream);
    readSection(stream, sectionNamed("TYP"));
    m_types.read(stream, m_strings);
    readSection(stream, sectionNamed("WKT"));
    m_types.readWellKnown(stream);
    readSection(stream, sectionNamed("HIE"));
    readHierarchy(stream);
    readSection(stream, sectionNamed("EOH"));
}

/// The sections always come in the same order.
void WaveHeader::readSection(WaveStream *stream, quint32 name)
{
    if (quint32(stream->word()) != name)
        stream->fail(Text::tr("a section of the header is missing"));
}

void WaveHeader::readStrings(WaveStream *stream)
{
    stream->skip(4);
    const qint64 count = stream->word();
    stream->skip(4); // The size of all strings.
    m_strings.assign(1, std::string());
    std::size_t kept = 0;
    for (qint64 i = 0; i < count && stream->isGood(); ++i)
        kept = std::size_t(readString(stream, kept));
    if (quint32(stream->word()) != sectionNamed("EOS"))
        stream->fail(Text::tr("the strings are damaged"));
}

/// Reads a string that begins with @p kept letters of the last one. Returns how many of its own the
/// next one keeps.
int WaveHeader::readString(WaveStream *stream, std::size_t kept)
{
    constexpr unsigned Largest = 20; ///< Of the shift of the last byte.
    std::string text = m_strings.back().substr(0, kept);
    quint8 letter = stream->byte();
    for (; !endsString(letter) && stream->isGood(); letter = stream->byte())
        text += char(letter);
    std::size_t shared = letter & 0x1F;
    for (unsigned shift = 5; letter >= 0x80 && shift <= Largest; shift += 5) {
        letter = stream->byte();
        shared |= std::size_t(letter & 0x1F) << shift;
    }
    if (shared > text.size())
        stream->fail(Text::tr("the strings are damaged"));
    ReadGuard::check(1 + qint64(text.size()) / LettersOfWork);
    m_strings.push_back(std::move(text));
    return int(std::min(shared, m_strings.back().size()));
}

void WaveHeader::readHierarchy(WaveStream *stream)
{
    stream->skip(16); // Numbers of scopes, signals and scalars are among them.
    while (stream->isGood()) {
        ReadGuard::check();
        const quint8 code = stream->byte();
        if (code == CodeEnd)
            break;
        if (code == CodeEndOfScope)
            closeScope(stream);
        else if (code >= CodeSignal && code <= CodeLinkage)
            readSignal(stream, code);
        else
            readScope(stream, code);
    }
    if (!m_open.empty() || m_openPackages > 0)
        stream->fail(Text::tr("the end of a scope is missing"));
    if (m_scopes.empty())
        stream->fail(Text::tr("the design is empty"));
}

void WaveHeader::readScope(WaveStream *stream, quint8 code)
{
    WaveScope scope;
    scope.name = readName(stream);
    switch (code) {
    case CodeProcess:
        return;
    case CodePackage:
        ++m_openPackages;
        return;
    case CodeInstance:
        break;
    case CodeBlock:
        scope.kind = WaveScope::Block;
        break;
    case CodeIfGenerate:
        scope.kind = WaveScope::Generate;
        break;
    case CodeForGenerate: {
        scope.kind = WaveScope::Generate;
        const int type = m_types.checked(stream, stream->count());
        scope.index = m_types.readValue(stream, type, m_strings);
        break;
    }
    default:
        stream->fail(Text::tr("a scope has the unknown kind %1").arg(code));
    }
    if (m_openPackages > 0) {
        ++m_openPackages;
        return;
    }
    if (m_open.empty() && !m_scopes.empty())
        stream->fail(Text::tr("the design has two tops"));
    scope.parent = m_open.empty() ? -1 : m_open.back();
    scope.firstSignal = scope.endSignal = countOf(m_signals);
    m_open.push_back(countOf(m_scopes));
    m_scopes.push_back(std::move(scope));
}

void WaveHeader::closeScope(WaveStream *stream)
{
    if (m_openPackages > 0) {
        --m_openPackages;
        return;
    }
    if (m_open.empty())
        return stream->fail(Text::tr("a scope ends twice"));
    itemAt(m_scopes, m_open.back()).end = countOf(m_scopes);
    m_open.pop_back();
}

void WaveHeader::readSignal(WaveStream *stream, quint8 code)
{
    WaveSignal signal;
    signal.mode = modeOf(code);
    signal.name = readName(stream);
    signal.type = m_types.checked(stream, stream->count());
    signal.firstScalar = countOf(m_nets);
    const SignalType &type = m_types.at(signal.type);
    if (type.isOpen || type.scalars > MostScalars - signal.firstScalar)
        return stream->fail(Text::tr("a signal is too large"));
    const bool isInPackage = m_openPackages > 0;
    for (qint64 i = 0; i < type.scalars && stream->isGood(); ++i) {
        ReadGuard::check();
        const quint64 net = stream->count();
        if (net == 0 || net > quint64(m_lastNet) + 1)
            stream->fail(Text::tr("the number of a net is wrong"));
        m_lastNet = std::max(m_lastNet, quint32(net));
        if (!isInPackage)
            m_nets.push_back(quint32(net));
    }
    if (isInPackage) {
        m_lastPackageNet = m_lastNet;
        return;
    }
    if (m_open.empty() || m_open.back() != countOf(m_scopes) - 1)
        return stream->fail(Text::tr("a signal is outside of its scope"));
    m_signals.push_back(signal);
    itemAt(m_scopes, m_open.back()).endSignal = countOf(m_signals);
}

int WaveHeader::readName(WaveStream *stream)
{
    const quint64 name = stream->count();
    if (name < m_strings.size())
        return int(name);
    stream->fail(Text::tr("a name is missing"));
    return 0;
}

} // namespace NETWEIR::Internal
