// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <mutex>

namespace Workbench {

/// Collects the debug stream while it lives, and passes every message on to the previous handler.
///
/// One object per process. Messages may come from any thread; this object emits them on its own
/// thread, several at once. At most MostPending messages wait; beyond that the oldest are dropped.
class MessageLog : public QObject
{
    Q_OBJECT

public:
    static constexpr int MostPending = 2000;
    static constexpr int LongestMessage = 4000; ///< In characters; the rest is cut off.

    explicit MessageLog(QObject *parent = nullptr);
    ~MessageLog() override;

    /// Writes @p warnings about the design to the debug stream.
    static void warn(const QStringList &warnings);

    /// Emits the waiting messages without returning to the event loop.
    void flush();

Q_SIGNALS:
    void messagesAdded(const QStringList &messages);

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &message);
    void add(const QString &message);

    std::mutex m_mutex;
    QStringList m_pending; ///< Guarded by the mutex.
    QtMessageHandler m_previous = nullptr;
};

} // namespace Workbench
