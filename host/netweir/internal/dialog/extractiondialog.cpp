// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "extractiondialog.h"

#include <netweir/internal/ground/messages.h>

#include <QApplication>
#include <QProgressDialog>

namespace NETWEIR::Internal {

namespace {

constexpr int ShowAfter = 300;

} // namespace

ExtractionDialog::ExtractionDialog(QWidget *parent)
{
    m_elapsed.start();
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return; // A program without windows.

    m_dialog = new QProgressDialog(Text::tr("Reading sources"), Text::tr("Cancel"), 0, 0, parent);
    m_dialog->setObjectName(QStringLiteral("NETWEIR__ExtractionProgress"));
    m_dialog->setWindowTitle(Text::tr("Reading RTL Netlist"));
    m_dialog->setWindowModality(Qt::ApplicationModal);
    m_dialog->setAutoClose(false);
    m_dialog->setAutoReset(false);
    m_dialog->setMinimumDuration(24 * 60 * 60 * 1000); // Only inputDelay() shows it.
    m_dialog->setMinimumWidth(360);
    connect(m_dialog, &QProgressDialog::canceled, this, &ExtractionDialog::cancel);
    connect(m_dialog, &QDialog::finished, this, &ExtractionDialog::cancel);
    connect(m_dialog, &QObject::destroyed, this, &ExtractionDialog::cancel);
}

ExtractionDialog::~ExtractionDialog()
{
    if (m_dialog)
        m_dialog->disconnect(this);
    delete m_dialog;
}

void ExtractionDialog::phaseChanged(const QString &phase)
{
    m_phase = phase;
    updateText();
}

void ExtractionDialog::ticked(qint64 /*elapsedMilliseconds*/)
{
    updateText();
}

/// Shows the dialog when its time has come.
int ExtractionDialog::inputDelay()
{
    if (!m_dialog || m_dialog->isVisible())
        return 0;
    const qint64 untilShown = ShowAfter - m_elapsed.elapsed();
    if (untilShown > 0)
        return int(untilShown);
    if (!m_cancelled) {
        updateText();
        m_dialog->show();
    }
    return 0;
}

void ExtractionDialog::cancel()
{
    m_cancelled = true;
    wake();
}

void ExtractionDialog::updateText()
{
    if (m_dialog)
        m_dialog->setLabelText(Text::tr("%1\nElapsed time: %2 s")
                                   .arg(m_phase, QString::number(m_elapsed.elapsed() / 1000)));
}

} // namespace NETWEIR::Internal
