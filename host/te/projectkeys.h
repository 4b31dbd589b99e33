// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The format of project files: version and keys.
namespace TE::ProjectKey {

constexpr int FormatVersion = 1;

constexpr char Version[] = "version";
constexpr char Name[] = "name";
constexpr char Top[] = "top";
constexpr char Sources[] = "sources";
constexpr char Options[] = "options";
constexpr char LibraryFiles[] = "libraryFiles";
constexpr char Macros[] = "macros";
constexpr char Device[] = "device";
constexpr char LibraryFolders[] = "libraryFolders";
constexpr char LibraryExtensions[] = "libraryExtensions";

// Keys of an entry of Sources.
constexpr char File[] = "file";
constexpr char Type[] = "type";
constexpr char Enabled[] = "enabled";
constexpr char Library[] = "library";

// Keys of Device, which also has Name.
constexpr char Family[] = "family";
constexpr char Package[] = "package";
constexpr char SpeedGrade[] = "speedGrade";

} // namespace TE::ProjectKey
