// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "sizememory.h"

#include <QDialog>
#include <QEvent>

namespace TARN {

SizeMemory::SizeMemory(QDialog *dialog, QSize *size)
    : QObject(dialog)
    , m_dialog(dialog)
    , m_size(size)
{
    if (m_size->isValid())
        m_dialog->resize(*m_size);
    m_dialog->installEventFilter(this);
}

bool SizeMemory::eventFilter(QObject *watched, QEvent *event)
{
    // A size that the program sets is known before the window system reports it.
    if (event->type() == QEvent::Resize && event->spontaneous())
        m_resizedByUser = true;
    if (event->type() == QEvent::Hide && m_resizedByUser) {
        const bool fillsScreen = m_dialog->isMaximized() || m_dialog->isFullScreen();
        *m_size = fillsScreen ? m_dialog->normalGeometry().size() : m_dialog->size();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace TARN
