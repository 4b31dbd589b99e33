// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace Tool {

struct Command;

/// The text of "tarn --help". Help texts end with a line feed.
QString programHelp();

/// The text of "tarn GROUP --help", for the commands whose names begin with @p group.
QString groupHelp(const QString &group);

/// The text of --help of a command.
QString commandHelp(const Command &command);

} // namespace Tool
