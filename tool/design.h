// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <te/project.h>

#include <memory>

namespace NETWEIR {
class RtlNetlist;
}

namespace Tool {

class Console;
struct Invocation;

/// A design and the nets in it.
struct Design
{
    Design();
    ~Design();

    TE::Project project;
    std::unique_ptr<NETWEIR::RtlNetlist> netlist; ///< Never null in a design that was read.
};

/// Finds the design of @p invocation: the one that the arguments name, or the one project file
/// beside the first file, or of the current folder. Returns false after an error message. Quick:
/// sources are not read.
bool findProject(const Invocation &invocation, Console *console, TE::Project *project);

/// Finds the design and extracts its nets, which takes from a second to minutes. Warnings and
/// errors of the extraction go to the console. Returns false after an error message, or on
/// interruption: then there is nothing more to say.
bool readDesign(const Invocation &invocation, Console *console, Design *design);

} // namespace Tool
