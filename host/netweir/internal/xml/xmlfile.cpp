// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "xmlfile.h"

#include "xmloutline.h"

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

bool XmlFile::open(const QString &path, qint64 largest, QString *error)
{
    guardParsing();
    m_path = path;
    m_largest = std::min(largest, LargestFile);
    QString reason;
    const bool isOpen = Files::openRegularFile(path, &m_file, &reason) == Files::Access::Granted;
    if (!isOpen || m_file.size() > m_largest)
        return loadWhole(error);
    XmlOutline outline(&m_file);
    if (!outline.read())
        return loadWhole(error);
    m_elements = outline.elements();
    return true;
}

void XmlFile::use(const pugi::xml_document &document)
{
    m_elements.clear();
    const pugi::xml_node root = document.child("verilator_xml");
    const auto add = [this](XmlElement::Kind kind, const pugi::xml_node &node) {
        if (node)
            m_elements.push_back({kind, 0, 0, 0, node});
    };
    add(XmlElement::Kind::Files, root.child("files"));
    const pugi::xml_node netlist = root.child("netlist");
    add(XmlElement::Kind::TypeTable, netlist.child("typetable"));
    for (const pugi::xml_node &node : netlist.children()) {
        ReadGuard::check();
        const XmlElement::Kind kind = XmlElement::kindInNetlist(node.name());
        if (kind == XmlElement::Kind::Definition || kind == XmlElement::Kind::Package)
            add(kind, node);
    }
}

pugi::xml_node XmlFile::load(const XmlElement &element)
{
    if (element.node)
        return element.node;
    return readPart(element.begin, element.end) ? parse(element) : pugi::xml_node();
}

pugi::xml_node XmlFile::loadStart(const XmlElement &element)
{
    if (element.node)
        return element.node;
    if (!readPart(element.begin, element.startEnd))
        return {};
    if (element.startEnd != element.end) {
        m_text.chop(1);
        m_text.append("/>");
    }
    return parse(element);
}

std::vector<XmlRun> XmlFile::runsOf(const XmlElement &element, qint64 size)
{
    const qint64 all = element.end - element.startEnd;
    if (element.node || all <= size)
        return {{element.startEnd, element.end}};
    const QByteArray gap = gapBefore(element);
    std::vector<XmlRun> runs;
    for (qint64 begin = element.startEnd; m_isSound && begin < element.end;) {
        const qint64 end = gap.isEmpty() ? element.end : endOfRun(element, begin, size, gap);
        runs.push_back({begin, end});
        begin = end;
    }
    return m_isSound ? runs : std::vector<XmlRun>();
}

pugi::xml_node XmlFile::load(const XmlElement &element, const XmlRun &run)
{
    if (element.node || (run.begin == element.startEnd && run.end == element.end))
        return load(element);
    if (!readPart(element.begin, element.startEnd))
        return {};
    const std::string_view tag(m_text.constData() + 1, std::size_t(m_text.size()) - 1);
    const QByteArray name(tag.data(), int(tag.find_first_of(" \t\r\n/>")));
    if (!append(run.begin, run.end))
        return {};
    if (run.end != element.end)
        m_text.append("</" + name + '>');
    return parse(element);
}

bool XmlFile::loadWhole(QString *error)
{
    m_elements.clear();
    m_document.reset();
    if (!readWhole(error))
        return false;
    ReadGuard::checkNow();
    const pugi::xml_parse_result parsed =
        m_document.load_buffer_inplace(m_text.data(), std::size_t(m_text.size()));
    if (parsed) {
        m_isSound = true;
        use(m_document);
        return true;
    }
    ReadGuard::checkNow();
    *error =
        Text::tr("The elaborated design \"%1\" cannot be read: %2 (byte %3).")
            .arg(m_path, QString::fromLatin1(parsed.description()), QString::number(parsed.offset));
    return false;
}

bool XmlFile::readWhole(QString *error)
{
    QString reason;
    switch (Files::readRegularFile(m_path, m_largest, &m_text, &reason, ReadGuard::checkNow)) {
    case Files::Access::Granted:
        return true;
    case Files::Access::TooLarge:
        reason = Text::tr("it is larger than %1 MB").arg(m_largest / Megabyte);
        break;
    case Files::Access::Failed:
        break;
    default:
        reason = Text::tr("it is not a regular file");
        break;
    }
    *error = Text::tr("The elaborated design \"%1\" cannot be read: %2.").arg(m_path, reason);
    return false;
}

/// Sets m_text. False when the file has changed meanwhile.
bool XmlFile::readPart(qint64 begin, qint64 end)
{
    m_document.reset();
    m_text.clear();
    return append(begin, end);
}

/// The same behind what is in m_text.
bool XmlFile::append(qint64 begin, qint64 end)
{
    constexpr qint64 BytesOfWork = 4096;
    ReadGuard::check(1 + (end - begin) / BytesOfWork);
    const int before = m_text.size();
    m_text.resize(before + int(end - begin));
    m_isSound =
        m_file.seek(begin) && m_file.read(m_text.data() + before, end - begin) == end - begin;
    return m_isSound;
}

/// The line break and the blanks before the first child of @p element, and the bracket of its tag.
/// Empty when there is something else.
QByteArray XmlFile::gapBefore(const XmlElement &element)
{
    constexpr qint64 Longest = 64;
    if (!readPart(element.startEnd, std::min(element.startEnd + Longest, element.end)))
        return {};
    const QByteArray gap = m_text.left(m_text.indexOf('<') + 1);
    return gap.startsWith('\n') && gap.mid(1).trimmed() == "<" ? gap : QByteArray();
}

/// The end of the run from @p begin on: the last line break before a child, in twice as many bytes
/// as before until there is one.
qint64 XmlFile::endOfRun(const XmlElement &element, qint64 begin, qint64 size,
                         const QByteArray &gap)
{
    const std::string_view wanted(gap.constData(), std::size_t(gap.size()));
    while (size < element.end - begin && readPart(begin, begin + size)) {
        const std::string_view text(m_text.constData(), std::size_t(m_text.size()));
        for (auto place = text.rfind(wanted); place != std::string_view::npos && place > 0;
             place = text.rfind(wanted, place - 1)) {
            const std::size_t next = place + wanted.size();
            if (next < text.size() && text[next] != '/')
                return begin + qint64(place);
        }
        size *= 2;
    }
    return element.end;
}

/// Parses m_text, the text of @p element. Only a run of others may have more than one element.
pugi::xml_node XmlFile::parse(const XmlElement &element)
{
    const pugi::xml_parse_result parsed = m_document.load_buffer_inplace(
        m_text.data(), std::size_t(m_text.size()), pugi::parse_default, pugi::encoding_utf8);
    if (!parsed)
        ReadGuard::checkNow();
    const pugi::xml_node node = m_document.first_child();
    const bool isAlone = !node.next_sibling() || element.kind == XmlElement::Kind::Other;
    m_isSound = parsed && isAlone;
    return m_isSound ? node : pugi::xml_node();
}

} // namespace NETWEIR::Internal
