// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/xml/elaborateddesign.h>

#include <QRegularExpression>
#include <QString>

#include <pugixml.hpp>

namespace TarnTest {

/// Appends elements of an elaborated design in a short notation: "(add:u8 x:u3 -1)" is an
/// element "add" of the type u8 with two children, a reference to the variable x and a constant of
/// 32 bits. Words such as name=x or name="x y" are attributes.
inline void appendElements(pugi::xml_node parent, const QString &text)
{
    static const QRegularExpression Word(QStringLiteral(
        R"re((?<open>\()?(?<name>[^\s():=]+)(="?(?<value>(?<=")[^"]*|[^\s()"]*)"?|:(?<type>\w+))?|\))re"));
    auto words = Word.globalMatch(text);
    while (words.hasNext()) {
        const QRegularExpressionMatch word = words.next();
        const QByteArray name = word.captured(QStringLiteral("name")).toUtf8();
        const QByteArray type = word.captured(QStringLiteral("type")).toUtf8();
        bool isNumber = false;
        const int number = name.toInt(&isNumber);
        pugi::xml_node node;
        if (name.isEmpty()) {
            parent = parent.parent();
        } else if (!word.captured(QStringLiteral("open")).isEmpty()) {
            node = parent = parent.append_child(name);
        } else if (word.captured().contains('=')) {
            parent.append_attribute(name) =
                word.captured(QStringLiteral("value")).toUtf8().constData();
        } else if (isNumber) {
            node = parent.append_child("const");
            node.append_attribute("name") =
                ("32'sh" + QByteArray::number(uint(number), 16)).constData();
        } else {
            node = parent.append_child("varref");
            node.append_attribute("name") = name.constData();
        }
        if (!type.isEmpty())
            node.append_attribute("dtype_id") = type.constData();
    }
}

/// Appends the type table of a design: the single net "bit", vectors u1 to u64 without and s1 to
/// s64 with a sign, and the types of @p text.
inline pugi::xml_node appendTypes(pugi::xml_node parent, const QString &text)
{
    pugi::xml_node table = parent.append_child("typetable");
    appendElements(table, QStringLiteral("(basicdtype id=bit name=logic)"));
    const QString vector =
        QStringLiteral("(basicdtype id=%1%2 name=logic left=%3 right=0 signed=%4)");
    for (int width = 1; width <= 64; ++width) {
        appendElements(table, vector.arg("u").arg(width).arg(width - 1).arg("false"));
        appendElements(table, vector.arg("s").arg(width).arg(width - 1).arg("true"));
    }
    appendElements(table, text);
    return table;
}

/// A design as the elaborator writes it, made of modules and types in the short notation. The first
/// module is the top.
class DesignXml
{
public:
    explicit DesignXml(const QString &modules, const QString &types = {},
                       const NETWEIR::Internal::ReadOptions &options = {},
                       const QString &folder = {}, const QString &files = {})
    {
        pugi::xml_node root = m_document.append_child("verilator_xml");
        appendElements(root.append_child("files"), files);
        pugi::xml_node netlist = root.append_child("netlist");
        appendElements(netlist, modules);
        netlist.child("module").append_attribute("topModule") = "1";
        appendTypes(netlist, types);
        m_isRead = m_design.read(m_document, options, folder, &m_error);
    }

    /// A design of one module, called top, with @p members.
    static DesignXml ofModule(const QString &members, const QString &types = {})
    {
        return DesignXml(QStringLiteral("(module name=top origName=top %1)").arg(members), types);
    }

    const NETWEIR::Internal::ElaboratedDesign &operator*() const { return m_design; }
    const NETWEIR::Internal::ElaboratedDesign *operator->() const { return &m_design; }

    /// Why the design was not read, empty when it was.
    QString error() const { return m_isRead ? QString() : m_error; }

    /// The first element of that name in the document.
    pugi::xml_node element(const char *name) const
    {
        return m_document.find_node(
            [name](const pugi::xml_node &node) { return qstrcmp(node.name(), name) == 0; });
    }

private:
    pugi::xml_document m_document;
    NETWEIR::Internal::ElaboratedDesign m_design;
    QString m_error;
    bool m_isRead = false;
};

} // namespace TarnTest
