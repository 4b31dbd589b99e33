// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <model/designreading.h>
#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnetlist.h>
#include <support/testcase.h>

#include <QTest>
#include <QTranslator>

using namespace TARN;

namespace {

const QVariantList OneFile{QVariantMap{{"Path", "/a.v"}}};

/// What a fake extractor finds, and the calls that it got.
struct Fake
{
    QStringList tops{QStringLiteral("top")};
    QStringList modules{QStringLiteral("top")};
    QStringList messages;
    bool builds = true;
    QString builtTop = QStringLiteral("top");
    bool usesJtag = false;

    QStringList calls{};
    QMap<QString, QVariant> info{};

    ExtractorCalls extractor()
    {
        return {[this](QMap<QString, QVariant> &given, QStringList &t, QStringList &m,
                       QStringList &text) {
                    calls += t.isEmpty() && m.isEmpty() && text.isEmpty() ? "find" : "find again";
                    info = given;
                    t += tops;
                    m += modules;
                    text += messages;
                },
                [this]() -> NETWEIR::RtlNetlist * {
                    calls += "build";
                    if (!builds)
                        return nullptr;
                    NETWEIR::NetlistBuilder builder(builtTop);
                    builder.setUsesJtagPrimitive(usesJtag);
                    return builder.take().release();
                }};
    }
};

QString text(const DesignFault &fault)
{
    return (QStringList{fault.title, fault.text} + fault.messages).join('|');
}

const QString Broken = QStringLiteral("Design files contain some errors.||");
const QString NoModule =
    QStringLiteral("Design files contain some errors|Get no module from design.");
const QString SeveralTops =
    QStringLiteral("Multiple Top Module|Multiple top, please set top module.");

} // namespace

Q_DECLARE_METATYPE(Fake)

class TestDesignReading : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void readsTheNetlistOfTheTop_data();
    void readsTheNetlistOfTheTop();
    void saysWhatIsWrong_data();
    void saysWhatIsWrong();
    void extractorGetsTheMap();
    void saveIsRefusedUnderOtherSynthesis_data();
    void saveIsRefusedUnderOtherSynthesis();
    void textsAreTranslatedAsThoseOfTheView();
};

void TestDesignReading::readsTheNetlistOfTheTop_data()
{
    QTest::addColumn<QVariant>("top");
    QTest::addColumn<QStringList>("messages");
    QTest::newRow("no top set") << QVariant() << QStringList();
    QTest::newRow("empty top") << QVariant(QString()) << QStringList();
    QTest::newRow("the top set") << QVariant("top") << QStringList();
    QTest::newRow("no errors") << QVariant("top")
                               << QStringList{"WARNING: a", "error: b", " ERROR: c", "no ERROR"};
}

void TestDesignReading::readsTheNetlistOfTheTop()
{
    QFETCH(QVariant, top);
    Fake fake;
    QFETCH(QStringList, messages);
    fake.messages = messages;
    fake.modules += QStringLiteral("other");
    DesignFault fault;
    const auto netlist = readDesign({{"Top", top}, {"Files", OneFile}}, fake.extractor(), &fault);
    QVERIFY(netlist);
    QCOMPARE(netlist->top()->instName(), QStringLiteral("top"));
    QCOMPARE(text(fault), QStringLiteral("|"));
    QCOMPARE(fake.calls, (QStringList{"find", "build"}));
}

void TestDesignReading::saysWhatIsWrong_data()
{
    QTest::addColumn<QString>("top");
    QTest::addColumn<Fake>("fake");
    QTest::addColumn<QStringList>("calls");
    QTest::addColumn<QString>("expected");
    const QStringList none;
    const QStringList find{"find"};
    const QStringList build{"find", "build"};
    // Each row has the faults of all later ones that it can have too, so that their order shows.
    const auto row = [](const char *name, const QString &top, const Fake &fake,
                        const QStringList &calls, const QString &expected) {
        QTest::newRow(name) << top << fake << calls << expected;
    };
    const QStringList two{"a", "b"};
    const QStringList messages{"WARNING: w", "ERRORbeginning", "ERROR: e"};
    row("bad sources without a module", "top", {none, none, messages, false, "other", true}, find,
        Broken + messages.join('|'));
    row("bad sources with a top", "top", {{"top"}, {"top"}, messages, false, "other", true}, find,
        Broken + messages.join('|'));
    row("no module, no top set", "", {none, none, none, false, "other", true}, find, NoModule);
    row("no module, but a candidate", "", {{"a"}, none, none, false, "other", true}, find,
        NoModule);
    row("no module, top set", "%1 x", {none, none, none, false, "other", true}, find,
        "Invalid Top Module|No module named \"%1 x\", please reset top module.");
    row("no candidate, no top set", "", {none, two, none, false, "other", true}, find, SeveralTops);
    row("two candidates, no top set", "", {two, two, none, false, "other", true}, find,
        SeveralTops);
    row("no candidate, top set", "c", {none, two, none, false, "other", true}, find, NoModule);
    row("two candidates, top set", "c", {two, two, none, false, "other", true}, find, NoModule);
    row("build failed", "top", {{"top"}, two, none, false, "other", true}, build, NoModule);
    row("another top", "%2", {{"top"}, two, none, true, "other", true}, build,
        "Error|Get module \"%2\" failed, just received default module \"other\".");
    row("JTAG primitive", "other", {{"top"}, two, none, true, "other", true}, build,
        "Error|KX_JTAG used in design conflicts with TARN.");
    row("JTAG primitive, no top set", "", {{"top"}, two, none, true, "other", true}, build,
        "Error|KX_JTAG used in design conflicts with TARN.");
}

void TestDesignReading::saysWhatIsWrong()
{
    QFETCH(QString, top);
    QFETCH(Fake, fake);
    DesignFault fault;
    QVERIFY(!readDesign({{"Top", top}, {"Files", OneFile}}, fake.extractor(), &fault));
    QTEST(text(fault), "expected");
    QTEST(fake.calls, "calls");

    // Without files nothing else is looked at.
    fake.calls.clear();
    for (const QVariant &files : {QVariant(), QVariant(QVariantList()), QVariant("a.v")}) {
        QVERIFY(!readDesign({{"Top", top}, {"Files", files}}, fake.extractor(), &fault));
        QCOMPARE(text(fault), QStringLiteral("Error|Design files are not exist."));
    }
    QCOMPARE(fake.calls, QStringList());
}

void TestDesignReading::extractorGetsTheMap()
{
    const QMap<QString, QVariant> info{{"Files", OneFile}, {"Top", "top"}, {"More", 3}};
    Fake fake;
    DesignFault fault;
    QVERIFY(readDesign(info, fake.extractor(), &fault));
    QCOMPARE(fake.info, info);
}

void TestDesignReading::saveIsRefusedUnderOtherSynthesis_data()
{
    QTest::addColumn<QString>("tool");
    QTest::addColumn<bool>("refused");
    QTest::newRow("own") << "OstraSynthesis" << false;
    QTest::newRow("other") << "Synplify" << true;
    QTest::newRow("other case") << "synplify" << false;
    QTest::newRow("none") << "" << false;
}

void TestDesignReading::saveIsRefusedUnderOtherSynthesis()
{
    QFETCH(QString, tool);
    QFETCH(bool, refused);
    const QString text =
        QStringLiteral("For RTL Design, TARN is only available for OstraSynthesis. Please change "
                       "Synthesis Tool to OstraSynthesis in Configurations.");
    QCOMPARE(saveRefusal(tool), refused ? text : QString());
}

/// Marks the texts that are looked up in the context of the view.
class Marker final : public QTranslator
{
public:
    QString translate(const char *context, const char *text, const char * /*disambiguation*/,
                      int /*number*/) const override
    {
        const bool isOfView = qstrcmp(context, "TARN::TarnView") == 0;
        return isOfView ? QLatin1Char('*') + QString::fromLatin1(text) : QString();
    }
    bool isEmpty() const override { return false; }
};

void TestDesignReading::textsAreTranslatedAsThoseOfTheView()
{
    Marker marker;
    QVERIFY(QCoreApplication::installTranslator(&marker));
    DesignFault fault;
    Fake fake;
    QVERIFY(!readDesign({}, fake.extractor(), &fault));
    QCOMPARE(text(fault), QStringLiteral("*Error|*Design files are not exist."));
    QVERIFY(saveRefusal(QStringLiteral("Synplify")).startsWith(QStringLiteral("*For RTL")));
    QCoreApplication::removeTranslator(&marker);
}

QTEST_GUILESS_MAIN(TestDesignReading)
#include "tst_designreading.moc"
