// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designfolder.h"
#include "wavenames.h"

#include <support/testcase.h>

#include <QApplication>
#include <QDir>
#include <QTest>

namespace {

const QString Designs = QStringLiteral(TARN_VHDL_DESIGNS_DIR "/");

/// Why GHDL alone cannot simulate a design as the netlist shows it.
const QMap<QString, QString> NoWaves{
    {"case_generates", "GHDL shows nothing of a case generate statement"},
    {"edition_93", "needs another edition"},
    {"hidden_code", "GHDL reads hidden code"},
    {"memory_file", "reads a file of its folder"},
    {"mixed_names", "has entities without a source"},
    {"mixed_direct", "has entities without a source"},
    {"mixed_jtag", "has entities without a source"},
    {"mixed_same_name", "has units of one name in both languages"},
    {"vendor_components", "has packages without a source"},
};

/// The sources of a design by their languages.
struct Sources
{
    QMap<QString, QStringList> vhdl; ///< By their libraries.
    QStringList verilog;
    QSet<QString> entities; ///< As declared and in lower case.
    QSet<QString> modules;
    QSet<QString> parameterized; ///< Units whose nets depend on the values an instance gives.
};

void addUnits(const QString &path, const QRegularExpression &unit, const QString &parameters,
              QSet<QString> *units, QSet<QString> *parameterized)
{
    const QString text = QString::fromUtf8(TarnTest::readFile(path));
    QRegularExpressionMatchIterator matches = unit.globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        units->insert(match.captured(1));
        if (text.mid(match.capturedEnd()).trimmed().startsWith(parameters))
            parameterized->insert(match.captured(1));
    }
}

Sources sourcesOf(const QDir &folder)
{
    static const QRegularExpression entity("^ *entity (\\S+) is\\b",
                                           QRegularExpression::MultilineOption |
                                               QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression module("^module \\\\?([^ (;#]+)",
                                           QRegularExpression::MultilineOption);
    TE::Project project;
    QStringList messages;
    (void)TarnTest::readProject(folder, &project, &messages);
    for (const QString &path : qAsConst(project.libraryFiles)) {
        TE::ProjectSource source;
        source.path = path;
        source.type = TE::fileTypeOf(path);
        project.sources.append(source);
    }
    Sources sources;
    for (const TE::ProjectSource &source : qAsConst(project.sources)) {
        if (source.type == TE::VhdlFile) {
            sources.vhdl[source.library].append(source.path);
            QSet<QString> units;
            QSet<QString> parameterized;
            addUnits(source.path, entity, "generic", &units, &parameterized);
            for (const QString &unit : qAsConst(units))
                sources.entities += QSet<QString>{unit, unit.toLower()};
            for (const QString &unit : qAsConst(parameterized))
                sources.parameterized.insert(unit.toLower());
        } else {
            sources.verilog.append(source.path);
            addUnits(source.path, module, "#", &sources.modules, &sources.parameterized);
        }
    }
    return sources;
}

/// What the netlist below a node and the waves of both simulators do not share. Each part of the
/// design in one language is simulated by itself.
QString differencesFromWaves(const NETWEIR::Hierachy *node, const Sources &sources)
{
    const QString unit = node->moduleName();
    const bool isVhdl = sources.entities.contains(unit.toLower());
    QString error;
    QString differences;
    if (node->parent() && sources.parameterized.contains(isVhdl ? unit.toLower() : unit))
        return QString();
    if (isVhdl) {
        const TarnTest::WaveNames names = TarnTest::vhdlWaveNames(sources.vhdl, unit, {}, &error);
        differences = TarnTest::waveDifferences(node, names, sources.modules.values());
    } else {
        const TarnTest::WaveNames names =
            TarnTest::verilogWaveNames(QStringList{"-i"} + sources.verilog, unit, &error);
        // Icarus shows no nets that nothing drives or reads.
        differences = TarnTest::waveDifferences(node, names, sources.entities.values())
                          .split('\n')
                          .filter("only in the wave")
                          .join('\n');
    }
    if (!error.isEmpty())
        return unit + ": " + error;
    QVector<const NETWEIR::Hierachy *> todo{node};
    while (!todo.isEmpty()) {
        const NETWEIR::Hierachy *next = todo.takeLast();
        for (const NETWEIR::Hierachy *child : next->children()) {
            if (sources.entities.contains(child->moduleName().toLower()) == isVhdl)
                todo.append(child);
            else
                differences += differencesFromWaves(child, sources);
        }
    }
    return differences.isEmpty() ? QString() : node->instName() + ":\n" + differences + '\n';
}

} // namespace

/// Small designs of VHDL, and of VHDL and Verilog together, each in a folder in the form of
/// designfolder.h. Names and widths are compared with those in the waves of simulators, too.
class TestVhdlDesigns : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void designGivesItsNetlist_data();
    void designGivesItsNetlist();
};

void TestVhdlDesigns::designGivesItsNetlist_data()
{
    QTest::addColumn<QString>("design");
    const QStringList designs =
        QDir(Designs).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    QVERIFY(designs.size() >= 20);
    for (const QString &design : designs)
        QTest::newRow(qPrintable(design)) << design;
}

void TestVhdlDesigns::designGivesItsNetlist()
{
    QFETCH(QString, design);
    TarnTest::Outcome outcome;
    const QString problems = TarnTest::differencesOf(QDir(Designs + design), &outcome);
    QVERIFY2(problems.isEmpty(), qPrintable('\n' + problems));
    if (!outcome.netlist)
        return;
    QVERIFY(TarnTest::namesAreConsistent(*outcome.netlist));
    if (!NoWaves.contains(design)) {
        const QString differences =
            differencesFromWaves(outcome.netlist->top(), sourcesOf(QDir(Designs + design)));
        QVERIFY2(differences.isEmpty(), qPrintable('\n' + differences));
    }
}

TARN_TEST_MAIN(TestVhdlDesigns)
#include "tst_vhdldesigns.moc"
