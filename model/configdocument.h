// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "configformat.h"

#include <QBuffer>
#include <QByteArray>
#include <QList>
#include <QString>
#include <QXmlStreamWriter>

namespace TARN {

struct SignalItem;

/// The content of a configuration file while it is written, element by element. The same calls
/// always give the same bytes.
///
/// After the first function that returns false there is no content: something would not be read
/// back as it is. errorText() tells what.
class ConfigDocument
{
public:
    ConfigDocument();

    bool beginCore(qint32 index, const QString &module, const QString &userClock,
                   bool syncUserClock);
    bool addProbeIn(qint32 index, const QList<SignalItem> &list);
    bool addProbeOut(qint32 index, const QList<SignalItem> &list, const QString &initialValue);
    void endCore();

    /// The whole file, once. Null after an error.
    QByteArray finish();

    /// For the debug stream, empty after success.
    QString errorText() const { return m_error; }

private:
    bool checkSignals(const QList<SignalItem> &list, int depth);
    bool checkText(const QString &text);
    void beginPort(const QString &element, qint32 index);
    void endPort(const QList<SignalItem> &list);
    void writeSignals(const QString &element, const QList<SignalItem> &list);

    QBuffer m_buffer;
    QXmlStreamWriter m_xml;
    QString m_error;
};

} // namespace TARN
