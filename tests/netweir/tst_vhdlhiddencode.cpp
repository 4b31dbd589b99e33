// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/vhdl/vhdlhiddencode.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

class TestVhdlHiddenCode : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void isBlanked_data();
    void isBlanked();
    void keepsAllPlaces();
};

void TestVhdlHiddenCode::isBlanked_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("code"); // Words that remain.
    const auto row = [](const char *name, const QByteArray &text, const char *code) {
        QTest::newRow(name) << text << QByteArray(code);
    };
    row("nothing", "", "");
    row("no marks", "a -- synthesis on\nb", "a -- synthesis on b");
    row("a region", "a\n-- synthesis translate_off\nb\n-- synthesis translate_on\nc", "a c");
    row("any word and case", "a --PRAGMA Translate_OFF\nb -- my-tool translate_on\nc", "a c");
    row("another word behind the mark of a known word",
        "a -- synopsys translate_off (begin)\nb -- synopsys translate_on now\nc", "a c");
    row("prose", "a -- see translate_off below\nb", "a -- see translate_off below b");
    row("no word in front", "a -- translate_off\nb", "a -- translate_off b");
    row("block comments", "a /* pragma translate_off */ b /* pragma translate_on */ c", "a c");
    row("not ended", "a -- pragma translate_off\nb\nc", "a");
    row("not begun", "a\n-- pragma translate_on\nb", "a -- pragma translate_on b");
    row("no nesting",
        "a -- pragma translate_off\n-- pragma translate_off\nb -- pragma translate_on\nc", "a c");
    row("mark in a string", "a \"-- pragma translate_off\" b", "a \"-- pragma translate_off\" b");
    row("mark in an extended name", "a \\-- pragma translate_off\\ b",
        "a \\-- pragma translate_off\\ b");
    row("quotes in hidden prose",
        "a -- pragma translate_off\nit's \"\n/\n-- pragma translate_on\nb", "a b");
    row("quote behind a character", "a'('\"') -- pragma translate_off\n x", "a'('\"')");
    row("carriage returns", "a -- pragma translate_off\rb\r-- pragma translate_on\rc", "a c");
}

void TestVhdlHiddenCode::isBlanked()
{
    QFETCH(QByteArray, text);
    blankHiddenVhdl(&text);
    QTEST(text.simplified(), "code");
}

void TestVhdlHiddenCode::keepsAllPlaces()
{
    QByteArray text("a\r\n-- pragma translate_off\r\nb\rb\n-- pragma translate_on\r\n  c");
    blankHiddenVhdl(&text);
    QCOMPARE(text,
             QByteArray(text.size()
                            ? "a\r\n                       \r\n \r \n                      \r\n  c"
                            : ""));
}

TARN_TEST_MAIN(TestVhdlHiddenCode)
#include "tst_vhdlhiddencode.moc"
