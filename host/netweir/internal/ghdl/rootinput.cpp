// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "rootinput.h"

#include "componentstubs.h"
#include "unitindex.h"
#include "vhdldesign.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/parts/unitnames.h>

namespace NETWEIR::Internal {

RootInput::RootInput(const VhdlDesign &design, const std::vector<DeclaredUnit> &units,
                     const std::vector<DeclaredUnit> &foreign, const std::vector<PartRoot> &roots)
    : m_design(design)
    , m_units(units)
{
    if (roots.size() == 1 && roots.front().isTop)
        useTop(roots.front());
    if (!roots.empty())
        addStubs(foreign);
}

void RootInput::addStubs(const std::vector<DeclaredUnit> &foreign)
{
    const UnitIndex index(m_design);
    const StubUnits stubs = componentStubs(m_design, index, foreign);
    m_ghdlInput.texts += stubs.texts;
    m_partInput.foreignUnits = stubs.foreign;
    m_errors += stubs.errors;
}

void RootInput::useTop(const PartRoot &root)
{
    const int found = UnitNames(m_units).findVhdl(root.unit, root.library);
    if (found < 0)
        return;
    const DeclaredUnit &unit = itemAt(m_units, found);
    m_ghdlInput.library = unit.library;
    m_ghdlInput.unit = unit.name;
    m_partInput.roots.push_back({{}, true});
}

} // namespace NETWEIR::Internal
