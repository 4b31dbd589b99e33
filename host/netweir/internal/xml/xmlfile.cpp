// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "xmlfile.h"

#include <files/regularfile.h>
#include <netweir/internal/ground/messages.h>
#include <netweir/internal/ground/readguard.h>

#include <algorithm>
#include <cstdlib>
#include <mutex>

namespace NETWEIR::Internal {

namespace {

constexpr qint64 Megabyte = 1024 * 1024;
constexpr qint64 LargestFile = 2000 * Megabyte; ///< Limited by the size of a QByteArray.

/// The elements of a document take many times the memory of its text, so the guard also checks
/// allocations of the parser. Allocations by other threads and other users of the XML library are
/// not affected.
void *allocate(std::size_t size)
{
    constexpr std::size_t BytesOfWork = 512;
    return ReadGuard::mayGoOn(qint64(size / BytesOfWork)) ? std::malloc(size) : nullptr;
}

void guardParsing()
{
    static std::once_flag guarded;
    std::call_once(guarded, [] { pugi::set_memory_management_functions(allocate, std::free); });
}

} // namespace

bool XmlFile::read(const QString &path, qint64 largest, QString *error)
{
    if (!readText(path, std::min(largest, LargestFile), error))
        return false;
    guardParsing();
    ReadGuard::checkNow();
    const pugi::xml_parse_result parsed =
        m_document.load_buffer_inplace(m_text.data(), m_text.size());
    if (parsed)
        return true;
    ReadGuard::checkNow();
    *error =
        Text::tr("The elaborated design \"%1\" cannot be read: %2 (byte %3).")
            .arg(path, QString::fromLatin1(parsed.description()), QString::number(parsed.offset));
    return false;
}

bool XmlFile::readText(const QString &path, qint64 largest, QString *error)
{
    QString reason;
    switch (Files::readRegularFile(path, largest, &m_text, &reason, ReadGuard::checkNow)) {
    case Files::Access::Granted:
        return true;
    case Files::Access::TooLarge:
        reason = Text::tr("it is larger than %1 MB").arg(largest / Megabyte);
        break;
    case Files::Access::Failed:
        break;
    default:
        reason = Text::tr("it is not a regular file");
        break;
    }
    *error = Text::tr("The elaborated design \"%1\" cannot be read: %2.").arg(path, reason);
    return false;
}

} // namespace NETWEIR::Internal
