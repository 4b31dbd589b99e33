// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/signals/genericline.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

class TestGenericLine : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void readsValues_data();
    void readsValues();
    void refusesOtherLines_data();
    void refusesOtherLines();
};

void TestGenericLine::readsValues_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("instance");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("value");
    const auto row = [](const char *text, const char *instance, const char *name,
                        GenericValue::Kind kind, const QString &value) {
        QTest::newRow(text) << QByteArray(text) << QByteArray(instance) << QString(name)
                            << int(kind) << value;
    };
    row(":top(rtl):u@sub(netweir_border):|Width|i|-3", ":top(rtl):u@sub(netweir_border):", "Width",
        GenericValue::Integer, "-3");
    row(":t(a):|R|r|1.5e-3", ":t(a):", "R", GenericValue::Real, "1.5e-3");
    row(":t(a):|O|o|true", ":t(a):", "O", GenericValue::Boolean, "true");
    row(":t(a):|B|b|UX01ZWLH-", ":t(a):", "B", GenericValue::Bits, "xx01zx01x");
    row(":t(a):|B|b|", ":t(a):", "B", GenericValue::Bits, "");
    row(":t(a):|T|t|72,105,10,124", ":t(a):", "T", GenericValue::Text, "Hi\n|");
    row(":t(a):|T|t|97,", ":t(a):", "T", GenericValue::Text, "a");
    row(":t(a):|T|t|228,246", ":t(a):", "T", GenericValue::Text, QString::fromUtf8("äö"));
    row(":t(a):|T|t|195,164", ":t(a):", "T", GenericValue::Text, QString::fromUtf8("ä"));
    row(":t(a):|T|t|", ":t(a):", "T", GenericValue::Text, "");
    row(":t(a):g(0):\\u|1\\@s(r):|\\a|b\\|i|7", ":t(a):g(0):\\u|1\\@s(r):", "\\a|b\\",
        GenericValue::Integer, "7");
}

void TestGenericLine::readsValues()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, instance);
    QFETCH(QString, name);
    QFETCH(int, kind);
    QFETCH(QString, value);
    const std::string line =
        "some.vhd:4:16:@0ms:(report note): netweir-generic:" + text.toStdString();
    GenericLine result;
    QVERIFY(parseGenericLine(line, &result));
    QCOMPARE(QByteArray::fromStdString(result.instance), instance);
    QCOMPARE(result.name, name);
    QCOMPARE(int(result.value.kind), kind);
    QCOMPARE(result.value.text, value);
}

void TestGenericLine::refusesOtherLines_data()
{
    QTest::addColumn<QByteArray>("line");
    for (const char *line :
         {"", "x", "a.vhd:1:1:@0ms:(report note): hello", "netweir-generic::t(a):|A|i|3",
          "(report note): netweir-generic:", "(report note): netweir-generic:|",
          "(report note): netweir-generic::t(a):", "(report note): netweir-generic::t(a):|A",
          "(report note): netweir-generic::t(a):|A|3", "(report note): netweir-generic:|i|3",
          "(report note): netweir-generic::|i|3"})
        QTest::newRow(line) << QByteArray(line);
}

void TestGenericLine::refusesOtherLines()
{
    QFETCH(QByteArray, line);
    GenericLine result;
    QVERIFY(!parseGenericLine({line.constData(), std::size_t(line.size())}, &result));
}

TARN_TEST_MAIN(TestGenericLine)
#include "tst_genericline.moc"
