// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "textwindow.h"
#include "xmlelement.h"

#include <string>
#include <vector>

namespace NETWEIR::Internal {

/// Finds the elements of an elaborated design that can be read one by one, without parsing what is
/// in them. Time is linear in the file; memory in the number of elements.
///
/// An element ends at the first end tag of its name. Where this is not so, because such a tag is in
/// a comment, in a text or within another element of that name, the parser finds the piece between
/// broken. When it finds all of them sound, they stand as the outline has them: what is between
/// the elements is looked at tag by tag.
class XmlOutline
{
public:
    /// @p file must be open for reading.
    explicit XmlOutline(QFile *file);

    /// False for a file that has another form than the elaborator gives it, or that cannot be read
    /// to its end: only a parser can tell whether it is sound.
    bool read();

    /// In the order of the file.
    const std::vector<XmlElement> &elements() const { return m_elements; }

private:
    bool readTag();
    bool skipPast(std::string_view end, std::size_t from);
    bool readEndTag();
    bool readStartTag();
    std::size_t endOfTag();
    bool isContainer(std::string_view name) const;
    bool enter(std::string_view name, std::string_view tag);
    XmlElement::Kind kindOf(std::string_view name);
    bool addElement(const std::string &name, std::size_t startEnd, bool isEmpty);
    bool skipPastEndTag(const std::string &name);
    bool isWithin(std::string_view name) const { return !m_path.empty() && m_path.back() == name; }

    TextWindow m_window;
    std::vector<XmlElement> m_elements;
    std::vector<std::string> m_path; ///< The names of the open elements, outermost first.
    bool m_hasRoot = false;
    bool m_hasNetlist = false;
    bool m_hasFiles = false;
    bool m_hasTypes = false;
    bool m_mayJoin = false; ///< Nothing but text is behind the last element.
};

} // namespace NETWEIR::Internal
