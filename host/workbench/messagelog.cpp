// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "messagelog.h"

#include <QDebug>

#include <atomic>
#include <utility>

namespace Workbench {

namespace {
std::atomic<MessageLog *> currentLog{nullptr};
}

MessageLog::MessageLog(QObject *parent)
    : QObject(parent)
{
    currentLog = this;
    m_previous = qInstallMessageHandler(handle);
}

MessageLog::~MessageLog()
{
    qInstallMessageHandler(m_previous);
    currentLog = nullptr;
}

void MessageLog::warn(const QStringList &warnings)
{
    for (const QString &warning : warnings)
        qDebug().noquote() << QLatin1String("WARNING: ") + warning;
}

void MessageLog::flush()
{
    QStringList messages;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        messages = std::exchange(m_pending, {});
    }
    if (!messages.isEmpty())
        Q_EMIT messagesAdded(messages);
}

void MessageLog::handle(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    MessageLog *log = currentLog;
    if (!log)
        return;
    if (log->m_previous)
        log->m_previous(type, context, message);
    // Remarks of the off-screen platform about itself are of no use to the user.
    if (!message.startsWith(QLatin1String("This plugin does not support ")))
        log->add(message.left(LongestMessage));
}

void MessageLog::add(const QString &message)
{
    bool isFirst = false;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        isFirst = m_pending.isEmpty();
        if (m_pending.size() == MostPending)
            m_pending.removeFirst();
        m_pending.append(message);
    }
    if (isFirst)
        QMetaObject::invokeMethod(this, &MessageLog::flush, Qt::QueuedConnection);
}

} // namespace Workbench
