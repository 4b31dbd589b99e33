// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMenu>
#include <QPointer>

namespace Workbench {

/// The actions of the active view (QWidget::actions()) in their order, with their separators.
/// Disabled while there is none.
///
/// Follows what the view adds and removes. The actions stay the view's, and so do their shortcuts:
/// where they work is decided by their shortcut context, as without the menu.
class EditMenu : public QMenu
{
    Q_OBJECT

public:
    explicit EditMenu(QWidget *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void actionEvent(QActionEvent *event) override;

private:
    void showActionsOf(QWidget *view);
    void updateEnabled();

    QPointer<QWidget> m_view;
};

} // namespace Workbench
