// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ghdlinput.h"
#include "unitindex.h"

#include <netweir/internal/parts/declaredunit.h>
#include <netweir/internal/parts/partroot.h>
#include <netweir/internal/signals/vhdlpartinput.h>

#include <QStringList>

#include <vector>

namespace NETWEIR::Internal {

class VhdlDesign;

/// Turns the roots of a part into the unit that GHDL elaborates: the top itself, or a wrapper that
/// instantiates all roots. Adds stubs for entities that the sources do not declare.
class RootInput
{
public:
    /// @p number tells the wrappers of different elaborations of a design apart.
    RootInput(const VhdlDesign &design, const std::vector<DeclaredUnit> &units,
              const std::vector<DeclaredUnit> &foreign, const std::vector<PartRoot> &roots,
              int number);

    /// What is wrong with the roots, as messages for users.
    const QStringList &errors() const { return m_errors; }

    const GhdlInput &ghdlInput() const { return m_ghdlInput; }

    /// The roots and foreign units. The files are not known yet.
    const VhdlPartInput &partInput() const { return m_partInput; }

private:
    void addStubs(const std::vector<DeclaredUnit> &foreign);
    void useTop(const PartRoot &root);
    void checkDefaults(const DeclaredUnit &top);
    void wrap(const std::vector<PartRoot> &roots);
    const DeclaredUnit *unitOf(const PartRoot &root);

    const VhdlDesign &m_design;
    const UnitIndex m_index;
    const std::vector<DeclaredUnit> &m_units;
    const QByteArray m_number;
    GhdlInput m_ghdlInput;
    VhdlPartInput m_partInput;
    QStringList m_errors;
};

} // namespace NETWEIR::Internal
