// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "verilogunits.h"

#include <netweir/internal/sources/preprocessedtext.h>
#include <netweir/internal/verilog/modulescan.h>

namespace NETWEIR::Internal {

namespace {

std::vector<UnitUse> usesOf(const QVector<Instantiation> &instantiations)
{
    std::vector<UnitUse> result;
    for (const Instantiation &instantiation : instantiations) {
        UnitUse use;
        use.unit = QString::fromUtf8(instantiation.module);
        use.conditional = instantiation.conditional;
        use.bare = instantiation.bare;
        result.push_back(std::move(use));
    }
    return result;
}

PortDirection directionOf(const ModulePort &port)
{
    switch (port.direction) {
    case ModulePort::Input:
        return PortDirection::Input;
    case ModulePort::Output:
        return PortDirection::Output;
    case ModulePort::Inout:
        return PortDirection::Inout;
    case ModulePort::Unknown:
        break;
    }
    return PortDirection::Unknown;
}

DeclaredUnit declared(const DesignUnit &unit, const PreprocessedText &text)
{
    DeclaredUnit result;
    result.kind = unit.kind == DesignUnit::Module ? DeclaredUnit::Module : DeclaredUnit::Other;
    result.name = QString::fromUtf8(unit.name);
    result.nested = unit.nested;
    result.backup = unit.library;
    result.place = text.place(unit.line);
    result.uses = usesOf(unit.instantiations);
    for (const ModulePort &port : unit.header.ports)
        result.ports.push_back({QString::fromUtf8(port.name), directionOf(port), port.isVector});
    for (const QByteArray &parameter : unit.header.parameters)
        result.generics.append(QString::fromUtf8(parameter));
    return result;
}

} // namespace

std::vector<DeclaredUnit> verilogUnits(const ModuleScan &scan, const PreprocessedText &text)
{
    std::vector<DeclaredUnit> result;
    for (const DesignUnit &unit : scan.units)
        result.push_back(declared(unit, text));
    if (!scan.bindings.isEmpty()) {
        DeclaredUnit bindings;
        bindings.kind = DeclaredUnit::Outside;
        bindings.uses = usesOf(scan.bindings);
        result.push_back(std::move(bindings));
    }
    return result;
}

} // namespace NETWEIR::Internal
