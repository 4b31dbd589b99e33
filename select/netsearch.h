// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>

namespace NETWEIR {
class Hierachy;
class RtlNet;
class RtlNetBus;
class RtlNetlist;
} // namespace NETWEIR

namespace TARN {

/// What to look for, and where.
struct SearchOptions
{
    QString pattern;          ///< Used as it stands, no trimming; empty matches everything.
    int caseSensitivity = 0;  ///< Qt::CaseSensitivity.
    bool usePattern = false;  ///< False: substring; true: QRegExp over the whole name.
    int patternSyntax = 0;    ///< QRegExp::PatternSyntax; read only with usePattern.
    bool useSearchIn = false; ///< Search in searchIn; otherwise the top node's own nets and buses.
    NETWEIR::Hierachy *searchIn = nullptr; ///< Not owned.
    bool includeSubentries = false;        ///< The whole subtree of searchIn, not only the node.
};

/// One module of a hierarchical search result with what matched in it. Nets and buses belong to
/// the netlist.
struct ModuleForWidget
{
    QString name; ///< Label of the module row.
    QList<NETWEIR::RtlNet *> nets;
    QList<NETWEIR::RtlNetBus *> buses;
    QList<ModuleForWidget> subModules; ///< Those that hold a match somewhere below.
};

// A name is the full hierarchical name, never the short one. A substring may lie anywhere in it,
// whereas wildcards and regular expressions must cover it from end to end: users write *data* to
// find the text anywhere. An invalid expression matches nothing.

/// Appends the matching nets and buses to the two lists, in the netlist's order; with an empty
/// pattern the lists are replaced by all candidates. A null @p netlist leaves them untouched.
void searchNets(NETWEIR::RtlNetlist *netlist, SearchOptions options, QList<NETWEIR::RtlNet *> &nets,
                QList<NETWEIR::RtlNetBus *> &buses);

/// The matches below options.searchIn as a tree; branches without a match are left out, the root is
/// always there. Without options.useSearchIn the root stays empty.
ModuleForWidget searchNetsHierarchy(SearchOptions options);

/// Appends the module of @p node, with everything below it, to @p parent when it holds a match.
void createModuleForWidget(ModuleForWidget &parent, NETWEIR::Hierachy *node,
                           SearchOptions &options);

/// Why the pattern matches nothing, in English: it is no valid wildcard or regular expression.
/// Empty for a pattern that may match something.
QString patternFault(const SearchOptions &options);

/// Whether one net or bus matches. Prepares the pattern anew on every call.
bool checkNetForHierarchy(NETWEIR::RtlNet *net, SearchOptions &options);
bool checkNetForHierarchy(NETWEIR::RtlNetBus *bus, SearchOptions &options);

} // namespace TARN
