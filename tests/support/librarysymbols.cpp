// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "librarysymbols.h"

#include <QProcess>
#include <QRegularExpression>

namespace TarnTest {

namespace {

/// The lines that @p program writes. Ends this program when it fails.
QStringList outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("%s cannot read %s: %s", qPrintable(program), qPrintable(arguments.last()),
               qPrintable(process.errorString()));
    const QRegularExpression lines("[\\r\\n]+");
    return QString::fromLocal8Bit(process.readAllStandardOutput()).split(lines, Qt::SkipEmptyParts);
}

} // namespace

QStringList exportedSymbols(const QString &path)
{
    QStringList symbols;
    const QStringList lines = outputOf("nm", {"-D", "-C", "--defined-only", path});
    for (const QString &line : lines) {
        const QString symbol = line.section(' ', 2);
        if (!symbol.isEmpty() && !symbol.startsWith('_'))
            symbols.append(symbol);
    }
    symbols.sort();
    symbols.removeDuplicates(); // Constructors come in several variants.
    return symbols;
}

QStringList neededLibraries(const QString &path)
{
    QStringList libraries;
    const QStringList lines = outputOf("ldd", {path});
    for (const QString &line : lines)
        libraries.append(line.trimmed().section(' ', 0, 0).section('/', -1));
    libraries.sort();
    return libraries;
}

} // namespace TarnTest
