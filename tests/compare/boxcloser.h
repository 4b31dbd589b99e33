// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dump.h"
#include "widgettext.h"

#include <QApplication>
#include <QDialog>
#include <QTimer>

namespace TarnCompare {

/// Writes down every box and every other modal dialog that appears and closes it.
class BoxCloser final : public QTimer
{
public:
    explicit BoxCloser(Dump *dump)
        : m_dump(dump)
    {
        QObject::connect(this, &QTimer::timeout, this, &BoxCloser::closeBox);
        start(0);
    }

private:
    static constexpr char Closing[] = "closing";

    void closeBox()
    {
        auto *box = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!box || box->property(Closing).toBool())
            return;
        box->setProperty(Closing, true);
        m_dump->line(QStringLiteral("BOX"));
        LongText text;
        writeWidget(&text, box);
        text.writeTo(m_dump);
        // Not here: the next box may come while this one goes, and the timer has to see it.
        QMetaObject::invokeMethod(box, &QDialog::reject, Qt::QueuedConnection);
    }

    Dump *m_dump;
};

} // namespace TarnCompare
