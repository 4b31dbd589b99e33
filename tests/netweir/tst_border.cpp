// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/join/border.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;

namespace {

/// Ports from a text such as "in a 4, out b 1": a direction ("in", "out", "inout" or "any"), a name
/// and a width each.
std::vector<PartPort> portsOf(const QString &text)
{
    std::vector<PartPort> ports;
    const QStringList parts = text.split(QStringLiteral(", "), Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        const QStringList words = part.split(QLatin1Char(' '));
        PartPort port;
        port.name = words[1];
        port.width = words[2].toInt();
        if (words[0] != QLatin1String("any"))
            port.direction = words[0] == QLatin1String("in")    ? PortDirection::Input
                             : words[0] == QLatin1String("out") ? PortDirection::Output
                                                                : PortDirection::Inout;
        ports.push_back(port);
    }
    return ports;
}

std::vector<bool> bitsOf(const QString &text)
{
    std::vector<bool> bits;
    for (const QChar letter : text)
        bits.push_back(letter == QLatin1Char('1'));
    return bits;
}

QString textOf(const std::vector<bool> &bits)
{
    QString text;
    for (const bool bit : bits)
        text += QLatin1Char(bit ? '1' : '0');
    return text;
}

PartRoot rootWith(const QString &ports)
{
    PartRoot root;
    root.unit = QStringLiteral("LEAF");
    root.ports = portsOf(ports);
    root.place = {QStringLiteral("a"), 7, 3};
    return root;
}

} // namespace

class TestBorder : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void namesAreThoseOfTheUnit();
    void topKeepsItsName();
    void unknownNamesAreErrors();
    void moduleTakesAnyName();
    void portsAreCompared_data();
    void portsAreCompared();
    void drivenBitsFitThePort_data();
    void drivenBitsFitThePort();
    void connectedInoutsAreDriven();
    void unconnectedPortsAreNotDriven();
};

void TestBorder::namesAreThoseOfTheUnit()
{
    DeclaredUnit unit;
    unit.name = QStringLiteral("Leaf");
    unit.library = QStringLiteral("lib");
    unit.generics = QStringList{"Depth", "WIDTH"};
    unit.ports = {{QStringLiteral("Clk")}, {QStringLiteral("\\In\\")}};
    PartRoot root = rootWith(QStringLiteral("in CLK 1, in In 2"));
    root.generics.insert(QStringLiteral("width"), {GenericValue::Integer, QStringLiteral("3")});
    QStringList messages;
    const PartRoot result = inWordsOf(unit, root, &messages);
    QCOMPARE(messages, QStringList());
    QCOMPARE(result.unit, QStringLiteral("Leaf"));
    QCOMPARE(result.library, QStringLiteral("lib"));
    QCOMPARE(result.generics.keys(), QStringList{"WIDTH"});
    QCOMPARE(result.generics.first().text, QStringLiteral("3"));
    QVERIFY(result.ports == portsOf(QStringLiteral("in Clk 1, in \\In\\ 2")));
    QCOMPARE(result.place.line, 7);
}

void TestBorder::topKeepsItsName()
{
    DeclaredUnit unit;
    unit.name = QStringLiteral("Leaf");
    PartRoot root = rootWith(QString());
    root.isTop = true;
    QStringList messages;
    QCOMPARE(inWordsOf(unit, root, &messages).unit, QStringLiteral("LEAF"));
}

void TestBorder::unknownNamesAreErrors()
{
    DeclaredUnit unit;
    unit.language = Language::Vhdl;
    unit.name = QStringLiteral("leaf");
    unit.generics = QStringList{"a"};
    unit.ports = {{QStringLiteral("b")}};
    PartRoot root = rootWith(QStringLiteral("in b 1, in c 1"));
    root.generics.insert(QStringLiteral("d"), {});
    QStringList messages;
    inWordsOf(unit, root, &messages);
    QCOMPARE(messages,
             QStringList({"ERROR: a:7:3: \"leaf\" has no generic or parameter \"d\". Correct the "
                          "name in the instance or its component.",
                          "ERROR: a:7:3: \"leaf\" has no port \"c\". Correct the name in the "
                          "instance or its component."}));
}

/// The text of a module does not tell all before it is elaborated.
void TestBorder::moduleTakesAnyName()
{
    PartRoot root = rootWith(QStringLiteral("in b 1"));
    root.generics.insert(QStringLiteral("d"), {});
    QStringList messages;
    const PartRoot result = inWordsOf(DeclaredUnit(), root, &messages);
    QCOMPARE(messages, QStringList());
    QVERIFY(result.ports == root.ports);
    QCOMPARE(result.generics.keys(), QStringList{"d"});
}

void TestBorder::portsAreCompared_data()
{
    QTest::addColumn<QString>("connected");
    QTest::addColumn<QString>("ports");
    QTest::addColumn<QString>("inVhdl");    // The message, without its beginning.
    QTest::addColumn<QString>("inVerilog"); // The same.
    const auto row = [](const char *name, const char *connected, const char *ports,
                        const char *inVhdl, const char *inVerilog) {
        QTest::newRow(name) << QString::fromLatin1(connected) << QString::fromLatin1(ports)
                            << QString::fromLatin1(inVhdl) << QString::fromLatin1(inVerilog);
    };
    row("same", "in a 4, out B 1", "in A 4, out b 1", "", "");
    row("less than all", "in a 4", "in a 4, in b 1", "", "");
    row("unknown direction", "any a 4", "inout a 4", "", "");
    row("unknown width", "in a 0", "in a 4", "", "");
    row("width", "in a 8", "in A 4",
        "ERROR: a:7:3: The port \"A\" of \"leaf\" has 4 bits, but 8 in its component. Give both "
        "the same width.",
        "WARNING: a:7:3: The port \"A\" of \"leaf\" has 4 bits, but 8 are connected.");
    const char *const direction = "ERROR: a:7:3: The port \"a\" of \"leaf\" is an output, but an "
                                  "input in its component. Give both the same direction.";
    row("direction", "in a 1", "out a 1", direction, direction);
    const char *const name = "ERROR: a:7:3: \"leaf\" has no port \"b\". Correct the name in the "
                             "instance or its component.";
    row("name", "in b 1", "in a 1", name, name);
}

void TestBorder::portsAreCompared()
{
    QFETCH(QString, connected);
    QFETCH(QString, ports);
    const BorderPorts border(QStringLiteral("leaf"), portsOf(ports));
    const PartRoot root = rootWith(connected);
    QTEST(border.messages(root, Language::Vhdl).join(QLatin1Char('\n')), "inVhdl");
    QTEST(border.messages(root, Language::Verilog).join(QLatin1Char('\n')), "inVerilog");
}

void TestBorder::drivenBitsFitThePort_data()
{
    QTest::addColumn<QString>("connected");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("inside"); // Of a port of 4 bits.
    QTest::newRow("same width") << "0110" << 0 << 1 << "0110";
    QTest::newRow("one for all") << "1" << 0 << 1 << "1111";
    QTest::newRow("too wide") << "011010" << 0 << 1 << "1010";
    QTest::newRow("too narrow") << "00" << 0 << 1 << "1100";
    QTest::newRow("first of an array") << "11000110" << 0 << 2 << "1100";
    QTest::newRow("last of an array") << "11000110" << 1 << 2 << "0110";
    QTest::newRow("one for each element") << "0011" << 1 << 2 << "0011";
}

void TestBorder::drivenBitsFitThePort()
{
    QFETCH(QString, connected);
    QFETCH(int, position);
    QFETCH(int, count);
    const BorderPorts border(QStringLiteral("leaf"), portsOf(QStringLiteral("in x 1, in Data 4")));
    BorderInstance instance;
    instance.driven.insert(QStringLiteral("data"), bitsOf(connected));
    instance.position = position;
    instance.count = count;
    const DrivenPorts inside = border.driven(instance);
    QCOMPARE(inside.keys(), QStringList{"Data"});
    QTEST(textOf(inside.first()), "inside");
}

void TestBorder::connectedInoutsAreDriven()
{
    const BorderPorts border(QStringLiteral("leaf"),
                             portsOf(QStringLiteral("inout a 2, inout b 2")));
    BorderInstance instance;
    instance.driven.insert(QStringLiteral("a"), bitsOf(QStringLiteral("00")));
    QCOMPARE(textOf(border.driven(instance).value(QStringLiteral("a"))), QStringLiteral("11"));
    QVERIFY(!border.driven(instance).contains(QStringLiteral("b")));
}

void TestBorder::unconnectedPortsAreNotDriven()
{
    const BorderPorts border(QStringLiteral("leaf"), portsOf(QStringLiteral("in a 2, in b 1")));
    BorderInstance instance;
    instance.driven.insert(QStringLiteral("a"), {});
    instance.driven.insert(QStringLiteral("none"), {true});
    QVERIFY(border.driven(instance).isEmpty());
}

QTEST_GUILESS_MAIN(TestBorder)
#include "tst_border.moc"
