// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/ghdl/stubtext.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

class TestStubText final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void drivesWhatIsNoInput();
    void reportsGenericsOnlyAtBorders();
    void writesAnEmptyEntity();
};

void TestStubText::drivesWhatIsNoInput()
{
    StubEntity entity;
    entity.context = "use work.types.all;";
    entity.name = "pad";
    entity.generics = {{"n", {}, "integer", "integer"}};
    entity.ports = {{"i", "in", "bit", "bit"},
                    {"o", "out", "bit", "bit"},
                    {"io", "inout", "word", "word"},
                    {"b", "buffer", "bit", "bit"}};
    QCOMPARE(stubText(entity), QByteArray("library ieee;\nuse work.types.all;\n"
                                          "entity pad is\n"
                                          "generic (\nn : integer);\n"
                                          "port (\ni : in bit;\no : out bit;\nio : inout word;\n"
                                          "b : buffer bit);\n"
                                          "end;\n"
                                          "architecture netweir_stub of pad is\n"
                                          "begin\n"
                                          "process\nbegin\n"
                                          "o <= o'driving_value;\n"
                                          "io <= io'driving_value;\n"
                                          "b <= b'driving_value;\n"
                                          "wait;\nend process;\n"
                                          "end;\n"));
}

void TestStubText::reportsGenericsOnlyAtBorders()
{
    StubEntity entity;
    entity.name = "u";
    entity.generics = {{"N", {}, "few", "natural"}, {"T", {}, "time", "time"}};
    QVERIFY(!stubText(entity).contains("report"));
    entity.isBorder = true;
    const QByteArray text = stubText(entity);
    QVERIFY(text.contains("architecture netweir_border of u is\n"
                          "function netweir_report return boolean is\nbegin\n"
                          "report \"netweir-generic:\" & u'instance_name & \"|N|i|\" & "
                          "integer'image(N);\n"
                          "return true;\nend;\n"));
    QVERIFY(!text.contains("|T|"));
    QVERIFY(isReportable("natural") && !isReportable("time"));
}

void TestStubText::writesAnEmptyEntity()
{
    StubEntity entity;
    entity.name = "u";
    entity.isBorder = true;
    QCOMPARE(stubText(entity), QByteArray("library ieee;\n\nentity u is\nend;\n"
                                          "architecture netweir_border of u is\nbegin\nend;\n"));
}

TARN_TEST_MAIN(TestStubText)
#include "tst_stubtext.moc"
