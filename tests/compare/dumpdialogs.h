// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace TarnCompare {

class Choice;
class Dump;
class NumberedNetlist;

/// What the search dialog and the port dialog show and emit while a user does @p steps things in
/// each.
void dumpDialogs(Dump *dump, const NumberedNetlist &design, int steps, Choice *choice);

} // namespace TarnCompare
