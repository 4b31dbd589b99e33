// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFont>
#include <QString>

class QWidget;

namespace TarnTest {

/// The faults in the layout of the visible @p window, one line each: texts of buttons, boxes and
/// labels that are cut off at its present size, and a minimum size larger than 1280 x 720.
QString layoutFaults(const QWidget *window);

/// Sets the size of the application's font while it lives.
class FontSize
{
public:
    explicit FontSize(double points);
    ~FontSize();
    Q_DISABLE_COPY(FontSize)

    /// Adds rows for the column "points": the usual size and larger ones for weak eyes.
    static void addSizes();

private:
    QFont m_usual;
};

} // namespace TarnTest
