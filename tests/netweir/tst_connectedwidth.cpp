// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designxml.h"

#include <netweir/internal/xml/connectedwidth.h>
#include <netweir/internal/xml/sourcetexts.h>
#include <netweir/internal/xml/typetable.h>

#include <support/files.h>
#include <support/testcase.h>

#include <QTemporaryDir>
#include <QTest>

using namespace NETWEIR::Internal;

/// The width of an expression that the elaborator has widened to 64 bits.
class TestConnectedWidth : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void widthIsThatOfTheSource_data();
    void widthIsThatOfTheSource();
};

void TestConnectedWidth::widthIsThatOfTheSource_data()
{
    QTest::addColumn<QString>(
        "expression"); // Its constants are "8'h3", "12" and "N" in the source.
    QTest::addColumn<int>("expected");
    const auto row = [](const char *expression, int expected) {
        QTest::newRow(expression) << QString::fromLatin1(expression) << expected;
    };
    row("(varref:u5 name=a)", 5);
    row("(extend:u64 (varref:u5 name=a))", 5);
    row("(extends:u64 (extend:u9 (varref:u5 name=a)))", 5);
    row("(not:u64 (extend:u64 (varref:u5 name=a)))", 5);
    row("(extend:u64 (eq:u1 (varref:u5 name=a) (varref:u5 name=b)))", 1);
    row("(and:u64 (extend:u64 (varref:u5 name=a)) (extend:u64 (varref:u7 name=b)))", 7);
    row("(add:u64 (not:u64 (extend:u64 (varref:u9 name=a))) (extend:u64 (varref:u7 name=b)))", 9);
    row("(cond:u64 (varref:u9 name=c) (extend:u64 (varref:u2 name=a)) (extend:u64 (varref:u3 "
        "name=b)))",
        3);
    row("(shiftl:u64 (extend:u64 (varref:u5 name=a)) (varref:u9 name=b))", 5);
    row("(extend:u64 (concat:u6 (varref:u5 name=a) (varref:u1 name=b)))", 6);
    row("(const:u64 name=64'h3 loc=f,1,1,1,5)", 8);
    row("(const:u64 name=64'hc loc=f,2,1,2,3)", 0);
    row("(const:u64 name=64'hc loc=f,3,1,3,2)", 0);
    row("(const:u64 name=64'h0 loc=f,4,1,4,3)", 0);
    row("(const:u64 name=64'h3 loc=f,5,1,5,8)", 16);
    row("(add:u64 (extend:u64 (varref:u5 name=a)) (const:u64 name=64'hc loc=f,2,1,2,3))", 0);
    row("(add:u64 (extend:u64 (varref:u5 name=a)) (const:u64 name=64'h3 loc=f,1,1,1,5))", 8);
}

void TestConnectedWidth::widthIsThatOfTheSource()
{
    QFETCH(QString, expression);
    QTemporaryDir folder;
    TarnTest::writeFile(folder.filePath(QStringLiteral("f.v")), "8'h3\n12\nN\n'0\n1_6 'h3\n");
    pugi::xml_document document;
    TarnTest::appendElements(document, QStringLiteral("(files (file id=f filename=f.v)) "));
    TypeTable types;
    types.read(TarnTest::appendTypes(document, {}));
    SourceTexts sources;
    sources.setFiles(document.child("files"), folder.path());
    TarnTest::appendElements(document, QStringLiteral("(port ") + expression + ')');
    QTEST(int(connectedWidth(document.child("port").first_child(), types, sources)), "expected");
}

QTEST_GUILESS_MAIN(TestConnectedWidth)
#include "tst_connectedwidth.moc"
