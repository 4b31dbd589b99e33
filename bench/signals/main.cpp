// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "jobs.h"

#include <netweir/rtlnetlist.h>
#include <support/benchmark.h>
#include <support/generatednetlist.h>

#include <QApplication>

/// Compares the choice of signals with the minimum that it needs. Exits with 1 when a goal is
/// missed. Arguments that are not options name the jobs to measure.
int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});

    const std::unique_ptr<NETWEIR::RtlNetlist> owner = TarnBench::generatedNetlist();
    NETWEIR::RtlNetlist *netlist = owner.get();
    return TarnBench::runJobs(argc, argv,
                              {{"showing", [=] { return measureShowing(netlist); }},
                               {"searching", [=] { return measureSearching(netlist); }},
                               {"merging", measureMerging},
                               {"limits", [=] { return measureLimits(netlist); }},
                               {"removing", measureRemoving}});
}
