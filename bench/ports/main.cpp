// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "barepage.h"
#include "pagestate.h"

#include <model/tarnconfig.h>
#include <model/tarncore.h>
#include <probes/probeportsoptionwidget.h>
#include <support/benchmark.h>
#include <support/freshprocess.h>
#include <view/tarnview.h>
#include <view/tarnview_p.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>

#include <cstdio>
#include <memory>
#include <sstream>
#include <string>

using TARN::ProbePortsOptionWidget;
using TARN::TarnCore;
using TARN::TarnView;
using TarnBench::BarePage;
using TarnBench::fail;
using TarnBench::Table;

namespace {

constexpr int CoreCount = 16;
constexpr int PortCount = 64;
constexpr int SignalCount = 256;
constexpr int Rounds = 9;
constexpr int OpeningRounds = 3;
const char *const MemoryArgument = "memory";
constexpr double Linear = 2.6;    // For twice the input.
constexpr double PageGoal = 0.35; // Seconds.

/// Adds single nets to @p port, numbered from @p first.
void fill(TARN::ProbeIn *port, int first, int count)
{
    for (int i = 0; i < count; ++i) {
        TARN::SignalItem item;
        item.name = QStringLiteral("soc_top/u_cluster/u_core/u_lsu/data_%1").arg(first + i);
        item.kind = TARN::SignalItem::Net;
        port->signals.append(item);
    }
}

void addOuts(TarnCore *core, int first, int signalCount)
{
    for (int i = 0; i < PortCount; ++i) {
        core->addProbeOut(i);
        fill(core->probeOuts.last(), first + i * signalCount, signalCount);
        core->probeOuts.last()->initialValue =
            QStringLiteral("0x") + QString(signalCount / 4, QLatin1Char('A'));
    }
}

QString shownText(const QTreeWidget *tree, QTreeWidgetItem *row)
{
    const QWidget *widget = tree->itemWidget(row, 0);
    if (const auto *line = qobject_cast<const QLineEdit *>(widget))
        return line->displayText();
    if (const auto *label = qobject_cast<const QLabel *>(widget))
        return label->text();
    return row->text(0);
}

/// The rows that the port trees below @p widget show.
QStringList shownRows(const QWidget *widget)
{
    QStringList rows;
    for (const char *name : {"treeProbeIn", "treeProbeOut", "treeValue"}) {
        for (auto *tree : widget->findChildren<QTreeWidget *>(QLatin1String(name))) {
            for (QTreeWidgetItemIterator row(tree); *row; ++row)
                rows.append(shownText(tree, *row));
        }
    }
    return rows;
}

/// Processes everything that is pending: layout, painting, deletion.
void settle()
{
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

/// The page of a core with all Probe Out ports, on the screen and with all rows expanded.
class ShownPage
{
public:
    explicit ShownPage(int signalCount)
        : m_core(0)
    {
        addOuts(&m_core, 0, signalCount);
    }

    void build()
    {
        m_page = std::make_unique<ProbePortsOptionWidget>(&m_core, nullptr, nullptr);
        m_page->resize(900, 600);
        m_page->show();
        outs()->expandAll();
        settle();
    }
    void rebuild()
    {
        m_page->updateProbeOutTree();
        settle();
    }
    void scroll()
    {
        outs()->verticalScrollBar()->setValue(outs()->verticalScrollBar()->value() + 1);
        settle();
    }
    void resize()
    {
        m_page->resize(m_page->width(), 1100 - m_page->height());
        settle();
    }
    void toggle()
    {
        QTreeWidgetItem *port = outs()->topLevelItem(PortCount / 2);
        port->setExpanded(!port->isExpanded());
        settle();
    }
    void remove() { m_page.reset(); }

    QStringList rows() const { return shownRows(m_page.get()); }

private:
    QTreeWidget *outs() const
    {
        return m_page->findChild<QTreeWidget *>(QStringLiteral("treeProbeOut"));
    }

    TarnCore m_core;
    std::unique_ptr<ProbePortsOptionWidget> m_page;
};

bool measurePage()
{
    ShownPage half(SignalCount / 2);
    ShownPage page(SignalCount);
    page.build();
    const QStringList built = page.rows();
    page.rebuild();
    if (page.rows() != built || built.size() != 2 * PortCount * (SignalCount + 1))
        fail("the rebuilt page shows something else");
    page.remove();

    const std::vector<double> times = TarnBench::interleavedMedians(
        Rounds, {[&] { half.build(); }, [&] { half.rebuild(); }, [&] { half.remove(); },
                 [&] { page.build(); }, [&] { page.rebuild(); }, [&] { page.scroll(); },
                 [&] { page.resize(); }, [&] { page.toggle(); }, [&] { page.remove(); }});

    Table table("Page of " + std::to_string(PortCount) + " Probe Out ports of " +
                std::to_string(SignalCount) + " single nets, all expanded and shown, CPU time, " +
                "median of " + std::to_string(Rounds) + " rounds");
    table.add("first build", times[3], "s", PageGoal);
    table.add("rebuild", times[4], "s");
    table.add("rebuild / first build", times[4] / times[3], "x", 2);
    table.add("first build / the same of half the signals", times[3] / times[0], "x", Linear);
    table.add("rebuild / the same of half the signals", times[4] / times[1], "x", Linear);
    table.add("scrolling by a row", times[5], "s", 0.05);
    table.add("another height", times[6], "s", 0.05);
    table.add("expanding or collapsing a port", times[7], "s", 0.05);
    return table.print();
}

// Opening

/// @p distance lies between the numbers of the first nets of two cores, and of the Probe In and the
/// Probe Out ports of a core: with 0 all have the same nets.
QList<TarnCore *> fullCores(int distance)
{
    QList<TarnCore *> cores;
    for (int index = 0; index < CoreCount; ++index) {
        auto *core = new TarnCore(index);
        addOuts(core, 2 * index * distance, SignalCount);
        for (int i = 0; i < PortCount; ++i) {
            core->addProbeIn(i);
            fill(core->probeIns.last(), (2 * index + 1) * distance + i * SignalCount, SignalCount);
        }
        cores.append(core);
    }
    return cores;
}

void writeFile(const QList<TarnCore *> &cores, const QString &path)
{
    if (!TARN::writeTARNConfigToXml(cores, path))
        fail("the file was not written");
}

/// Opens the file in a visible view. There is no design, so the view shows a box, which is
/// answered. After that the view has the pages of all cores.
std::unique_ptr<QWidget> openedView(const QString &path)
{
    auto view = std::make_unique<TarnView>();
    view->resize(900, 600);
    view->show();
    bool answered = false;
    QTimer::singleShot(0, view.get(), [&answered] {
        QWidget *box = QApplication::activeModalWidget();
        answered = box && box->close();
    });
    view->open(path, QString(), nullptr);
    if (!answered)
        fail("the view did not come to the design");
    settle();
    return view;
}

std::unique_ptr<QWidget> bareView(const QList<TarnCore *> &cores)
{
    auto view = std::make_unique<QStackedWidget>();
    view->resize(900, 600);
    view->show();
    for (const TarnCore *core : cores)
        view->addWidget(new BarePage(core));
    settle();
    return view;
}

/// What a process that opens the file prints: its resident memory once the file is open, at its
/// peak and afterwards, beyond that of an application without a view.
void printMemory(const QString &path)
{
    const double empty = TarnBench::residentBytes();
    const std::unique_ptr<QWidget> view = openedView(path);
    std::printf("%f %f\n", TarnBench::peakResidentBytes() - empty,
                TarnBench::residentBytes() - empty);
}

struct Memory
{
    double peak = 0;
    double open = 0;
    double process = 0; ///< At its peak, with all that the application takes without the file.
};

Memory memoryOf(const QString &path)
{
    const TarnBench::ProcessFigures process =
        TarnBench::measureProcess({QCoreApplication::applicationFilePath().toStdString(),
                                   MemoryArgument, path.toStdString()});
    Memory memory;
    memory.process = process.peakBytes;
    std::istringstream(process.output) >> memory.peak >> memory.open;
    if (memory.open <= 0)
        fail("no memory of an open file");
    return memory;
}

/// The memory of a file whose ports all have different nets.
Memory memoryOfDifferentNets(const QString &path)
{
    const QList<TarnCore *> cores = fullCores(PortCount * SignalCount);
    writeFile(cores, path);
    qDeleteAll(cores);
    return memoryOf(path);
}

bool measureOpening()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("full.tarn"));
    const QList<TarnCore *> cores = fullCores(0);
    writeFile(cores, path);
    const Memory same = memoryOf(path);
    const Memory different = memoryOfDifferentNets(folder.filePath(QStringLiteral("other.tarn")));

    std::unique_ptr<QWidget> view = openedView(path);
    const QStringList opened = shownRows(view.get());
    view = bareView(cores);
    if (shownRows(view.get()) != opened)
        fail("the bare rows show something else");

    const std::vector<double> times =
        TarnBench::interleavedMedians(OpeningRounds,
                                      {[&] { view = openedView(path); }, [&] { view.reset(); },
                                       [&] { view = bareView(cores); }, [&] { view.reset(); }},
                                      TarnBench::WarmUp::No);
    qDeleteAll(cores);

    Table table("Opening a file of " + std::to_string(CoreCount) + " cores, " +
                std::to_string(PortCount) + " + " + std::to_string(PortCount) + " ports, " +
                std::to_string(SignalCount) + " signals each, CPU time, median of " +
                std::to_string(OpeningRounds) + " rounds");
    table.add("opening", times[0], "s", 5);
    table.add("the same rows, lines and labels bare", times[2], "s");
    table.add("opening / bare", times[0] / times[2], "x", 1.5);
    table.add("closing", times[1], "s");
    table.add("memory of the open file", same.open / 1e6, "MB", 600);
    table.add("peak of memory until then", same.peak / 1e6, "MB");
    table.add("memory when no net is in two ports", different.open / 1e6, "MB");
    table.add("peak of the whole process then", different.process / 1e6, "MB");
    return table.print();
}

// The check

/// Cores that each drive the same bits as a neighbour.
std::unique_ptr<TARN::private_impl::TarnViewPrivate> conflictingCores(int count)
{
    auto document = std::make_unique<TARN::private_impl::TarnViewPrivate>(nullptr);
    for (int index = 0; index < count; ++index) {
        auto *core = new TarnCore(index);
        addOuts(core, index / 2 * PortCount * SignalCount, SignalCount);
        document->cores.append(core);
    }
    return document;
}

void check(const TARN::private_impl::TarnViewPrivate *document)
{
    QString errors;
    document->check(&errors);
    const int expected = document->cores.size() / 2 * PortCount * SignalCount;
    if (errors.count(QLatin1Char('\n')) + 1 != expected)
        fail("the check did not find all conflicts");
}

bool measureCheck()
{
    const auto half = conflictingCores(CoreCount / 2);
    const auto full = conflictingCores(CoreCount);
    const std::vector<double> times = TarnBench::interleavedMedians(
        Rounds, {[&] { check(half.get()); }, [&] { check(full.get()); }});

    Table table("Check of " + std::to_string(CoreCount * PortCount * SignalCount) +
                " driven bits, each in conflict, CPU time, median of " + std::to_string(Rounds) +
                " rounds");
    table.add("check", times[1], "s", 0.5);
    table.add("check / the same of half the bits", times[1] / times[0], "x", Linear);
    return table.print();
}

} // namespace

/// Measures the ports of a core and of a whole file at their limits. Exits with 1 when a goal is
/// missed. With "memory" and a file, only prints what that file takes.
int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    TarnBench::readArguments(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});

    if (argc == 3 && argv[1] == std::string(MemoryArgument)) {
        printMemory(QString::fromLocal8Bit(argv[2]));
        return 0;
    }
    bool good = measurePage();
    good &= TarnBench::measurePageState();
    good &= measureCheck();
    good &= measureOpening();
    return good ? 0 : 1;
}
