// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designxml.h"

#include <support/files.h>
#include <support/testcase.h>

#include <QTemporaryDir>
#include <QTest>

using namespace NETWEIR::Internal;
using TarnTest::DesignXml;

class TestDefinitionReader : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void variablesAreRead_data();
    void variablesAreRead();
    void genvarsAreNoNets_data();
    void genvarsAreNoNets();
    void variablesOfVerilogAreKnown_data();
    void variablesOfVerilogAreKnown();
    void writesAreFound_data();
    void writesAreFound();
    void computedIndexesAreFound_data();
    void computedIndexesAreFound();
    void suppliesAreFound_data();
    void suppliesAreFound();
    void callsAndRoutinesAreFound();
    void namesBelongToScopes_data();
    void namesBelongToScopes();
    void prefixesJoinTheScopes();
    void instancesAreRead_data();
    void instancesAreRead();
    void interfaceReferencesNameTheInstance();
    void modportsListTheirOutputs();
    void pinsHaveTheirPorts_data();
    void pinsHaveTheirPorts();
    void rolesFollowTheOptions_data();
    void rolesFollowTheOptions();
    void optionsTieNets();
};

namespace {

QString toText(std::string_view text)
{
    return QString::fromStdString(std::string(text));
}

/// "name" for nets, "(name)" for other variables; with '<', '>', '=' or '&' for input, output,
/// inout and ref, '!' driven by a constant, '#' an interface port.
QString variableText(const Variable &variable)
{
    static const char Directions[] = {' ', '<', '>', '=', '&'};
    QString text = variable.isNet ? variable.name : '(' + variable.name + ')';
    if (variable.direction != Direction::None)
        text += QLatin1Char(Directions[int(variable.direction)]);
    text += QLatin1String(variable.isDrivenByConstant ? "!" : "");
    text += QLatin1String(variable.isInterfacePort ? "#" : "");
    return text;
}

/// The names of the references in @p occurrences, with the number of their scope when it is not 0.
QString occurrencesText(const std::vector<Occurrence> &occurrences)
{
    QStringList texts;
    for (const Occurrence &occurrence : occurrences) {
        forEachReference(occurrence, [&](const Reference &reference) {
            texts +=
                toText(reference.name()) +
                (occurrence.scope > 0 ? QStringLiteral("@%1").arg(occurrence.scope) : QString());
        });
    }
    return texts.join(QLatin1Char(' '));
}

} // namespace

void TestDefinitionReader::variablesAreRead_data()
{
    QTest::addColumn<QString>("members");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *members, const char *expected) {
        QTest::newRow(name) << QString::fromLatin1(members) << QString::fromLatin1(expected);
    };
    row("nets", "(var:bit name=v) (var:u8 name=w)", "v w");
    row("directions",
        "(var:bit name=a dir=input) (var:bit name=b dir=output) (var:bit name=c dir=inout) "
        "(var:bit name=d dir=ref) (var:bit name=e dir=\"const ref\") (var:bit name=f dir=other)",
        "a< b> c= d& e& f");
    row("the name as the user wrote it", "(var:bit name=x origName=a__02fb)", "a/b");
    row("a parameter", "(var:bit name=p param=true)", "(p)");
    row("a local parameter", "(var:bit name=p localparam=true)", "(p)");
    row("of a process", "(always (begin (var:bit name=v)))", "(v)");
    row("of an initial process", "(initial (begin (var:bit name=v)) (begin))", "(v)");
    row("of a routine", "(func:u8 name=f (var:u8 name=f dir=output) (var:u8 name=a dir=input))",
        "(f)> (a)<");
    row("of a generate scope", "(begin name=g (var:bit name=v))", "v");
    row("behind a process", "(always (begin (var:bit name=v))) (var:bit name=w)", "(v) w");
    row("behind a nested process",
        "(begin name=g (always (begin (var:bit name=v)))) (var:bit name=w)", "(v) w");
    row("made by the elaborator", "(var:bit name=x origName=__Vtemp1)", "(__Vtemp1)");
    row("with a name that was cut", "(var:bit name=x origName=abc__Vhsh1)", "abc__Vhsh1");
    row("of former cycles", "(var:bit name=x origName=_Vpast_0_0)", "(_Vpast_0_0)");
    row("a port whose entry is empty", "(var:bit name=x origName=__pinNumber2 pinIndex=2)",
        "(__pinNumber2)");
    row("a net called like one", "(var:bit name=x origName=__pinNumber2)", "__pinNumber2");
    row("with a constant", "(var:bit name=v 1)", "v!");
    row("an input with a default", "(var:bit name=v dir=input 1)", "v<");
    row("an input with a constant assigned",
        "(var:bit name=v dir=input 1) (initial loc=a (assign loc=a 1 v))", "v<!");
    row("an input assigned elsewhere",
        "(var:bit name=v dir=input 1) (initial loc=a (assign loc=b 1 v))", "v<");
    row("an input assigned without a location",
        "(var:bit name=v dir=input 1) (initial (assign 1 v))", "v<");
    row("an input assigned among others",
        "(var:bit name=v dir=input 1) (initial loc=a (assign loc=a 1 v) (assign loc=a 1 v))", "v<");
    row("an input assigned a variable",
        "(var:bit name=v dir=input 1) (initial loc=a (assign loc=a v v))", "v<");
    row("an input without a constant, assigned one",
        "(var:bit name=v dir=input) (initial loc=a (assign loc=a 1 v))", "v<");
    row("an output with a constant assigned",
        "(var:bit name=v dir=output) (initial loc=a (assign loc=a 1 v))", "v>");
    row("a constant assigned to something unknown", "(initial loc=a (assign loc=a 1 w))", "");
    row("an interface port", "(var:bit name=p vartype=ifaceref)", "(p)#");
    row("an interface of a process", "(always (begin (var:bit name=p vartype=ifaceref)))", "(p)");
    row("within a class", "(class (var:bit name=v))", "");
    row("within a type", "(typedef (var:bit name=v))", "");
    row("within a sequence", "(sequence (var:bit name=v))", "");
    row("within a property", "(property (var:bit name=v))", "");
    row("within a clocking block", "(clocking (var:bit name=v))", "");
}

void TestDefinitionReader::variablesAreRead()
{
    QFETCH(QString, members);
    const DesignXml design = DesignXml::ofModule(members);
    QStringList texts;
    for (const Variable &variable : design->top().variables)
        texts += variableText(variable);
    QTEST(texts.join(QLatin1Char(' ')), "expected");
}

void TestDefinitionReader::genvarsAreNoNets_data()
{
    QTest::addColumn<QString>("members");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *members, const char *expected) {
        QTest::newRow(name) << QString::fromLatin1(members) << QString::fromLatin1(expected);
    };
    row("a genvar", "(var:int name=i loc=a,1,8,1,9)", "(i)");
    row("an integer", "(var:int name=j loc=a,2,9,2,10)", "j");
    row("an integer of a list", "(var:int name=k loc=a,3,3,3,4)", "k");
    row("a genvar behind an integer", "(var:int name=l loc=a,4,8,4,9)", "(l)");
    row("nothing in the source, and not used", "(var:int name=i)", "(i)");
    row("nothing in the source, but used", "(var:int name=i) (always (assign 0 i))", "i");
    row("nothing in the source, used from elsewhere",
        "(var:int name=i) (always (assign 0 (varxref name=i dotted=top)))", "i");
    row("nothing in the source, but a port", "(var:int name=i dir=output)", "i>");
    row("another type", "(var:u32 name=i loc=a,1,8,1,9)", "i");
}

void TestDefinitionReader::genvarsAreNoNets()
{
    QFETCH(QString, members);
    QTemporaryDir folder;
    TarnTest::writeFile(folder.filePath(QStringLiteral("a.v")), "genvar i;\n"
                                                                "integer j,\n"
                                                                "  k;\n"
                                                                "genvar l;\n");
    const DesignXml design(QStringLiteral("(module name=top origName=top %1)").arg(members),
                           QStringLiteral("(basicdtype id=int name=integer left=31 right=0)"), {},
                           folder.path(), QStringLiteral("(file id=a filename=a.v)"));
    QTEST(variableText(design->top().variables.front()), "expected");
}

void TestDefinitionReader::variablesOfVerilogAreKnown_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<bool>("expected");
    const auto row = [](const char *source, bool expected) {
        QTest::newRow(source) << QString::fromLatin1(source) << expected;
    };
    row("reg name", true);
    row("reg signed [7:0] other = \"a;b\", // wire;\n  name", true);
    row("reg /* ; */ \\a;wire , name", true);
    row("(output reg other, name", true);
    row("integer name", true);
    row("time name", true);
    row("wire name", false);
    row("wire // reg\n  other, name", false);
    row("reg other; wire name", false);
    row("reg other; sub u(name", false);
    row("(output reg other, input name", false);
    row("(output reg other, output logic name", false);
    row("logic [REG-1:0] name", false);
    row("regs_t name", false);
    row("my$reg name", false);
    row("`reg name", false);
    row("name", false);
}

void TestDefinitionReader::variablesOfVerilogAreKnown()
{
    QFETCH(QString, source);
    QTemporaryDir folder;
    TarnTest::writeFile(folder.filePath(QStringLiteral("a.v")), source.toLatin1() + ";\n");
    const int line = source.count(QLatin1Char('\n')) + 1;
    const int column = source.size() - source.lastIndexOf(QLatin1Char('\n')) - 4;
    const DesignXml design(
        QStringLiteral("(module name=top origName=top (var:bit name=name loc=a,%1,%2,%1,%3))")
            .arg(line)
            .arg(column)
            .arg(column + 4),
        {}, {}, folder.path(), QStringLiteral("(file id=a filename=a.v)"));
    const bool isVariable =
        design->top().variables.front().processWrites == NETWEIR::ProcessWrites::Possible;
    QTEST(isVariable, "expected");
}

void TestDefinitionReader::writesAreFound_data()
{
    QTest::addColumn<QString>("members");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *members, const char *expected) {
        QTest::newRow(members) << QString::fromLatin1(members) << QString::fromLatin1(expected);
    };
    row("(contassign a v)", "v");
    row("(always (assign a v))", "v");
    row("(always (assigndly a v))", "v");
    row("(always (assignforce a v))", "v");
    row("(contassign a (concat v (sel w 0 1)))", "v w");
    row("(contassign (sampled a) v)", "");
    row("(contassign a)", "");
    row("(alias v w)", "v w");
    row("(pull v)", "v");
    row("(initial (fopen v a) (fopenmcd w a))", "v w");
    row("(initial (fgets v w) (fread x))", "v w x");
    row("(initial (fscanf v w) (sscanf x y))", "v w x y");
    row("(initial (sformat a v) (valueplusargs a w))", "v w");
    row("(always (assign (rand v) w))", "w v");
    row("(final (assign a v))", "v");
    row("(initialautomatic (assign a v))", "v");
    row("(initialstatic (assign a v))", "v");
    row("(initial (assign a v) (assign a w))", "v w");
    row("(initial loc=x (assign loc=x 1 v))", ""); // The variable holds the constant itself.
    row("(begin name=g (contassign a v))", "v@1");
    row("(always (begin (var:bit name=x) (assign a v)) (assign a w))", "v@1 w");
    row("(always (begin (assign a v)))", "v");
    row("(begin (contassign a v))", "v");
    row("(func:u8 name=f (assign a v))", "v@1");
    row("(task name=t (assign a v)) (contassign a w)", "v@1 w");
    row("(class (assign a v))", "");
    row("(modport name=m (assign a v))", "");
    row("(if a (begin (assign a v)) (begin (assign a w)))", "v w");
}

void TestDefinitionReader::writesAreFound()
{
    QFETCH(QString, members);
    const DesignXml design = DesignXml::ofModule(members);
    QTEST(occurrencesText(design->top().writes), "expected");
}

void TestDefinitionReader::computedIndexesAreFound_data()
{
    QTest::addColumn<QString>("members");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *members, const char *expected) {
        QTest::newRow(members) << QString::fromLatin1(members) << QString::fromLatin1(expected);
    };
    row("(contassign (arraysel v 1) w)", "");
    row("(contassign (arraysel v i) w)", "v");
    row("(contassign a (arraysel v i))", "v");
    row("(begin name=g (contassign a (arraysel v i)))", "v@1");
    row("(contassign a (arraysel (arraysel v 1) i))", "v");
    row("(contassign a (arraysel v (arraysel w i)))", "v w");
    row("(contassign a (sel v i 1))", "");
    row("(initial (readmem f v))", "v");
}

void TestDefinitionReader::computedIndexesAreFound()
{
    QFETCH(QString, members);
    const DesignXml design = DesignXml::ofModule(members);
    QStringList texts;
    for (const Occurrence &occurrence : design->top().computedIndexes) {
        pugi::xml_node base = occurrence.node;
        while (base.first_child())
            base = base.first_child();
        texts += QLatin1String(base.attribute("name").value()) +
                 (occurrence.scope > 0 ? QStringLiteral("@%1").arg(occurrence.scope) : QString());
    }
    QTEST(texts.join(QLatin1Char(' ')), "expected");
}

void TestDefinitionReader::suppliesAreFound_data()
{
    QTest::addColumn<QString>("members");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *members, const char *expected) {
        QTest::newRow(name) << QString::fromLatin1(members) << QString::fromLatin1(expected);
    };
    row("a supply",
        "(contassign loc=a (const name=1'h0 loc=a) (varref name=v loc=a) (strengthspec))", "v");
    row("without a strength", "(contassign loc=a (const name=1'h0 loc=a) (varref name=v loc=a))",
        "");
    row("a value from elsewhere",
        "(contassign loc=a (const name=1'h0 loc=b) (varref name=v loc=a) (strengthspec))", "");
    row("a target from elsewhere",
        "(contassign loc=a (const name=1'h0 loc=a) (varref name=v loc=b) (strengthspec))", "");
    row("without locations", "(contassign (const name=1'h0) (varref name=v) (strengthspec))", "");
}

void TestDefinitionReader::suppliesAreFound()
{
    QFETCH(QString, members);
    const DesignXml design = DesignXml::ofModule(members);
    QTEST(occurrencesText(design->top().supplies), "expected");
    QCOMPARE(occurrencesText(design->top().writes), QStringLiteral("v"));
}

void TestDefinitionReader::callsAndRoutinesAreFound()
{
    const DesignXml design = DesignXml::ofModule(QStringLiteral(
        "(task name=t) (func:u8 name=f (taskref name=t)) (always (funcref name=f))"));
    const Definition &top = design->top();
    QStringList found;
    for (const Definition::Routine &routine : top.routines)
        found += QString::fromUtf8(routine.name.data(), int(routine.name.size()));
    for (const Occurrence &call : top.calls)
        found += QStringLiteral("%1@%2").arg(call.node.attribute("name").value()).arg(call.scope);
    QCOMPARE(found.join(QLatin1Char(' ')), QStringLiteral("t f t@2 f@0"));
    QCOMPARE(int(top.find(0, "f").kind), int(Symbol::Kind::Routine));
    QCOMPARE(top.find(0, "f").index, 1);
}

void TestDefinitionReader::namesBelongToScopes_data()
{
    QTest::addColumn<int>("scope");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("index");
    const auto row = [](const char *title, int scope, const char *name, Symbol::Kind kind,
                        int index) {
        QTest::newRow(title) << scope << QByteArray(name) << int(kind) << index;
    };
    row("a variable", 0, "v", Symbol::Kind::Variable, 0);
    row("a variable of the module, from a scope", 1, "w", Symbol::Kind::Variable, 1);
    row("a variable that hides another", 1, "v", Symbol::Kind::Variable, 2);
    row("the same from an inner scope", 2, "v", Symbol::Kind::Variable, 2);
    row("a scope", 0, "g", Symbol::Kind::Scope, 1);
    row("an inner scope", 1, "h", Symbol::Kind::Scope, 2);
    row("an inner scope from outside", 0, "h", Symbol::Kind::None, -1);
    row("an instance", 2, "u", Symbol::Kind::Instance, 0);
    row("nothing", 2, "z", Symbol::Kind::None, -1);
    row("no scope", -1, "v", Symbol::Kind::None, -1);
    row("the first of two blocks of one name", 0, "k", Symbol::Kind::Scope, 3);
}

void TestDefinitionReader::namesBelongToScopes()
{
    QFETCH(int, scope);
    QFETCH(QByteArray, name);
    const DesignXml design = DesignXml::ofModule(QStringLiteral(
        "(var:bit name=v) (var:bit name=w) (instance name=u) "
        "(begin name=g (var:bit name=v) (begin name=h)) (begin name=k) (begin name=k)"));
    const Symbol symbol = design->top().find(scope, name.constData());
    QTEST(int(symbol.kind), "kind");
    QTEST(symbol.index, "index");
}

void TestDefinitionReader::prefixesJoinTheScopes()
{
    const DesignXml design =
        DesignXml::ofModule(QStringLiteral("(begin name=g origName=g__BRA__0__KET__ (begin name=h "
                                           "(always (begin (var:bit name=v)))))"));
    const Definition &top = design->top();
    QCOMPARE(top.prefixOf(0), QString());
    QCOMPARE(top.prefixOf(1), QStringLiteral("g[0]."));
    QCOMPARE(top.prefixOf(2), QStringLiteral("g[0].h."));
    QCOMPARE(top.prefixOf(3), QStringLiteral("g[0].h."));
}

void TestDefinitionReader::instancesAreRead_data()
{
    QTest::addColumn<QString>("members");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *members, const char *expected) {
        QTest::newRow(name) << QString::fromLatin1(members) << QString::fromLatin1(expected);
    };
    row("one", "(instance name=a defName=leaf)", "a:leaf 0+1");
    row("arrays", "(instance name=a defName=leaf (range 2 0)) (instance name=b defName=leaf)",
        "a:leaf 0+3, b:leaf 3+1");
    row("a module that the XML does not hold", "(instance name=a defName=gone)", "a:- -1+1");
    row("one that is no node", "(instance name=a defName=prim) (instance name=b defName=leaf)",
        "a:prim -1+1, b:leaf 0+1");
    row("an encoded name", "(instance name=x origName=a__02f defName=leaf)", "a/:leaf 0+1");
}

void TestDefinitionReader::instancesAreRead()
{
    QFETCH(QString, members);
    const DesignXml design(QStringLiteral("(module name=top origName=top %1) "
                                          "(module name=leaf origName=leaf) "
                                          "(primitive name=prim origName=prim)")
                               .arg(members));
    QStringList texts;
    for (const InstanceItem &item : design->top().instances) {
        texts +=
            QStringLiteral("%1:%2 %3+%4")
                .arg(item.name, item.definition ? item.definition->sourceName : QStringLiteral("-"))
                .arg(item.firstChild)
                .arg(item.count());
    }
    QTEST(texts.join(QStringLiteral(", ")), "expected");
}

void TestDefinitionReader::interfaceReferencesNameTheInstance()
{
    const DesignXml design(
        QStringLiteral("(module name=top origName=top (instance name=b defName=bus) "
                       "(var:bit name=b__Viftop origName=b__Viftop vartype=ifaceref) "
                       "(var:bit name=c__Viftop origName=c__Viftop vartype=ifaceref) "
                       "(var:bit name=d__Viftop origName=d__Viftop)) "
                       "(iface name=bus origName=bus)"));
    const Definition &top = design->top();
    QCOMPARE(int(top.find(0, "b__Viftop").kind), int(Symbol::Kind::Instance));
    QCOMPARE(int(top.find(0, "c__Viftop").kind), int(Symbol::Kind::None));
    QCOMPARE(int(top.variables.size()), 1); // One without the type of an interface.
}

void TestDefinitionReader::modportsListTheirOutputs()
{
    const DesignXml design = DesignXml::ofModule(
        QStringLiteral("(modport name=m (modportvarref name=a direction=out) "
                       "(modportvarref name=b direction=in) (other name=d direction=out) "
                       "(modportvarref name=c direction=out)) (modport name=n)"));
    const auto &outputs = design->top().modportOutputs;
    QCOMPARE(int(outputs.size()), 2);
    QCOMPARE(outputs.at("m"), (std::vector<std::string_view>{"a", "c"}));
    QVERIFY(outputs.at("n").empty());
}

void TestDefinitionReader::pinsHaveTheirPorts_data()
{
    QTest::addColumn<QByteArray>("pin");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *pin, const char *expected) {
        QTest::newRow(pin) << QByteArray(pin) << QString::fromLatin1(expected);
    };
    row("b", "b");
    row("g", "none"); // A scope.
    row("z", "none");
    row("__pinNumber0", "none");
    row("__pinNumber1", "a");
    row("__pinNumber2", "i");
    row("__pinNumber3", "b");
    row("__pinNumber4", "j");
    row("__pinNumber5", "none");
    row("__pinNumber", "none");
}

/// The interface ports i and j have no number: they take the second and fourth position.
void TestDefinitionReader::pinsHaveTheirPorts()
{
    QFETCH(QByteArray, pin);
    const DesignXml design = DesignXml::ofModule(
        QStringLiteral("(var:bit name=b pinIndex=3) (var:bit name=i vartype=ifaceref) "
                       "(var:bit name=a pinIndex=1) (var:bit name=j vartype=ifaceref) "
                       "(var:bit name=n) (var:bit name=o pinIndex=1000000) (begin name=g)"));
    const int port = design->top().portOfPin(pin.constData());
    const QString found =
        port < 0 ? QStringLiteral("none") : design->top().variables[std::size_t(port)].name;
    QTEST(found, "expected");
}

void TestDefinitionReader::rolesFollowTheOptions_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("role");
    QTest::addColumn<bool>("isNode");
    QTest::newRow("a module") << "plain" << int(Definition::Role::Module) << true;
    QTest::newRow("an interface") << "bus" << int(Definition::Role::Interface) << true;
    QTest::newRow("a user's primitive") << "udp" << int(Definition::Role::Primitive) << false;
    QTest::newRow("a device's primitive") << "device" << int(Definition::Role::Primitive) << false;
    QTest::newRow("an unknown module") << "gone" << int(Definition::Role::Stub) << false;
    QTest::newRow("unknown, and a primitive") << "both" << int(Definition::Role::Stub) << false;
}

void TestDefinitionReader::rolesFollowTheOptions()
{
    QFETCH(QString, name);
    ReadOptions options;
    options.unknownModules = {QStringLiteral("gone"), QStringLiteral("both")};
    options.primitiveModules = {QStringLiteral("device"), QStringLiteral("both")};
    const DesignXml design(
        QStringLiteral("(module name=top origName=top (instance name=u defName=%1)) "
                       "(module name=plain origName=plain) "
                       "(iface name=bus origName=bus) "
                       "(primitive name=udp origName=udp) "
                       "(module name=device origName=device) "
                       "(module name=gone origName=gone) "
                       "(module name=both origName=both)")
            .arg(name),
        {}, options);
    const Definition *definition = design->top().instances.front().definition;
    QVERIFY(definition);
    QTEST(int(definition->role), "role");
    QTEST(definition->isNode(), "isNode");
}

void TestDefinitionReader::optionsTieNets()
{
    ReadOptions options;
    options.tiedNets[QStringLiteral("top")] = {QStringLiteral("v")};
    options.omittedWrites[QStringLiteral("top")] = {{QStringLiteral("w"), QString(), -1, -1}};
    const DesignXml design(
        QStringLiteral("(module name=top origName=top (var:bit name=v) (var:bit name=w))"), {},
        options);
    const Definition &top = design->top();
    QVERIFY(top.variables[0].isTied);
    QVERIFY(!top.variables[1].isTied);
    QCOMPARE(top.omittedWrites.size(), 1);
}

QTEST_APPLESS_MAIN(TestDefinitionReader)
#include "tst_definitionreader.moc"
