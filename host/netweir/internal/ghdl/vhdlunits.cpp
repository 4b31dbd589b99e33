// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "vhdlunits.h"

#include "vhdldesign.h"

#include <netweir/internal/ground/depthfirstwalk.h>
#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/parts/unitnames.h>
#include <netweir/internal/signals/vhdltext.h>
#include <netweir/internal/vhdl/vhdlname.h>

#include <QHash>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

PortDirection directionOf(VhdlInterfaceItem::Mode mode)
{
    switch (mode) {
    case VhdlInterfaceItem::Out:
    case VhdlInterfaceItem::Buffer:
        return PortDirection::Output;
    case VhdlInterfaceItem::Inout:
        return PortDirection::Inout;
    case VhdlInterfaceItem::In:
    case VhdlInterfaceItem::Linkage:
        break;
    }
    return PortDirection::Input;
}

/// A use of the unit "library.name" or "name" in a source of @p ownLibrary.
UnitUse useOf(const QByteArrayList &unit, const QByteArray &ownLibrary)
{
    UnitUse use;
    use.unit = vhdlText(unit.last());
    if (unit.size() > 1) {
        const QByteArray library = foldedVhdlName(unit.first());
        use.library = QString::fromLatin1(library == "work" ? ownLibrary : library);
    }
    return use;
}

/// The bindings of an architecture, to be found by the instances that they bind.
class Bindings
{
public:
    explicit Bindings(const VhdlUnit &unit)
    {
        for (const VhdlBinding &binding : unit.bindings) {
            if (binding.component.isEmpty())
                continue;
            const QByteArray component = foldedVhdlName(binding.component.last());
            for (const QByteArray &label : binding.labels)
                m_bindings.insert({component, foldedVhdlName(label)}, &binding);
        }
    }

    /// Null when the default applies.
    const VhdlBinding *find(const VhdlInstance &instance) const
    {
        if (m_bindings.isEmpty() || instance.kind != VhdlInstance::Component)
            return nullptr;
        const QByteArray component = foldedVhdlName(instance.unit.last());
        for (const QByteArray &label :
             {foldedVhdlName(instance.label), QByteArray("all"), QByteArray("others")}) {
            const VhdlBinding *found = m_bindings.value({component, label});
            if (found)
                return found;
        }
        return nullptr;
    }

private:
    QHash<QPair<QByteArray, QByteArray>, const VhdlBinding *> m_bindings;
};

/// Collects the declared units of a design.
class UnitCollector
{
public:
    explicit UnitCollector(const VhdlDesign &design)
        : m_design(design)
    {
    }

    std::vector<DeclaredUnit> collect()
    {
        for (int file = 0; file < m_design.size(); ++file) {
            for (const VhdlUnit &unit : m_design.source(file).file.units)
                declare(unit, file);
        }
        for (int file = 0; file < m_design.size(); ++file) {
            for (const VhdlUnit &unit : m_design.source(file).file.units) {
                if (unit.kind == VhdlUnit::Architecture)
                    addUsesOf(unit, file);
            }
        }
        for (DeclaredUnit &unit : m_units) {
            if (unit.kind == DeclaredUnit::Configuration)
                addInterfaceTo(&unit);
        }
        return std::move(m_units);
    }

private:
    void declare(const VhdlUnit &unit, int file);
    void addUsesOf(const VhdlUnit &architecture, int file);
    void addInterfaceTo(DeclaredUnit *configuration) const;

    const VhdlDesign &m_design;
    std::vector<DeclaredUnit> m_units;
    QHash<QPair<QByteArray, QByteArray>, int> m_entities; ///< By library and folded name.
};

void UnitCollector::declare(const VhdlUnit &unit, int file)
{
    const bool isEntity = unit.kind == VhdlUnit::Entity;
    if (!isEntity && unit.kind != VhdlUnit::Configuration)
        return;
    const QByteArray &library = m_design.source(file).library;
    DeclaredUnit declared;
    declared.language = Language::Vhdl;
    declared.kind = isEntity ? DeclaredUnit::Module : DeclaredUnit::Configuration;
    declared.name = vhdlText(unit.name);
    declared.library = m_design.library(file);
    declared.backup = m_design.isBackup(file);
    declared.place = {m_design.path(file), unit.line, unit.column};
    for (const VhdlInterfaceItem &port : unit.interface.ports)
        declared.ports.push_back({vhdlText(port.name), directionOf(port.mode)});
    for (const VhdlInterfaceItem &generic : unit.interface.generics) {
        if (generic.kind == VhdlInterfaceItem::Object)
            declared.generics.append(vhdlText(generic.name));
    }
    if (isEntity) {
        m_entities.insert({library, foldedVhdlName(unit.name)}, countOf(m_units));
    } else if (!unit.of.isEmpty()) {
        declared.uses.push_back(useOf(unit.of, library));
        for (const VhdlBinding &binding : unit.bindings) {
            if (!binding.unit.isEmpty())
                declared.uses.push_back(useOf(binding.unit, library));
        }
    }
    m_units.push_back(std::move(declared));
}

void UnitCollector::addUsesOf(const VhdlUnit &architecture, int file)
{
    const QByteArray &library = m_design.source(file).library;
    const int entity = m_entities.value({library, primaryNameOf(architecture)}, -1);
    if (entity < 0)
        return;
    const Bindings bindings(architecture);
    std::vector<UnitUse> &uses = itemAt(m_units, entity).uses;
    for (const VhdlInstance &instance : architecture.instances) {
        if (instance.unit.isEmpty())
            continue;
        const VhdlBinding *binding = bindings.find(instance);
        if (binding && binding->unit.isEmpty())
            continue; // Bound to nothing.
        UnitUse use = binding ? useOf(binding->unit, library) : useOf(instance.unit, library);
        // A component is bound by its own name, wherever its declaration is.
        if (!binding && instance.kind == VhdlInstance::Component)
            use.library.clear();
        use.conditional = instance.conditional;
        use.bare = instance.bare;
        uses.push_back(std::move(use));
    }
}

/// Instances of a configuration connect the ports of its entity.
void UnitCollector::addInterfaceTo(DeclaredUnit *configuration) const
{
    if (configuration->uses.empty())
        return;
    const QByteArray entity = foldedVhdlName(configuration->uses.front().unit.toUtf8());
    const int found = m_entities.value({configuration->library.toLatin1(), entity}, -1);
    if (found < 0)
        return;
    configuration->ports = itemAt(m_units, found).ports;
    configuration->generics = itemAt(m_units, found).generics;
}

} // namespace

std::vector<DeclaredUnit> declaredVhdlUnits(const VhdlDesign &design)
{
    return UnitCollector(design).collect();
}

QStringList recursionErrors(const std::vector<DeclaredUnit> &units, const QVector<int> &starts)
{
    const UnitNames names(units);
    const QVector<int> circle = DepthFirstWalk::firstCircle(countOf(units), starts, [&](int unit) {
        QVector<int> used;
        const DeclaredUnit &declared = itemAt(units, unit);
        for (const UnitUse &use : declared.uses) {
            const int found = names.find(use, Language::Vhdl, declared.library);
            if (found >= 0)
                used.append(found);
        }
        return used;
    });
    if (circle.isEmpty())
        return {};
    QStringList path;
    for (const int unit : circle)
        path.append(itemAt(units, unit).name);
    path.append(path.first());
    return {errorMessage(itemAt(units, circle.first()).place,
                         Text::tr("The instantiation may never end (%1). End it with a condition "
                                  "on a generic, in a generate statement.")
                             .arg(path.join(QStringLiteral(" > "))))};
}

} // namespace NETWEIR::Internal
