// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

namespace TarnTest {

/// The names that the shared library @p path exports, demangled and sorted, each once. Names that
/// begin with an underscore are left out: linkers, sanitizers and coverage add such names of their
/// own. Ends the program when nm cannot read the library.
QStringList exportedSymbols(const QString &path);

/// The names of all shared libraries with which the program or library @p path is loaded, sorted.
/// Ends the program when ldd cannot tell.
QStringList neededLibraries(const QString &path);

} // namespace TarnTest
