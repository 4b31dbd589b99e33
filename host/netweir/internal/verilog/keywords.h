// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <string_view>

namespace NETWEIR::Internal {

/// The keywords that the scans act on, some for a group of words. All others are Other: they only
/// have to be told from identifiers.
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

/// The keyword that @p word is in one of the two languages; None for an identifier.
Keyword keywordOf(std::string_view word, bool systemVerilog);

/// The keyword that ends what @p keyword begins; None when it needs no end of its own.
Keyword endOf(Keyword keyword);

/// Whether SystemVerilog reserves @p word and Verilog does not.
bool isSystemVerilogWord(const QByteArray &word);

} // namespace NETWEIR::Internal
