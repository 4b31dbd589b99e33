// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Names that plug-ins and host agree on: results, events, event keys, options.
namespace TE {

/// Result of the synthesis: the netlist file.
constexpr char RES_NETLIST[] = "RES.netlist";

// Events; the comment behind each one lists its keys.
constexpr char E_FILE_ADD[] = "TE.File.Add";                 ///< file
constexpr char E_FILE_REMOVE[] = "TE.File.Remove";           ///< file, type
constexpr char E_FILE_CH_ENABLE[] = "TE.File.Change.Enable"; ///< file, type, enable (new state)
constexpr char E_FILE_CH_TYPE[] = "TE.File.Change.Type"; ///< file, type (new), previous (former)
constexpr char E_FILE_MODIFIED[] = "TE.File.Modified";   ///< file (written, gone from disk or back)
constexpr char E_OPTION_CHANGE[] = "TE.Option.Change";   ///< option (its name)
constexpr char E_DEVICE_CHANGE[] = "TE.Device.Change";   ///< none

constexpr char K_FILE[] = "file";
constexpr char K_TYPE[] = "type";
constexpr char K_ENABLE[] = "enable";
constexpr char K_OPTION[] = "option";
constexpr char K_PREVIOUS[] = "previous";

} // namespace TE

namespace TE::OPT {

constexpr char INCLUDEPATH[] = "IncludePath"; ///< String list; relative to the working folder.
constexpr char Verilog_Standard[] = "Verilog_Standard"; ///< One of VerilogStandards.
constexpr char VHDL_Standard[] = "VHDL_Standard";       ///< One of VhdlStandards.
constexpr char SYNTHESIZE_TOOL[] = "Synthesize_tool";   ///< "OstraSynthesis" or Synplify_pro.
constexpr char TOPMODULE[] = "TopModule";               ///< Name of the top module; empty: find it.
constexpr char EXTRACTION_TIMEOUT[] =
    "Extraction_Timeout"; ///< Time limit, in seconds, for each step of reading the netlist.

constexpr char LIBRARYFOLDERS[] = "LibraryFolders"; ///< String list: absolute paths.
constexpr char MACROS[] = "Macros";                 ///< String list: "NAME" or "NAME=VALUE".

// Values of Verilog_Standard, the oldest first.
constexpr const char *VerilogStandards[] = {"1364-1995", "1364-2001", "1364-2005", "1800-2017"};
constexpr char DefaultVerilogStandard[] = "1364-2005";

// Values of VHDL_Standard, the oldest first.
constexpr char Vhdl1993[] = "1076-1993";
constexpr char Vhdl2008[] = "1076-2008";
constexpr const char *VhdlStandards[] = {Vhdl1993, Vhdl2008};
constexpr char DefaultVhdlStandard[] = "1076-2008";

// Values of SYNTHESIZE_TOOL.
constexpr char OstraSynthesis[] = "OstraSynthesis";
constexpr char Synplify_pro[] = "Synplify";
constexpr const char *SynthesisTools[] = {OstraSynthesis, Synplify_pro};

// Values of EXTRACTION_TIMEOUT.
constexpr int DefaultTimeout = 120;
constexpr int LongestTimeout = 24 * 60 * 60;

} // namespace TE::OPT
