// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

/// Builds a netlist of a million bits for each of several lengths of the paths, each in a process
/// of its own, which finds its task in the first argument after the name of this program. False
/// when a goal is missed.
bool measureNetlists();

/// The task of such a process: builds the netlist that @p arguments name and prints what it took.
/// False when the arguments do not name any.
bool buildNetlist(const QStringList &arguments);
