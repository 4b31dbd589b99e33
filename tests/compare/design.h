// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

#include <memory>

namespace NETWEIR {
class RtlNetlist;
}

namespace TarnCompare {

class Choice;
class Dump;

/// The netlist that @p name means, null when it has none; what is said about it goes to @p dump.
///
/// - "random:N": a random netlist, with N as its seed.
/// - "large:N": a million nets with paths of N letters, 0 for short ones.
/// - the path of a folder with a design: one that tests have collected, with info.json, or one with
///   a list of sources (project.json or design.f).
/// - the path of a project file.
///
/// In a folder, the file of the sources that @p choice picks is damaged if @p choice is not null;
/// so the folder must be a copy.
std::unique_ptr<NETWEIR::RtlNetlist> readDesign(const QString &name, Dump *dump, Choice *choice);

} // namespace TarnCompare
