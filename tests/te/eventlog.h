// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <qutil/eventmanager.h>
#include <qutil/ievent.h>
#include <qutil/ieventhandler.h>
#include <te/teconstants.h>

#include <QStringList>

#include <functional>

namespace TarnTest {

/// Records every event of the task engine as one line: its name and its values by key.
class EventLog final : public QUtil::IEventHandler
{
public:
    EventLog()
    {
        for (const char *name :
             {TE::E_FILE_ADD, TE::E_FILE_REMOVE, TE::E_FILE_CH_ENABLE, TE::E_FILE_CH_TYPE,
              TE::E_FILE_MODIFIED, TE::E_OPTION_CHANGE, TE::E_DEVICE_CHANGE})
            QUtil::EventManager::instance()->subscribe(this, QString::fromLatin1(name));
    }

    void handleIEvent(const QUtil::IEvent *event) override
    {
        QString line = event->name();
        for (const char *key :
             {TE::K_FILE, TE::K_TYPE, TE::K_ENABLE, TE::K_OPTION, TE::K_PREVIOUS}) {
            const QVariant value = event->get(QString::fromLatin1(key));
            if (value.isValid())
                line += QStringLiteral(" %1=%2").arg(QString::fromLatin1(key), value.toString());
        }
        m_lines.append(line);
        if (onEvent)
            onEvent();
    }

    /// The lines since the last call.
    QStringList take() { return std::exchange(m_lines, {}); }
    const QStringList &lines() const { return m_lines; }

    std::function<void()> onEvent;

private:
    QStringList m_lines;
};

} // namespace TarnTest
