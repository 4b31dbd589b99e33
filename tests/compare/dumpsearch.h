// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace TARN {
struct SearchOptions;
}

namespace TarnCompare {

class Choice;
class Dump;
class NumberedNetlist;

/// A pattern that finds something in most cases, for a search of the given kind.
QString anyPattern(const NumberedNetlist &design, const TARN::SearchOptions &options,
                   Choice *choice);

/// The results of @p count searches, flat and as a tree.
void dumpSearches(Dump *dump, const NumberedNetlist &design, int count, Choice *choice);

} // namespace TarnCompare
