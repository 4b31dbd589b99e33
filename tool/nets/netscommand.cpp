// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "netscommand.h"

#include "instancepath.h"
#include "netlisting.h"

#include <netweir/rtlnetlist.h>
#include <tool/command.h>
#include <tool/console.h>
#include <tool/design.h>
#include <tool/invocation.h>

#include <QRegExp>

namespace Tool {

namespace {

const QLatin1String Wildcard("--wildcard");
const QLatin1String Regexp("--regexp");
const QLatin1String CaseSensitive("--case-sensitive");
const QLatin1String In("--in");
const QLatin1String Own("--own");
const QLatin1String For("--for");
const QLatin1String Tree("--tree");
const QLatin1String JsonOption("--json");

/// Everything but where to search, which needs the design. False after an error message.
bool readOptions(const Invocation &invocation, Console *console, NetListing *listing)
{
    TARN::SearchOptions &search = listing->search;
    search.pattern = invocation.words.first();
    search.caseSensitivity =
        invocation.isSet(CaseSensitive) ? Qt::CaseSensitive : Qt::CaseInsensitive;
    search.usePattern = invocation.isSet(Wildcard) || invocation.isSet(Regexp);
    search.patternSyntax = invocation.isSet(Wildcard) ? QRegExp::WildcardUnix : QRegExp::RegExp;
    search.useSearchIn = true;
    search.includeSubentries = !invocation.isSet(Own);
    if (invocation.isSet(For)) {
        listing->usableFor =
            invocation.value(For) == QLatin1String("in") ? TARN::ProbeTypeIn : TARN::ProbeTypeOut;
    }
    listing->asTree = invocation.isSet(Tree);
    listing->asJson = invocation.isSet(JsonOption);

    if (invocation.isSet(Wildcard) && invocation.isSet(Regexp)) {
        console->error(QStringLiteral("--wildcard and --regexp cannot be combined; choose one"));
        return false;
    }
    const QString fault = TARN::patternFault(search);
    if (fault.isEmpty())
        return true;
    console->error(QStringLiteral("the %1 \"%2\" is invalid: %3")
                       .arg(invocation.isSet(Wildcard) ? QStringLiteral("wildcard")
                                                       : QStringLiteral("regular expression"),
                            search.pattern, fault));
    return false;
}

bool setSearchIn(const Invocation &invocation, Console *console, NETWEIR::RtlNetlist *netlist,
                 NetListing *listing)
{
    listing->search.searchIn = netlist->top();
    if (!invocation.isSet(In))
        return true;
    QString error;
    listing->search.searchIn = findInstance(netlist, invocation.value(In), &error);
    if (!listing->search.searchIn)
        console->error(error);
    return listing->search.searchIn != nullptr;
}

void tellNothingFound(const NetListing &listing, Console *console)
{
    QString text = QStringLiteral("nothing matches \"%1\"").arg(listing.search.pattern);
    if (listing.search.usePattern)
        text += QLatin1String("; a pattern has to cover the whole name, such as top/u0/data[7:0]");
    console->error(text);
}

int runNets(const Invocation &invocation, Console *console)
{
    NetListing listing;
    Design design;
    if (!readOptions(invocation, console, &listing) || !readDesign(invocation, console, &design) ||
        !setSearchIn(invocation, console, design.netlist.get(), &listing))
        return Failure;
    const auto write = [console](const QByteArray &text) {
        console->write(text);
        return !console->isInterrupted();
    };
    if (listNets(design.netlist.get(), listing, write) || console->isInterrupted())
        return Success;
    tellNothingFound(listing, console);
    return Found;
}

Command makeCommand()
{
    Command command;
    command.name = QStringLiteral("nets");
    command.synopsis = QStringLiteral("[DESIGN] PATTERN");
    command.summary = QStringLiteral("list nets and buses of a design by name");
    command.description = QStringLiteral(
        "Prints the full names of the buses, then of the single nets, that contain\n"
        "PATTERN: what the search dialog of the editor finds, in its order. The case of\n"
        "letters does not matter. With --wildcard or --regexp, PATTERN has to cover the\n"
        "full name from end to end: '*data*' finds the text anywhere. An empty PATTERN\n"
        "finds everything.\n"
        "\n"
        "Exit code 1 means that nothing was found.");
    command.options = {
        {Wildcard,
         {},
         QStringLiteral("PATTERN is a wildcard: *, ? and [...]; \\ before one of "
                        "them takes it literally")},
        {Regexp, {}, QStringLiteral("PATTERN is a regular expression")},
        {CaseSensitive, {}, QStringLiteral("the case of letters matters")},
        {In, QStringLiteral("PATH"),
         QStringLiteral("search in that instance and below, such as top/u0 (default: the top)")},
        {Own, {}, QStringLiteral("search in the instance only, not below")},
        {For, QStringLiteral("in|out"),
         QStringLiteral("only what a Probe In or Probe Out port can have; of a bus that it cannot "
                        "have as a whole, the single bits that it can")},
        {Tree, {}, QStringLiteral("print by module, as a tree")},
        {JsonOption,
         {},
         QStringLiteral("print JSON, with the bits of the buses and what ports can "
                        "have them")}};
    command.takesDesign = true;
    command.hasOutput = true;
    command.files = Command::Files::None;
    command.words = Command::Words::LastIsWord;
    command.run = runNets;
    return command;
}

} // namespace

const Command &netsCommand()
{
    static const Command command = makeCommand();
    return command;
}

} // namespace Tool
