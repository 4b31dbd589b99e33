// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designxml.h"

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;

class TestTypeTable : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void typesAreRead_data();
    void typesAreRead();
    void widthsAreMeasured_data();
    void widthsAreMeasured();
    void aliasesLeadToTheirType_data();
    void aliasesLeadToTheirType();
    void typesWithinThemselvesAreOpaque_data();
    void typesWithinThemselvesAreOpaque();
    void deepTypesAreOpaque();
    void interfacesAreFound_data();
    void interfacesAreFound();
};

namespace {

const char *kindText(DataType::Kind kind)
{
    switch (kind) {
    case DataType::Kind::Vector:
        return "vector";
    case DataType::Kind::PackedArray:
        return "packed";
    case DataType::Kind::UnpackedArray:
        return "unpacked";
    case DataType::Kind::Struct:
        return "struct";
    case DataType::Kind::Union:
        return "union";
    case DataType::Kind::Interface:
        return "interface";
    case DataType::Kind::Opaque:
        return "opaque";
    case DataType::Kind::Alias:
        return "alias";
    }
    return "";
}

/// A type and its nested types: "packed[3:0] of vector[7:0]".
QString typeText(const TypeTable &types, int index)
{
    const DataType &type = types.at(index);
    QString text = QLatin1String(kindText(type.kind));
    const bool isArray =
        type.kind == DataType::Kind::PackedArray || type.kind == DataType::Kind::UnpackedArray;
    if (type.ranged || isArray)
        text += QStringLiteral("[%1:%2]").arg(type.left).arg(type.right);
    text += QLatin1String(type.isSigned ? " signed" : "");
    text += QLatin1String(type.isIntegerKeyword ? " integer" : "");
    if (isArray)
        text += QStringLiteral(" of ") + typeText(types, type.element);
    for (const DataType::Member &member : type.members) {
        text += QStringLiteral(" {%1 %2}")
                    .arg(QString::fromUtf8(member.name.data(), int(member.name.size())),
                         typeText(types, member.type));
    }
    if (!type.modport.empty())
        text += ' ' + QString::fromUtf8(type.modport.data(), int(type.modport.size()));
    return text;
}

/// The type table with @p text in it. Its names live in the document.
struct Table
{
    explicit Table(const QString &text) { types.read(TarnTest::appendTypes(document, text)); }

    int indexOf(const char *id)
    {
        pugi::xml_node node = document.append_child("var");
        node.append_attribute("dtype_id") = id;
        return types.typeOf(node);
    }

    const DataType &type(const char *id) { return types.at(indexOf(id)); }

    pugi::xml_document document;
    TypeTable types;
};

} // namespace

void TestTypeTable::typesAreRead_data()
{
    QTest::addColumn<QString>("types"); ///< The tested type is t.
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *types, const char *expected) {
        QTest::newRow(name) << QString::fromLatin1(types) << QString::fromLatin1(expected);
    };
    row("a single net", "(basicdtype id=t name=logic)", "vector");
    row("a vector", "(basicdtype id=t name=bit left=7 right=0)", "vector[7:0]");
    row("a rising vector with sign", "(basicdtype id=t name=logic left=-1 right=2 signed=true)",
        "vector[-1:2] signed");
    row("byte", "(basicdtype id=t name=byte left=7 right=0)", "vector[7:0]");
    row("shortint", "(basicdtype id=t name=shortint left=15 right=0)", "vector[15:0]");
    row("int", "(basicdtype id=t name=int left=31 right=0)", "vector[31:0]");
    row("longint", "(basicdtype id=t name=longint left=63 right=0)", "vector[63:0]");
    row("time", "(basicdtype id=t name=time left=63 right=0)", "vector[63:0]");
    row("integer", "(basicdtype id=t name=integer left=31 right=0 signed=true)",
        "vector[31:0] signed integer");
    row("real", "(basicdtype id=t name=real)", "opaque");
    row("string", "(basicdtype id=t name=string)", "opaque");
    row("a class", "(classrefdtype id=t)", "opaque");
    row("a dynamic array", "(dynarraydtype id=t sub_dtype_id=u4)", "opaque");
    row("a packed array", "(packarraydtype id=t sub_dtype_id=u4 (range 3 0))",
        "packed[3:0] of vector[3:0]");
    row("an unpacked array", "(unpackarraydtype id=t sub_dtype_id=u4 (range 0 3))",
        "unpacked[0:3] of vector[3:0]");
    row("an array of an unknown range", "(unpackarraydtype id=t sub_dtype_id=u4 (range 0 x))",
        "opaque");
    row("an array of an unknown type", "(unpackarraydtype id=t sub_dtype_id=z (range 0 3))",
        "unpacked[0:3] of opaque");
    row("a structure",
        "(structdtype id=t (memberdtype id=m name=a sub_dtype_id=u4) "
        "(memberdtype id=n name=b sub_dtype_id=bit))",
        "struct {a vector[3:0]} {b vector}");
    row("a union",
        "(uniondtype id=t (memberdtype id=m name=a sub_dtype_id=u4) (memberdtype id=n name=b "
        "sub_dtype_id=z))",
        "union {a vector[3:0]} {b opaque}");
    row("a member", "(structdtype id=s (memberdtype id=t name=a sub_dtype_id=u4))", "vector[3:0]");
    row("a structure without members", "(structdtype id=t)", "struct");
    row("an interface", "(ifacerefdtype id=t modportname=m)", "interface m");
    row("a later type",
        "(packarraydtype id=t sub_dtype_id=v (range 1 0)) "
        "(basicdtype id=v name=logic left=2 right=0)",
        "packed[1:0] of vector[2:0]");
    row("an element without a name", "(basicdtype name=logic left=7 right=0)", "opaque");
}

void TestTypeTable::typesAreRead()
{
    QFETCH(QString, types);
    Table table(types);
    QTEST(typeText(table.types, table.indexOf("t")), "expected");
}

void TestTypeTable::widthsAreMeasured_data()
{
    QTest::addColumn<QString>("types");
    QTest::addColumn<QString>("expected"); ///< Width, levels within, 'u' with an unpacked array.
    const auto row = [](const char *name, const char *types, const char *expected) {
        QTest::newRow(name) << QString::fromLatin1(types) << QString::fromLatin1(expected);
    };
    row("a single net", "(basicdtype id=t name=logic)", "1 0");
    row("a rising vector", "(basicdtype id=t name=logic left=-1 right=2)", "4 0");
    row("the widest vector", "(basicdtype id=t name=logic left=2147483647 right=-2147483648)",
        "4294967296 0");
    row("something opaque", "(basicdtype id=t name=real)", "1 0");
    row("a packed array", "(packarraydtype id=t sub_dtype_id=u4 (range 0 2))", "12 1");
    row("an unpacked array", "(unpackarraydtype id=t sub_dtype_id=u4 (range 0 2))", "12 1 u");
    row("nested arrays",
        "(unpackarraydtype id=t sub_dtype_id=a (range 1 0)) "
        "(packarraydtype id=a sub_dtype_id=u4 (range 0 2))",
        "24 2 u");
    row("a structure",
        "(structdtype id=t (memberdtype id=m name=a sub_dtype_id=u4) (memberdtype id=n name=b "
        "sub_dtype_id=u3))",
        "7 1");
    row("a structure without members", "(structdtype id=t)", "1 0");
    row("a structure with an array",
        "(structdtype id=t (memberdtype id=m name=a sub_dtype_id=bit) (memberdtype id=n name=b "
        "sub_dtype_id=a)) (unpackarraydtype id=a sub_dtype_id=u4 (range 0 2))",
        "13 2 u");
    row("a union",
        "(uniondtype id=t (memberdtype id=m name=a sub_dtype_id=u4) (memberdtype id=n name=b "
        "sub_dtype_id=u7) (memberdtype id=o name=c sub_dtype_id=u3))",
        "7 1");
    row("a union without members", "(uniondtype id=t)", "1 0");
    row("an interface", "(ifacerefdtype id=t)", "1 0");
    row("an array too wide",
        "(packarraydtype id=t sub_dtype_id=v (range 4095 0)) "
        "(basicdtype id=v name=logic left=2147483647 right=0)",
        "1099511627776 1");
    row("an array just as wide",
        "(packarraydtype id=t sub_dtype_id=v (range 511 0)) "
        "(basicdtype id=v name=logic left=2147483647 right=0)",
        "1099511627776 1");
    row("an array not quite as wide",
        "(packarraydtype id=t sub_dtype_id=v (range 510 0)) "
        "(basicdtype id=v name=logic left=2147483647 right=0)",
        "1097364144128 1");
    row("a structure too wide",
        "(structdtype id=t (memberdtype id=m name=a sub_dtype_id=u) (memberdtype id=n name=b "
        "sub_dtype_id=u)) (packarraydtype id=u sub_dtype_id=v (range 511 0)) "
        "(basicdtype id=v name=logic left=2147483647 right=0)",
        "1099511627776 2");
}

void TestTypeTable::widthsAreMeasured()
{
    QFETCH(QString, types);
    Table table(types);
    const DataType &type = table.type("t");
    QTEST(QStringLiteral("%1 %2%3")
              .arg(type.width)
              .arg(type.depth)
              .arg(QLatin1String(type.holdsUnpackedArray ? " u" : "")),
          "expected");
}

void TestTypeTable::aliasesLeadToTheirType_data()
{
    QTest::addColumn<QString>("types");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const QString &types, const char *expected) {
        QTest::newRow(name) << types << QString::fromLatin1(expected);
    };
    row("a type definition", "(refdtype id=t sub_dtype_id=u4)", "vector[3:0]");
    row("an enumeration", "(enumdtype id=t sub_dtype_id=u4)", "vector[3:0]");
    row("a constant type", "(constdtype id=t sub_dtype_id=u4)", "vector[3:0]");
    row("an unknown type", "(refdtype id=t sub_dtype_id=z)", "opaque");
    row("two steps", "(refdtype id=t sub_dtype_id=a) (refdtype id=a sub_dtype_id=u4)",
        "vector[3:0]");
    row("elements",
        "(packarraydtype id=t sub_dtype_id=a (range 1 0)) (refdtype id=a "
        "sub_dtype_id=u4)",
        "packed[1:0] of vector[3:0]");
    row("itself", "(refdtype id=t sub_dtype_id=t)", "opaque");
    row("a circle", "(refdtype id=t sub_dtype_id=a) (refdtype id=a sub_dtype_id=t)", "opaque");

    const auto chain = [](int length) {
        QString types = QStringLiteral("(refdtype id=t sub_dtype_id=a1) ");
        for (int i = 1; i < length; ++i)
            types += QStringLiteral("(refdtype id=a%1 sub_dtype_id=a%2) ").arg(i).arg(i + 1);
        return types + QStringLiteral("(basicdtype id=a%1 name=logic)").arg(length);
    };
    row("101 steps", chain(101), "vector");
    row("102 steps", chain(102), "opaque");
}

void TestTypeTable::aliasesLeadToTheirType()
{
    QFETCH(QString, types);
    Table table(types);
    QTEST(typeText(table.types, table.indexOf("t")), "expected");
}

void TestTypeTable::typesWithinThemselvesAreOpaque_data()
{
    QTest::addColumn<QString>("types");
    QTest::addColumn<QString>("expected");
    QTest::newRow("an array of itself") << "(packarraydtype id=t sub_dtype_id=t (range 1 0))"
                                        << "opaque";
    QTest::newRow("a member of itself")
        << "(structdtype id=t (memberdtype id=m name=a sub_dtype_id=u4) "
           "(memberdtype id=n name=b sub_dtype_id=t))"
        << "opaque";
    QTest::newRow("a circle of two") << "(packarraydtype id=t sub_dtype_id=s (range 1 0)) "
                                        "(structdtype id=s (memberdtype id=m name=a "
                                        "sub_dtype_id=t))"
                                     << "packed[1:0] of opaque";
}

void TestTypeTable::typesWithinThemselvesAreOpaque()
{
    QFETCH(QString, types);
    Table table(types);
    QTEST(typeText(table.types, table.indexOf("t")), "expected");
}

void TestTypeTable::deepTypesAreOpaque()
{
    QString types;
    for (int i = 1; i <= 101; ++i)
        types += QStringLiteral("(packarraydtype id=a%1 sub_dtype_id=%2 (range 0 0)) ")
                     .arg(i)
                     .arg(i == 1 ? QStringLiteral("u4") : QStringLiteral("a%1").arg(i - 1));
    Table table(types);
    QCOMPARE(table.type("a100").depth, 100);
    QCOMPARE(table.type("a100").width, 4);
    QCOMPARE(int(table.type("a101").kind), int(DataType::Kind::Opaque));
}

void TestTypeTable::interfacesAreFound_data()
{
    QTest::addColumn<QString>("types");
    QTest::addColumn<QString>("expected");
    QTest::newRow("an interface") << "(ifacerefdtype id=t modportname=m)"
                                  << "m";
    QTest::newRow("an array of interfaces")
        << "(unpackarraydtype id=t sub_dtype_id=i (range 1 0)) (ifacerefdtype id=i modportname=m)"
        << "m";
    QTest::newRow("an array of arrays of interfaces")
        << "(unpackarraydtype id=t sub_dtype_id=a (range 1 0)) (unpackarraydtype id=a "
           "sub_dtype_id=i (range 1 0)) (ifacerefdtype id=i modportname=m)"
        << "none";
    QTest::newRow("an array of vectors") << "(unpackarraydtype id=t sub_dtype_id=u4 (range 1 0))"
                                         << "none";
    QTest::newRow("a vector") << "(basicdtype id=t name=logic)"
                              << "none";
    QTest::newRow("unknown") << ""
                             << "none";
}

void TestTypeTable::interfacesAreFound()
{
    QFETCH(QString, types);
    Table table(types);
    const DataType *type = table.types.interfaceType(table.indexOf("t"));
    QTEST(type ? QString::fromStdString(std::string(type->modport)) : QStringLiteral("none"),
          "expected");
}

QTEST_APPLESS_MAIN(TestTypeTable)
#include "tst_typetable.moc"
