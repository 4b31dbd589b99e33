// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designxml.h"

#include <netweir/internal/xml/parametervalue.h>
#include <netweir/internal/xml/sourcetexts.h>
#include <netweir/internal/xml/typetable.h>

#include <support/files.h>
#include <support/testcase.h>

#include <QTemporaryDir>
#include <QTest>

using namespace NETWEIR::Internal;

/// The values of parameters in the XML.
class TestParameterValue : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void valuesHaveTheirKind_data();
    void valuesHaveTheirKind();
};

void TestParameterValue::valuesHaveTheirKind_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("constant");
    QTest::addColumn<QString>("expected"); // The first letter is that of the kind.
    const auto row = [](const char *type, const char *constant, const char *expected) {
        QTest::newRow(constant) << QString::fromLatin1(type) << QString::fromLatin1(constant)
                                << QString::fromLatin1(expected);
    };
    row("s32", "name=32'sh8", "i8");
    row("s32", "name=32'hfffffffd", "i-3");
    row("u32", "name=32'hc", "b00000000000000000000000000001100");
    row("s8", "name=8'hff", "b11111111");
    row("u3", "name=3'h5", "b101");
    row("u6", "name=6'h5", "b000101");
    row("u4", "name=4'b10xz", "b10xz");
    row("s32", "name=32'sbx", "b0000000000000000000000000000000x");
    row("u16", "name=16'h6869", "b0110100001101001");
    row("u16", "name=16'h6869 loc=f,1,1,1,5", "thi");
    row("u16", "name=12'h869 loc=f,1,1,1,5", "t\bi");
    row("u8", "name=8'h0 loc=f,1,1,1,5", "t");
    row("bit", "name=1.5", "r1.5");
    row("bit", "name=-2250", "r-2250.0");
    row("bit", "name=1e+30", "r1.0e+30");
    row("u64", "name=128'h6e6574776569723a206e6f7420736574 loc=f,1,1,1,5", "");
    row("u64", "name=8'q0", "");
    row("u64", "", "");
}

void TestParameterValue::valuesHaveTheirKind()
{
    QFETCH(QString, type);
    QFETCH(QString, constant);
    QTemporaryDir folder;
    TarnTest::writeFile(folder.filePath(QStringLiteral("f.v")), "\"hi\"\n");
    pugi::xml_document document;
    TarnTest::appendElements(document, QStringLiteral("(files (file id=f filename=f.v)) "));
    TypeTable types;
    types.read(TarnTest::appendTypes(document, {}));
    SourceTexts sources;
    sources.setFiles(document.child("files"), folder.path());
    TarnTest::appendElements(document, QStringLiteral("(var:%1 (const %2))").arg(type, constant));
    const auto value = parameterValue(document.child("var"), types, sources);
    QTEST(value ? QLatin1Char("irbto"[value->kind]) + value->text : QString(), "expected");
}

QTEST_GUILESS_MAIN(TestParameterValue)
#include "tst_parametervalue.moc"
