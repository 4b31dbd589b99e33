// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDockWidget>

class QPlainTextEdit;

namespace Workbench {

class MessageLog;

/// Shows the latest lines of the debug stream.
class MessagesDock : public QDockWidget
{
    Q_OBJECT

public:
    static constexpr int MostLines = 5000;

    /// @p log has to outlive the dock.
    explicit MessagesDock(MessageLog *log, QWidget *parent = nullptr);

private:
    QPlainTextEdit *m_text;
};

} // namespace Workbench
