// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "verilogname.h"

#include <tool/printable.h>

#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace Tool {

namespace {

/// In the order of their bytes.
constexpr const char *Keywords[] = {
    "accept_on",
    "alias",
    "always",
    "always_comb",
    "always_ff",
    "always_latch",
    "and",
    "assert",
    "assign",
    "assume",
    "automatic",
    "before",
    "begin",
    "bind",
    "bins",
    "binsof",
    "bit",
    "break",
    "buf",
    "bufif0",
    "bufif1",
    "byte",
    "case",
    "casex",
    "casez",
    "cell",
    "chandle",
    "checker",
    "class",
    "clocking",
    "cmos",
    "config",
    "const",
    "constraint",
    "context",
    "continue",
    "cover",
    "covergroup",
    "coverpoint",
    "cross",
    "deassign",
    "default",
    "defparam",
    "design",
    "disable",
    "dist",
    "do",
    "edge",
    "else",
    "end",
    "endcase",
    "endchecker",
    "endclass",
    "endclocking",
    "endconfig",
    "endfunction",
    "endgenerate",
    "endgroup",
    "endinterface",
    "endmodule",
    "endpackage",
    "endprimitive",
    "endprogram",
    "endproperty",
    "endsequence",
    "endspecify",
    "endtable",
    "endtask",
    "enum",
    "event",
    "eventually",
    "expect",
    "export",
    "extends",
    "extern",
    "final",
    "first_match",
    "for",
    "force",
    "foreach",
    "forever",
    "fork",
    "forkjoin",
    "function",
    "generate",
    "genvar",
    "global",
    "highz0",
    "highz1",
    "if",
    "iff",
    "ifnone",
    "ignore_bins",
    "illegal_bins",
    "implements",
    "implies",
    "import",
    "incdir",
    "include",
    "initial",
    "inout",
    "input",
    "inside",
    "instance",
    "int",
    "integer",
    "interconnect",
    "interface",
    "intersect",
    "join",
    "join_any",
    "join_none",
    "large",
    "let",
    "liblist",
    "library",
    "local",
    "localparam",
    "logic",
    "longint",
    "macromodule",
    "matches",
    "medium",
    "modport",
    "module",
    "nand",
    "negedge",
    "nettype",
    "new",
    "nexttime",
    "nmos",
    "nor",
    "noshowcancelled",
    "not",
    "notif0",
    "notif1",
    "null",
    "or",
    "output",
    "package",
    "packed",
    "parameter",
    "pmos",
    "posedge",
    "primitive",
    "priority",
    "program",
    "property",
    "protected",
    "pull0",
    "pull1",
    "pulldown",
    "pullup",
    "pulsestyle_ondetect",
    "pulsestyle_onevent",
    "pure",
    "rand",
    "randc",
    "randcase",
    "randsequence",
    "rcmos",
    "real",
    "realtime",
    "ref",
    "reg",
    "reject_on",
    "release",
    "repeat",
    "restrict",
    "return",
    "rnmos",
    "rpmos",
    "rtran",
    "rtranif0",
    "rtranif1",
    "s_always",
    "s_eventually",
    "s_nexttime",
    "s_until",
    "s_until_with",
    "scalared",
    "sequence",
    "shortint",
    "shortreal",
    "showcancelled",
    "signed",
    "small",
    "soft",
    "solve",
    "specify",
    "specparam",
    "static",
    "string",
    "strong",
    "strong0",
    "strong1",
    "struct",
    "super",
    "supply0",
    "supply1",
    "sync_accept_on",
    "sync_reject_on",
    "table",
    "tagged",
    "task",
    "this",
    "throughout",
    "time",
    "timeprecision",
    "timeunit",
    "tran",
    "tranif0",
    "tranif1",
    "tri",
    "tri0",
    "tri1",
    "triand",
    "trior",
    "trireg",
    "type",
    "typedef",
    "union",
    "unique",
    "unique0",
    "unsigned",
    "until",
    "until_with",
    "untyped",
    "use",
    "uwire",
    "var",
    "vectored",
    "virtual",
    "void",
    "wait",
    "wait_order",
    "wand",
    "weak",
    "weak0",
    "weak1",
    "while",
    "wildcard",
    "wire",
    "with",
    "within",
    "wor",
    "xnor",
    "xor",
};

bool isPlain(const QString &name)
{
    static const QRegularExpression form(QStringLiteral("\\A[A-Za-z_][A-Za-z0-9_$]*\\z"));
    return form.match(name).hasMatch();
}

} // namespace

bool isVerilogKeyword(const QString &word)
{
    const QByteArray bytes = word.toUtf8();
    return std::binary_search(std::begin(Keywords), std::end(Keywords), bytes.constData(),
                              [](const char *a, const char *b) { return qstrcmp(a, b) < 0; });
}

QByteArray verilogIdentifier(const QString &name)
{
    if (isPlain(name) && !isVerilogKeyword(name))
        return name.toLatin1();
    return '\\' + name.toUtf8() + ' ';
}

QByteArray verilogPath(const QVector<NETWEIR::NameStep> &steps)
{
    QByteArray path;
    for (const NETWEIR::NameStep &step : steps) {
        if (!path.isEmpty())
            path += '.';
        path += verilogIdentifier(step.identifier) + step.indexes.toLatin1();
    }
    return path;
}

bool readVerilogPath(const QString &text, QVector<NETWEIR::NameStep> *steps)
{
    static const QRegularExpression step(
        QLatin1String("\\G(?:([A-Za-z_][A-Za-z0-9_$]*)|\\\\([!-~]+)(?:[ \\t]+|\\z))"
                      "((?:\\[-?[0-9]+\\])*)(\\.|\\z)"));
    steps->clear();
    int next = 0;
    bool isComplete = false;
    while (next < text.size()) {
        const QRegularExpressionMatch match = step.match(text, next);
        if (!match.hasMatch())
            return false;
        steps->append({match.captured(1) + match.captured(2), match.captured(3)});
        next = match.capturedEnd();
        isComplete = match.captured(4).isEmpty();
    }
    return isComplete;
}

QByteArray displayText(const QString &text)
{
    QByteArray quoted;
    for (const char letter : printable(text)) {
        if (letter == '\\' || letter == '"')
            quoted += '\\';
        if (letter == '%')
            quoted += '%';
        quoted += letter;
    }
    return quoted;
}

} // namespace Tool
