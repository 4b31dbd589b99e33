// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/vhdl/vhdlscan.h>

#include <support/testcase.h>

#include <QApplication>
#include <QtTest>

#include <string_view>

using namespace NETWEIR::Internal;

namespace {

QByteArray part(const QByteArray &text, const TextRange &range)
{
    return text.mid(range.begin, range.end - range.begin);
}

QByteArray itemsText(const QByteArray &text, const QVector<VhdlInterfaceItem> &items)
{
    static const char *const modes[] = {"in", "out", "inout", "buffer", "linkage"};
    static const char *const kinds[] = {"", "type ", "subprogram ", "package "};
    QByteArrayList parts;
    for (const VhdlInterfaceItem &item : items) {
        QByteArray line =
            kinds[item.kind] + item.name + ':' + modes[item.mode] + ' ' + part(text, item.type);
        if (item.value.end > item.value.begin)
            line += '=' + part(text, item.value);
        parts.append(line);
    }
    return '(' + parts.join("; ") + ')';
}

QByteArray interfaceText(const QByteArray &text, const VhdlInterface &interface)
{
    QByteArray result;
    if (!interface.generics.isEmpty())
        result += " generic" + itemsText(text, interface.generics);
    if (!interface.ports.isEmpty())
        result += " port" + itemsText(text, interface.ports);
    return result;
}

QByteArray mapText(const QByteArray &text, const QVector<VhdlAssociation> &associations)
{
    QByteArrayList parts;
    for (const VhdlAssociation &association : associations) {
        QByteArray line;
        if (!association.formalNames.isEmpty())
            line = part(text, association.formal) + '{' + association.formalNames.join(' ') + "}=>";
        parts.append(line + part(text, association.actual) + (association.isOpen ? "!" : ""));
    }
    return '(' + parts.join(", ") + ')';
}

QByteArray contextText(const VhdlContext &context)
{
    QByteArray result;
    for (const QByteArray &library : context.libraries)
        result += " lib " + library;
    for (const QByteArrayList &name : context.uses)
        result += " use " + name.join('.');
    for (const QByteArrayList &name : context.contexts)
        result += " context " + name.join('.');
    return result;
}

QByteArray bindingText(const VhdlBinding &binding)
{
    static const char *const kinds[] = {"entity", "configuration", "open"};
    QByteArray line = "for " + binding.labels.join(',') + ':' + binding.component.join('.') + ' ' +
                      kinds[binding.kind];
    if (!binding.unit.isEmpty())
        line += ' ' + binding.unit.join('.');
    if (!binding.architecture.isEmpty())
        line += '(' + binding.architecture + ')';
    if (!binding.path.isEmpty())
        line += " in " + binding.path.join('/');
    return line;
}

QByteArray instanceText(const QByteArray &text, const VhdlInstance &instance)
{
    static const char *const kinds[] = {"component", "entity", "configuration"};
    QByteArray line = instance.label + ' ' + kinds[instance.kind] + ' ' + instance.unit.join('.');
    if (!instance.architecture.isEmpty())
        line += '(' + instance.architecture + ')';
    if (!instance.generics.isEmpty())
        line += " generic" + mapText(text, instance.generics);
    if (!instance.ports.isEmpty())
        line += " port" + mapText(text, instance.ports);
    return line + (instance.bare ? " bare" : "");
}

/// The declarations of one scope, by kind.
QByteArray declarationsText(const QByteArray &text, const VhdlUnit &unit, int scope)
{
    static const char *const kinds[] = {"signal",     "constant", "variable", "file",
                                        "alias",      "type",     "subtype",  "attribute",
                                        "subprogram", "package",  "group"};
    QByteArray result;
    for (const VhdlDeclaration &declaration : unit.declarations) {
        if (declaration.scope != scope)
            continue;
        result += QByteArray(" ") + kinds[declaration.kind] + ' ' + declaration.name;
        if (declaration.type.end > declaration.type.begin)
            result += ':' + part(text, declaration.type);
        if (declaration.value.end > declaration.value.begin)
            result += '=' + part(text, declaration.value);
        result += ';';
    }
    for (const VhdlRecordField &field : unit.fields) {
        if (field.scope == scope)
            result +=
                " field " + field.record + '.' + field.name + ':' + part(text, field.type) + ';';
    }
    return result;
}

/// One line for each scope, its components, instances and bindings, with the number of the scope.
QByteArrayList scopeLines(const QByteArray &text, const VhdlUnit &unit, int number)
{
    static const char *const kinds[] = {"", "block ", "for ", "if ", "case "};
    const VhdlScope &scope = unit.scopes.at(number);
    const QByteArray prefix = "  " + QByteArray::number(number) + ' ';
    QByteArrayList lines;
    if (number > 0) {
        QByteArray line = prefix + "in " + QByteArray::number(scope.parent) + ' ' +
                          kinds[scope.kind] + scope.label;
        if (!scope.alternative.isEmpty())
            line += '.' + scope.alternative;
        if (scope.head.end > scope.head.begin)
            line += " <" + part(text, scope.head) + '>';
        lines.append(line + interfaceText(text, scope.interface));
    }
    const QByteArray declarations = declarationsText(text, unit, number);
    if (!declarations.isEmpty())
        lines.append("  " + QByteArray::number(number) + declarations);
    for (const VhdlComponent &component : unit.components) {
        if (component.scope == number)
            lines.append(prefix + "component " + component.name +
                         interfaceText(text, component.interface));
    }
    for (const VhdlBinding &binding : unit.bindings) {
        if (binding.scope == number)
            lines.append(prefix + bindingText(binding));
    }
    for (const VhdlInstance &instance : unit.instances) {
        if (instance.scope == number)
            lines.append(prefix + instanceText(text, instance));
    }
    return lines;
}

QByteArrayList unitLines(const QByteArray &text, const VhdlUnit &unit)
{
    static const char *const kinds[] = {"entity",       "architecture",     "package",
                                        "package body", "package instance", "configuration",
                                        "context"};
    QByteArray line = QByteArray(kinds[unit.kind]) + ' ' + unit.name;
    if (!unit.of.isEmpty())
        line += " of " + unit.of.join('.');
    line += interfaceText(text, unit.interface) + contextText(unit.context);
    QByteArrayList lines{line + (unit.complete ? "" : " incomplete")};
    for (int i = 0; i < unit.scopes.size(); ++i)
        lines += scopeLines(text, unit, i);
    if (unit.scopes.isEmpty()) {
        for (const VhdlBinding &binding : unit.bindings)
            lines.append("  " + bindingText(binding));
    }
    return lines;
}

QByteArray fileText(const QByteArray &text)
{
    QByteArrayList lines;
    const VhdlFile file = scanVhdl(text);
    for (const VhdlUnit &unit : file.units)
        lines += unitLines(text, unit);
    return lines.join('\n');
}

} // namespace

class TestVhdlScan : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void findsUnits_data();
    void findsUnits();
};

void TestVhdlScan::findsUnits_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *text, const char *expected) {
        QTest::newRow(name) << QByteArray(text) << QByteArray(expected);
    };
    row("nothing", "", "");
    row("entity", "entity E is end;", "entity E");
    row("entity with ports",
        "entity E is generic (N : positive := 8); port (a, b : in bit := '1'; c : out "
        "bit_vector(f(3, (others => 2)) downto 0) bus := (others => '0'); d : buffer bit; e : "
        "inout bit; f : linkage bit); constant C : integer := 3; begin assert true; end entity E;",
        "entity E generic(N:in positive=8) port(a:in bit='1'; b:in bit='1'; c:out bit_vector(f(3, "
        "(others => 2)) downto 0)=(others => '0'); d:buffer bit; e:inout bit; f:linkage bit)\n"
        "  0 constant C:integer=3;");
    row("generics of other kinds",
        "entity E is generic (type T; function F (a : t; b : t) return t is <>; package p is new "
        "work.q generic map (<>)); end;",
        "entity E generic(type T:in ; subprogram F:in (a : t; b : t) return t is <>; package p:in "
        "is new work.q generic map (<>))");
    row("context clauses",
        "library ieee, V; use ieee.a.all, ieee.b.\"+\"; context work.Ctx; entity E is end; entity "
        "F "
        "is end;",
        "entity E lib ieee lib V use ieee.a.all use ieee.b.\"+\" context work.Ctx\nentity F");
    row("architecture", "architecture \\R t\\ of work.E is begin end architecture \\R t\\;",
        "architecture \\R t\\ of work.E");
    row("packages",
        "package P is new work.gp generic map (w => 3); package Q is generic (w : integer); "
        "component L port (a : bit); end component; constant c : bit; function f return bit; end "
        "package; package body Q is constant c : bit := '1'; function f return bit is begin return "
        "'1'; end; end package body;",
        "package instance P of work.gp\npackage Q generic(w:in integer)\n"
        "  0 constant c:bit; subprogram f;\n  0 component L port(a:in bit)\npackage body Q\n"
        "  0 constant c:bit='1'; subprogram f;");
    row("context declaration", "context C is library ieee; use ieee.a.all; end context C;",
        "context C lib ieee use ieee.a.all");
    row("configuration",
        "configuration C of E is use work.all; for rtl for all : X use entity work.Y(a); for a for "
        "u1, u2 : z use open; end for; end for; end for; for G(0) for u : W end for; end for; end "
        "for; end configuration;",
        "configuration C of E\n  for all:X entity work.Y(a) in rtl\n"
        "  for u1,u2:z open in rtl/all/a\n  for u:W open in rtl/G");
}

void TestVhdlScan::findsUnits()
{
    QFETCH(QByteArray, text);
    QTEST(fileText(text), "expected");
}

TARN_TEST_MAIN(TestVhdlScan)
#include "tst_vhdlscan.moc"
