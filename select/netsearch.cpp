// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "netsearch.h"

#include "namematcher.h"

#include <sdk/netweir.h>

#include <QStringBuilder>

namespace TARN {

namespace {

// Reading full names one after the other. Some hosts can write a name over that of the net before,
// if there is one, and then the common path need not be searched again. Each function returns the
// number of letters at the beginning that are known to be the same; with any other host it is 0.

struct AnyHost
{
};
struct HostThatCopies : AnyHost
{
};

[[maybe_unused]] int readFullName(NETWEIR::RtlNet *net, NETWEIR::RtlNet *, QString *name, AnyHost)
{
    *name = net->fullPathName();
    return 0;
}

[[maybe_unused]] int readFullName(NETWEIR::RtlNetBus *bus, NETWEIR::RtlNetBus *, QString *name,
                                  AnyHost)
{
    *name = bus->fullBusName();
    return 0;
}

template <typename Net>
auto readFullName(Net *net, Net *before, QString *name, HostThatCopies)
    -> decltype(net->copyFullPathName(name, before))
{
    return net->copyFullPathName(name, before);
}

template <typename Bus>
auto readFullName(Bus *bus, Bus *before, QString *name, HostThatCopies)
    -> decltype(bus->copyFullBusName(name, before))
{
    return bus->copyFullBusName(name, before);
}

template <typename Item>
void appendMatches(const QList<Item *> &candidates, NameMatcher &matcher, QList<Item *> &results)
{
    QString name;
    Item *before = nullptr;
    for (Item *item : candidates) {
        const int same = readFullName(item, before, &name, HostThatCopies());
        if (matcher.matches(name, same))
            results.append(item);
        before = item;
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
    return NameMatcher(options).matches(net->fullPathName());
}

bool checkNetForHierarchy(NETWEIR::RtlNetBus *bus, SearchOptions &options)
{
    return NameMatcher(options).matches(bus->fullBusName());
}

} // namespace TARN
