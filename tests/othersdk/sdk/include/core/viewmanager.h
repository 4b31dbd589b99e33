// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QMap>
#include <QObject>

class QWidget;

namespace Core {

class IView;

/// Shows each view in a separate window. Only instance() is static.
class ViewManager : public QObject
{
    Q_OBJECT

public:
    static ViewManager *instance();

    void showView(IView *view);
    void closeView(IView *view);
    void registerContext(IView *view, const QString &context, int priority);
    QWidget *dialogParent();

    QList<IView *> views() { return m_views; }
    QString context(IView *view) { return m_contexts.value(view); }

signals:
    void viewActiveted(Core::IView *view);
    void viewClosed(Core::IView *view);

private:
    QList<IView *> m_views;
    QMap<IView *, QString> m_contexts;
};

} // namespace Core
