// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <core/iview.h>

#include <QCloseEvent>

#include <functional>

/// A view that answers the close question as the test says.
class TestView : public Core::IView
{
    Q_OBJECT

public:
    explicit TestView(const QString &title) { setWindowTitle(title); }

    std::function<bool()> agreesToClose; ///< Unset: agrees.
    int questions = 0;

protected:
    void closeEvent(QCloseEvent *event) override
    {
        ++questions;
        const auto answer = agreesToClose; // The view may die while it is asked.
        event->setAccepted(!answer || answer());
    }
};
