// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "reloading.h"

#include "openedview.h"

#include <model/configsnapshot.h>
#include <model/tarnconfig.h>
#include <support/benchmark.h>
#include <view/edithistory.h>
#include <view/tarnview.h>

#include <QTemporaryDir>

#include <functional>

using TARN::TarnCore;
using TARN::TarnView;

namespace TarnBench {

namespace {

constexpr int Rounds = 1;      // It takes a minute, and the ratios of so long times are steady.
constexpr double Linear = 2.3; // For twice the cores.

using Content = std::function<TarnCore *(int index, const QString &prefix)>;

TarnCore *smallCore(int index, const QString &prefix)
{
    auto *core = new TarnCore(index);
    core->addProbeIn(0);
    core->probeIns.last()->signals = nets(prefix, index).mid(0, 1);
    core->addProbeOut(0);
    core->probeOuts.last()->signals = nets(prefix, index).mid(1, 1);
    return core;
}

/// A view whose file is written anew by another program, with other signals everywhere.
class ReloadedView
{
public:
    ReloadedView(int count, Content content)
        : m_count(count)
        , m_content(std::move(content))
        , m_path(m_folder.filePath(QStringLiteral("reloaded.tarn")))
    {
        const QList<TarnCore *> cores = coresWith(QStringLiteral("data"));
        m_view = openedView(cores, m_path);
        qDeleteAll(cores);
    }

    /// What the other program does.
    void change()
    {
        m_prefix = m_prefix == QLatin1String("others") ? "data" : "others";
        const QList<TarnCore *> cores = coresWith(m_prefix);
        if (!TARN::writeTARNConfigToXml(cores, m_path))
            fail("the file was not written");
        qDeleteAll(cores);
    }
    void reload()
    {
        if (!m_view->reloadTarnFile())
            fail("the file was not reloaded");
        settle();
        expectSignals(m_prefix);
    }
    void undo()
    {
        m_view->history()->undo();
        settle();
        expectSignals(m_prefix == QLatin1String("others") ? "data" : "others");
    }
    void redo()
    {
        m_view->history()->redo();
        settle();
        expectSignals(m_prefix);
    }

private:
    QList<TarnCore *> coresWith(const QString &prefix) const
    {
        QList<TarnCore *> cores;
        for (int i = 0; i < m_count; ++i)
            cores.append(m_content(i, prefix));
        return cores;
    }

    void expectSignals(const QString &prefix) const
    {
        const TARN::ConfigSnapshot &shown = m_view->history()->current();
        if (shown.cores.size() != m_count ||
            !shown.cores.last().content->probeIns.last()->signals.last().name.contains(prefix))
            fail("the view shows something else");
    }

    const QTemporaryDir m_folder;
    const int m_count;
    const Content m_content;
    const QString m_path;
    QString m_prefix = QStringLiteral("data");
    std::unique_ptr<TarnView> m_view;
};

/// CPU seconds of reload, undo and redo.
std::vector<double> timesOf(int cores, const Content &content)
{
    ReloadedView view(cores, content);
    const std::vector<double> times =
        interleavedMedians(Rounds, {[&] { view.change(); }, [&] { view.reload(); },
                                    [&] { view.undo(); }, [&] { view.redo(); }});
    return {times[1], times[2], times[3]};
}

void addTimes(Table *table, const std::string &cores, const std::vector<double> &times)
{
    table->add("reload, " + cores, times[0], "s");
    table->add("undo of the reload, " + cores, times[1], "s");
    table->add("redo of the reload, " + cores, times[2], "s");
}

void addRatios(Table *table, const std::string &cores, const std::vector<double> &half,
               const std::vector<double> &full)
{
    table->add("reload, " + cores, full[0] / half[0], "x", Linear);
    table->add("undo, " + cores, full[1] / half[1], "x", Linear);
    table->add("redo, " + cores, full[2] / half[2], "x", Linear);
}

} // namespace

bool measureReload()
{
    Table table("Reload of a file that another program has changed, cores of 64 + 64 ports of 256 "
                "single nets, shown, CPU time");
    std::vector<double> half;
    std::vector<double> full;
    for (const int cores : {4, 8, 16}) {
        const std::string count = std::to_string(cores) + " cores";
        half = std::exchange(full, timesOf(cores, fullCore));
        addTimes(&table, count, full);
        if (!half.empty())
            addRatios(&table, count + " / half of them", half, full);
    }

    half = timesOf(8, smallCore);
    full = timesOf(16, smallCore);
    addTimes(&table, "16 cores of two nets", full);
    addRatios(&table, "16 cores of two nets / 8 of them", half, full);
    return table.print();
}

} // namespace TarnBench
