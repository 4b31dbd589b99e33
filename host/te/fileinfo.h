// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace TE {

/// Kinds of project files. Verilog, SystemVerilog and VHDL are the design sources.
enum FileType {
    UnknownFile = 0,
    ConstraintFile = 1,
    VerilogFile = 2,
    SystemVerilogFile = 3,
    VhdlFile = 4,
    TarnFile = 5,
};

/// True for Verilog, SystemVerilog and VHDL.
constexpr bool isDesignSource(int type)
{
    return type >= VerilogFile && type <= VhdlFile;
}

/// What the design manager knows of a file. A file that it does not know has the type UnknownFile
/// and is not enabled.
struct FileInfo
{
    int type = UnknownFile;
    bool enabled = false;
};

} // namespace TE
