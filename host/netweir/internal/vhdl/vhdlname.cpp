// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "vhdlname.h"

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

constexpr unsigned char CaseBit = 0x20;
constexpr unsigned char FirstLatinCapital = 0xc0;
constexpr unsigned char LastLatinCapital = 0xde;
constexpr unsigned char MultiplicationSign = 0xd7;

char folded(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    const bool isCapital =
        (byte >= 'A' && byte <= 'Z') ||
        (byte >= FirstLatinCapital && byte <= LastLatinCapital && byte != MultiplicationSign);
    return isCapital ? char(byte | CaseBit) : c;
}

} // namespace

QByteArray foldedVhdlName(std::string_view name)
{
    return foldedVhdlName(QByteArray(name.data(), int(name.size())));
}

QByteArray foldedVhdlName(const QByteArray &name)
{
    if (name.startsWith('\\'))
        return name;
    QByteArray result = name;
    std::transform(result.begin(), result.end(), result.begin(), folded);
    return result;
}

bool sameVhdlName(const QByteArray &a, const QByteArray &b)
{
    return foldedVhdlName(a) == foldedVhdlName(b);
}

QByteArrayList foldedVhdlNames(const QByteArrayList &names)
{
    QByteArrayList result;
    for (const QByteArray &name : names)
        result.append(foldedVhdlName(name));
    return result;
}

} // namespace NETWEIR::Internal
