// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/xml/namepool.h>
#include <netweir/internal/xml/symboltable.h>

#include <support/testcase.h>

#include <QTest>

#include <string>
#include <vector>

using namespace NETWEIR::Internal;

/// The names of scopes, and where they are kept.
class TestSymbolTable : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsFoundInAnEmptyTable();
    void firstMeaningCounts();
    void manyNamesAreFound();
    void namesOutliveTheirText();
    void namesThatReturnShareTheirMemory();
};

void TestSymbolTable::nothingIsFoundInAnEmptyTable()
{
    const SymbolTable table;
    QCOMPARE(int(table.find("a").kind), int(Symbol::Kind::None));
    QCOMPARE(int(table.find("").kind), int(Symbol::Kind::None));
}

void TestSymbolTable::firstMeaningCounts()
{
    SymbolTable table;
    table.add("a", {Symbol::Kind::Variable, 1});
    table.add("a", {Symbol::Kind::Instance, 2});
    table.add("", {Symbol::Kind::Routine, 3});
    table.shrink();
    table.add("a", {Symbol::Kind::Scope, 4});
    table.add("b", {Symbol::Kind::Scope, 5});
    QCOMPARE(int(table.find("a").kind), int(Symbol::Kind::Variable));
    QCOMPARE(table.find("a").index, 1);
    QCOMPARE(table.find("").index, 3);
    QCOMPARE(table.find("b").index, 5);
    QCOMPARE(int(table.find("c").kind), int(Symbol::Kind::None));
}

void TestSymbolTable::manyNamesAreFound()
{
    constexpr int Count = 10000;
    std::vector<std::string> names;
    for (int i = 0; i < Count; ++i)
        names.push_back("name_" + std::to_string(i));
    SymbolTable table;
    for (int i = 0; i < Count; i += 2)
        table.add(names[std::size_t(i)], {Symbol::Kind::Variable, i});
    for (int i = 0; i < Count; ++i)
        QCOMPARE(table.find(names[std::size_t(i)]).index, i % 2 == 0 ? i : -1);
}

void TestSymbolTable::namesOutliveTheirText()
{
    constexpr int Count = 20000; // More than a block holds, and more than are compared.
    NamePool pool;
    std::vector<std::string_view> kept;
    for (int i = 0; i < Count; ++i)
        kept.push_back(pool.keep("name_" + std::to_string(i)));
    const std::string longest(1000000, 'x');
    const std::string_view keptLongest = pool.keep(std::string(longest));
    for (int i = 0; i < Count; ++i)
        QVERIFY(kept[std::size_t(i)] == "name_" + std::to_string(i));
    QVERIFY(keptLongest == longest);
    QVERIFY(pool.keep(std::string_view()).empty());
}

void TestSymbolTable::namesThatReturnShareTheirMemory()
{
    NamePool pool;
    QCOMPARE(pool.keep(std::string("clk")).data(), pool.keep(std::string("clk")).data());
    const QString first = pool.keep(QString(QStringLiteral("clk_") + QLatin1Char('a')));
    const QString second = pool.keep(QString(QStringLiteral("clk_") + QLatin1Char('a')));
    const QString other = pool.keep(QString(QStringLiteral("clk_") + QLatin1Char('b')));
    QCOMPARE(first.constData(), second.constData());
    QCOMPARE(other, QStringLiteral("clk_b"));
}

QTEST_APPLESS_MAIN(TestSymbolTable)
#include "tst_symboltable.moc"
