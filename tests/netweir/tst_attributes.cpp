// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designxml.h"

#include <netweir/internal/xml/attributes.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;

class TestAttributes : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void namesAreDecoded_data();
    void namesAreDecoded();
    void constantsHaveValues_data();
    void constantsHaveValues();
    void boundsAreNumbersOf32Bits_data();
    void boundsAreNumbersOf32Bits();
    void rangesHaveTwoBounds_data();
    void rangesHaveTwoBounds();
    void missingAttributesAreEmpty();
};

namespace {

template <typename Number>
QString numberText(const std::optional<Number> &number)
{
    return number ? QString::number(*number) : QStringLiteral("none");
}

pugi::xml_node constant(pugi::xml_document *document, const QString &name)
{
    pugi::xml_node node = document->append_child("const");
    node.append_attribute("name") = name.toUtf8().constData();
    return node;
}

} // namespace

void TestAttributes::namesAreDecoded_data()
{
    QTest::addColumn<QByteArray>("encoded");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *encoded, const char *expected) {
        QTest::newRow(encoded) << QByteArray(encoded) << QString::fromUtf8(expected);
    };
    row("", "");
    row("plain_name", "plain_name");
    row("a__02fb", "a/b");
    row("__02f", "/");
    row("g__BRA__0__KET__", "g[0]");
    row("a__DOT__b", "a.b");
    row("__0c3__0a4", "\xc3\xa4"); // One character of two bytes.
    row("a__02F", "a/");
    row("a__02", "a__02");
    row("a__0", "a__0");
    row("a__0xg", "a__0xg");
    row("a__02g", "a__02g");
    row("a__0g2", "a__0g2");
    row("a__0-1", "a__0-1");
    row("a__BRA_", "a__BRA_");
    row("a__b__", "a__b__");
    row("__02f__02f", "//");
}

void TestAttributes::namesAreDecoded()
{
    QFETCH(QByteArray, encoded);
    QTEST(decodedName(encoded.constData()), "expected");
}

void TestAttributes::constantsHaveValues_data()
{
    QTest::addColumn<QString>("constant");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *expected) {
        QTest::newRow(*name ? name : "nothing")
            << QString::fromLatin1(name) << QString::fromLatin1(expected);
    };
    row("8'h1f", "31");
    row("8'hff", "255");
    row("8'shff", "-1");
    row("8'sh7f", "127");
    row("8'sh80", "-128");
    row("1'sh1", "-1");
    row("32'sh8", "8");
    row("61'sh1fffffffffffffff", "-1");
    row("62'sh3fffffffffffffff", "4611686018427387903");
    row("64'h3fffffffffffffff", "4611686018427387903");
    row("64'h4000000000000000", "none");
    row("64'hffffffffffffffff", "none");
    row("128'h10000000000000000", "none");
    row("0'sh1", "1");
    row("4'bx", "none");
    row("4'hx", "none");
    row("4'h1x", "none");
    row("4'h", "none");
    row("4'", "none");
    row("4'sh", "none");
    row("4'sd1", "none");
    row("4h1", "none");
    row("4", "none");
    row("'h1", "none");
    row("\"text\"", "none");
    row("", "none");
}

void TestAttributes::constantsHaveValues()
{
    QFETCH(QString, constant);
    pugi::xml_document document;
    QTEST(numberText(constantValue(::constant(&document, constant))), "expected");
}

void TestAttributes::boundsAreNumbersOf32Bits_data()
{
    QTest::addColumn<QString>("constant");
    QTest::addColumn<QString>("expected");
    QTest::newRow("positive") << "32'h7"
                              << "7";
    QTest::newRow("negative") << "32'shffffffff"
                              << "-1";
    QTest::newRow("negative without a sign") << "32'hfffffffe"
                                             << "-2";
    QTest::newRow("more than 32 bits") << "64'h100000003"
                                       << "3";
    QTest::newRow("unknown bits") << "32'hx"
                                  << "none";
}

void TestAttributes::boundsAreNumbersOf32Bits()
{
    QFETCH(QString, constant);
    pugi::xml_document document;
    QTEST(numberText(rangeBound(::constant(&document, constant))), "expected");
}

void TestAttributes::rangesHaveTwoBounds_data()
{
    QTest::addColumn<QString>("element");
    QTest::addColumn<QString>("expected");
    QTest::newRow("falling") << "(var (range 7 0))"
                             << "7:0";
    QTest::newRow("rising below zero") << "(var (other) (range -3 -2))"
                                       << "-3:-2";
    QTest::newRow("without a range") << "(var 7 0)"
                                     << "none";
    QTest::newRow("of one bound") << "(var (range 7))"
                                  << "none";
    QTest::newRow("unknown on the left") << "(var (range (const name=32'hx) 0))"
                                         << "none";
    QTest::newRow("unknown on the right") << "(var (range 0 (const name=32'hx)))"
                                          << "none";
}

void TestAttributes::rangesHaveTwoBounds()
{
    QFETCH(QString, element);
    pugi::xml_document document;
    TarnTest::appendElements(document, element);
    const auto range = declaredRange(document.first_child());
    const QString found = range ? QStringLiteral("%1:%2").arg(range->first).arg(range->second)
                                : QStringLiteral("none");
    QTEST(found, "expected");
}

void TestAttributes::missingAttributesAreEmpty()
{
    pugi::xml_document document;
    TarnTest::appendElements(document, QStringLiteral("(var name=x)"));
    QCOMPARE(toQString(attribute(document.first_child(), "name")), QStringLiteral("x"));
    QCOMPARE(toQString(attribute(document.first_child(), "dir")), QString());
    QCOMPARE(toQString(attribute(pugi::xml_node(), "name")), QString());
}

QTEST_APPLESS_MAIN(TestAttributes)
#include "tst_attributes.moc"
