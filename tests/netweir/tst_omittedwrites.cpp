// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designphases.h"

#include <netweir/internal/nets/omittedwrites.h>

#include <support/testcase.h>

#include <QTest>

#include <algorithm>

using namespace NETWEIR::Internal;
using TarnTest::DesignPhases;
using TarnTest::DesignXml;

/// The bits that omitted writes name.
class TestOmittedWrites : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void findsTheirBits_data();
    void findsTheirBits();
};

namespace {

/// First and last bit of each range, and the paths to other nodes.
QString targetsText(const OmittedTargets &targets)
{
    QStringList found;
    for (const BitRange &range : targets.bits)
        found += QStringLiteral("%1-%2").arg(range.low).arg(range.low + range.width - 1);
    std::sort(found.begin(), found.end());
    for (const OmittedWrite &write : targets.elsewhere)
        found += write.path + QLatin1Char('.') + write.name;
    return found.join(QLatin1Char(' '));
}

} // namespace

void TestOmittedWrites::findsTheirBits_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("left");
    QTest::addColumn<int>("right");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *title, const char *path, const char *name, int left, int right,
                        const char *expected) {
        QTest::newRow(title) << path << name << left << right << expected;
    };
    row("net", "", "n", -1, -1, "0-0");
    row("all of a bus", "", "b", -1, -1, "1-8");
    row("range of a bus", "", "b", 6, 4, "5-7");
    row("range, the wrong way round", "", "b", 4, 6, "5-7");
    row("bit of a bus", "", "b", 7, 7, "8-8");
    row("range of a rising bus", "", "up", 5, 7, "9-11");
    row("range beyond the bus", "", "b", 8, 4, "1-8");
    row("index of a single net", "", "n", 0, 0, "0-0");
    row("index of an array", "", "m", 1, 1, "13-20");
    row("member of a structure", "s", "x", -1, -1, "21-24");
    row("nets of that name in all scopes", "", "w", -1, -1, "25-25 26-26");
    row("parameter", "", "p", -1, -1, "");
    row("unknown", "", "nothing", -1, -1, "");
    row("clocking block", "cb", "n", -1, -1, "0-0");
    row("instance", "u", "n", -1, -1, "u.n");
    row("deeper", "u.v", "n", 3, 0, "u.v.n");
}

void TestOmittedWrites::findsTheirBits()
{
    QFETCH(QString, path);
    QFETCH(QString, name);
    QFETCH(int, left);
    QFETCH(int, right);
    ReadOptions options;
    options.omittedWrites.insert(QStringLiteral("top"), {{name, path, left, right}});
    const DesignXml xml(
        QStringLiteral("(module name=top (var:bit name=n) (var:u8 name=b) (var:rising name=up)"
                       " (var:words name=m) (var:st name=s) (begin name=g[0] (var:bit name=w))"
                       " (begin name=g[1] (var:bit name=w)) (var:s32 name=p param=true)"
                       " (instance name=u defName=nowhere))"),
        QStringLiteral("(basicdtype id=rising name=logic left=4 right=7)"
                       " (unpackarraydtype id=words sub_dtype_id=u4 (range 1 0))"
                       " (structdtype id=st (memberdtype id=sx name=x sub_dtype_id=u4))"),
        options);
    QCOMPARE(xml.error(), QString());
    const DesignPhases phases(xml);
    QTEST(targetsText(omittedTargetsOf(phases.placed.front())), "expected");
}

QTEST_GUILESS_MAIN(TestOmittedWrites)
#include "tst_omittedwrites.moc"
