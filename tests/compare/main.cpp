// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "boxcloser.h"
#include "design.h"
#include "dump.h"
#include "dumpaudit.h"
#include "dumpdialogs.h"
#include "dumpnetlist.h"
#include "dumppages.h"
#include "dumpsearch.h"

#include <netweir/rtlnetlist.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <memory>

using namespace TarnCompare;

namespace {

/// How much of everything is tried with each design.
struct Amount
{
    quint32 seed = 1;
    int searches = 20;
    int steps = 6;
    int audits = 2;
    int mutants = 0;
};

Dump *debugLines = nullptr;

/// Lines of the debug stream belong to what can be seen. Times in them are not the same twice.
void writeDebugLine(QtMsgType, const QMessageLogContext &, const QString &message)
{
    static const QRegularExpression time(QStringLiteral("\\b\\d+(\\.\\d+)?(e-\\d+)? ?m?s\\b"));
    // A banner, or the copy of unsaved changes, which come when they come.
    static const QRegularExpression atAnyTime(
        QStringLiteral("propagateSizeHints|keep the unsaved changes"));
    if (debugLines && !message.contains(atAnyTime))
        debugLines->line(QStringLiteral("DEBUG ") +
                         quoted(QString(message).replace(time, QStringLiteral("TIME"))));
}

void dumpDesign(Dump *dump, const QString &name, const Amount &amount)
{
    Choice choice(amount.seed);
    std::unique_ptr<NETWEIR::RtlNetlist> netlist = readDesign(name, dump, nullptr);
    if (!netlist) {
        dump->line(QStringLiteral("NO NETLIST"));
        return;
    }
    const NumberedNetlist design(netlist.get());
    dumpNetlist(dump, design, &choice);
    dumpSearches(dump, design, amount.searches, &choice);
    dumpDialogs(dump, design, amount.steps, &choice);
    dumpAudits(dump, design, amount.audits, &choice);
    const QTemporaryDir folder;
    dump->hide(folder.path());
    dumpPages(dump, std::move(netlist), design, folder.path(), amount.steps, &choice);
}

/// The netlist of the design in the folder @p name after a change in one of its sources.
void dumpMutant(Dump *dump, const QString &name, quint32 seed)
{
    Choice choice(seed);
    const QTemporaryDir folder;
    const QString copy = folder.filePath(QStringLiteral("design"));
    dump->hide(folder.path());
    dump->line(QStringLiteral("MUTANT %1").arg(seed));
    QProcess::execute(QStringLiteral("cp"), {QStringLiteral("-a"), name, copy});
    const std::unique_ptr<NETWEIR::RtlNetlist> netlist = readDesign(copy, dump, &choice);
    if (netlist)
        dumpNetlist(dump, NumberedNetlist(netlist.get()), &choice);
}

void dumpAll(const QString &name, const QString &path, const Amount &amount)
{
    Dump dump(path);
    debugLines = &dump;
    const BoxCloser closer(&dump);
    dumpDesign(&dump, name, amount);
    if (QFileInfo(name).isDir()) {
        for (int i = 0; i < amount.mutants; ++i)
            dumpMutant(&dump, name, amount.seed + quint32(i));
    }
    debugLines = nullptr;
}

Amount amountOf(const QCommandLineParser &parser)
{
    Amount amount;
    amount.seed = parser.value(QStringLiteral("seed")).toUInt();
    amount.searches = parser.value(QStringLiteral("searches")).toInt();
    amount.steps = parser.value(QStringLiteral("steps")).toInt();
    amount.audits = parser.value(QStringLiteral("audits")).toInt();
    amount.mutants = parser.value(QStringLiteral("mutants")).toInt();
    return amount;
}

QString fileName(QString design)
{
    return design.replace(QRegularExpression(QStringLiteral("[^A-Za-z0-9_.:-]+")),
                          QStringLiteral("_")) +
           QStringLiteral(".txt");
}

} // namespace

/// Writes all that can be seen of designs to text files, one for each design: for comparison with
/// another version of the program, which has to write the same.
int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    const QList<QCommandLineOption> options{
        {QStringLiteral("output"), QStringLiteral("Folder of the text files."),
         QStringLiteral("folder"), QStringLiteral(".")},
        {QStringLiteral("seed"), QStringLiteral("Of all that is random."), QStringLiteral("number"),
         QStringLiteral("1")},
        {QStringLiteral("searches"), QStringLiteral("Searches in each design."),
         QStringLiteral("number"), QStringLiteral("20")},
        {QStringLiteral("steps"), QStringLiteral("Steps in each dialog and view."),
         QStringLiteral("number"), QStringLiteral("6")},
        {QStringLiteral("audits"), QStringLiteral("Configurations that are audited."),
         QStringLiteral("number"), QStringLiteral("2")},
        {QStringLiteral("mutants"), QStringLiteral("Changes of the sources in each folder."),
         QStringLiteral("number"), QStringLiteral("0")}};
    parser.addOptions(options);
    parser.addPositionalArgument(QStringLiteral("designs"), QStringLiteral("See readDesign()."));
    parser.process(app);
    qInstallMessageHandler(writeDebugLine);
    const QDir output(parser.value(QStringLiteral("output")));
    for (const QString &name : parser.positionalArguments())
        dumpAll(name, output.filePath(fileName(name)), amountOf(parser));
    return 0;
}
