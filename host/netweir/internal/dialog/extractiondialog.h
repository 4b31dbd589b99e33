// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/extractionmonitor.h>

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QString>

class QProgressDialog;
class QWidget;

namespace NETWEIR::Internal {

/// The application-modal dialog with the phase and the elapsed time of an extraction.
///
/// The dialog appears after a moment; until then user input waits. It may be deleted with its
/// parent at any time, which cancels the extraction. A program without windows gets no dialog.
class ExtractionDialog final : public QObject, public ExtractionMonitor
{
    Q_OBJECT

public:
    explicit ExtractionDialog(QWidget *parent);
    ~ExtractionDialog() override;

    // ExtractionMonitor
    void phaseChanged(const QString &phase) override;
    void ticked(qint64 elapsedMilliseconds) override;
    bool isCancelled() const override { return m_cancelled; }
    int inputDelay() override;

private:
    void cancel();
    void updateText();

    QElapsedTimer m_elapsed;
    QPointer<QProgressDialog> m_dialog;
    QString m_phase;
    bool m_cancelled = false;
};

} // namespace NETWEIR::Internal
