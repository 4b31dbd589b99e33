// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "componentstubs.h"

#include "stubtext.h"
#include "unitindex.h"
#include "vhdldesign.h"

#include <netweir/internal/parts/unitnames.h>
#include <netweir/internal/signals/vhdltext.h>
#include <netweir/internal/vhdl/vhdlname.h>
#include <netweir/internal/vhdl/vhdltokens.h>

#include <QPair>
#include <QSet>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

/// Names that only hold where a component is declared in an architecture.
QSet<QByteArray> localNames(const UnitAt &unit, const UnitAt &entity)
{
    QSet<QByteArray> names;
    if (unit.unit->kind != VhdlUnit::Architecture)
        return names;
    for (const VhdlDeclaration &declaration : unit.unit->declarations)
        names.insert(foldedVhdlName(declaration.name));
    if (entity.unit) {
        for (const VhdlInterfaceItem &generic : entity.unit->interface.generics)
            names.insert(foldedVhdlName(generic.name));
        for (const VhdlDeclaration &declaration : entity.unit->declarations)
            names.insert(foldedVhdlName(declaration.name));
    }
    return names;
}

bool containsName(const QByteArray &text, const QSet<QByteArray> &names)
{
    if (names.isEmpty())
        return false;
    VhdlTokens tokens(text);
    for (VhdlToken token = tokens.next(); token.kind != VhdlToken::EndOfText;
         token = tokens.next()) {
        if (token.isName() && names.contains(foldedVhdlName(token.text)))
            return true;
    }
    return false;
}

const char *modeText(VhdlInterfaceItem::Mode mode)
{
    switch (mode) {
    case VhdlInterfaceItem::Out:
        return "out";
    case VhdlInterfaceItem::Inout:
        return "inout";
    case VhdlInterfaceItem::Buffer:
        return "buffer";
    case VhdlInterfaceItem::In:
    case VhdlInterfaceItem::Linkage:
        break;
    }
    return "in";
}

/// Collects the stubs of a design.
class StubCollector
{
public:
    StubCollector(const VhdlDesign &design, const UnitIndex &index,
                  const std::vector<DeclaredUnit> &foreign)
        : m_design(design)
        , m_index(index)
        , m_foreignNames(foreign)
    {
    }

    StubUnits collect();

private:
    void addInstance(const VhdlInstance &instance, const UnitAt &architecture);
    void addStub(const ComponentAt &component, const Place &place);
    StubEntity entityOf(const ComponentAt &component) const;
    void checkGenerics(const VhdlInstance &instance, const Place &place,
                       const ComponentAt &component);
    Place placeOf(const VhdlInstance &instance, int file) const
    {
        return {m_design.path(file), instance.line, instance.column};
    }

    const VhdlDesign &m_design;
    const UnitIndex &m_index;
    const UnitNames m_foreignNames;
    QSet<QPair<QByteArray, QByteArray>> m_known; ///< Stubs by library and folded name.
    StubUnits m_stubs;
};

StubUnits StubCollector::collect()
{
    for (int file = 0; file < m_design.size(); ++file) {
        for (const VhdlUnit &unit : m_design.source(file).file.units) {
            if (unit.kind != VhdlUnit::Architecture)
                continue;
            for (const VhdlInstance &instance : unit.instances)
                addInstance(instance, {file, &unit});
        }
    }
    return m_stubs;
}

void StubCollector::addInstance(const VhdlInstance &instance, const UnitAt &architecture)
{
    const ComponentAt component = m_index.componentOf(instance, architecture);
    if (!component.component)
        return;
    const QByteArray &library = m_design.source(component.in.file).library;
    const QByteArray name = foldedVhdlName(component.component->name);
    if (m_index.entity(library, name).unit)
        return;
    const Place place = placeOf(instance, architecture.file);
    if (!m_known.contains({library, name})) {
        m_known.insert({library, name});
        addStub(component, place);
    }
    if (m_stubs.foreign.contains(name))
        checkGenerics(instance, place, component);
}

void StubCollector::addStub(const ComponentAt &component, const Place &place)
{
    StubEntity entity = entityOf(component);
    const QString name = vhdlText(component.component->name);
    entity.isBorder = m_foreignNames.find({QString(), name}, Language::Vhdl) >= 0;
    if (entity.isBorder)
        m_stubs.foreign.insert(foldedVhdlName(component.component->name), {QString(), name, place});
    GeneratedText text;
    text.file = QStringLiteral("stub%1.vhd").arg(m_stubs.texts.size());
    text.library = m_design.library(component.in.file);
    text.text = stubText(entity);
    text.place = {m_design.path(component.in.file), component.component->line,
                  component.component->column};
    m_stubs.texts.append(text);
}

/// The interface of the component. Its defaults do not matter, since the component always gives
/// values. Ranges that depend on local names are left to the component too.
StubEntity StubCollector::entityOf(const ComponentAt &component) const
{
    const VhdlSource &source = m_design.source(component.in.file);
    const UnitAt owner = m_index.entity(source.library, primaryNameOf(*component.in.unit));
    const VhdlInterface &interface = component.component->interface;
    QSet<QByteArray> local = localNames(component.in, owner);
    for (const VhdlInterfaceItem &generic : interface.generics)
        local.remove(foldedVhdlName(generic.name));
    const auto itemOf = [&](const VhdlInterfaceItem &item) {
        StubItem result;
        result.name = item.name;
        result.type = textIn(source.text, item.type);
        result.baseType = m_index.baseType(result.type);
        if (containsName(result.type, local))
            result.type = typeMark(result.type);
        return result;
    };

    StubEntity entity;
    entity.name = component.component->name;
    entity.context = m_index.contextOf(component.in);
    if (component.in.unit->kind == VhdlUnit::Package)
        entity.context += "\nuse work." + component.in.unit->name + ".all;";
    for (const VhdlInterfaceItem &generic : interface.generics) {
        if (generic.kind == VhdlInterfaceItem::Object)
            entity.generics.append(itemOf(generic));
    }
    for (const VhdlInterfaceItem &port : interface.ports) {
        StubItem item = itemOf(port);
        item.mode = modeText(port.mode);
        entity.ports.append(item);
    }
    return entity;
}

/// The unit of the other language needs the values that an instance gives.
void StubCollector::checkGenerics(const VhdlInstance &instance, const Place &place,
                                  const ComponentAt &component)
{
    const QByteArray &text = m_design.source(component.in.file).text;
    const QVector<VhdlInterfaceItem> &generics = component.component->interface.generics;
    for (int i = 0; i < instance.generics.size(); ++i) {
        const VhdlAssociation &association = instance.generics[i];
        if (association.isOpen)
            continue;
        const auto found =
            std::find_if(generics.begin(), generics.end(), [&](const VhdlInterfaceItem &generic) {
                return !association.formalNames.isEmpty() &&
                       sameVhdlName(association.formalNames.last(), generic.name);
            });
        const int number = association.formalNames.isEmpty() ? i : int(found - generics.begin());
        if (number >= generics.size())
            continue;
        const QByteArray type = textIn(text, generics[number].type);
        if (!isReportable(m_index.baseType(type)))
            m_stubs.errors.append(errorMessage(
                place, Text::tr("The generic \"%1\" has the type \"%2\", whose values cannot be "
                                "given to a module in Verilog. Use an integer, real, boolean, "
                                "string, bit or vector.")
                           .arg(vhdlText(generics[number].name), vhdlText(type))));
    }
}

} // namespace

StubUnits componentStubs(const VhdlDesign &design, const UnitIndex &index,
                         const std::vector<DeclaredUnit> &foreign)
{
    return StubCollector(design, index, foreign).collect();
}

} // namespace NETWEIR::Internal
