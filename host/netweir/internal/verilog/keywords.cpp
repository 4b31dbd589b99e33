// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "keywords.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <utility>

namespace NETWEIR::Internal {

namespace {

struct KeywordEntry
{
    Keyword keyword;
    bool systemVerilog;
};

using KeywordTable = std::unordered_map<std::string_view, KeywordEntry>;

constexpr std::pair<std::string_view, Keyword> VerilogWords[] = {
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

constexpr std::pair<std::string_view, Keyword> SystemVerilogWords[] = {
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
    {"constraint", Keyword::Constraint},
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
    {"expect", Keyword::Expect},
    {"export", Keyword::Extern},
    {"extern", Keyword::Extern},
    {"final", Keyword::Always},
    {"global", Keyword::Default},
    {"import", Keyword::Extern},
    {"interface", Keyword::Interface},
    {"join_any", Keyword::Join},
    {"join_none", Keyword::Join},
    {"let", Keyword::Let},
    {"package", Keyword::Package},
    {"program", Keyword::Program},
    {"property", Keyword::Property},
    {"randcase", Keyword::Case},
    {"randsequence", Keyword::Randsequence},
    {"restrict", Keyword::Assert},
    {"sequence", Keyword::Sequence},
    {"typedef", Keyword::Typedef},
    {"virtual", Keyword::Virtual},
};

constexpr std::string_view OtherVerilogWords =
    "and assign automatic buf bufif0 bufif1 cmos deassign edge endtable event force forever "
    "genvar highz0 highz1 ifnone inout input integer large localparam medium nand negedge "
    "nmos nor not notif0 notif1 or output parameter pmos posedge pull0 pull1 pulldown pullup "
    "rcmos real realtime reg release repeat rnmos rpmos scalared signed small specparam "
    "strong0 strong1 supply0 supply1 table time tri tri0 tri1 triand trior trireg unsigned "
    "vectored wand weak0 weak1 while wire wor xnor xor";

constexpr std::string_view OtherSystemVerilogWords =
    "accept_on before bins binsof bit break byte chandle const context continue cross dist do "
    "enum eventually first_match foreach forkjoin iff ignore_bins illegal_bins implements "
    "implies inside int interconnect intersect local logic longint matches modport nettype "
    "new nexttime null packed priority protected pure rand randc ref reject_on return "
    "s_always s_eventually s_nexttime s_until s_until_with shortint shortreal soft solve "
    "static string strong struct super sync_accept_on sync_reject_on tagged this throughout "
    "timeprecision timeunit type union unique unique0 until until_with untyped var void "
    "wait_order weak wildcard with within";

constexpr std::pair<Keyword, Keyword> Ends[] = {
    {Keyword::Checker, Keyword::Endchecker},     {Keyword::Class, Keyword::Endclass},
    {Keyword::Clocking, Keyword::Endclocking},   {Keyword::Config, Keyword::Endconfig},
    {Keyword::Covergroup, Keyword::Endgroup},    {Keyword::Function, Keyword::Endfunction},
    {Keyword::Interface, Keyword::Endinterface}, {Keyword::Module, Keyword::Endmodule},
    {Keyword::Package, Keyword::Endpackage},     {Keyword::Primitive, Keyword::Endprimitive},
    {Keyword::Program, Keyword::Endprogram},     {Keyword::Property, Keyword::Endproperty},
    {Keyword::Sequence, Keyword::Endsequence},   {Keyword::Specify, Keyword::Endspecify},
    {Keyword::Task, Keyword::Endtask},
};

/// @p words are separated by single blanks.
void addOthers(KeywordTable *table, std::string_view words, bool systemVerilog)
{
    for (size_t begin = 0; begin < words.size();) {
        const size_t end = std::min(words.find(' ', begin), words.size());
        table->emplace(words.substr(begin, end - begin),
                       KeywordEntry{Keyword::Other, systemVerilog});
        begin = end + 1;
    }
}

KeywordTable makeTable()
{
    KeywordTable table;
    for (const auto &[word, keyword] : VerilogWords)
        table.emplace(word, KeywordEntry{keyword, false});
    for (const auto &[word, keyword] : SystemVerilogWords)
        table.emplace(word, KeywordEntry{keyword, true});
    addOthers(&table, OtherVerilogWords, false);
    addOthers(&table, OtherSystemVerilogWords, true);
    return table;
}

} // namespace

Keyword keywordOf(std::string_view word, bool systemVerilog)
{
    static const KeywordTable table = makeTable();
    const auto found = table.find(word);
    if (found == table.end() || (found->second.systemVerilog && !systemVerilog))
        return Keyword::None;
    return found->second.keyword;
}

Keyword endOf(Keyword keyword)
{
    const auto found = std::find_if(std::begin(Ends), std::end(Ends),
                                    [keyword](const auto &end) { return end.first == keyword; });
    return found == std::end(Ends) ? Keyword::None : found->second;
}

bool isSystemVerilogWord(const QByteArray &word)
{
    const std::string_view text(word.constData(), size_t(word.size()));
    return keywordOf(text, true) != Keyword::None && keywordOf(text, false) == Keyword::None;
}

} // namespace NETWEIR::Internal
