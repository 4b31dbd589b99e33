// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "border.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/ground/messages.h>

namespace NETWEIR::Internal {

namespace {

template <typename Port>
QStringList namesOf(const std::vector<Port> &ports)
{
    QStringList names;
    for (const Port &port : ports)
        names.append(port.name);
    return names;
}

/// Replaces names by their declarations.
class Respelling
{
public:
    explicit Respelling(const QStringList &declared)
        : m_declared(declared)
        , m_names(declared)
    {
    }

    /// False when it is not declared.
    bool respell(QString *name) const
    {
        const int index = m_names.find(*name);
        if (index >= 0)
            *name = m_declared[index];
        return index >= 0;
    }

private:
    const QStringList m_declared;
    const NamesAcross m_names;
};

QString unknownPort(const PartRoot &root, const QString &unit, const PartPort &port)
{
    return errorMessage(root.place, Text::tr("\"%2\" has no port \"%1\". Correct the name in the "
                                             "instance or its component.")
                                        .arg(port.name, unit));
}

QString directionName(PortDirection direction)
{
    switch (direction) {
    case PortDirection::Input:
        return Text::tr("an input");
    case PortDirection::Output:
        return Text::tr("an output");
    case PortDirection::Inout:
        return Text::tr("an inout");
    case PortDirection::Unknown:
        break;
    }
    return {};
}

bool contradict(PortDirection a, PortDirection b)
{
    return a != PortDirection::Unknown && b != PortDirection::Unknown && a != b;
}

QString widthMessage(const PartRoot &root, Language from, const QString &unit,
                     const PartPort &connected, const PartPort &port)
{
    if (from == Language::Vhdl)
        return errorMessage(root.place,
                            Text::tr("The port \"%1\" of \"%2\" has %3 bits, but %4 in its "
                                     "component. Give both the same width.")
                                .arg(port.name, unit)
                                .arg(port.width)
                                .arg(connected.width));
    return warningMessage(root.place, Text::tr("The port \"%1\" of \"%2\" has %3 bits, but %4 are "
                                               "connected.")
                                          .arg(port.name, unit)
                                          .arg(port.width)
                                          .arg(connected.width));
}

/// The entries of one element of an array of instances, or all of them.
std::vector<bool> slice(const std::vector<bool> &driven, const BorderInstance &instance,
                        qint64 width)
{
    if (instance.count == 1 || countOf(driven) != instance.count * width)
        return driven;
    const auto begin = driven.begin() + instance.position * width;
    return {begin, begin + width};
}

/// One entry for each bit. A single one holds for all. Otherwise the bits on the right stay, and
/// missing bits on the left are padding.
std::vector<bool> fitted(const std::vector<bool> &driven, qint64 width)
{
    if (countOf(driven) == 1)
        return std::vector<bool>(std::size_t(width), driven.front());
    if (countOf(driven) == width)
        return driven;
    if (countOf(driven) > width)
        return {driven.end() - width, driven.end()};
    std::vector<bool> result(std::size_t(width - countOf(driven)), true);
    result.insert(result.end(), driven.begin(), driven.end());
    return result;
}

} // namespace

PartRoot inWordsOf(const DeclaredUnit &declared, const PartRoot &root, QStringList *messages)
{
    PartRoot result = root;
    result.library = declared.library;
    if (!root.isTop)
        result.unit = declared.name;
    result.generics.clear();
    const bool isCertain =
        declared.language == Language::Vhdl && declared.kind == DeclaredUnit::Module;
    const Respelling generics(declared.generics);
    for (auto generic = root.generics.begin(); generic != root.generics.end(); ++generic) {
        QString name = generic.key();
        if (!generics.respell(&name) && isCertain)
            messages->append(errorMessage(
                root.place, Text::tr("\"%2\" has no generic or parameter \"%1\". Correct the name "
                                     "in the instance or its component.")
                                .arg(name, declared.name)));
        result.generics.insert(name, *generic);
    }
    const Respelling ports(namesOf(declared.ports));
    for (PartPort &port : result.ports) {
        if (!ports.respell(&port.name) && isCertain)
            messages->append(unknownPort(root, declared.name, port));
    }
    return result;
}

BorderPorts::BorderPorts(const QString &unit, const std::vector<PartPort> &ports)
    : m_unit(unit)
    , m_ports(ports)
    , m_names(namesOf(ports))
{
}

QStringList BorderPorts::messages(const PartRoot &root, Language from) const
{
    QStringList result;
    for (const PartPort &connected : root.ports) {
        const int index = m_names.find(connected.name);
        if (index < 0) {
            result.append(unknownPort(root, m_unit, connected));
            continue;
        }
        const PartPort &port = itemAt(m_ports, index);
        if (contradict(connected.direction, port.direction)) {
            result.append(errorMessage(
                root.place, Text::tr("The port \"%1\" of \"%2\" is %3, but %4 in its component. "
                                     "Give both the same direction.")
                                .arg(port.name, m_unit, directionName(port.direction),
                                     directionName(connected.direction))));
        }
        if (connected.width > 0 && connected.width != port.width)
            result.append(widthMessage(root, from, m_unit, connected, port));
    }
    return result;
}

DrivenPorts BorderPorts::driven(const BorderInstance &instance) const
{
    DrivenPorts result;
    for (auto driven = instance.driven.begin(); driven != instance.driven.end(); ++driven) {
        const int index = m_names.find(driven.key());
        if (index < 0 || driven->empty())
            continue;
        const PartPort &port = itemAt(m_ports, index);
        if (port.direction == PortDirection::Inout)
            result.insert(port.name, std::vector<bool>(std::size_t(port.width), true));
        else
            result.insert(port.name, fitted(slice(*driven, instance, port.width), port.width));
    }
    return result;
}

} // namespace NETWEIR::Internal
