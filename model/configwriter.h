// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "configformat.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QXmlStreamWriter>

namespace TARN {

class TarnCore;
struct ProbeIn;
struct SignalItem;

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
    bool checkCore(const TarnCore *core);
    bool checkSignals(const QList<SignalItem> &list, int depth);
    bool checkText(const QString &text);
    void writeCore(const TarnCore &core);
    void writePort(const QString &element, const ProbeIn &port, const QString *initialValue);
    void writeSignals(const QString &element, const QList<SignalItem> &list);

    const QList<TarnCore *> m_cores;
    QXmlStreamWriter m_xml;
    QString m_error;
};

} // namespace TARN
