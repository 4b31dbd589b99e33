// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

class QString;

namespace NETWEIR {
class RtlNetlist;
}

namespace TarnCompare {

class Choice;
class Dump;
class NumberedNetlist;

/// What a view of a random configuration shows while @p steps steps are made in it: edits of user
/// and program, undo, redo, reloading, and saving in the end. Its file is in @p folder. Takes
/// @p netlist, whose objects @p design has, and deletes it.
void dumpPages(Dump *dump, std::unique_ptr<NETWEIR::RtlNetlist> netlist,
               const NumberedNetlist &design, const QString &folder, int steps, Choice *choice);

} // namespace TarnCompare
