// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/rtlnetlist.h>

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>

class QWidget;

namespace TarnTest {

/// Answers NETWEIR::catchRtlModules() and NETWEIR::catchRtlNetsWithProgressDialog() by script and
/// records how they were called. Linked into a program, it stands in for the real functions.
struct FakeExtraction
{
    static FakeExtraction &instance();

    /// Back to a design with the single module and top "top".
    void reset();

    QStringList tops;
    QStringList modules;
    QStringList messages;
    /// Makes the netlist; null for a failed or cancelled build.
    std::function<std::unique_ptr<NETWEIR::RtlNetlist>()> build;
    /// Run before the functions return, in place of their event loops.
    std::function<void()> whileFindingModules;
    std::function<void()> whileBuilding;

    QMap<QString, QVariant> info; ///< Of the last search for modules.
    bool listsWereEmpty = false;  ///< All lists that were passed in.
    bool netlistWasNull = false;
    int searches = 0;
    int builds = 0;
    QList<QWidget *> parents;
};

/// A netlist whose top has the nets "clk" and "dead", which is excluded for Probe In.
std::unique_ptr<NETWEIR::RtlNetlist> makeNetlist(const QString &top, bool usesJtag = false);

} // namespace TarnTest
