// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "verilogtokens.h"

#include <cstring>
#include <unordered_map>

namespace NETWEIR::Internal {

namespace {

struct KeywordEntry
{
    Keyword keyword;
    bool systemVerilog;
};

using KeywordTable = std::unordered_map<std::string_view, KeywordEntry>;

// Words that every version of the language reserves and the scan passes over.
const char *const OtherVerilogWords[] = {
    "and",       "assign",   "automatic", "buf",     "bufif0",  "bufif1",     "cmos",    "deassign",
    "edge",      "endtable", "event",     "force",   "forever", "genvar",     "highz0",  "highz1",
    "ifnone",    "inout",    "input",     "integer", "large",   "localparam", "medium",  "nand",
    "negedge",   "nmos",     "nor",       "not",     "notif0",  "notif1",     "or",      "output",
    "parameter", "pmos",     "posedge",   "pull0",   "pull1",   "pulldown",   "pullup",  "rcmos",
    "real",      "realtime", "reg",       "release", "repeat",  "rnmos",      "rpmos",   "scalared",
    "signed",    "small",    "specparam", "strong0", "strong1", "supply0",    "supply1", "table",
    "time",      "tri",      "tri0",      "tri1",    "triand",  "trior",      "trireg",  "unsigned",
    "vectored",  "wand",     "weak0",     "weak1",   "while",   "wire",       "wor",     "xnor",
    "xor",
};

const char *const OtherSystemVerilogWords[] = {
    "accept_on",
    "before",
    "bins",
    "binsof",
    "bit",
    "break",
    "byte",
    "chandle",
    "const",
    "constraint",
    "context",
    "continue",
    "cross",
    "dist",
    "do",
    "enum",
    "eventually",
    "expect",
    "first_match",
    "foreach",
    "forkjoin",
    "iff",
    "ignore_bins",
    "illegal_bins",
    "implements",
    "implies",
    "import",
    "inside",
    "int",
    "interconnect",
    "intersect",
    "let",
    "local",
    "logic",
    "longint",
    "matches",
    "modport",
    "nettype",
    "new",
    "nexttime",
    "null",
    "packed",
    "priority",
    "protected",
    "pure",
    "rand",
    "randc",
    "randsequence",
    "ref",
    "reject_on",
    "return",
    "s_always",
    "s_eventually",
    "s_nexttime",
    "s_until",
    "s_until_with",
    "shortint",
    "shortreal",
    "soft",
    "solve",
    "static",
    "string",
    "strong",
    "struct",
    "super",
    "sync_accept_on",
    "sync_reject_on",
    "tagged",
    "this",
    "throughout",
    "timeprecision",
    "timeunit",
    "type",
    "union",
    "unique",
    "unique0",
    "until",
    "until_with",
    "untyped",
    "var",
    "void",
    "wait_order",
    "weak",
    "wildcard",
    "with",
    "within",
};

KeywordTable makeKeywords()
{
    KeywordTable table;
    for (const char *text : OtherVerilogWords)
        table.emplace(text, KeywordEntry{Keyword::Other, false});
    for (const char *text : OtherSystemVerilogWords)
        table.emplace(text, KeywordEntry{Keyword::Other, true});

    const std::pair<const char *, Keyword> verilog[] = {
        {"always", Keyword::Always},
        {"begin", Keyword::Begin},
        {"case", Keyword::Case},
        {"casex", Keyword::Case},
        {"casez", Keyword::Case},
        {"config", Keyword::Config},
        {"default", Keyword::Default},
        {"defparam", Keyword::Defparam},
        {"disable", Keyword::Disable},
        {"else", Keyword::Else},
        {"end", Keyword::End},
        {"endcase", Keyword::Endcase},
        {"endconfig", Keyword::Endconfig},
        {"endfunction", Keyword::Endfunction},
        {"endgenerate", Keyword::Endgenerate},
        {"endmodule", Keyword::Endmodule},
        {"endprimitive", Keyword::Endprimitive},
        {"endspecify", Keyword::Endspecify},
        {"endtask", Keyword::Endtask},
        {"for", Keyword::For},
        {"fork", Keyword::Fork},
        {"function", Keyword::Function},
        {"generate", Keyword::Generate},
        {"if", Keyword::If},
        {"initial", Keyword::Always},
        {"join", Keyword::Join},
        {"macromodule", Keyword::Module},
        {"module", Keyword::Module},
        {"primitive", Keyword::Primitive},
        {"rtran", Keyword::Tran},
        {"rtranif0", Keyword::Tran},
        {"rtranif1", Keyword::Tran},
        {"specify", Keyword::Specify},
        {"task", Keyword::Task},
        {"tran", Keyword::Tran},
        {"tranif0", Keyword::Tran},
        {"tranif1", Keyword::Tran},
        {"wait", Keyword::Disable},
    };
    for (const auto &entry : verilog)
        table[entry.first] = {entry.second, false};

    const std::pair<const char *, Keyword> systemVerilog[] = {
        {"alias", Keyword::Alias},
        {"always_comb", Keyword::Always},
        {"always_ff", Keyword::Always},
        {"always_latch", Keyword::Always},
        {"assert", Keyword::Assert},
        {"assume", Keyword::Assert},
        {"bind", Keyword::Bind},
        {"checker", Keyword::Checker},
        {"class", Keyword::Class},
        {"clocking", Keyword::Clocking},
        {"cover", Keyword::Assert},
        {"covergroup", Keyword::Covergroup},
        {"endchecker", Keyword::Endchecker},
        {"endclass", Keyword::Endclass},
        {"endclocking", Keyword::Endclocking},
        {"endgroup", Keyword::Endgroup},
        {"endinterface", Keyword::Endinterface},
        {"endpackage", Keyword::Endpackage},
        {"endprogram", Keyword::Endprogram},
        {"endproperty", Keyword::Endproperty},
        {"endsequence", Keyword::Endsequence},
        {"export", Keyword::Extern},
        {"extern", Keyword::Extern},
        {"final", Keyword::Always},
        {"global", Keyword::Default},
        {"import", Keyword::Extern},
        {"interface", Keyword::Interface},
        {"join_any", Keyword::Join},
        {"join_none", Keyword::Join},
        {"package", Keyword::Package},
        {"program", Keyword::Program},
        {"property", Keyword::Property},
        {"randcase", Keyword::Case},
        {"restrict", Keyword::Assert},
        {"sequence", Keyword::Sequence},
        {"typedef", Keyword::Typedef},
        {"virtual", Keyword::Virtual},
    };
    for (const auto &entry : systemVerilog)
        table[entry.first] = {entry.second, true};
    return table;
}

Keyword keywordOf(std::string_view text, bool systemVerilog)
{
    static const KeywordTable table = makeKeywords();
    const auto found = table.find(text);
    if (found == table.end() || (found->second.systemVerilog && !systemVerilog))
        return Keyword::None;
    return found->second.keyword;
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isWordStart(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool isWord(char c)
{
    return isWordStart(c) || isDigit(c);
}

bool isBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

} // namespace

bool endsUnit(const Token &token)
{
    return token.is(Keyword::Endmodule) || token.is(Keyword::Endinterface) ||
           token.is(Keyword::Endprogram);
}

bool opensGroup(const Token &token)
{
    return token.is('(') || token.is('[') || token.is('{');
}

bool closesGroup(const Token &token)
{
    return token.is(')') || token.is(']') || token.is('}');
}

bool isWord(const Token &token, std::string_view word)
{
    return (token.kind == Token::Identifier || token.kind == Token::Reserved) && token.text == word;
}

bool isSystemVerilogWord(const QByteArray &word)
{
    const std::string_view text(word.constData(), size_t(word.size()));
    return keywordOf(text, true) != Keyword::None && keywordOf(text, false) == Keyword::None;
}

VerilogTokens::VerilogTokens(const QByteArray &text, bool systemVerilog)
    : m_at(text.constData())
    , m_end(text.constData() + text.size())
    , m_systemVerilog(systemVerilog)
    , m_fileIsSystemVerilog(systemVerilog)
{
}

Token VerilogTokens::next()
{
    while (skipBlanks() || skipComment() || (!atEnd() && *m_at == '`')) {
        if (!atEnd() && *m_at == '`')
            skipDirective();
    }
    Token token;
    token.place = m_at;
    token.line = m_line;
    if (atEnd())
        return token;

    const char c = *m_at;
    if (isWordStart(c)) {
        token.text = word();
        token.keyword = keywordOf(token.text, m_systemVerilog);
        token.kind = token.keyword == Keyword::None ? Token::Identifier : Token::Reserved;
    } else if (c == '\\') {
        token.text = escapedName();
        token.kind = Token::Identifier;
    } else if (isDigit(c)) {
        token.text = word();
        token.kind = Token::Number;
    } else if (c == '"') {
        skipString();
        token.kind = Token::String;
    } else if (c == '\'') {
        skipBasedNumber();
        token.kind = Token::Number;
    } else {
        token.kind = Token::Punctuation;
        token.punctuation = c == ':' && peek() == ':' ? 'c' : c;
        m_at += token.punctuation == 'c' ? 2 : 1;
    }
    return token;
}

bool VerilogTokens::skipBlanks()
{
    const char *const start = m_at;
    for (; !atEnd() && isBlank(*m_at); ++m_at) {
        if (*m_at == '\n')
            ++m_line;
    }
    return m_at != start;
}

bool VerilogTokens::skipComment()
{
    if (atEnd() || *m_at != '/')
        return false;
    if (peek() == '/') {
        skipLine();
        return true;
    }
    if (peek() != '*')
        return false;
    for (m_at += 2; !atEnd(); ++m_at) {
        if (*m_at == '\n')
            ++m_line;
        if (*m_at == '*' && peek() == '/') {
            m_at += 2;
            break;
        }
    }
    return true;
}

/// Leaves the position at the end of the line.
void VerilogTokens::skipLine()
{
    const void *end = memchr(m_at, '\n', size_t(m_end - m_at));
    m_at = end ? static_cast<const char *>(end) : m_end;
}

/// A word behind a backtick. The arguments of those directives that have some are skipped too: they
/// are no part of the design.
void VerilogTokens::skipDirective()
{
    ++m_at;
    if (atEnd() || !isWordStart(*m_at))
        return;
    skipDirectiveArguments(word());
}

void VerilogTokens::skipDirectiveArguments(std::string_view directive)
{
    static const std::string_view withArguments[] = {"begin_keywords", "default_nettype", "pragma",
                                                     "unconnected_drive"};
    if (directive == "end_keywords")
        m_systemVerilog = m_fileIsSystemVerilog;
    if (directive == "timescale") {
        // Other text may follow in the same line: 1ns / 1ps are two numbers and a slash.
        for (int numbers = 0; numbers < 2;) {
            while (!atEnd() && (*m_at == ' ' || *m_at == '\t' || *m_at == '/'))
                ++m_at;
            if (atEnd() || !isDigit(*m_at))
                return;
            const std::string_view number = word();
            if (isDigit(number.back())) { // "1 ns"
                while (!atEnd() && (*m_at == ' ' || *m_at == '\t'))
                    ++m_at;
                if (!atEnd() && isWordStart(*m_at))
                    word();
            }
            ++numbers;
        }
        return;
    }
    for (const std::string_view known : withArguments) {
        if (directive != known)
            continue;
        const char *const begin = m_at;
        skipLine();
        const std::string_view arguments(begin, size_t(m_at - begin));
        if (directive == "begin_keywords")
            m_systemVerilog = arguments.find("1800") != std::string_view::npos;
        return;
    }
}

std::string_view VerilogTokens::word()
{
    const char *const begin = m_at;
    while (!atEnd() && isWord(*m_at))
        ++m_at;
    return {begin, size_t(m_at - begin)};
}

std::string_view VerilogTokens::escapedName()
{
    const char *const begin = ++m_at;
    while (!atEnd() && !isBlank(*m_at))
        ++m_at;
    return {begin, size_t(m_at - begin)};
}

void VerilogTokens::skipString()
{
    for (++m_at; !atEnd() && *m_at != '"' && *m_at != '\n'; ++m_at) {
        if (*m_at == '\\' && peek() != '\0') {
            ++m_at;
            if (*m_at == '\n')
                ++m_line;
        }
    }
    if (!atEnd() && *m_at == '"')
        ++m_at;
}

/// 'hFF, 'sd12, '0; also "' h FF" as the base and the digits may stand apart.
void VerilogTokens::skipBasedNumber()
{
    ++m_at;
    if (!atEnd() && (*m_at == 's' || *m_at == 'S') && isWordStart(peek()))
        ++m_at;
    if (atEnd() || !isWord(*m_at))
        return; // A cast or an assignment pattern.
    if (strchr("bBoOdDhH", *m_at)) {
        ++m_at;
        while (!atEnd() && (*m_at == ' ' || *m_at == '\t'))
            ++m_at;
    }
    while (!atEnd() && (isWord(*m_at) || *m_at == '?'))
        ++m_at;
}

} // namespace NETWEIR::Internal
