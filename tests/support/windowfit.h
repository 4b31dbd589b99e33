// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFont>
#include <QString>

class QWidget;

namespace TarnTest {

/// What is wrong with the layout of @p window, which is shown: texts of buttons, boxes and labels
/// that are cut off at its present size, and a smallest size beyond a screen of 1280 x 720. One
/// line each; empty when all is well.
QString layoutFaults(const QWidget *window);

/// Sets the size of the application's font while it lives.
class FontSize
{
public:
    explicit FontSize(double points);
    ~FontSize();
    Q_DISABLE_COPY(FontSize)

    /// Column "points" of a test: the usual size and what people with weak eyes choose.
    static void addSizes();

private:
    QFont m_usual;
};

} // namespace TarnTest
