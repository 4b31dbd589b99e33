// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "unitindex.h"

#include "vhdldesign.h"

#include <netweir/internal/vhdl/vhdlname.h>
#include <netweir/internal/vhdl/vhdltokens.h>

#include <algorithm>

namespace NETWEIR::Internal {

QByteArray textIn(const QByteArray &text, const TextRange &range)
{
    return text.mid(range.begin, range.end - range.begin);
}

QByteArray typeMark(const QByteArray &type)
{
    VhdlTokens tokens(type);
    QByteArray mark;
    for (VhdlToken token = tokens.next(); token.isName() || token.is('.'); token = tokens.next()) {
        if (token.isName() && !mark.isEmpty() && !mark.endsWith('.'))
            mark.clear(); // The name in front was a resolution function.
        mark += token.bytes();
    }
    return mark;
}

UnitIndex::UnitIndex(const VhdlDesign &design)
    : m_design(design)
{
    for (int file = 0; file < design.size(); ++file) {
        const VhdlSource &source = design.source(file);
        for (const VhdlUnit &unit : source.file.units) {
            const Key key(source.library, primaryNameOf(unit));
            const UnitAt at{file, &unit};
            if (unit.kind == VhdlUnit::Entity && !m_entities.contains(key))
                m_entities.insert(key, at);
            if (unit.kind != VhdlUnit::Architecture && unit.kind != VhdlUnit::PackageBody)
                m_primaries.insert(key, at);
            if (unit.kind == VhdlUnit::Package) {
                for (const VhdlComponent &component : unit.components)
                    m_components[foldedVhdlName(component.name)].append({at, &component});
            }
            for (const VhdlDeclaration &declaration : unit.declarations) {
                if (declaration.kind == VhdlDeclaration::Subtype)
                    m_subtypes.insert(foldedVhdlName(declaration.name),
                                      textIn(source.text, declaration.type));
                else if (declaration.kind == VhdlDeclaration::Type)
                    m_types.insert(foldedVhdlName(declaration.name),
                                   textIn(source.text, declaration.type));
            }
            for (const VhdlRecordField &field : unit.fields)
                m_fields.insert({foldedVhdlName(field.record), foldedVhdlName(field.name)},
                                textIn(source.text, field.type));
        }
    }
}

UnitAt UnitIndex::entity(const QByteArray &library, const QByteArray &name) const
{
    return m_entities.value({library, name});
}

UnitAt UnitIndex::package(const QByteArray &library, const QByteArray &name) const
{
    const UnitAt found = m_primaries.value({library, name});
    return found.unit && found.unit->kind == VhdlUnit::Package ? found : UnitAt();
}

bool UnitIndex::declares(const QByteArray &library, const QByteArray &name) const
{
    return m_primaries.contains({library, name});
}

UnitAt UnitIndex::entityOf(const QByteArray &library, const QByteArray &name) const
{
    const UnitAt found = m_primaries.value({library, name});
    if (found.unit && found.unit->kind == VhdlUnit::Configuration && !found.unit->of.isEmpty())
        return entity(library, foldedVhdlName(found.unit->of.last()));
    return entity(library, name);
}

ComponentAt UnitIndex::componentOf(const VhdlInstance &instance, const UnitAt &architecture) const
{
    if (instance.kind != VhdlInstance::Component || instance.unit.isEmpty())
        return {};
    const QByteArray name = foldedVhdlName(instance.unit.last());
    for (const VhdlComponent &component : architecture.unit->components) {
        if (foldedVhdlName(component.name) == name)
            return {architecture, &component};
    }
    const QVector<ComponentAt> declared = m_components.value(name);
    if (declared.isEmpty())
        return {};
    const QByteArray &library = m_design.source(architecture.file).library;
    QVector<QByteArrayList> uses = architecture.unit->context.uses;
    const UnitAt owner = entity(library, primaryNameOf(*architecture.unit));
    if (owner.unit)
        uses += owner.unit->context.uses;
    if (instance.unit.size() > 1)
        uses.prepend(instance.unit);
    for (const QByteArrayList &use : qAsConst(uses)) {
        const QByteArrayList names = foldedVhdlNames(use);
        for (const ComponentAt &component : declared) {
            const QByteArray &inLibrary = m_design.source(component.in.file).library;
            const bool isOwnLibrary = inLibrary == library && names.value(0) == "work";
            if ((isOwnLibrary || names.value(0) == inLibrary) &&
                names.value(1) == foldedVhdlName(component.in.unit->name))
                return component;
        }
    }
    return declared.first();
}

QByteArray UnitIndex::contextOf(const UnitAt &unit) const
{
    const VhdlSource &source = m_design.source(unit.file);
    QByteArray text;
    if (unit.unit->kind == VhdlUnit::Architecture) {
        const UnitAt owner = entity(source.library, primaryNameOf(*unit.unit));
        if (owner.unit)
            text = textIn(m_design.source(owner.file).text, owner.unit->context.range) + '\n';
    }
    return text + textIn(source.text, unit.unit->context.range);
}

/// The subtypes behind @p type as written, beginning with itself.
QByteArrayList UnitIndex::chainOf(const QByteArray &type) const
{
    constexpr int MostSubtypes = 16; // They may form a circle in a text with errors.
    QByteArrayList chain{type};
    while (chain.size() < MostSubtypes) {
        const QByteArray mark = typeMark(chain.last());
        const auto subtype =
            m_subtypes.constFind(foldedVhdlName(mark.mid(mark.lastIndexOf('.') + 1)));
        if (subtype == m_subtypes.constEnd())
            break;
        chain.append(*subtype);
    }
    return chain;
}

QByteArray UnitIndex::baseType(const QByteArray &type) const
{
    const QByteArray mark = typeMark(chainOf(type).last());
    return foldedVhdlName(mark.mid(mark.lastIndexOf('.') + 1));
}

QByteArray UnitIndex::elementType(const QByteArray &type) const
{
    const QByteArray definition = m_types.value(type);
    VhdlTokens tokens(definition);
    if (!tokens.next().is(VhdlKeyword::Array))
        return {};
    VhdlToken token = tokens.next();
    while (token.kind != VhdlToken::EndOfText && !token.is(VhdlKeyword::Of))
        token = tokens.next();
    return definition.mid(token.end()).trimmed();
}

QByteArray UnitIndex::fieldType(const QByteArray &record, const QByteArray &field) const
{
    return m_fields.value({record, field});
}

bool UnitIndex::isConstrained(const QByteArray &type) const
{
    const QByteArrayList chain = chainOf(type);
    return std::any_of(chain.begin(), chain.end(),
                       [](const QByteArray &step) { return step.contains('('); });
}

} // namespace NETWEIR::Internal
