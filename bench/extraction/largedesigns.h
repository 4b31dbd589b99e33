// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

/// Extracts each of the large designs in a process of its own, which finds its task in the first
/// argument after the name of this program. False when a goal is missed.
bool measureLargeDesigns();

/// The task of such a process: extracts the design that @p arguments name and prints what it took.
/// False when the arguments do not name any.
bool extractLargeDesign(const QStringList &arguments);
