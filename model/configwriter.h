// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace TARN {

class ConfigDocument;
class TarnCore;

/// Turns cores into the content of a configuration file. The same cores always give the same
/// bytes. Borrows the cores; the time and the size of the result grow with the number of signals.
class ConfigWriter
{
public:
    explicit ConfigWriter(const QList<TarnCore *> &cores);

    /// The whole file. Null when the cores hold something that would not be read back as it is:
    /// a text that XML cannot represent, a kind that has no name, members nested too deep, or too
    /// much for one file. errorText() tells what.
    QByteArray content();

    /// For the debug stream, empty after success.
    QString errorText() const { return m_error; }

private:
    static bool addCore(const TarnCore &core, ConfigDocument *document);

    const QList<TarnCore *> m_cores;
    QString m_error;
};

} // namespace TARN
