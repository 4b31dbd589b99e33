// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "openedview.h"
#include "reloading.h"

#include <model/configsnapshot.h>
#include <model/tarncore.h>
#include <support/benchmark.h>
#include <view/edithistory.h>
#include <view/tarnoptionwidget.h>
#include <view/tarnview.h>

#include <QApplication>
#include <QStackedWidget>
#include <QTreeWidget>

#include <malloc.h>

#include <memory>

using TARN::ConfigSnapshot;
using TARN::EditHistory;
using TARN::TarnCore;
using TARN::TarnOptionWidget;
using TARN::TarnView;
using TarnBench::fail;
using TarnBench::fullCore;
using TarnBench::nets;
using TarnBench::openedView;
using TarnBench::PortCount;
using TarnBench::settle;
using TarnBench::SignalCount;
using TarnBench::Table;

namespace {

constexpr int Rounds = 9;
constexpr double Rebuilt = 1.6; ///< Times building a page and removing it.

using Cores = QList<TarnCore *>;

QList<QTreeWidget *> treesOf(const QWidget *view)
{
    QList<QTreeWidget *> trees;
    for (const char *name : {"treeProbeIn", "treeProbeOut", "treeValue"})
        trees += view->findChildren<QTreeWidget *>(QLatin1String(name));
    return trees;
}

int rowCount(const QWidget *view)
{
    int count = 0;
    for (QTreeWidget *tree : treesOf(view)) {
        for (QTreeWidgetItemIterator row(tree); *row; ++row)
            ++count;
    }
    return count;
}

/// @p snapshot with @p change made to its cores, as far as possible the same objects.
ConfigSnapshot changed(const ConfigSnapshot &snapshot, const std::function<void(Cores *)> &change)
{
    Cores cores = TARN::newCores(snapshot);
    change(&cores);
    const ConfigSnapshot result = TARN::snapshotOf(cores, snapshot);
    qDeleteAll(cores);
    return result;
}

// The largest undo

/// Steps of a view with one full core, beside a page of the same core that is built anew.
class LargestUndo
{
public:
    LargestUndo()
        : m_core(fullCore(0, "data"))
        , m_small(std::make_unique<TarnCore>(0))
    {
        m_view = openedView({m_core.get()});
        m_small->addProbeOut(0);
        m_small->probeOuts.first()->signals = m_core->probeOuts.at(5)->signals;
        m_small->probeOuts.first()->initialValue = m_core->probeOuts.at(5)->initialValue;
    }

    EditHistory *history() { return m_view->history(); }
    int rows() const { return rowCount(m_view.get()); }

    void apply(const std::function<void(Cores *)> &change)
    {
        history()->apply(changed(history()->current(), change), QStringLiteral("Edit"));
        settle();
    }
    void undo()
    {
        history()->undo();
        settle();
    }
    void redo()
    {
        history()->redo();
        settle();
    }
    /// Builds the page, or the page of one port, in the place of the view's page.
    void build(bool onePort)
    {
        m_page = std::make_unique<TarnOptionWidget>(onePort ? m_small.get() : m_core.get(), nullptr,
                                                    nullptr);
        stack()->addWidget(m_page.get());
        stack()->setCurrentWidget(m_page.get());
        // Undo shows the changed signal, and so the rows of the port.
        if (onePort)
            m_page->findChild<QTreeWidget *>(QStringLiteral("treeProbeOut"))->expandAll();
        settle();
    }
    /// Shows nothing, so that removing the built page does not show that of the view.
    void hide()
    {
        m_nothing = std::make_unique<QWidget>();
        stack()->addWidget(m_nothing.get());
        stack()->setCurrentWidget(m_nothing.get());
        settle();
    }
    void remove()
    {
        m_page.reset();
        settle();
    }
    void showAgain()
    {
        m_nothing.reset();
        settle();
    }

private:
    QStackedWidget *stack() const
    {
        return m_view->findChild<QStackedWidget *>(QStringLiteral("stackedWidget"));
    }

    std::unique_ptr<TarnCore> m_core;
    std::unique_ptr<TarnCore> m_small;
    std::unique_ptr<TarnView> m_view;
    std::unique_ptr<TarnOptionWidget> m_page;
    std::unique_ptr<QWidget> m_nothing;
};

bool measureUndo()
{
    LargestUndo one;
    const int rows = one.rows();
    one.apply([](Cores *cores) {
        cores->first()->probeOuts[5]->signals = nets(QStringLiteral("other"), 0);
    });
    LargestUndo all;
    all.apply([](Cores *cores) {
        delete cores->takeFirst();
        cores->append(fullCore(0, QStringLiteral("others")));
    });
    LargestUndo core;
    core.apply([](Cores *cores) { cores->append(fullCore(1, QStringLiteral("more"))); });
    if (rows != 3 * PortCount * (SignalCount + 1) || one.rows() != rows || all.rows() != rows ||
        core.rows() != 2 * rows)
        fail("the rows are not those of the cores");

    const std::vector<double> whole = TarnBench::interleavedMedians(
        Rounds, {[&] { all.build(false); }, [&] { all.hide(); }, [&] { all.remove(); },
                 [&] { all.showAgain(); }, [&] { all.undo(); }, [&] { all.redo(); },
                 [&] { core.undo(); }, [&] { core.redo(); }});
    const std::vector<double> port =
        TarnBench::interleavedMedians(Rounds, {[&] { one.build(true); }, [&] { one.remove(); },
                                               [&] { one.undo(); }, [&] { one.redo(); }});

    Table table("Undo in a core of 64 + 64 ports of 256 single nets, shown, CPU time, median of " +
                std::to_string(Rounds) + " rounds");
    // Where all signals change, undo removes the rows of a whole page and makes others.
    const double both = whole[0] + whole[2];
    table.add("building a page of the core", whole[0], "s");
    table.add("removing it", whole[2], "s");
    table.add("undo of a change of all its signals", whole[4], "s");
    table.add("undo / building the page alone", whole[4] / whole[0], "x");
    table.add("undo / building and removing the page", whole[4] / both, "x", Rebuilt);
    table.add("redo / building and removing the page", whole[5] / both, "x", Rebuilt);
    table.add("redo of an added core / building the page", whole[7] / whole[0], "x", 2);
    table.add("undo of an added core", whole[6], "s");
    table.add("building a page of one Probe Out port", port[0], "s");
    table.add("undo of a change of its signals", port[2], "s");
    table.add("undo / building the page of the port", port[2] / port[0], "x", 2);
    return table.print();
}

// Memory

constexpr int Steps = 100;

double usedBytes()
{
    const auto info = mallinfo2();
    return double(info.uordblks) + double(info.hblkhd);
}

/// Memory that a step made by @p change with a number takes.
double bytesOfStep(EditHistory *history, const std::function<void(Cores *, int)> &change)
{
    const int former = history->stack()->count();
    const double before = usedBytes();
    for (int i = 0; i < Steps; ++i) {
        history->apply(changed(history->current(), [&](Cores *cores) { change(cores, i); }),
                       QStringLiteral("Edit"));
    }
    if (history->stack()->count() != former + Steps)
        fail("there are steps missing");
    settle();
    return (usedBytes() - before) / Steps;
}

bool measureSteps()
{
    const std::unique_ptr<TarnCore> core(fullCore(0, QStringLiteral("data")));
    const std::unique_ptr<TarnView> view = openedView({core.get()});
    auto *page = view->findChild<TarnOptionWidget *>();
    constexpr int Reads = 100;
    const std::vector<double> times =
        TarnBench::interleavedMedians(Rounds, {[&] {
                                          for (int i = 0; i < Reads; ++i)
                                              view->history()->record(page);
                                      }});
    // The first change of each port makes what later steps of it reuse.
    const auto setValue = [](Cores *cores, int i) {
        cores->first()->probeOuts[i % 4]->initialValue =
            QStringLiteral("0x") +
            QStringLiteral("%1").arg(i + 1, SignalCount / 4, 16, QLatin1Char('0')).toUpper();
    };
    const auto setSignal = [](Cores *cores, int i) {
        cores->first()->probeIns[i % 4]->signals[i % SignalCount].name =
            QStringLiteral("soc_top/u_cluster/other_%1").arg(i);
    };
    bytesOfStep(view->history(), setValue);
    const double value =
        bytesOfStep(view->history(), [&](Cores *cores, int i) { setValue(cores, i + Steps); });
    const double signal = bytesOfStep(view->history(), setSignal);

    Table table("Steps in a view of a core of 64 + 64 ports of 256 single nets");
    table.add("comparing the page after an edit, CPU time", times[0] / Reads * 1e3, "ms", 5);
    table.add("memory of a step that changes a value", value / 1e3, "kB", 50);
    table.add("memory of a step that changes a signal of a port", signal / 1e3, "kB", 50);
    return table.print();
}

} // namespace

/// Measures undo, redo and reloading at the limits of a file. Exits with 1 when a goal is missed.
int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return TarnBench::runJobs(
        argc, argv,
        {{"steps", measureSteps}, {"undo", measureUndo}, {"reload", TarnBench::measureReload}});
}
