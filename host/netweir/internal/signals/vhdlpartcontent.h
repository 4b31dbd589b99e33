// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "elaboratedsignals.h"
#include "signalnets.h"
#include "vhdlpartinput.h"

#include <netweir/internal/parts/partroot.h>

#include <QString>

#include <memory>
#include <vector>

namespace NETWEIR::Internal {

/// What a scope is in the netlist.
struct ScopeUse
{
    enum Kind {
        Node,   ///< An instance of an entity.
        Inner,  ///< A block or generate statement: its label is in front of names.
        Border, ///< An instance of a unit of the other language.
        Hidden  ///< An instance of a unit that nobody knows.
    };

    Kind kind = Node;
    QString name;         ///< As declared: "u1", "g[0]".
    QString unit;         ///< Of a node: the entity as declared.
    int foreignRoot = -1; ///< Of a border.
};

/// All that is needed to build the netlist of the elaborated entities. Created by
/// readVhdlPartContent() and constant afterwards.
struct VhdlPartContent
{
    struct Root
    {
        int scope = 0;
        bool isTop = false;
    };

    std::unique_ptr<ElaboratedSignals> design;
    std::vector<ScopeUse> scopes;             ///< By scope of the design.
    std::vector<QString> names;               ///< By signal of the design, as declared.
    std::vector<std::vector<SignalNet>> nets; ///< By signal of the design.
    std::vector<Root> roots;
    std::vector<PartRoot> foreignRoots;
    bool usesJtagPrimitive = false;

    const WaveScope &scopeAt(int scope) const;
    const WaveSignal &signalAt(int signal) const;
    const SignalType &typeOf(const WaveSignal &signal) const;
    /// The ports of an instance as they are declared.
    std::vector<PartPort> portsOf(int scope) const;
};

/// Calls @p visit with the bits of each scalar of @p type, in the order of the source.
template <typename Visit>
void forEachScalar(const SignalTypes &types, int typeIndex, const Visit &visit)
{
    const SignalType &type = types.at(typeIndex);
    if (type.isScalar())
        return visit(type.bits);
    for (const SignalType::Field &field : type.fields)
        forEachScalar(types, field.type, visit);
    if (type.kind != SignalType::Array || type.scalars == 0)
        return;
    for (qint64 i = 0; i < type.scalars / types.at(type.element).scalars; ++i)
        forEachScalar(types, type.element, visit);
}

/// Null with a message when the files are incomplete or have an unexpected form.
std::unique_ptr<VhdlPartContent> readVhdlPartContent(const VhdlPartInput &input, QString *error);

} // namespace NETWEIR::Internal
