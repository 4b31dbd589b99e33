// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QApplication>
#include <QProgressDialog>
#include <QTimer>

#include <functional>

namespace TarnTest {

/// Calls a function as soon as the progress dialog shows, in the phase that begins with that text.
class DialogWatch : public QObject
{
public:
    explicit DialogWatch(const std::function<void(QProgressDialog *)> &act,
                         const QString &phase = QString())
    {
        connect(&m_timer, &QTimer::timeout, this, [this, act, phase] {
            auto *dialog = qobject_cast<QProgressDialog *>(QApplication::activeModalWidget());
            if (!dialog || !dialog->isVisible() || !dialog->labelText().startsWith(phase))
                return;
            m_timer.stop();
            act(dialog);
        });
        m_timer.start(10);
    }

private:
    QTimer m_timer;
};

} // namespace TarnTest
