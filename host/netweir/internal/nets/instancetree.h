// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "layout.h"

#include <netweir/internal/xml/elaborateddesign.h>

namespace NETWEIR {
class NetlistBuilder;
} // namespace NETWEIR

namespace NETWEIR::Internal {

/// The instances of a design, the top first and each before its children, those of one parent side
/// by side. Finds the marks that depend on the instance, and stamps the definitions into a netlist.
/// Time and memory are linear in the instances and bits; nothing recurses.
class InstanceTree
{
public:
    /// All have to outlive this.
    InstanceTree(ElaboratedDesign *design, const Layout &layout);

    /// Lists all instances and binds interface ports. False when there are too many, or when
    /// reading was cancelled.
    bool build();

    /// Makes memories of arrays in other nodes that are reached by a computed index.
    void findMemoriesElsewhere();

    /// Completes the marks of every instance; all definitions have to be marked before. False when
    /// the design has too many bits, or when reading was cancelled.
    bool markInstances();

    /// False when reading was cancelled.
    void stamp(NetlistBuilder *builder) const;

private:
    /// What an interface port is bound to, from the left; one for a port that is no array.
    struct Binding
    {
        int port = 0;
        std::vector<int> instances;
    };

    struct Instance
    {
        Definition *definition = nullptr;
        int parent = -1;
        int item = -1;       ///< In the parent's definition.
        qint64 position = 0; ///< Within an array of instances.
        int firstChild = 0;
        qint64 firstMark = 0;
        std::vector<Binding> bindings;
    };

    /// A scope of an instance.
    struct Place
    {
        int instance = -1;
        int scope = 0;
    };

    /// A variable of an instance.
    struct Target
    {
        int instance = -1;
        Variable *variable = nullptr;
    };

    static void listChildren(Definition *definition);
    void addChildren(int instance);
    void bindPorts(int instance);
    std::vector<int> interfacesOf(int instance, const Occurrence &expression) const;
    const std::vector<int> *bindingOf(int instance, int port) const;
    int childOf(int instance, int item, qint64 position) const;
    Place step(const Place &from, const std::string &component) const;
    Place stepToElement(const Place &from, const std::string &component) const;
    Place walk(Place from, const std::vector<std::string> &path, std::size_t first) const;
    Place resolve(const Place &from, std::string_view dotted) const;
    Target targetOf(int instance, const Reference &reference) const;
    void markWritesElsewhere(int instance);
    void markModports(int instance);
    void markConnections(int instance, bool interfaces);
    void markConnection(int instance, const Connection &connection, int child);
    const quint8 *marksOf(int instance, const Segment &segment) const;
    void markVariable(int instance, const Variable &variable);
    QString localName(const Instance &instance) const;

    ElaboratedDesign *m_design;
    const Layout &m_layout;
    std::vector<Instance> m_instances;
    std::vector<quint8> m_marks;
};

} // namespace NETWEIR::Internal
