// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "netsearch.h"

#include "namematcher.h"

#include <sdk/netweir.h>

#include <QStringBuilder>

namespace TARN {

namespace {

// The names as the host returns them: a reference costs no copy, a value outlives the call.

decltype(auto) fullName(NETWEIR::RtlNet *net)
{
    return net->fullPathName();
}

decltype(auto) fullName(NETWEIR::RtlNetBus *bus)
{
    return bus->fullBusName();
}

template <typename Item>
void appendMatches(const QList<Item *> &candidates, NameMatcher &matcher, QList<Item *> &results)
{
    for (Item *item : candidates) {
        if (matcher.matches(fullName(item)))
            results.append(item);
    }
}

/// The top node is shown by its instance name alone.
QString moduleLabel(NETWEIR::Hierachy *node)
{
    if (!node->parent())
        return node->instName();
    return node->moduleName() % QLatin1Char(':') % node->instName();
}

void fillModule(ModuleForWidget &module, NETWEIR::Hierachy *node, NameMatcher &matcher)
{
    if (matcher.matchesAll()) {
        module.nets = node->nets();
        module.buses = node->buses();
        return;
    }
    appendMatches(node->nets(), matcher, module.nets);
    appendMatches(node->buses(), matcher, module.buses);
}

void appendModule(ModuleForWidget &parent, NETWEIR::Hierachy *node, NameMatcher &matcher)
{
    parent.subModules.append(ModuleForWidget());
    ModuleForWidget &module = parent.subModules.last();
    fillModule(module, node, matcher);
    const auto &children = node->children();
    for (NETWEIR::Hierachy *child : children)
        appendModule(module, child, matcher);
    if (module.nets.isEmpty() && module.buses.isEmpty() && module.subModules.isEmpty())
        parent.subModules.removeLast();
    else
        module.name = moduleLabel(node);
}

} // namespace

// NOLINTNEXTLINE(performance-unnecessary-value-param): by value in the interface
void searchNets(NETWEIR::RtlNetlist *netlist, SearchOptions options, QList<NETWEIR::RtlNet *> &nets,
                QList<NETWEIR::RtlNetBus *> &buses)
{
    if (!netlist)
        return;
    const bool subentries = options.useSearchIn && options.includeSubentries;
    NETWEIR::Hierachy *node = options.useSearchIn ? options.searchIn : netlist->top();
    const QList<NETWEIR::RtlNet *> candidateNets =
        subentries ? node->singleNetsIncludeSub() : node->nets();
    const QList<NETWEIR::RtlNetBus *> candidateBuses =
        subentries ? node->netbusesIncludeSub() : node->buses();

    NameMatcher matcher(options);
    if (matcher.matchesAll()) {
        nets = candidateNets;
        buses = candidateBuses;
        return;
    }
    appendMatches(candidateNets, matcher, nets);
    appendMatches(candidateBuses, matcher, buses);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): by value in the interface
ModuleForWidget searchNetsHierarchy(SearchOptions options)
{
    ModuleForWidget root;
    if (!options.searchIn)
        return root;
    root.name = moduleLabel(options.searchIn);
    if (!options.useSearchIn)
        return root;
    NameMatcher matcher(options);
    fillModule(root, options.searchIn, matcher);
    if (options.includeSubentries) {
        const auto &children = options.searchIn->children();
        for (NETWEIR::Hierachy *child : children)
            appendModule(root, child, matcher);
    }
    return root;
}

void createModuleForWidget(ModuleForWidget &parent, NETWEIR::Hierachy *node, SearchOptions &options)
{
    NameMatcher matcher(options);
    appendModule(parent, node, matcher);
}

QString patternFault(const SearchOptions &options)
{
    const QRegExp expression(options.pattern, Qt::CaseSensitive,
                             static_cast<QRegExp::PatternSyntax>(options.patternSyntax));
    return !options.usePattern || expression.isValid() ? QString() : expression.errorString();
}

bool checkNetForHierarchy(NETWEIR::RtlNet *net, SearchOptions &options)
{
    return NameMatcher(options).matches(fullName(net));
}

bool checkNetForHierarchy(NETWEIR::RtlNetBus *bus, SearchOptions &options)
{
    return NameMatcher(options).matches(fullName(bus));
}

} // namespace TARN
