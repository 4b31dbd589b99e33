// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "elaboration.h"
#include "netlisttext.h"

#include <netweir/rtlnet.h>

#include <support/testcase.h>

#include <QElapsedTimer>
#include <QTest>
#include <QThread>

#include <pugixml.hpp>

#include <algorithm>
#include <atomic>
#include <memory>
#include <random>
#include <sstream>
#include <vector>

#include <malloc.h>

using namespace NETWEIR;

/// How the reader of elaborated designs copes with damaged, deep and large files.
class TestVerilogPart : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void refusesWhatIsNoElaboratedDesign_data();
    void refusesWhatIsNoElaboratedDesign();
    void refusesAMissingFile();
    void refusesEveryTruncation();
    void definitionsMayComeInAnyOrder();
    void routinesCountWhereverTheyAre();
    void deepNestingNeedsNoStack_data();
    void deepNestingNeedsNoStack();
    void longConcatenationsNeedNoStack();
    void damagedFilesNeverCrash();
    void runsAreReadLikeTheWhole_data();
    void runsAreReadLikeTheWhole();
    void largeDefinitionsTakeLittleMemory();
    void endsWhenCancelled();
    void deepScopesTakeLittleMemory();
    void namesOfDeepHierarchiesAreRead();
    void endsAtTheLimitOfMemory_data();
    void endsAtTheLimitOfMemory();
    void refusesALargeFile();
    void endsInAnyWork_data();
    void endsInAnyWork();
    void largeArraysOfInstancesTakeLinearTime();

private:
    std::unique_ptr<RtlNetlist> read(const QByteArray &xml, QString *error,
                                     const Internal::ReadLimits &limits = {});
    QString textOfRuns(const QByteArray &xml, qint64 runSize);

    QTemporaryDir m_folder;
};

namespace {

constexpr qint64 Megabyte = 1024 * 1024;

/// A design with some of everything that the reader looks at.
const char VariedDesign[] = R"(
package pk; typedef struct packed {logic v; logic [2:0] d;} s_t; task automatic t(output logic o);
  o = 1; endtask endpackage
interface bus_if(input c); logic v; logic [1:0] m[4]; modport m_o(output v, input c, output m); endinterface
module leaf #(parameter W = 2)(input [W-1:0] i, output [W-1:0] o, inout io, bus_if.m_o p);
  assign o = ~i; assign top.up = i[0]; always_ff @(posedge p.c) p.m[i[1:0]] <= 0; endmodule
module top(input c, input [3:0] a, inout pad);
  import pk::*;
  wire up; wire [7:0] o; s_t [1:0] s; logic [3:0] mem[8]; logic q; integer k; supply0 g0; string t0;
  union packed {logic [3:0] x; s_t y;} un; logic [7:0] bits; bus_if one(c); bus_if many[1:0](c);
  leaf u0(a[1:0], o[1:0], pad, one); leaf #(4) u1(a, {o[7:6], o[3:2]}, pad, many[1]);
  leaf arr[1:0](.i({a[3:1], up}), .o(), .io(pad), .p(many));
  for (genvar i = 0; i < 2; i++) begin : g wire w; assign w = 1'b1; wire [1:0] v; end
  always_ff @(posedge c) begin mem[a] <= 0; for (k = 0; k < 4; k = k + 1) bits[k * 2] <= c; end
  always_comb t(q); assign s[1].d[0] = g[1].v[0]; assign g[0].v = a[1:0]; initial un.x = 3;
endmodule)";

QByteArray nested(const QByteArray &tag, int depth, const QByteArray &inner)
{
    QByteArray text;
    for (int i = 0; i < depth; ++i)
        text += '<' + tag + '>';
    text += inner;
    for (int i = 0; i < depth; ++i)
        text += "</" + tag + '>';
    return text;
}

QByteArray design(const QByteArray &members, const QByteArray &types = QByteArray())
{
    return "<verilator_xml><netlist><module name=\"top\" origName=\"top\" topModule=\"1\">"
           "<var name=\"n\" origName=\"n\" dtype_id=\"1\" vartype=\"logic\"/>" +
           members + "</module><typetable><basicdtype id=\"1\" name=\"logic\"/>" + types +
           "</typetable></netlist></verilator_xml>";
}

/// A design in which each module but the last holds one instance of the next, or @p instances.
QByteArray chain(int depth, int instances = 1)
{
    const QByteArray names("uvwxyz");
    QByteArray modules;
    for (int i = 0; i < depth; ++i) {
        const QByteArray name = "m" + QByteArray::number(i);
        const QByteArray next = "m" + QByteArray::number(i + 1);
        modules += "<module name=\"" + name + "\" origName=\"" + name +
                   (i == 0 ? "\" topModule=\"1\">" : "\">") +
                   "<var name=\"v\" origName=\"v\" dtype_id=\"1\"/>";
        for (int j = 0; j < instances && i + 1 < depth; ++j)
            modules += "<instance name=\"" + names.mid(j, 1) + "\" origName=\"" + names.mid(j, 1) +
                       "\" defName=\"" + next + "\"/>";
        modules += "</module>";
    }
    return "<verilator_xml><netlist>" + modules +
           "<typetable><basicdtype id=\"1\" name=\"logic\"/></typetable></netlist>"
           "</verilator_xml>";
}

/// Puts the text of the attribute behind @p other into the one behind @p from. The tags stay as
/// they are, so that the damage gets past the parser.
void replaceText(QByteArray *xml, int from, int other)
{
    const int quote = xml->indexOf('"', from);
    const int otherQuote = xml->indexOf('"', other);
    if (quote < 0 || otherQuote < 0)
        return;
    const int end = xml->indexOf('"', quote + 1);
    const int otherEnd = xml->indexOf('"', otherQuote + 1);
    if (end > 0 && otherEnd > 0)
        xml->replace(quote, end - quote, xml->mid(otherQuote, otherEnd - otherQuote));
}

/// Replaces the value of the attribute behind @p from.
void replaceValue(QByteArray *xml, int from, const QByteArray &value)
{
    const int quote = xml->indexOf("=\"", from);
    const int end = quote < 0 ? -1 : xml->indexOf('"', quote + 2);
    if (end > 0)
        xml->replace(quote + 2, end - quote - 2, value);
}

/// One random damage: bytes changed, a piece lost, doubled or moved, or a number replaced.
QByteArray damaged(QByteArray xml, std::mt19937 *random)
{
    const auto below = [random](int limit) {
        return int((*random)() % std::mt19937::result_type(qMax(1, limit)));
    };
    const int from = below(xml.size());
    const int length = below(qMin(300, xml.size() - from));
    switch (below(8)) {
    case 0:
        for (int i = 0; i < 3; ++i)
            xml[below(xml.size())] = char(below(256));
        break;
    case 1:
        xml.remove(from, length);
        break;
    case 2:
        xml.insert(from, xml.mid(below(xml.size()), length));
        break;
    case 3:
    case 4:
        replaceText(&xml, from, below(xml.size()));
        break;
    default: {
        static const QByteArray numbers[] = {
            "0",  "1",          "-1",          "32'hffffffff",        "99999999999",
            "'h", "2147483647", "-2147483648", "64'h7fffffffffffffff"};
        replaceValue(&xml, from, numbers[below(9)]);
        break;
    }
    }
    return xml;
}

} // namespace

std::unique_ptr<RtlNetlist> TestVerilogPart::read(const QByteArray &xml, QString *error,
                                                  const Internal::ReadLimits &limits)
{
    const QString path = m_folder.filePath(QStringLiteral("design.xml"));
    TarnTest::writeFile(path, xml);
    return TarnTest::readNetlist(path, {}, error, limits);
}

/// The netlist as text, or the error, when larger definitions are read run by run.
QString TestVerilogPart::textOfRuns(const QByteArray &xml, qint64 runSize)
{
    const QString path = m_folder.filePath(QStringLiteral("design.xml"));
    TarnTest::writeFile(path, xml);
    Internal::ReadOptions options;
    options.runSize = runSize;
    QString error;
    const auto netlist = TarnTest::readNetlist(path, options, &error);
    return netlist ? TarnTest::netlistText(netlist->top()) : error;
}

void TestVerilogPart::refusesWhatIsNoElaboratedDesign_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("reason");

    const QString noXml = QStringLiteral("cannot be read");
    const QString noNetlist = QStringLiteral("The elaborated design contains no netlist.");
    const QString noTop = QStringLiteral("The elaborated design contains no top module.");
    const QString tooLarge = QStringLiteral("The design is too large to be read.");
    QTest::newRow("empty") << QByteArray() << noXml;
    QTest::newRow("text") << QByteArray("module top; endmodule") << noXml;
    QTest::newRow("binary") << QByteArray("\0\x01\xff", 3) << noXml;
    QTest::newRow("open tag") << QByteArray("<verilator_xml><netlist>") << noXml;
    QTest::newRow("other root") << QByteArray("<html><body/></html>") << noNetlist;
    QTest::newRow("no types") << QByteArray("<verilator_xml><netlist/></verilator_xml>")
                              << noNetlist;
    QTest::newRow("no top")
        << QByteArray("<verilator_xml><netlist><module name=\"a\" origName=\"a\"/><typetable/>"
                      "</netlist></verilator_xml>")
        << noTop;
    QTest::newRow("module within itself")
        << design("<instance name=\"u\" origName=\"u\" defName=\"top\"/>")
        << QStringLiteral("Module \"top\" contains itself.");
    QTest::newRow("endless vector")
        << design("<var name=\"v\" origName=\"v\" dtype_id=\"2\" vartype=\"logic\"/>",
                  "<basicdtype id=\"2\" name=\"logic\" left=\"2000000000\" right=\"0\"/>")
        << tooLarge;
    QTest::newRow("endless array of instances")
        << design("</module><module name=\"b\" origName=\"b\"/><module name=\"c\" origName=\"c\">"
                  "<instance name=\"u\" origName=\"u\" defName=\"b\"/></module>"
                  "<module name=\"d\" origName=\"d\">")
               .replace("<var name=\"n\"",
                        "<instance name=\"u\" origName=\"u\" defName=\"b\"><range>"
                        "<const name=\"32'h7fffffff\"/><const name=\"32'h0\"/></range>"
                        "</instance><var name=\"n\"")
        << tooLarge;
}

void TestVerilogPart::refusesWhatIsNoElaboratedDesign()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, reason);
    QString error;
    QVERIFY(!read(xml, &error));
    QVERIFY2(error.contains(reason), qPrintable(error));
}

void TestVerilogPart::refusesAMissingFile()
{
    QString error;
    const QString path = m_folder.filePath(QStringLiteral("none.xml"));
    QVERIFY(!TarnTest::readNetlist(path, {}, &error));
    QVERIFY2(error.contains(path), qPrintable(error));
}

void TestVerilogPart::refusesEveryTruncation()
{
    const TarnTest::Elaboration elaboration(VariedDesign);
    QVERIFY2(elaboration.isOk(), elaboration.log().constData());
    const QByteArray xml = TarnTest::readFile(elaboration.xmlPath()).trimmed();
    QString error;
    QVERIFY2(read(xml, &error), qPrintable(error));
    for (int size = 0; size < xml.size(); size += 97) {
        error.clear();
        QVERIFY2(!read(xml.left(size), &error), qPrintable(QString::number(size)));
        QVERIFY(!error.isEmpty());
    }
    QVERIFY(!read(xml.left(xml.size() - 1), &error));
}

/// The elaborator writes a definition before those that it instantiates.
void TestVerilogPart::definitionsMayComeInAnyOrder()
{
    const TarnTest::Elaboration elaboration(VariedDesign);
    QVERIFY2(elaboration.isOk(), elaboration.log().constData());
    QString error;
    const auto expected = elaboration.read({}, &error);
    QVERIFY2(expected, qPrintable(error));
    std::mt19937 random(1);
    for (int round = 0; round < 10; ++round) {
        pugi::xml_document document;
        QVERIFY(document.load_file(qPrintable(elaboration.xmlPath())));
        pugi::xml_node netlist = document.child("verilator_xml").child("netlist");
        std::vector<pugi::xml_node> elements(netlist.begin(), netlist.end());
        std::shuffle(elements.begin(), elements.end(), random);
        for (const pugi::xml_node &element : elements)
            netlist.append_move(element);
        std::ostringstream text;
        document.save(text);
        const auto netlistRead = read(QByteArray::fromStdString(text.str()), &error);
        QVERIFY2(netlistRead, qPrintable(error));
        QCOMPARE(TarnTest::netlistText(netlistRead->top()), TarnTest::netlistText(expected->top()));
    }
}

/// The call in "leaf" is only known by name. "top" is read after it.
void TestVerilogPart::routinesCountWhereverTheyAre()
{
    QCOMPARE(TarnTest::netlistTextOf(
                 "package pk; task automatic t(output logic o, input logic i); o = i; endtask\n"
                 "endpackage module leaf(); logic x, y, z; always_comb pk::t(x, y); endmodule\n"
                 "module top(); leaf u(); logic v, w; always_comb t(v, w);\n"
                 "task automatic t(input logic i, output logic o); o = i; endtask endmodule"),
             QStringLiteral("top : top\n    v .\n    w O\n    u : leaf\n        x O\n        y O\n"
                            "        z .\n"));
}

void TestVerilogPart::deepNestingNeedsNoStack_data()
{
    QTest::addColumn<QByteArray>("xml");
    constexpr int Depth = 200000;
    const QByteArray reference = "<varref name=\"n\" dtype_id=\"1\"/>";
    const QByteArray constant = "<const name=\"1'h0\" dtype_id=\"1\"/>";
    QTest::newRow("blocks") << design(nested("begin", Depth, QByteArray()));
    QTest::newRow("statements") << design("<always>" + nested("if", Depth, QByteArray()) +
                                          "</always>");
    QTest::newRow("left sides") << design("<contassign>" + constant +
                                          nested("concat", Depth, reference) + "</contassign>");
    QTest::newRow("selections") << design("<contassign>" + constant +
                                          nested("sel", Depth, reference) + "</contassign>");
    QTest::newRow("indexes") << design("<contassign>" + constant + "<sel>" + reference +
                                       nested("add", Depth, reference) + constant +
                                       "</sel></contassign>");
    QTest::newRow("loops") << design("<always>" +
                                     nested("while", Depth / 10,
                                            "<assign>" + constant + "<sel>" + reference +
                                                reference + constant + "</sel></assign>") +
                                     "</always>");
    QByteArray types;
    for (int i = 2; i < 20000; ++i) {
        types += "<structdtype id=\"" + QByteArray::number(i) + "\"><memberdtype id=\"m" +
                 QByteArray::number(i) + "\" name=\"m\" sub_dtype_id=\"" +
                 QByteArray::number(i - 1) + "\"/></structdtype>";
    }
    QTest::newRow("types") << design("<var name=\"v\" origName=\"v\" dtype_id=\"19999\"/>", types);
    QByteArray modules;
    for (int i = 0; i < 3000; ++i) {
        modules += "<instance name=\"u\" origName=\"u\" defName=\"m" + QByteArray::number(i) +
                   "\"/></module><module name=\"m" + QByteArray::number(i) + "\" origName=\"m" +
                   QByteArray::number(i) + "\">";
    }
    QTest::newRow("instances") << design(modules);
}

void TestVerilogPart::deepNestingNeedsNoStack()
{
    QFETCH(QByteArray, xml);
    QString error;
    const auto netlist = read(xml, &error);
    QVERIFY2(netlist, qPrintable(error));
    QVERIFY(netlist->findNet(QStringLiteral("top/n")));
}

void TestVerilogPart::longConcatenationsNeedNoStack()
{
    // Concatenations come as a chain of pairs.
    QByteArray names("n0");
    QByteArray declared("wire n0");
    for (int i = 1; i < 2000; ++i) {
        names += ", n" + QByteArray::number(i);
        declared += ", n" + QByteArray::number(i);
    }
    const TarnTest::Elaboration elaboration(
        "module leaf(output [1999:0] o); endmodule\nmodule top; " + declared + "; leaf u({" +
        names + "}); endmodule");
    QVERIFY2(elaboration.isOk(), elaboration.log().constData());
    QString error;
    const auto netlist = elaboration.read({}, &error);
    QVERIFY2(netlist, qPrintable(error));
    QCOMPARE(netlist->top()->nets().size(), 2000);
    for (const RtlNet *net : netlist->top()->nets())
        QVERIFY(net->excludedForProbeOut());
}

/// The damages are the same in every run.
void TestVerilogPart::damagedFilesNeverCrash()
{
    const TarnTest::Elaboration elaboration(VariedDesign);
    QVERIFY2(elaboration.isOk(), elaboration.log().constData());
    const QByteArray xml = TarnTest::readFile(elaboration.xmlPath());
    std::mt19937 random(1);
    int readable = 0;
    for (int round = 0; round < 600; ++round) {
        QByteArray text = damaged(xml, &random);
        for (int more = round % 4; more > 0; --more)
            text = damaged(text, &random);
        QString error;
        const auto netlist = read(text, &error);
        if (netlist) {
            ++readable;
            TarnTest::netlistText(netlist->top());
        } else {
            QVERIFY(!error.isEmpty());
        }
    }
    // Enough of them got past the parser to test the code behind it.
    QVERIFY2(readable > 150, qPrintable(QString::number(readable)));
}

void TestVerilogPart::runsAreReadLikeTheWhole_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::newRow("with a supply") << QByteArray(VariedDesign);
    QTest::newRow("without one") << QByteArray(VariedDesign).replace("supply0 g0;", "");
}

/// A supply makes its definition one that has to be read as a whole.
void TestVerilogPart::runsAreReadLikeTheWhole()
{
    QFETCH(QByteArray, source);
    const TarnTest::Elaboration elaboration(source);
    QVERIFY2(elaboration.isOk(), elaboration.log().constData());
    const QByteArray xml = TarnTest::readFile(elaboration.xmlPath());
    std::mt19937 random(2);
    for (int round = 0; round < 150; ++round) {
        QByteArray text = xml;
        for (int damages = round % 4; damages > 0; --damages)
            text = damaged(text, &random);
        const QString whole = textOfRuns(text, text.size());
        for (const qint64 size : {1, 300, 2000})
            QCOMPARE(textOfRuns(text, size), whole);
    }
}

/// As a whole, the elements of the one definition would take 100 MB.
void TestVerilogPart::largeDefinitionsTakeLittleMemory()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("The sanitizer does not use freed memory again.");
#endif
    QByteArray members;
    for (int i = 0; i < 60000; ++i) {
        const QByteArray name = "cell_" + QByteArray::number(i);
        members +=
            "\n      <instance name=\"" + name + "\" origName=\"" + name + "\" defName=\"b\">";
        for (int port = 0; port < 6; ++port)
            members += "\n        <port name=\"i\" direction=\"in\" portIndex=\"1\">\n          "
                       "<varref name=\"n\" dtype_id=\"1\"/>\n        </port>";
        members += "\n      </instance>";
    }
    const QByteArray xml =
        design(members + "\n    </module>\n    <module name=\"b\" origName=\"b\">")
            .replace("<var ", "\n      <var ");
    Internal::ReadLimits limits;
    limits.memoryLimit = 60 * Megabyte;
    QString error;
    QVERIFY2(read(xml, &error, limits), qPrintable(error));
}

void TestVerilogPart::endsWhenCancelled()
{
    const TarnTest::Elaboration elaboration(VariedDesign);
    QVERIFY2(elaboration.isOk(), elaboration.log().constData());
    std::atomic<bool> cancelled{false};
    Internal::ReadLimits limits;
    limits.cancelled = &cancelled;
    QString error;
    QVERIFY(TarnTest::readNetlist(elaboration.xmlPath(), {}, &error, limits));
    QCOMPARE(error, QString());
    cancelled = true;
    QVERIFY(!TarnTest::readNetlist(elaboration.xmlPath(), {}, &error, limits));
    QCOMPARE(error, QStringLiteral("Reading was cancelled."));
}

/// The full names of all scopes would take 80 GB.
void TestVerilogPart::deepScopesTakeLittleMemory()
{
    QByteArray scopes;
    for (int i = 0; i < 200000; ++i)
        scopes += "<begin name=\"b\" origName=\"b\">";
    for (int i = 0; i < 200000; ++i)
        scopes += "</begin>";
    Internal::ReadLimits limits;
    limits.memoryLimit = 1000 * Megabyte;
    QString error;
    const auto netlist = read(design(scopes), &error, limits);
    QVERIFY2(netlist, qPrintable(error));
    QVERIFY(netlist->findNet(QStringLiteral("top/n")));
}

/// The full names of all nets would take 800 MB.
void TestVerilogPart::namesOfDeepHierarchiesAreRead()
{
    constexpr int Depth = 20000;
    Internal::ReadLimits limits;
    limits.memoryLimit = 100 * Megabyte;
    QString error;
    const auto netlist = read(chain(Depth), &error, limits);
    QVERIFY2(netlist, qPrintable(error));
    QString path = QStringLiteral("m0/");
    for (int i = 1; i < Depth; ++i)
        path += QStringLiteral("u/");
    QVERIFY(netlist->findNet(path + QLatin1Char('v')));
}

void TestVerilogPart::endsAtTheLimitOfMemory_data()
{
    QTest::addColumn<QByteArray>("xml");
#ifndef __SANITIZE_ADDRESS__ // The sanitizer does not use freed memory again.
    QTest::newRow("many elements") << design(nested("x", 2000000, QByteArray()));
#endif
    QTest::newRow("many instances") << chain(25, 2);
    QTest::newRow("wide bus") << design("<var name=\"w\" origName=\"w\" dtype_id=\"2\"/>",
                                        "<basicdtype id=\"2\" name=\"logic\" left=\"9999999\" "
                                        "right=\"0\"/>");
}

void TestVerilogPart::endsAtTheLimitOfMemory()
{
    QFETCH(QByteArray, xml);
    Internal::ReadLimits limits;
    limits.memoryLimit = 100 * Megabyte;
    ::malloc_trim(0); // Memory that earlier tests freed would be used first.
    QString error;
    QVERIFY(!read(xml, &error, limits));
    QCOMPARE(error, QStringLiteral("Reading needs more than 100 MB of memory and was stopped."));
}

void TestVerilogPart::refusesALargeFile()
{
    QFile file(m_folder.filePath(QStringLiteral("large.xml")));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(100 * Megabyte + 1));
    Internal::ReadLimits limits;
    limits.memoryLimit = 100 * Megabyte;
    QString error;
    QVERIFY(!TarnTest::readNetlist(file.fileName(), {}, &error, limits));
    QVERIFY2(error.endsWith(QLatin1String("cannot be read: it is larger than 100 MB.")),
             qPrintable(error));
}

void TestVerilogPart::endsInAnyWork_data()
{
    QTest::addColumn<QByteArray>("xml");
    const QByteArray variable("<varref name=\"n\" dtype_id=\"1\"/>");
    QTest::newRow("writes within writes") << design(nested("alias", 300000, variable));
    QTest::newRow("concatenation of one")
        << design("<instance name=\"u\" defName=\"sub\" origName=\"u\"><port name=\"p\">" +
                  nested("concat", 100, variable) + "</port></instance>")
               .replace("<typetable>",
                        "<module name=\"sub\" origName=\"sub\"><var name=\"p\" origName=\"p\" "
                        "dtype_id=\"1\" dir=\"input\" pinIndex=\"1\"/></module><typetable>");
    QByteArray types("<unpackarraydtype id=\"t0\" sub_dtype_id=\"1\"><range><const name=\"32'h0\"/>"
                     "<const name=\"32'h0\"/></range></unpackarraydtype>");
    for (int i = 1; i < 60; ++i) {
        const QByteArray inner = "t" + QByteArray::number(i - 1);
        types += "<uniondtype id=\"t" + QByteArray::number(i) + "\"><memberdtype id=\"a" +
                 QByteArray::number(i) + "\" name=\"a\" sub_dtype_id=\"" + inner +
                 "\"/><memberdtype id=\"b" + QByteArray::number(i) +
                 "\" name=\"b\" sub_dtype_id=\"" + inner + "\"/></uniondtype>";
    }
    QTest::newRow("types that double")
        << design("<var name=\"w\" origName=\"w\" dtype_id=\"t59\"/>", types);
}

/// Reading a file that would take hours ends in time, by itself and when cancelled.
void TestVerilogPart::endsInAnyWork()
{
    QFETCH(QByteArray, xml);
    Internal::ReadLimits limits;
    limits.timeoutSeconds = 1;
    QString error;
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!read(xml, &error, limits));
    QCOMPARE(error, QStringLiteral("Reading took longer than 1 seconds and was stopped. Raise the "
                                   "timeout in the project's options."));
    QVERIFY2(timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));

    std::atomic<bool> cancelled{false};
    limits.timeoutSeconds = 1000;
    limits.cancelled = &cancelled;
    QElapsedTimer sinceCancel;
    const std::unique_ptr<QThread> canceller(QThread::create([&] {
        QThread::msleep(200);
        sinceCancel.start();
        cancelled = true;
    }));
    canceller->start();
    QVERIFY(!read(xml, &error, limits));
    canceller->wait();
    QCOMPARE(error, QStringLiteral("Reading was cancelled."));
    QVERIFY2(sinceCancel.elapsed() < 1000, qPrintable(QString::number(sinceCancel.elapsed())));
}

/// With the square of the elements, it would take minutes.
void TestVerilogPart::largeArraysOfInstancesTakeLinearTime()
{
    constexpr int Count = 100000;
    QByteArray parts;
    for (int i = 1; i < Count; ++i)
        parts += "<concat dtype_id=\"1\"><varref name=\"n\" dtype_id=\"1\"/>";
    parts += "<varref name=\"m\" dtype_id=\"1\"/>" + QByteArray("</concat>").repeated(Count - 1);
    const QByteArray members =
        "<var name=\"m\" origName=\"m\" dtype_id=\"1\"/><contassign><const name=\"1'h0\"/>"
        "<varref name=\"m\" dtype_id=\"1\"/></contassign>"
        "<instance name=\"u\" defName=\"sub\" origName=\"u\"><range><const name=\"32'h" +
        QByteArray::number(Count - 1, 16) + "\"/><const name=\"32'h0\"/></range><port name=\"p\">" +
        parts + "</port></instance>";
    const QByteArray inner("<module name=\"sub\" origName=\"sub\"><var name=\"p\" origName=\"p\" "
                           "dtype_id=\"1\" dir=\"input\" pinIndex=\"1\"/></module><typetable>");
    Internal::ReadLimits limits;
    limits.timeoutSeconds = 10;
    QString error;
    const auto netlist = read(design(members).replace("<typetable>", inner), &error, limits);
    QVERIFY2(netlist, qPrintable(error));
    const RtlNet *first = netlist->findNet(QStringLiteral("top/u[0]/p"));
    const RtlNet *last = netlist->findNet(QStringLiteral("top/u[99999]/p"));
    QVERIFY(first && last);
    QVERIFY(first->excludedForProbeOut());
    QVERIFY(!last->excludedForProbeOut());
}

QTEST_APPLESS_MAIN(TestVerilogPart)
#include "tst_verilogpart.moc"
