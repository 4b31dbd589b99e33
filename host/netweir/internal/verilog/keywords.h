// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <string_view>

namespace NETWEIR::Internal {

/// The keywords that matter to the scans, some for a group of words. All other keywords are Other,
/// to tell them from identifiers.
enum class Keyword {
    None,
    Other,
    Alias,
    Always,
    Assert,
    Begin,
    Bind,
    Case,
    Checker,
    Class,
    Clocking,
    Config,
    Constraint,
    Covergroup,
    Default,
    Defparam,
    Disable,
    Else,
    End,
    Endcase,
    Endchecker,
    Endclass,
    Endclocking,
    Endconfig,
    Endfunction,
    Endgenerate,
    Endgroup,
    Endinterface,
    Endmodule,
    Endpackage,
    Endprimitive,
    Endprogram,
    Endproperty,
    Endsequence,
    Endspecify,
    Endtask,
    Expect,
    Extern,
    For,
    Fork,
    Function,
    Generate,
    If,
    Interface,
    Join,
    Let,
    Module,
    Package,
    Primitive,
    Program,
    Property,
    Randsequence,
    Sequence,
    Specify,
    Task,
    Tran,
    Typedef,
    Virtual,
};

/// The keyword @p word in either language; None for an identifier.
Keyword keywordOf(std::string_view word, bool systemVerilog);

/// The end keyword for @p keyword; None when it has none.
Keyword endOf(Keyword keyword);

/// Whether SystemVerilog reserves @p word and Verilog does not.
bool isSystemVerilogWord(const QByteArray &word);

} // namespace NETWEIR::Internal
