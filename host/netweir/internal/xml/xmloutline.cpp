// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "xmloutline.h"

#include "attributes.h"

#include <netweir/internal/ground/readguard.h>

#include <utility>

namespace NETWEIR::Internal {

namespace {

constexpr qint64 LargestRun = 64 * 1024; ///< Bytes of small elements that are read together.

bool isBlank(char letter)
{
    return letter == ' ' || letter == '\t' || letter == '\n' || letter == '\r';
}

/// The name at the beginning of a tag, behind the bracket.
std::string_view nameIn(std::string_view tag)
{
    std::size_t end = 0;
    while (end < tag.size() && !isBlank(tag[end]) && tag[end] != '/' && tag[end] != '>')
        ++end;
    return tag.substr(0, end);
}

/// The parser accepts a document with this text.
bool isSound(const std::string &text)
{
    pugi::xml_document document;
    return bool(
        document.load_buffer(text.data(), text.size(), pugi::parse_default, pugi::encoding_utf8));
}

} // namespace

XmlOutline::XmlOutline(QFile *file)
    : m_window(file)
{
}

bool XmlOutline::read()
{
    if (!m_window.reach(1) || m_window.text().front() != '<')
        return false; // A mark of another encoding, or no XML.
    while (m_window.skipTo("<")) {
        if (!readTag())
            return false;
    }
    return !m_window.isBroken() && m_hasRoot && m_path.empty();
}

bool XmlOutline::readTag()
{
    ReadGuard::check();
    constexpr std::string_view Comment = "<!--";
    if (!m_window.reach(Comment.size()))
        return false;
    const std::string_view text = m_window.text();
    if (startsWith(text, Comment))
        return skipPast("-->", Comment.size());
    if (startsWith(text, "<?"))
        return skipPast("?>", 2);
    if (startsWith(text, "<!"))
        return false;
    return startsWith(text, "</") ? readEndTag() : readStartTag();
}

/// Skips a comment or an instruction. A declared encoding is for the parser to judge.
bool XmlOutline::skipPast(std::string_view end, std::size_t from)
{
    const std::size_t place = m_window.find(end, from);
    if (place == TextWindow::None)
        return false;
    const std::string skipped(m_window.text().substr(0, place + end.size()));
    const bool isInstruction = startsWith(skipped, "<?");
    if (isInstruction &&
        (skipped.find("encoding") != TextWindow::None || !isSound(skipped + "<a/>")))
        return false;
    m_window.skip(skipped.size());
    m_mayJoin = false;
    return true;
}

bool XmlOutline::readEndTag()
{
    const std::size_t end = m_window.find(">", 0);
    if (end == TextWindow::None)
        return false;
    std::string_view name = m_window.text().substr(2, end - 2);
    while (!name.empty() && isBlank(name.back()))
        name.remove_suffix(1);
    if (!isWithin(name))
        return false;
    m_path.pop_back();
    m_window.skip(end + 1);
    m_mayJoin = false;
    return true;
}

bool XmlOutline::readStartTag()
{
    const std::size_t end = endOfTag();
    if (end == TextWindow::None)
        return false;
    const std::string_view tag = m_window.text().substr(0, end);
    const std::string name(nameIn(tag.substr(1)));
    const bool isEmpty = tag[end - 2] == '/';
    if (name.empty() || (m_path.empty() && (m_hasRoot || isEmpty || name != "verilator_xml")))
        return false;
    if (isContainer(name) && !isEmpty)
        return enter(name, tag);
    return addElement(name, end, isEmpty);
}

/// Behind the bracket that closes the tag at the beginning of the window; a bracket in quotes does
/// not.
std::size_t XmlOutline::endOfTag()
{
    char quote = '\0';
    for (std::size_t i = 1; m_window.reach(i + 1);) {
        for (const char letter : m_window.text().substr(i)) {
            ++i;
            if (quote == '\0' && letter == '>')
                return i;
            if (letter == quote)
                quote = '\0';
            else if (quote == '\0' && (letter == '"' || letter == '\''))
                quote = letter;
        }
    }
    return TextWindow::None;
}

/// The elements within are read one by one. The list of cells is left out, but it is as long as the
/// hierarchy is large.
bool XmlOutline::isContainer(std::string_view name) const
{
    if (m_path.empty())
        return true;
    if (isWithin("verilator_xml"))
        return name == "netlist" || name == "cells";
    return name == "cell" && (isWithin("cells") || isWithin("cell"));
}

bool XmlOutline::enter(std::string_view name, std::string_view tag)
{
    const bool isSecond = name == "netlist" && m_hasNetlist;
    if (isSecond || !isSound(std::string(tag.substr(0, tag.size() - 1)) + "/>"))
        return false;
    m_hasRoot = true;
    m_hasNetlist = m_hasNetlist || name == "netlist";
    m_path.emplace_back(name);
    m_window.skip(tag.size());
    m_mayJoin = false;
    return true;
}

/// Of several type tables or lists of files, the first one counts.
XmlElement::Kind XmlOutline::kindOf(std::string_view name)
{
    using Kind = XmlElement::Kind;
    if (isWithin("verilator_xml"))
        return name == "files" && !std::exchange(m_hasFiles, true) ? Kind::Files : Kind::Other;
    if (!isWithin("netlist"))
        return Kind::Other;
    const Kind kind = XmlElement::kindInNetlist(name);
    return kind == Kind::TypeTable && std::exchange(m_hasTypes, true) ? Kind::Other : kind;
}

bool XmlOutline::addElement(const std::string &name, std::size_t startEnd, bool isEmpty)
{
    XmlElement element;
    element.kind = kindOf(name);
    element.begin = m_window.begin();
    m_window.skip(startEnd);
    element.startEnd = m_window.begin();
    if (!isEmpty && !skipPastEndTag(name))
        return false;
    element.end = m_window.begin();
    const bool isOther = element.kind == XmlElement::Kind::Other;
    if (m_mayJoin && isOther && element.end - m_elements.back().begin < LargestRun)
        m_elements.back().end = element.end;
    else
        m_elements.push_back(element);
    m_mayJoin = isOther;
    return true;
}

bool XmlOutline::skipPastEndTag(const std::string &name)
{
    const std::string endTag = "</" + name;
    while (m_window.skipTo(endTag)) {
        if (!m_window.reach(endTag.size() + 1))
            return false;
        const char next = m_window.text()[endTag.size()];
        m_window.skip(endTag.size());
        if (next != '>' && !isBlank(next))
            continue;
        const std::size_t end = m_window.find(">", 0);
        if (end == TextWindow::None)
            return false;
        m_window.skip(end + 1);
        return true;
    }
    return false;
}

} // namespace NETWEIR::Internal
