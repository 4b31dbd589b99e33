// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/extraction.h>
#include <netweir/internal/tool/elaborator.h>
#include <netweir/internal/tool/extractionprogress.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnetlist.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR;
using namespace NETWEIR::Internal;

namespace {

/// The results of a FakeElaborator, and the calls that it got.
struct Fake
{
    QStringList tops{QStringLiteral("top")};
    QStringList found; ///< Messages of elaborate().
    QStringList built; ///< Further messages of buildNetlist().
    bool hasNetlist = true;
    std::function<void()> whileBuilding = [] {};

    QStringList calls;
};

class FakeElaborator final : public Elaborator
{
public:
    explicit FakeElaborator(Fake *fake)
        : m_fake(fake)
    {
        m_fake->calls += QStringLiteral("begin");
    }
    ~FakeElaborator() override { m_fake->calls += QStringLiteral("end"); }

    void elaborate(ExtractionProgress * /*progress*/, int limit) override
    {
        m_fake->calls +=
            limit < 0 ? QStringLiteral("elaborate") : QStringLiteral("elaborate for a while");
        m_messages = m_fake->found;
    }

    QStringList tops() const override { return m_fake->tops; }
    QStringList modules() const override { return m_fake->tops; }

    std::unique_ptr<RtlNetlist> buildNetlist(ExtractionProgress * /*progress*/) override
    {
        m_fake->calls += QStringLiteral("build");
        m_messages += m_fake->built;
        std::exchange(m_fake->whileBuilding, [] {})();
        return m_fake->hasNetlist ? NetlistBuilder(QStringLiteral("top")).take() : nullptr;
    }

    QStringList messages() const override { return m_messages; }

private:
    Fake *m_fake;
    QStringList m_messages;
};

/// An extraction with that elaborator.
Extraction extractionWith(Fake *fake)
{
    return Extraction(DesignSources(), [fake](const DesignSources &) {
        return std::make_unique<FakeElaborator>(fake);
    });
}

} // namespace

/// What the extraction demands of an elaborator, whatever its language, and reports of it.
class TestElaborator : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void messagesAreReportedOnce_data();
    void messagesAreReportedOnce();
    void resultIsUsedOnce();
    void failedElaborationIsRepeated_data();
    void failedElaborationIsRepeated();
    void callWhileBuildingStartsAgain();
};

void TestElaborator::messagesAreReportedOnce_data()
{
    QTest::addColumn<QStringList>("found");
    QTest::addColumn<QStringList>("built");
    QTest::addColumn<bool>("hasNetlist");
    QTest::addColumn<QStringList>("first");
    QTest::addColumn<QStringList>("second");
    const QString one = QStringLiteral("WARNING: one");
    const QString two = QStringLiteral("WARNING: two");
    const QString error = QStringLiteral("ERROR: bad");
    const QString noTop =
        QStringLiteral("ERROR: The design has no single top module. Set the top module.");
    const QStringList none;
    QTest::newRow("none") << none << none << true << none << none;
    QTest::newRow("in the first call")
        << QStringList{one} << none << true << QStringList{one} << none;
    QTest::newRow("in the second call")
        << QStringList{one} << QStringList{two} << true << QStringList{one} << QStringList{two};
    QTest::newRow("the same again")
        << QStringList{one, one, two} << QStringList{one} << true << QStringList{one, two} << none;
    QTest::newRow("late error") << none << QStringList{error} << false << none
                                << QStringList{error};
    QTest::newRow("no reason") << QStringList{one} << none << false << QStringList{one}
                               << QStringList{noTop};
    QTest::newRow("error of a design that is read again")
        << QStringList{one, error} << none << false << QStringList{one, error}
        << QStringList{one, error};
}

void TestElaborator::messagesAreReportedOnce()
{
    Fake fake;
    QFETCH(QStringList, found);
    QFETCH(QStringList, built);
    QFETCH(bool, hasNetlist);
    fake.found = found;
    fake.built = built;
    fake.hasNetlist = hasNetlist;
    Extraction extraction = extractionWith(&fake);
    ExtractionProgress progress(nullptr);
    QStringList tops;
    QStringList modules;
    QStringList first;
    extraction.findModules(&progress, &tops, &modules, &first);
    QCOMPARE(tops, fake.tops);
    QCOMPARE(modules, fake.tops);
    QTEST(first, "first");
    QStringList second;
    QCOMPARE(bool(extraction.buildNetlist(&progress, &second)), hasNetlist);
    QTEST(second, "second");
}

void TestElaborator::resultIsUsedOnce()
{
    Fake fake;
    Extraction extraction = extractionWith(&fake);
    ExtractionProgress progress(nullptr);
    QStringList unused;
    extraction.findModules(&progress, &unused, &unused, &unused);
    QCOMPARE(fake.calls, QStringList({"begin", "elaborate for a while"}));
    QVERIFY(extraction.buildNetlist(&progress, &unused));
    QCOMPARE(fake.calls.mid(2), QStringList({"elaborate", "build", "end"}));
    QVERIFY(extraction.buildNetlist(&progress, &unused));
    QCOMPARE(fake.calls.mid(5), QStringList({"begin", "elaborate", "build", "end"}));
}

void TestElaborator::failedElaborationIsRepeated_data()
{
    QTest::addColumn<QStringList>("tops");
    QTest::addColumn<QStringList>("found");
    QTest::newRow("error") << QStringList{"top"} << QStringList{"ERROR: bad"};
    QTest::newRow("no top") << QStringList() << QStringList();
    QTest::newRow("two tops") << QStringList{"a", "b"} << QStringList();
}

void TestElaborator::failedElaborationIsRepeated()
{
    Fake fake;
    QFETCH(QStringList, tops);
    QFETCH(QStringList, found);
    fake.tops = tops;
    fake.found = found;
    Extraction extraction = extractionWith(&fake);
    ExtractionProgress progress(nullptr);
    QStringList unused;
    extraction.findModules(&progress, &unused, &unused, &unused);
    QCOMPARE(fake.calls, QStringList({"begin", "elaborate for a while", "end"}));
    extraction.buildNetlist(&progress, &unused);
    QCOMPARE(fake.calls.mid(3), QStringList({"begin", "elaborate", "build", "end"}));
}

void TestElaborator::callWhileBuildingStartsAgain()
{
    Fake fake;
    Extraction extraction = extractionWith(&fake);
    ExtractionProgress progress(nullptr);
    QStringList unused;
    std::unique_ptr<RtlNetlist> inner;
    fake.whileBuilding = [&] { inner = extraction.buildNetlist(&progress, &unused); };
    extraction.findModules(&progress, &unused, &unused, &unused);
    QVERIFY(extraction.buildNetlist(&progress, &unused));
    QVERIFY(inner);
    QCOMPARE(fake.calls, QStringList({"begin", "elaborate for a while", "elaborate", "build",
                                      "begin", "elaborate", "build", "end", "end"}));
}

QTEST_GUILESS_MAIN(TestElaborator)
#include "tst_elaborator.moc"
