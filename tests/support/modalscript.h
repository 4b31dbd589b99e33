// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <QList>
#include <QMessageBox>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <functional>

class QMenu;

namespace TarnTest {

/// Answers the modal windows and menus that the code under test opens, in the order announced.
///
/// Records an error and dismisses the window when it was not announced, when its class, title or
/// text differs, and when it stays open for longer than 30 seconds. Call problems() at the end: it
/// is empty when exactly the announced windows appeared. Progress dialogs need no announcement:
/// whether they appear depends on the speed of the machine, and they close by themselves.
class ModalScript : public QObject
{
    Q_OBJECT

public:
    struct Box
    {
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        QString title;
        QString text;
        QMessageBox::StandardButtons buttons = QMessageBox::Ok;
        QString detailedText;
    };

    explicit ModalScript(QObject *parent = nullptr);
    ~ModalScript() override;

    /// A message box with exactly these properties. @p meanwhile runs while the box is open; then
    /// the box is answered with @p answer.
    void expectBox(const Box &box, QMessageBox::StandardButton answer = QMessageBox::Ok,
                   const std::function<void(QMessageBox *)> &meanwhile = {});

    /// A modal window of the class @p className (or derived) with that title. @p action has to
    /// close it.
    void expectDialog(const QString &className, const QString &title,
                      const std::function<void(QDialog *)> &action);

    /// A menu. @p action may trigger an action of it; the menu is closed afterwards.
    void expectMenu(const std::function<void(QMenu *)> &action);

    /// A menu from which the action with that text is chosen; an empty text dismisses it.
    /// The menu must show exactly @p entries, disabled ones with a leading '-'.
    void expectMenu(const QStringList &entries, const QString &choice);

    /// The errors, one line each, including announced windows that did not appear.
    QString problems() const;

private:
    struct Step
    {
        QString description;
        /// Describes a window that was not announced; empty for the right one.
        std::function<QString(QWidget *)> mismatch;
        std::function<void(QWidget *)> act;
    };

    void poll();
    /// Whether the window is a progress dialog that was not announced.
    bool isUnasked(QWidget *window) const;
    void handle(QWidget *window);
    void dismiss(QWidget *window);

    QTimer m_timer;
    QList<Step> m_steps;
    QStringList m_problems;
    QList<QPointer<QWidget>> m_handled;
    QPointer<QWidget> m_waiting;
    qint64 m_waitingSince = 0;
};

} // namespace TarnTest
