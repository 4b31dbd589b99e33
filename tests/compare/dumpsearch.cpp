// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "dumpsearch.h"

#include "dump.h"
#include "dumpnetlist.h"

#include <netweir/hierachy.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>
#include <select/netsearch.h>

#include <QRegExp>

using NETWEIR::RtlNet;
using NETWEIR::RtlNetBus;
using TARN::ModuleForWidget;
using TARN::SearchOptions;

namespace TarnCompare {

namespace {

bool isWildcard(int syntax)
{
    return syntax == QRegExp::Wildcard || syntax == QRegExp::WildcardUnix;
}

QString anyName(const NumberedNetlist &design, Choice *choice)
{
    if (choice->chance(30) && !design.buses().isEmpty())
        return choice->any(design.buses())->fullBusName();
    return design.nets().isEmpty() ? QStringLiteral("top/x")
                                   : choice->any(design.nets())->fullPathName();
}

QString anyPart(const QString &name, Choice *choice)
{
    const int begin = choice->below(name.size());
    return name.mid(begin, 1 + choice->below(name.size() - begin));
}

const QStringList &wildcards()
{
    static const QStringList list{"*",       "?",   "**",  "[a-z]", "[!a]", "[^x]*",
                                  "[0-9]*",  "\\*", "\\[", "[",     "]",    "[]]",
                                  "*[0-9]?", "[a-", "\\",  "?*",    "[abc", "[a-z0-9_/]*"};
    return list;
}

const QStringList &expressions()
{
    static const QStringList list{
        ".*",     ".",      "[0-9]+", "\\d*",     "(a|b)?",    "(reg|wire)*", "\\w+",
        "^",      "$",      "\\b",    "[^/]*",    "(?=[a-z])", "(?!x)",       "\\[\\d+\\]",
        ".{2,4}", "(.)\\1", "(",      "[",        "*",         "\\",          "[a-z_0-9/]+",
        "(?:u_)", "x{,3}",  "|",      ".*|top.*", "\\x0074",   "()",          "[\\w/]*"};
    return list;
}

/// Replaces one or several parts of the escaped @p pattern by @p pieces.
QString mixed(QString pattern, const QStringList &pieces, Choice *choice)
{
    for (int count = choice->below(4); count > 0; --count) {
        const int place = choice->below(pattern.size() + 1);
        pattern.replace(place, choice->below(6), choice->any(pieces));
    }
    return pattern;
}

QString wildcardPattern(const QString &name, Choice *choice)
{
    QString pattern = name;
    if (choice->chance(60))
        pattern.replace(QLatin1Char('['), QStringLiteral("\\["));
    pattern = mixed(pattern, wildcards(), choice);
    if (choice->chance(50))
        pattern.prepend(QLatin1Char('*'));
    if (choice->chance(50))
        pattern.append(QLatin1Char('*'));
    return pattern;
}

QString expressionPattern(const QString &name, Choice *choice)
{
    QString pattern = mixed(QRegExp::escape(name), expressions(), choice);
    if (choice->chance(50))
        pattern.prepend(QStringLiteral(".*"));
    if (choice->chance(50))
        pattern.append(QStringLiteral(".*"));
    return pattern;
}

SearchOptions anyOptions(const NumberedNetlist &design, Choice *choice)
{
    SearchOptions options;
    options.caseSensitivity = choice->below(2);
    options.usePattern = choice->chance(65);
    options.patternSyntax = choice->any(QVector<int>{
        QRegExp::WildcardUnix, QRegExp::RegExp, QRegExp::WildcardUnix, QRegExp::RegExp,
        QRegExp::Wildcard, QRegExp::FixedString, QRegExp::RegExp2, QRegExp::W3CXmlSchema11});
    options.useSearchIn = choice->chance(80);
    options.searchIn = choice->chance(40) ? design.netlist()->top() : choice->any(design.nodes());
    options.includeSubentries = choice->chance(75);
    options.pattern = anyPattern(design, options, choice);
    return options;
}

void appendModule(LongText *text, const NumberedNetlist &design, const ModuleForWidget &module)
{
    // Without recursion: designs can be deep.
    QVector<const ModuleForWidget *> open{&module};
    while (!open.isEmpty()) {
        const ModuleForWidget *next = open.takeLast();
        text->line(QStringLiteral("%1 nets %2 buses %3 below %4")
                       .arg(quoted(next->name), design.numbersOf(next->nets),
                            design.numbersOf(next->buses))
                       .arg(next->subModules.size()));
        for (int i = next->subModules.size(); i > 0; --i)
            open.append(&next->subModules.at(i - 1));
    }
}

void searchFlat(LongText *text, const NumberedNetlist &design, const SearchOptions &options,
                Choice *choice)
{
    QList<RtlNet *> nets;
    QList<RtlNetBus *> buses;
    if (choice->chance(10) && !design.nets().isEmpty())
        nets.append(choice->any(design.nets()));
    TARN::searchNets(choice->chance(98) ? design.netlist() : nullptr, options, nets, buses);
    for (const RtlNet *net : qAsConst(nets))
        text->line(design.numberOf(net));
    text->line(QStringLiteral("buses"));
    for (const RtlNetBus *bus : qAsConst(buses))
        text->line(design.numberOf(bus));
}

void searchOnce(LongText *text, const NumberedNetlist &design, SearchOptions options,
                Choice *choice)
{
    const int kind = choice->below(10);
    if (kind < 6) {
        searchFlat(text, design, options, choice);
    } else if (kind < 9) {
        appendModule(text, design, TARN::searchNetsHierarchy(options));
    } else {
        ModuleForWidget parent;
        TARN::createModuleForWidget(parent, choice->any(design.nodes()), options);
        appendModule(text, design, parent);
    }
    if (choice->chance(20) && !design.nets().isEmpty())
        text->line(
            QString::number(int(TARN::checkNetForHierarchy(choice->any(design.nets()), options))));
    if (choice->chance(20) && !design.buses().isEmpty())
        text->line(
            QString::number(int(TARN::checkNetForHierarchy(choice->any(design.buses()), options))));
}

} // namespace

QString anyPattern(const NumberedNetlist &design, const SearchOptions &options, Choice *choice)
{
    if (choice->chance(5))
        return QString();
    const QString part = anyPart(anyName(design, choice), choice);
    const QString text = choice->chance(20) ? alike(part, choice) : part;
    if (!options.usePattern || options.patternSyntax == QRegExp::FixedString)
        return text;
    return isWildcard(options.patternSyntax) ? wildcardPattern(text, choice)
                                             : expressionPattern(text, choice);
}

void dumpSearches(Dump *dump, const NumberedNetlist &design, int count, Choice *choice)
{
    for (int i = 0; i < count; ++i) {
        const SearchOptions options = anyOptions(design, choice);
        dump->line(QStringLiteral("SEARCH %1 case%2 pattern%3 syntax%4 in%5 %6 sub%7 fault %8")
                       .arg(quoted(options.pattern))
                       .arg(options.caseSensitivity)
                       .arg(int(options.usePattern))
                       .arg(options.patternSyntax)
                       .arg(int(options.useSearchIn))
                       .arg(design.numberOf(options.searchIn))
                       .arg(int(options.includeSubentries))
                       .arg(quoted(TARN::patternFault(options))));
        LongText text;
        searchOnce(&text, design, options, choice);
        text.writeTo(dump);
    }
}

} // namespace TarnCompare
