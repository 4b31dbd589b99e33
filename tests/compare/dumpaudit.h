// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace TarnCompare {

class Choice;
class Dump;
class NumberedNetlist;

/// The findings of @p count random configurations and of edits in them, what is offered in place of
/// what is missing, and the configurations after it took that place.
void dumpAudits(Dump *dump, const NumberedNetlist &design, int count, Choice *choice);

} // namespace TarnCompare
