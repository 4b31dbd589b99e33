// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "messagesdock.h"

#include "messagelog.h"

#include <QFontDatabase>
#include <QPlainTextEdit>

namespace Workbench {

MessagesDock::MessagesDock(MessageLog *log, QWidget *parent)
    : QDockWidget(tr("Messages"), parent)
    , m_text(new QPlainTextEdit(this))
{
    setObjectName(QStringLiteral("messagesDock"));
    m_text->setObjectName(QStringLiteral("messages"));
    m_text->setReadOnly(true);
    m_text->setMaximumBlockCount(MostLines);
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setWidget(m_text);
    connect(log, &MessageLog::messagesAdded, m_text, [this](const QStringList &messages) {
        m_text->appendPlainText(messages.join(QLatin1Char('\n')));
    });
}

} // namespace Workbench
