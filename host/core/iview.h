// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core_global.h"

#include <QWidget>

namespace Core {

/// A document view shown by ViewManager, which owns it from ViewManager::showView() on.
///
/// The window title is the name of the document. The short title is the text of the view's tab; it
/// follows the window title until setShortTitle() is called. A view may ask before it closes, in
/// its closeEvent(). The destructor writes the debug line "IView: <window title> destoryed".
class CORE_EXPORT IView : public QWidget
{
    Q_OBJECT

public:
    explicit IView(QWidget *parent = nullptr);
    ~IView() override;

    QString shortTitle() const;
    void setShortTitle(const QString &title);

Q_SIGNALS:
    void shortTitleChanged(const QString &title);

private:
    void onWindowTitleChanged(const QString &title);

    QString m_shortTitle;
    bool m_hasShortTitle = false;
};

} // namespace Core
