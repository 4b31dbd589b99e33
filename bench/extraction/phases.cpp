// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "phases.h"

#include <netweir/internal/join/joinednetlist.h>
#include <netweir/internal/modules/designscan.h>
#include <netweir/internal/modules/foreignunits.h>
#include <netweir/internal/nets/verilogpart.h>
#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/sources/sourcecheck.h>
#include <netweir/internal/tool/extractionprogress.h>
#include <netweir/internal/tool/workfolder.h>
#include <netweir/internal/verilator/elaboratorinput.h>
#include <netweir/internal/verilator/elaboratorprogram.h>
#include <netweir/internal/verilator/elaboratorrun.h>
#include <netweir/internal/verilator/preprocessorinput.h>
#include <netweir/internal/verilator/sourcelinks.h>
#include <netweir/rtlnetlist.h>

#include <support/benchmark.h>

#include <QElapsedTimer>

using namespace NETWEIR;
using namespace NETWEIR::Internal;

namespace {

/// Takes the time from one phase to the next.
class PhaseClock
{
public:
    PhaseClock() { m_timer.start(); }

    void finish(const std::string &phase)
    {
        m_times.emplace_back(phase, double(m_timer.nsecsElapsed()) / 1e9);
        m_timer.start();
    }

    PhaseTimes times() const { return m_times; }

private:
    QElapsedTimer m_timer;
    PhaseTimes m_times;
};

void check(bool isGood, const QString &error)
{
    if (!isGood)
        TarnBench::fail("a phase failed: " + error.toStdString());
}

/// Versions that this one is compared with may hand over the output as a whole.
template <typename Run>
auto outputOf(Run *run, int) -> decltype(run->nextOutput())
{
    QByteArray output;
    for (QByteArray piece = run->nextOutput(); !piece.isEmpty(); piece = run->nextOutput())
        output += piece;
    return output;
}

template <typename Run>
QByteArray outputOf(Run *run, long)
{
    return run->takeOutput();
}

QByteArray runTool(const QStringList &arguments, const WorkFolder &folder)
{
    QString error;
    const QString program = findElaborator(&error);
    check(!program.isEmpty(), error);
    ExtractionProgress progress(nullptr);
    ElaboratorRun run(program, arguments, folder.path(), 1000);
    run.wait(&progress);
    check(run.succeeded(), run.failure(QStringLiteral("The tool")));
    return outputOf(&run, 0);
}

PartRoot topRoot(const QString &top)
{
    PartRoot root;
    root.unit = top;
    root.isTop = true;
    return root;
}

/// As a design in one language is read.
std::unique_ptr<RtlNetlist> build(std::unique_ptr<Part> part)
{
    std::vector<ReadRoot> roots(1);
    roots.front().part = 0;
    roots.front().index = 0;
    const QString name = part->unitName(0);
    std::vector<ReadPart> parts;
    parts.push_back({Language::Verilog, std::move(part), {}});
    QString error;
    std::unique_ptr<RtlNetlist> netlist = joinParts(parts, roots, name, &error);
    check(bool(netlist), error);
    return netlist;
}

} // namespace

PhaseTimes timePhases(const QMap<QString, QVariant> &info)
{
    const DesignSources sources = readDesignSources(info);
    const WorkFolder folder;
    QString error;
    PhaseClock clock;

    SourceWords words;
    checkSources(sources, &words);
    clock.finish("check of the sources");

    SourceLinks links;
    check(links.make(sources, folder, &error), error);
    const PreprocessorInput preprocessor(sources, words, links, false);
    check(preprocessor.write(folder, &error), error);
    const QByteArray output = runTool(preprocessor.arguments(), folder);
    clock.finish("preprocessor");

    const PreprocessedText text(output, links.files(), links.folders());
    clock.finish("texts of its output");

    const DesignScan scan(sources, text);
    clock.finish("scan of the texts");

    const ForeignUnits foreign;
    const ElaborationRoots roots({topRoot(sources.top)}, scan, false);
    const ElaboratorInput input(sources, text, scan, foreign, roots);
    check(input.write(folder, &error), error);
    clock.finish("input of the elaborator");

    runTool(input.arguments(), folder);
    clock.finish("elaborator");

    std::unique_ptr<Part> part = VerilogPart::read(folder.path(QLatin1String(ElaboratedFile)),
                                                   roots.all(), input.readOptions(), &error);
    check(bool(part), error);
    clock.finish("reading its result");

    const std::unique_ptr<RtlNetlist> netlist = build(std::move(part));
    clock.finish("building the netlist");
    return clock.times();
}
