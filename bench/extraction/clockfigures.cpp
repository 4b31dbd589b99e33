// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "clockfigures.h"

#include "design.h"
#include "generateddesign.h"
#include "largesources.h"
#include "phases.h"

#include <support/benchmark.h>

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <functional>
#include <map>

using TarnBench::Table;

namespace {

double wallSeconds(const std::function<void()> &work)
{
    QElapsedTimer clock;
    clock.start();
    work();
    return double(clock.nsecsElapsed()) / 1e9;
}

/// Seconds by the clock, round by round.
class Rounds
{
public:
    void add(const std::string &name, double seconds)
    {
        if (m_times.count(name) == 0)
            m_names.push_back(name);
        m_times[name].push_back(seconds);
    }

    double median(const std::string &name) const { return TarnBench::median(m_times.at(name)); }

    void print(Table *table) const
    {
        for (const std::string &name : m_names) {
            const std::vector<double> &times = m_times.at(name);
            const auto spread = std::minmax_element(times.begin(), times.end());
            table->add(name, median(name), "s");
            if (times.size() > 1)
                table->add("  longest / shortest", *spread.second / *spread.first, "x");
        }
    }

private:
    std::vector<std::string> m_names; ///< In the order of the first round.
    std::map<std::string, std::vector<double>> m_times;
};

/// All phases, the whole extraction and the elaborator alone take turns.
bool compare(const std::string &title, const Design &design, int count, TarnBench::Goal goal)
{
    Rounds rounds;
    extractWithoutWindow(design); // Warm-up.
    for (int round = 0; round < count; ++round) {
        double sum = 0;
        for (const auto &[phase, seconds] : timePhases(designInfo(design))) {
            rounds.add(phase, seconds);
            sum += seconds;
        }
        rounds.add("all phases, one after the other", sum);
        rounds.add("whole extraction", wallSeconds([&] { extractWithoutWindow(design); }));
        rounds.add("elaborator alone", wallSeconds([&] { elaborateAlone(design); }));
    }
    Table table(title + ", by the clock, median of " + std::to_string(count) + " rounds");
    rounds.print(&table);
    const double whole = rounds.median("whole extraction");
    table.add("whole extraction / all phases",
              whole / rounds.median("all phases, one after the other"), "x");
    table.add("whole extraction / elaborator in it", whole / rounds.median("elaborator"), "x");
    table.add("whole extraction / elaborator alone", whole / rounds.median("elaborator alone"), "x",
              goal);
    return table.print();
}

bool compareLargeSources(double goal)
{
    const QTemporaryDir folder;
    Design design;
    design.top = QStringLiteral("large_top");
    design.standard = QStringLiteral("1364-2005");
    design.files = LargeSources().write(folder.path());
    design.includePaths.append(LargeSources::includeFolder(folder.path()));
    return compare("Generated design of 7 MB in 300 files", design, 5, goal);
}

bool compareGenerated(double goal)
{
    const QTemporaryDir folder;
    Design design;
    design.top = QStringLiteral("bench_top");
    design.standard = QStringLiteral("1364-2005");
    design.files.append(folder.filePath(QStringLiteral("bench.v")));
    writeSource(design.files.first(), GeneratedDesign().source());
    return compare("Generated design, 500 different modules", design, 5, goal);
}

} // namespace

bool measureByTheClock()
{
    constexpr double Goal = 1.25;
    bool good = compare("Example sensorhub", exampleDesign("sensorhub", "hub_top"), 15, {});
    good &= compare("Example packetfilter", exampleDesign("packetfilter", "pf_top"), 15, {});
    good &= compareLargeSources(Goal);
    good &= compareGenerated(Goal);
    return good;
}
