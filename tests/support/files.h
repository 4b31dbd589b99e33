// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

namespace TarnTest {

/// Writes @p content to @p path, replacing the file and creating its folder. Ends the program on
/// failure: a test cannot go on without its files.
void writeFile(const QString &path, const QByteArray &content);

/// The content of the file at @p path, null when it cannot be read.
QByteArray readFile(const QString &path);

} // namespace TarnTest
