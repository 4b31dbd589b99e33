// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Keys of the design information map. The plug-in passes the map, without reading it, from
/// TE::DesignManager::getSourceFileInfo() to NETWEIR::catchRtlModules().
namespace TE::DesignInfo {

constexpr char Top[] = "Top"; ///< String: the top module chosen by the user, empty for none.
constexpr char Files[] =
    "Files"; ///< List of maps, one per enabled design source, in project order.

// Keys of one entry of Files.
constexpr char Path[] = "Path";       ///< String: absolute path.
constexpr char Type[] = "Type";       ///< Int: TE::FileType.
constexpr char Library[] = "Library"; ///< String: VHDL library, in VHDL files only.

constexpr char IncludePaths[] = "IncludePaths"; ///< String list: absolute folders, in search order.
constexpr char Macros[] = "Macros";             ///< String list: "NAME" or "NAME=VALUE".
constexpr char LibraryFiles[] =
    "LibraryFiles"; ///< String list: absolute paths of library sources, read as `-v` files.
constexpr char LibraryFolders[] =
    "LibraryFolders"; ///< String list: absolute folders, in search order, read as `-y` folders.
constexpr char LibraryExtensions[] =
    "LibraryExtensions"; ///< String list: extensions of the files in them, with the dot.
constexpr char Standard[] = "Standard";         ///< String: value of TE::OPT::Verilog_Standard.
constexpr char VhdlStandard[] = "VhdlStandard"; ///< String: value of TE::OPT::VHDL_Standard.
constexpr char Timeout[] = "Timeout";           ///< Int: seconds; 120 when missing or 0.

} // namespace TE::DesignInfo
