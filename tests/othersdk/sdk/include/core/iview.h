// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

namespace Core {

class IView : public QWidget
{
    Q_OBJECT

public:
    explicit IView(QWidget *parent = nullptr)
        : QWidget(parent)
    {
    }

    QString shortTitle() { return m_shortTitle; }
    /// Deprecated in newer versions of Qt.
    int titleWidth() { return fontMetrics().width(m_shortTitle); }

public slots:
    void setShortTitle(const QString &title)
    {
        m_shortTitle = title;
        emit shortTitleChanged(title);
    }

signals:
    void shortTitleChanged(const QString &title);

private:
    QString m_shortTitle;
};

} // namespace Core
