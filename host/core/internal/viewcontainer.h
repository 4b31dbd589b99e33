// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPointer>
#include <QWidget>

namespace Core {

class IView;

/// The widget around a shown view. Every way of closing the view ends in the closeEvent() of the
/// container, which asks the view. Owns the view as its parent widget and deletes itself once
/// closed.
class ViewContainer : public QWidget
{
    Q_OBJECT

public:
    explicit ViewContainer(IView *view);
    ~ViewContainer() override;

    /// Null once other code has deleted the view.
    IView *view() const { return m_view; }

    /// Closes the view if it agrees. False too while the view is still being asked.
    bool tryToClose();

Q_SIGNALS:
    /// The view agreed to close, or the container is being deleted; the view is still whole.
    void closed();
    /// Other code has deleted the view, which cannot be used any more.
    void viewLost();

protected:
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool viewAgrees();
    void finish();
    void onViewDestroyed();

    QPointer<IView> m_view;
    const QEvent *m_question = nullptr; ///< The close event that the view is answering.
    bool m_closed = false;
};

} // namespace Core
