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

/// Showing comes first: it looks at the memory of a process that has not used any yet.
const std::vector<Job> jobs{
    {"showing", measureShowing},
    {"searching", measureSearching},
    {"merging", [](NETWEIR::RtlNetlist *) { return measureMerging(); }},
    {"removing", [](NETWEIR::RtlNetlist *) { return measureRemoving(); }},
};

bool isWanted(const Job &job, const QStringList &wanted)
{
    return wanted.isEmpty() || wanted.contains(QLatin1String(job.name));
}

} // namespace

/// Prints how picking signals compares with what it cannot do without; exits with 1 when a goal is
/// missed. Arguments that are no options name the jobs to measure, all without any.
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
