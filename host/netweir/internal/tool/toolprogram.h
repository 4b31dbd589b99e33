// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace NETWEIR::Internal {

/// Where the program of a tool may be, and what to say when it is nowhere.
struct ToolProgram
{
    const char *variable; ///< The environment variable that names another program.
    const char *name;     ///< On the PATH.
    const char *built;    ///< Name or path found at build time.
    QString advice;       ///< How to install it.
};

/// Path of the program: the one in the environment variable, otherwise the one on the PATH,
/// otherwise the one at build time. Null when there is none; @p error then says what to do.
QString findToolProgram(const ToolProgram &tool, QString *error);

} // namespace NETWEIR::Internal
