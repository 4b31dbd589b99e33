// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/xml/definitionreader.h>
#include <netweir/internal/xml/sourcetexts.h>
#include <netweir/internal/xml/typetable.h>

#include <QRegularExpression>
#include <QString>

#include <pugixml.hpp>

#include <initializer_list>

namespace TarnTest {

/// Appends elements of an elaborated design that are written in short: "(add:u8 x:u3 -1)" is an
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

/// The type table of a design: the single net "bit", vectors u1 to u64 without and s1 to s64 with
/// a sign, and those of @p text.
inline NETWEIR::Internal::TypeTable typesOf(pugi::xml_node parent, const QString &text = {})
{
    pugi::xml_node table = parent.append_child("typetable");
    appendElements(table, QStringLiteral("(basicdtype id=bit name=logic)"));
    for (int width = 1; width <= 64; ++width) {
        for (const char sign : {'u', 's'}) {
            appendElements(
                table, QStringLiteral("(basicdtype id=%1%2 name=logic left=%3 right=0 signed=%4)")
                           .arg(QLatin1Char(sign))
                           .arg(width)
                           .arg(width - 1)
                           .arg(sign == 's' ? QStringLiteral("true") : QStringLiteral("false")));
        }
    }
    appendElements(table, text);
    NETWEIR::Internal::TypeTable types;
    types.read(table);
    return types;
}

/// A module of an elaborated design with its types, both written in short.
class DesignXml
{
public:
    explicit DesignXml(const QString &members, const QString &types = {})
        : m_types(typesOf(m_document, types))
    {
        definition.node = m_document.append_child("module");
        appendElements(definition.node, members);
        NETWEIR::Internal::DefinitionReader(m_types, {}, {}, &definition).read({});
    }

    const NETWEIR::Internal::TypeTable &types() const { return m_types; }

    /// The first element of the module with that name, wherever it is.
    pugi::xml_node element(const char *name) const
    {
        return definition.node.find_node(
            [name](const pugi::xml_node &node) { return qstrcmp(node.name(), name) == 0; });
    }

    NETWEIR::Internal::Definition definition;

private:
    pugi::xml_document m_document;
    NETWEIR::Internal::TypeTable m_types;
};

} // namespace TarnTest
