// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designxml.h"
#include "indexrangetext.h"

#include <netweir/internal/nets/countingloops.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;
using TarnTest::DesignXml;
using TarnTest::rangeText;

class TestCountingLoops : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void roundsKnowTheirVariables_data();
    void roundsKnowTheirVariables();
    void tooManyRoundsAreOneVisit_data();
    void tooManyRoundsAreOneVisit();
    void placesAreIndependent();
};

namespace {

/// A loop over @p variable as the elaborator writes it.
QString loop(const char *variable, const QString &start, const QString &condition,
             const QString &next, const QString &body)
{
    return QStringLiteral("(assign %2 %1:s32) (while (begin) (begin %3) (begin %5) "
                          "(begin (assign %4 %1:s32)))")
        .arg(QLatin1String(variable), start, condition, next, body);
}

QString upTo(const char *variable, const QString &end, const QString &body)
{
    const QString name = QLatin1String(variable);
    return loop(variable, QStringLiteral("0"), QStringLiteral("(lts %1:s32 %2)").arg(name, end),
                QStringLiteral("(add:s32 %1:s32 1)").arg(name), body);
}

/// The values of the index at @p place in every round, '?' where it is not known.
QString roundsAt(const DesignXml &design, const char *place)
{
    CountingLoops loops(design->top(), design->types());
    const pugi::xml_node node = design.element(place);
    QStringList rounds;
    loops.forEachRound({node, 0}, [&](const IndexEvaluator &round) {
        const IndexRange values = round.valuesOf(node.first_child(), 0);
        rounds += values.isSingle() ? rangeText(values) : QStringLiteral("?");
    });
    return rounds.join(QLatin1Char(' '));
}

QString variables(const QString &process)
{
    return QStringLiteral("(var:s32 name=i) (var:s32 name=j) (var:s32 name=n) (always %1)")
        .arg(process);
}

const QString Index = QStringLiteral("(index i:s32)");

} // namespace

void TestCountingLoops::roundsKnowTheirVariables_data()
{
    QTest::addColumn<QString>("process");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const QString &process, const char *expected) {
        QTest::newRow(name) << process << QString::fromLatin1(expected);
    };
    const auto text = [](const char *literal) { return QString::fromLatin1(literal); };
    row("no loop", Index, "?");
    row("up", upTo("i", "4", Index), "0 1 2 3");
    row("down", loop("i", "3", "(gtes i:s32 0)", "(sub:s32 i:s32 1)", Index), "3 2 1 0");
    row("in twos", loop("i", "1", "(lts i:s32 8)", "(add:s32 i:s32 2)", Index), "1 3 5 7");
    row("by shifts", loop("i", "1", "(neq i:s32 16)", "(shiftl:s32 i:s32 1)", Index), "1 2 4 8");
    row("no round at all", upTo("i", "0", Index), "");
    row("one round", upTo("i", "1", Index), "0");
    row("after the loop", upTo("i", "2", "") + Index, "?");
    row("nested", upTo("j", "2", upTo("i", "3", Index)), "0 1 2 0 1 2");
    row("both variables",
        upTo("j", "2", upTo("i", "2", "(index (add:s32 (mul:s32 j:s32 10) i:s32))")), "0 1 10 11");
    row("the inner end follows the outer loop", upTo("j", "3", upTo("i", "j:s32", Index)), "0 0 1");
    row("the inner loop never runs", upTo("j", "3", upTo("i", "0", Index)), "");
    row("a start that is not known",
        loop("i", "n:s32", "(lts i:s32 4)", "(add:s32 i:s32 1)", Index), "?");
    row("an end that is not known", upTo("i", "n:s32", Index), "?");
    row("a step that is not known", loop("i", "0", "(lts i:s32 4)", "(add:s32 i:s32 n:s32)", Index),
        "?");
    row("a comparison of other kind", loop("i", "0", "(and i:s32 4)", "(add:s32 i:s32 1)", Index),
        "?");
    row("a left side that is not known",
        loop("i", "0", "(lts n:s32 4)", "(add:s32 i:s32 1)", Index), "?");
    row("an endless loop", loop("i", "0", "(gtes i:s32 0)", "(mul:s32 i:s32 1)", Index), "?");
    row("a start that refers to itself",
        loop("i", "i:s32", "(lts i:s32 4)", "(add:s32 i:s32 1)", Index), "?");
    row("nothing assigned before",
        "(display) (while (begin) (begin (lts i:s32 4)) (begin (index i:s32)) (begin (assign "
        "(add:s32 i:s32 1) i:s32)))",
        "?");
    row("another variable assigned before",
        "(assign 0 j:s32) (while (begin) (begin (lts i:s32 4)) (begin (index i:s32)) (begin "
        "(assign (add:s32 i:s32 1) i:s32)))",
        "?");
    row("a variable of another node assigned before",
        "(assign 0 (varxref name=i)) (while (begin) (begin (lts i:s32 4)) (begin (index i:s32)) "
        "(begin (assign (add:s32 i:s32 1) i:s32)))",
        "?");
    row("a member assigned before",
        "(assign 0 (sel:u1 i:s32 0 1)) (while (begin) (begin (lts i:s32 4)) (begin (index i:s32)) "
        "(begin (assign (add:s32 i:s32 1) i:s32)))",
        "?");
    row("nothing in the step",
        "(assign 0 i:s32) (while (begin) (begin (lts i:s32 4)) (begin (index i:s32)) (begin))",
        "?");
    row("another statement in the step",
        "(assign 0 i:s32) (while (begin) (begin (lts i:s32 4)) (begin (index i:s32)) (begin "
        "(assigndly (add:s32 i:s32 1) i:s32)))",
        "?");
    row("another variable in the step",
        "(assign 0 i:s32) (while (begin) (begin (lts i:s32 4)) (begin (index i:s32)) (begin "
        "(assign (add:s32 i:s32 1) j:s32)))",
        "?");
    row("an element of another kind",
        "(assign 0 i:s32) (other (begin) (begin (lts i:s32 4)) (begin (index i:s32)) (begin "
        "(assign (add:s32 i:s32 1) i:s32)))",
        "?");
    row("the variable assigned within", upTo("i", "4", Index + text("(assign 2 i:s32)")), "?");
    row("the variable assigned later within",
        upTo("i", "4", Index + text("(begin (assigndly 2 i:s32))")), "?");
    row("another variable assigned within", upTo("i", "2", Index + text("(assign 2 j:s32)")),
        "0 1");
    row("an inner loop with the same variable", upTo("i", "2", upTo("i", "2", "") + Index), "?");
    row("an outer loop that does not count", upTo("j", "n:s32", upTo("i", "2", Index)), "?");
    row("an outer loop without a step",
        "(while (begin) (begin 1) (begin " + upTo("i", "2", Index) + ") (begin))", "0 1");
}

void TestCountingLoops::roundsKnowTheirVariables()
{
    QFETCH(QString, process);
    QTEST(roundsAt(DesignXml::ofModule(variables(process)), "index"), "expected");
}

void TestCountingLoops::tooManyRoundsAreOneVisit_data()
{
    QTest::addColumn<int>("outer");
    QTest::addColumn<int>("inner");
    QTest::addColumn<int>("visits");
    // The rounds of all levels count.
    QTest::newRow("as many as are followed") << 1 << 4095 << 4095;
    QTest::newRow("one too many") << 1 << 4096 << 1;
    QTest::newRow("as many, nested") << 64 << 63 << 64 * 63;
    QTest::newRow("too many, nested") << 64 << 64 << 1;
}

void TestCountingLoops::tooManyRoundsAreOneVisit()
{
    QFETCH(int, outer);
    QFETCH(int, inner);
    const DesignXml design = DesignXml::ofModule(
        variables(upTo("j", QString::number(outer), upTo("i", QString::number(inner), Index))));
    const QString rounds = roundsAt(design, "index");
    QTEST(int(rounds.count(QLatin1Char(' '))) + 1, "visits");
    QCOMPARE(rounds.contains(QLatin1Char('?')), rounds.size() == 1);
}

/// A place within a loop leaves nothing known for the next.
void TestCountingLoops::placesAreIndependent()
{
    const DesignXml design = DesignXml::ofModule(
        variables(upTo("i", "2", "(first i:s32)") + upTo("j", "2", "(second i:s32)") +
                  upTo("j", "2", upTo("i", "j:s32", "(inner i:s32)") + "(outer j:s32)")));
    CountingLoops loops(design->top(), design->types());
    QStringList rounds;
    for (const char *place : {"first", "second", "first", "inner", "outer", "inner"}) {
        const pugi::xml_node node = design.element(place);
        loops.forEachRound({node, 0}, [&](const IndexEvaluator &round) {
            const IndexRange values = round.valuesOf(node.first_child(), 0);
            rounds += values.isSingle() ? rangeText(values) : QStringLiteral("?");
        });
    }
    QCOMPARE(rounds.join(QLatin1Char(' ')), QStringLiteral("0 1 ? ? 0 1 0 0 1 0"));
}

QTEST_APPLESS_MAIN(TestCountingLoops)
#include "tst_countingloops.moc"
