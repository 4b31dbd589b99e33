// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "rootinput.h"

#include "componentstubs.h"
#include "instancestubs.h"
#include "rootwrapper.h"
#include "vhdldesign.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/parts/unitnames.h>
#include <netweir/internal/signals/vhdltext.h>
#include <netweir/internal/vhdl/vhdlname.h>

namespace NETWEIR::Internal {

RootInput::RootInput(const VhdlDesign &design, const std::vector<DeclaredUnit> &units,
                     const std::vector<DeclaredUnit> &foreign, const std::vector<PartRoot> &roots,
                     int number)
    : m_design(design)
    , m_index(design)
    , m_units(units)
    , m_number(QByteArray::number(number))
{
    if (roots.empty())
        return;
    if (roots.size() == 1 && roots.front().isTop)
        useTop(roots.front());
    else
        wrap(roots);
    addStubs(foreign);
}

void RootInput::addStubs(const std::vector<DeclaredUnit> &foreign)
{
    const StubUnits components = componentStubs(m_design, m_index, foreign);
    const InstanceStubs instances = instanceStubs(m_design, m_index, foreign);
    m_ghdlInput.texts += components.texts + instances.units.texts;
    m_ghdlInput.libraries = instances.libraries;
    m_ghdlInput.replaced = instances.texts;
    m_ghdlInput.suspicions = instances.suspicions;
    m_partInput.foreignUnits = components.foreign;
    for (auto i = instances.units.foreign.begin(); i != instances.units.foreign.end(); ++i)
        m_partInput.foreignUnits.insert(i.key(), i.value());
    m_errors += components.errors;
}

const DeclaredUnit *RootInput::unitOf(const PartRoot &root)
{
    const int found = UnitNames(m_units).findVhdl(root.unit, root.library);
    if (found >= 0)
        return &itemAt(m_units, found);
    m_errors.append(
        errorMessage(root.place, Text::tr("The sources define no entity \"%1\".").arg(root.unit)));
    return nullptr;
}

void RootInput::useTop(const PartRoot &root)
{
    const DeclaredUnit *unit = unitOf(root);
    if (!unit)
        return;
    checkDefaults(*unit);
    m_ghdlInput.library = unit->library;
    m_ghdlInput.unit = unit->name;
    m_partInput.roots.push_back({{}, true});
}

/// GHDL takes anything for the value of a generic that has none.
void RootInput::checkDefaults(const DeclaredUnit &top)
{
    const UnitAt entity =
        m_index.entityOf(top.library.toLatin1(), foldedVhdlName(top.name.toUtf8()));
    if (!entity.unit)
        return;
    for (const VhdlInterfaceItem &generic : entity.unit->interface.generics) {
        if (generic.kind == VhdlInterfaceItem::Object && generic.value.begin == generic.value.end)
            m_errors.append(errorMessage(
                {m_design.path(entity.file), generic.line, generic.column},
                Text::tr("The generic \"%1\" of the top has no default. Give it one, or choose "
                         "another top.")
                    .arg(vhdlText(generic.name))));
    }
}

/// One entity for each root, in the library of the root, and one that instantiates all of them.
void RootInput::wrap(const std::vector<PartRoot> &roots)
{
    QByteArray context;
    QByteArray instances;
    for (const PartRoot &root : roots) {
        const DeclaredUnit *unit = unitOf(root);
        if (!unit)
            continue;
        const QByteArray number = QByteArray::number(countOf(m_partInput.roots));
        const QByteArray name = "netweir_root" + m_number + '_' + number;
        const QByteArray label = "netweir_at" + number;
        const QByteArray library = unit->library.toLatin1();
        RootWrapper wrapper(m_design, m_index, *unit, root);
        m_ghdlInput.texts.append(
            {QString::fromLatin1(name + ".vhd"), unit->library, wrapper.text(name), root.place});
        m_errors += wrapper.errors();
        if (library != "work")
            context += "library " + library + ";\n";
        instances += label + " : entity " + library + '.' + name + ";\n";
        m_partInput.roots.push_back({{label, WrappedLabel}, root.isTop});
    }
    m_ghdlInput.library = QStringLiteral("work");
    const QByteArray name = "netweir_roots" + m_number;
    m_ghdlInput.unit = QString::fromLatin1(name);
    m_ghdlInput.texts.append({QString::fromLatin1(name + ".vhd"), m_ghdlInput.library,
                              context + "entity " + name +
                                  " is\nend;\n"
                                  "architecture netweir_wrapper of " +
                                  name + " is\nbegin\n" + instances + "end;\n",
                              roots.front().place});
}

} // namespace NETWEIR::Internal
