// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/ghdl/vhdlliteral.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

class TestVhdlLiteral final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesValues_data();
    void writesValues();
};

void TestVhdlLiteral::writesValues_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](GenericValue::Kind kind, const char *text, const char *type,
                        const char *expected) {
        QTest::addRow("%d %s as %s", int(kind), QByteArray(text).replace('\n', ' ').constData(),
                      type)
            << int(kind) << QString::fromLatin1(text) << QByteArray(type) << QByteArray(expected);
    };
    row(GenericValue::Integer, "-5", "integer", "-5");
    row(GenericValue::Bits, "0101", "natural", "5");
    row(GenericValue::Bits, "11111111111111111111111111111110", "integer", "-2");
    row(GenericValue::Bits, "1000000000000000000000000000000001", "integer", "");
    row(GenericValue::Bits, "01x", "integer", "");
    row(GenericValue::Real, "1.5", "integer", "");
    row(GenericValue::Boolean, "true", "positive", "1");
    row(GenericValue::Real, "1.5", "real", "1.5");
    row(GenericValue::Real, "5e-1", "real", "5.0e-1");
    row(GenericValue::Integer, "3", "real", "3.0");
    row(GenericValue::Bits, "1", "real", "");
    row(GenericValue::Text, "a\"\nb", "string", "\"a\"\"\" & character'val(10) & \"b\"");
    row(GenericValue::Text, "", "string", "\"\"");
    row(GenericValue::Bits, "0100000101000010", "string", "\"AB\"");
    row(GenericValue::Bits, "010", "string", "");
    row(GenericValue::Integer, "1", "string", "");
    row(GenericValue::Integer, "0", "boolean", "false");
    row(GenericValue::Integer, "-1", "boolean", "true");
    row(GenericValue::Bits, "x", "boolean", "");
    row(GenericValue::Boolean, "true", "boolean", "true");
    row(GenericValue::Integer, "1", "std_logic", "'1'");
    row(GenericValue::Integer, "2", "std_logic", "");
    row(GenericValue::Bits, "z", "std_ulogic", "'Z'");
    row(GenericValue::Bits, "z", "bit", "");
    row(GenericValue::Bits, "1xz0", "std_logic_vector", "\"1XZ0\"");
    row(GenericValue::Bits, "1x", "bit_vector", "");
    row(GenericValue::Integer, "3", "unsigned", "\"00000000000000000000000000000011\"");
    row(GenericValue::Integer, "-1", "signed", "\"11111111111111111111111111111111\"");
    row(GenericValue::Text, "A", "std_logic_vector", "\"01000001\"");
    row(GenericValue::Integer, "1", "severity_level", "");
    row(GenericValue::Integer, "1", "time", "");
}

void TestVhdlLiteral::writesValues()
{
    QFETCH(int, kind);
    QFETCH(QString, text);
    QFETCH(QByteArray, type);
    QTEST(vhdlLiteral({GenericValue::Kind(kind), text}, type), "expected");
}

TARN_TEST_MAIN(TestVhdlLiteral)
#include "tst_vhdlliteral.moc"
