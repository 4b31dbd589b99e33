// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "omittedwrites.h"

#include "placeddefinition.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/xml/definition.h>

#include <QMultiHash>

namespace NETWEIR::Internal {

namespace {

/// True when @p write names a range within @p net, the bus for all of @p variable.
bool isWithin(const OmittedWrite &write, const PlacedVariable &variable, const PlacedNet &net)
{
    const auto [lowest, highest] = std::minmax(net.left, net.right);
    const auto [first, last] = std::minmax(write.left, write.right);
    return write.left >= 0 && net.isBus && net.width() == variable.width && first >= lowest &&
           last <= highest;
}

/// The bits of @p variable that @p write names: all bits when the range is unknown or does not fit.
BitRange bitsOf(const OmittedWrite &write, const PlacedVariable &variable, const PlacedNet &net)
{
    if (!isWithin(write, variable, net))
        return variable.bits();
    const auto [first, last] = std::minmax(write.left, write.right);
    const qint64 low = net.bit + (net.left >= net.right ? first - net.right : net.right - last);
    return {low, low, 1, last - first + 1, net.bit + net.width()};
}

/// Separates the writes of a definition to its own nets from the others.
class OmittedWriteSorter
{
public:
    explicit OmittedWriteSorter(const PlacedDefinition &placed)
        : m_definition(*placed.definition)
    {
        for (const PlacedVariable &variable : placed.variables) {
            if (variable.variable->isNet)
                m_variables.insert(variable.variable->name, &variable);
        }
        for (const PlacedNet &net : placed.nets)
            m_nets.insert(net.bit, &net);
    }

    void add(const OmittedWrite &write, OmittedTargets *targets) const
    {
        const QString first = write.path.section(QLatin1Char('.'), 0, 0);
        if (write.path.isEmpty())
            addOwn(write, targets);
        else if (m_variables.contains(first)) // A member of a structure.
            addOwn({first, QString(), -1, -1}, targets);
        else if (m_definition.find(0, first.toStdString()).kind == Symbol::Kind::None)
            addOwn({write.name, QString(), -1, -1}, targets); // Through a clocking block.
        else
            targets->elsewhere.append(write);
    }

private:
    void addOwn(const OmittedWrite &write, OmittedTargets *targets) const
    {
        const auto [first, last] = m_variables.equal_range(write.name);
        for (auto variable = first; variable != last; ++variable) {
            const PlacedNet *net = m_nets.value((*variable)->bit);
            targets->bits.push_back(bitsOf(write, **variable, net ? *net : PlacedNet()));
        }
    }

    const Definition &m_definition;
    QMultiHash<QString, const PlacedVariable *> m_variables; ///< Variables that are nets, by name.
    QHash<qint64, const PlacedNet *> m_nets;                 ///< Nets by their first bit.
};

} // namespace

OmittedTargets omittedTargetsOf(const PlacedDefinition &placed)
{
    OmittedTargets targets;
    if (placed.definition->omittedWrites.isEmpty())
        return targets;
    const OmittedWriteSorter sorter(placed);
    for (const OmittedWrite &write : placed.definition->omittedWrites)
        sorter.add(write, &targets);
    return targets;
}

} // namespace NETWEIR::Internal
