// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "stubtext.h"

#include <netweir/internal/signals/vhdlpartinput.h>

#include <algorithm>
#include <iterator>

namespace NETWEIR::Internal {

namespace {

/// How the value of a type becomes text: the mark of the kind in the report, and the expression,
/// in which "%" stands for the generic.
struct ReportedType
{
    const char *type;
    char kind;
    const char *value;
};

const ReportedType ReportedTypes[] = {
    {"integer", 'i', "integer'image(%)"},
    {"natural", 'i', "integer'image(%)"},
    {"positive", 'i', "integer'image(%)"},
    {"real", 'r', "real'image(%)"},
    {"boolean", 'o', "boolean'image(%)"},
    {"string", 't', "netweir_codes(%)"},
    {"bit", 'b', "netweir_bits(bit_vector'(0 to 0 => %))"},
    {"bit_vector", 'b', "netweir_bits(%)"},
    {"std_ulogic", 'b', "netweir_letters(ieee.std_logic_1164.std_logic_vector'(0 to 0 => %))"},
    {"std_logic", 'b', "netweir_letters(ieee.std_logic_1164.std_logic_vector'(0 to 0 => %))"},
    {"std_logic_vector", 'b', "netweir_letters(%)"},
    {"std_ulogic_vector", 'b', "netweir_letters(ieee.std_logic_1164.std_logic_vector(%))"},
    {"unsigned", 'b', "netweir_letters(ieee.std_logic_1164.std_logic_vector(%))"},
    {"signed", 'b', "netweir_letters(ieee.std_logic_1164.std_logic_vector(%))"},
};

const ReportedType *reportedType(const QByteArray &baseType)
{
    const auto *found =
        std::find_if(std::begin(ReportedTypes), std::end(ReportedTypes),
                     [&baseType](const ReportedType &type) { return baseType == type.type; });
    return found == std::end(ReportedTypes) ? nullptr : found;
}

/// Functions that make text of vectors and strings, of which only those in use are written.
QByteArray conversionFunctions(const QByteArray &expressions)
{
    QByteArray text;
    if (expressions.contains("netweir_codes("))
        text += "function netweir_codes(v : string) return string is\n"
                "variable r : string(1 to 4 * v'length);\n"
                "variable n : natural := 0;\n"
                "variable c : natural;\n"
                "begin\n"
                "for i in v'range loop\n"
                "c := character'pos(v(i));\n"
                "r(n + 1) := character'val(48 + c / 100);\n"
                "r(n + 2) := character'val(48 + c / 10 mod 10);\n"
                "r(n + 3) := character'val(48 + c mod 10);\n"
                "r(n + 4) := ',';\n"
                "n := n + 4;\n"
                "end loop;\n"
                "return r(1 to n - 1);\n"
                "end;\n";
    const auto addLetters = [&](const char *name, const char *vector, const char *element) {
        if (!expressions.contains(QByteArray(name) + '('))
            return;
        text += QByteArray("function ") + name + "(v : " + vector +
                ") return string is\n"
                "variable r : string(1 to v'length);\n"
                "variable n : natural := 0;\n"
                "begin\n"
                "for i in v'range loop\n"
                "n := n + 1;\n"
                "r(n) := " +
                element +
                "'image(v(i))(2);\n"
                "end loop;\n"
                "return r;\n"
                "end;\n";
    };
    addLetters("netweir_bits", "bit_vector", "bit");
    addLetters("netweir_letters", "ieee.std_logic_1164.std_logic_vector",
               "ieee.std_logic_1164.std_ulogic");
    return text;
}

QByteArray interfaceText(const char *keyword, const QVector<StubItem> &items)
{
    if (items.isEmpty())
        return {};
    QByteArray text = QByteArray(keyword) + " (\n";
    for (int i = 0; i < items.size(); ++i) {
        const StubItem &item = items[i];
        const QByteArray mode = item.mode.isEmpty() ? QByteArray() : item.mode + ' ';
        text += item.name + " : " + mode + item.type + (i + 1 < items.size() ? ";\n" : ");\n");
    }
    return text;
}

/// One report for each generic, while the declarations are elaborated.
QByteArray reports(const StubEntity &entity)
{
    QByteArray statements;
    for (const StubItem &generic : entity.generics) {
        const ReportedType *type = reportedType(generic.baseType);
        if (!type)
            continue;
        QByteArray name = generic.name;
        name.replace('"', "\"\"");
        statements += "report \"netweir-generic:\" & " + entity.name + "'instance_name & \"|" +
                      name + '|' + type->kind + "|\" & " +
                      QByteArray(type->value).replace('%', generic.name) + ";\n";
    }
    if (statements.isEmpty())
        return {};
    return conversionFunctions(statements) + "function netweir_report return boolean is\nbegin\n" +
           statements +
           "return true;\nend;\n"
           "constant netweir_reported : boolean := netweir_report;\n";
}

/// A driver with its own value, which does not depend on the type. Reading an output directly needs
/// a later edition of the language.
QByteArray drivers(const StubEntity &entity)
{
    QByteArray statements;
    for (const StubItem &port : entity.ports) {
        if (port.mode != "in")
            statements += port.name + " <= " + port.name + "'driving_value;\n";
    }
    return statements.isEmpty() ? statements
                                : "process\nbegin\n" + statements + "wait;\nend process;\n";
}

} // namespace

QByteArray stubText(const StubEntity &entity)
{
    const QByteArray architecture = entity.isBorder ? BorderArchitecture : StubArchitecture;
    return "library ieee;\n" + entity.context + "\nentity " + entity.name + " is\n" +
           interfaceText("generic", entity.generics) + interfaceText("port", entity.ports) +
           "end;\narchitecture " + architecture + " of " + entity.name + " is\n" +
           (entity.isBorder ? reports(entity) : QByteArray()) + "begin\n" + drivers(entity) +
           "end;\n";
}

bool isReportable(const QByteArray &baseType)
{
    return reportedType(baseType) != nullptr;
}

} // namespace NETWEIR::Internal
