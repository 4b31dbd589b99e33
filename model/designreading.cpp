// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designreading.h"

#include <sdk/netweir.h>
#include <sdk/te.h>

#include <QCoreApplication>

#include <algorithm>

namespace TARN {

namespace {

// Keys of the design information map.
constexpr char Top[] = "Top";     ///< String: the top module that the user chose, empty for none.
constexpr char Files[] = "Files"; ///< List: the design's source files.

/// The faults. Their texts are those of the view, which has always shown them.
struct Faults
{
    Q_DECLARE_TR_FUNCTIONS(TARN::TarnView)

public:
    static DesignFault noFiles() { return {tr("Error"), tr("Design files are not exist."), {}}; }
    static DesignFault badSources(const QStringList &messages)
    {
        return {tr("Design files contain some errors."), QString(), messages};
    }
    static DesignFault noModule()
    {
        return {tr("Design files contain some errors"), tr("Get no module from design."), {}};
    }
    static DesignFault invalidTop(const QString &top)
    {
        return {tr("Invalid Top Module"),
                tr("No module named \"%1\", please reset top module.").arg(top),
                {}};
    }
    static DesignFault severalTops()
    {
        return {tr("Multiple Top Module"), tr("Multiple top, please set top module."), {}};
    }
    static DesignFault otherTop(const QString &top, const QString &found)
    {
        return {
            tr("Error"),
            tr("Get module \"%1\" failed, just received default module \"%2\".").arg(top, found),
            {}};
    }
    static DesignFault jtagPrimitive()
    {
        return {tr("Error"), tr("KX_JTAG used in design conflicts with TARN."), {}};
    }
    static QString otherSynthesis()
    {
        return tr("For RTL Design, TARN is only available for OstraSynthesis. Please change "
                  "Synthesis Tool to OstraSynthesis in Configurations.");
    }
};

bool isError(const QString &message)
{
    return message.startsWith(QLatin1String("ERROR"));
}

/// False, with @p fault, unless the modules have one top.
bool checkModules(const QString &top, const QStringList &tops, const QStringList &modules,
                  DesignFault *fault)
{
    if (!modules.isEmpty() && tops.size() == 1)
        return true;
    if (modules.isEmpty() && !top.isEmpty())
        *fault = Faults::invalidTop(top);
    else if (!modules.isEmpty() && top.isEmpty())
        *fault = Faults::severalTops();
    else
        *fault = Faults::noModule();
    return false;
}

/// False, with @p fault, unless TARN can be used with @p netlist, which may be null.
bool checkNetlist(NETWEIR::RtlNetlist *netlist, const QString &top, DesignFault *fault)
{
    if (!netlist) {
        *fault = Faults::noModule();
        return false;
    }
    const QString found = netlist->top()->instName();
    if (!top.isEmpty() && top != found) {
        *fault = Faults::otherTop(top, found);
        return false;
    }
    if (netlist->usesJtagPrimitive()) {
        *fault = Faults::jtagPrimitive();
        return false;
    }
    return true;
}

} // namespace

std::unique_ptr<NETWEIR::RtlNetlist> readDesign(QMap<QString, QVariant> info,
                                                const ExtractorCalls &calls, DesignFault *fault)
{
    const QString top = info.value(Top).toString();
    if (info.value(Files).toList().isEmpty()) {
        *fault = Faults::noFiles();
        return nullptr;
    }
    QStringList tops;
    QStringList modules;
    QStringList messages;
    calls.findModules(info, tops, modules, messages);
    if (std::any_of(messages.cbegin(), messages.cend(), isError)) {
        *fault = Faults::badSources(messages);
        return nullptr;
    }
    if (!checkModules(top, tops, modules, fault))
        return nullptr;
    std::unique_ptr<NETWEIR::RtlNetlist> netlist(calls.buildNetlist());
    if (!checkNetlist(netlist.get(), top, fault))
        return nullptr;
    return netlist;
}

QString saveRefusal(const QString &synthesisTool)
{
    return synthesisTool == TE::OPT::Synplify_pro ? Faults::otherSynthesis() : QString();
}

} // namespace TARN
