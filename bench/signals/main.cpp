// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "jobs.h"

#include <netweir/rtlnetlist.h>
#include <support/benchmark.h>
#include <support/generatednetlist.h>

#include <QApplication>
#include <QRegularExpression>

namespace {

struct Job
{
    const char *name;
    std::function<bool(NETWEIR::RtlNetlist *)> measure;
};

/// Showing comes first: it measures memory, so the process must not have used any before.
const std::vector<Job> jobs{
    {"showing", measureShowing},
    {"searching", measureSearching},
    {"merging", [](NETWEIR::RtlNetlist *) { return measureMerging(); }},
    {"limits", measureLimits},
    {"removing", [](NETWEIR::RtlNetlist *) { return measureRemoving(); }},
};

bool isWanted(const Job &job, const QStringList &wanted)
{
    return wanted.isEmpty() || wanted.contains(QLatin1String(job.name));
}

} // namespace

/// Compares the choice of signals with the minimum that it needs. Exits with 1 when a goal is
/// missed. Arguments that are not options name the jobs to measure; the default is all jobs.
int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    TarnBench::readArguments(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    const QStringList wanted =
        app.arguments().mid(1).filter(QRegularExpression(QStringLiteral("^[^-]")));

    const std::unique_ptr<NETWEIR::RtlNetlist> netlist = TarnBench::generatedNetlist();
    bool good = true;
    for (const Job &job : jobs) {
        if (isWanted(job, wanted))
            good &= job.measure(netlist.get());
    }
    return good ? 0 : 1;
}
