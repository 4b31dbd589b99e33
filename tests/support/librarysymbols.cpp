// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "librarysymbols.h"

#include <QProcess>
#include <QRegularExpression>

namespace TarnTest {

QStringList exportedSymbols(const QString &path)
{
    QProcess nm;
    nm.start("nm", {"-D", "-C", "--defined-only", path});
    if (!nm.waitForFinished() || nm.exitCode() != 0)
        qFatal("nm cannot read %s: %s", qPrintable(path), qPrintable(nm.errorString()));
    const QRegularExpression lines("[\\r\\n]+");
    const QStringList output = QString::fromLocal8Bit(nm.readAllStandardOutput()).split(lines);
    QStringList symbols;
    for (const QString &line : output) {
        const QString symbol = line.section(' ', 2);
        if (!symbol.isEmpty() && !symbol.startsWith('_'))
            symbols.append(symbol);
    }
    symbols.sort();
    symbols.removeDuplicates(); // Constructors come in several variants.
    return symbols;
}

} // namespace TarnTest
