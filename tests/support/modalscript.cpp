// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "modalscript.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDateTime>
#include <QKeyEvent>
#include <QMenu>
#include <QProgressDialog>

namespace TarnTest {

namespace {

constexpr int PollInterval = 5;
constexpr qint64 StuckAfter = 30000;

QString describe(const QWidget *window)
{
    QString text =
        QStringLiteral("%1 titled \"%2\"")
            .arg(QString::fromLatin1(window->metaObject()->className()), window->windowTitle());
    if (const auto *box = qobject_cast<const QMessageBox *>(window)) {
        text += QStringLiteral(" icon %1 buttons 0x%2 text \"%3\" details \"%4\"")
                    .arg(QString::number(box->icon()), QString::number(box->standardButtons(), 16),
                         box->text(), box->detailedText());
    }
    return text;
}

QStringList entriesOf(const QMenu *menu)
{
    QStringList entries;
    for (const QAction *action : menu->actions()) {
        if (action->isVisible())
            entries.append((action->isEnabled() ? QString() : QStringLiteral("-")) +
                           action->text());
    }
    return entries;
}

} // namespace

ModalScript::ModalScript(QObject *parent)
    : QObject(parent)
{
    m_timer.setInterval(PollInterval);
    connect(&m_timer, &QTimer::timeout, this, &ModalScript::poll);
    m_timer.start();
}

ModalScript::~ModalScript() = default;

void ModalScript::expectBox(const Box &box, QMessageBox::StandardButton answer,
                            const std::function<void(QMessageBox *)> &meanwhile)
{
    Step step;
    step.description =
        QStringLiteral("message box titled \"%1\" text \"%2\"").arg(box.title, box.text);
    step.mismatch = [box](QWidget *window) {
        auto *actual = qobject_cast<QMessageBox *>(window);
        const bool same = actual && actual->icon() == box.icon &&
                          actual->windowTitle() == box.title && actual->text() == box.text &&
                          actual->standardButtons() == box.buttons &&
                          actual->detailedText() == box.detailedText;
        return same ? QString() : describe(window);
    };
    step.act = [answer, meanwhile](QWidget *window) {
        QPointer<QMessageBox> actual(qobject_cast<QMessageBox *>(window));
        if (meanwhile)
            meanwhile(actual);
        if (actual)
            actual->button(answer)->click();
    };
    m_steps.append(step);
}

void ModalScript::expectDialog(const QString &className, const QString &title,
                               const std::function<void(QDialog *)> &action)
{
    Step step;
    step.description = QStringLiteral("%1 titled \"%2\"").arg(className, title);
    step.mismatch = [className, title](QWidget *window) {
        const bool same =
            window->inherits(className.toLatin1().constData()) && window->windowTitle() == title;
        return same ? QString() : describe(window);
    };
    step.act = [action](QWidget *window) { action(qobject_cast<QDialog *>(window)); };
    m_steps.append(step);
}

void ModalScript::expectMenu(const std::function<void(QMenu *)> &action)
{
    Step step;
    step.description = QStringLiteral("menu");
    step.mismatch = [](QWidget *window) {
        return qobject_cast<QMenu *>(window) ? QString() : describe(window);
    };
    step.act = [action](QWidget *window) {
        QPointer<QWidget> guard(window);
        action(static_cast<QMenu *>(window));
        if (guard)
            guard->close();
    };
    m_steps.append(step);
}

void ModalScript::expectMenu(const QStringList &entries, const QString &choice)
{
    expectMenu([this, entries, choice](QMenu *menu) {
        if (entriesOf(menu) != entries)
            m_problems.append(QStringLiteral("menu shows: ") +
                              entriesOf(menu).join(QLatin1Char('|')));
        for (QAction *action : menu->actions()) {
            if (!choice.isEmpty() && action->text() == choice) {
                // As a click does, so that the menu's exec() returns the action.
                menu->setActiveAction(action);
                QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
                QCoreApplication::sendEvent(menu, &press);
                return;
            }
        }
    });
}

QString ModalScript::problems() const
{
    QStringList all = m_problems;
    for (const Step &step : m_steps)
        all.append(QStringLiteral("did not come: ") + step.description);
    return all.join(QLatin1Char('\n'));
}

void ModalScript::poll()
{
    QWidget *window = QApplication::activePopupWidget();
    if (!window)
        window = QApplication::activeModalWidget();
    if (!window || !window->isVisible() || isUnasked(window))
        return;

    if (m_handled.contains(window)) {
        const qint64 now = QDateTime::currentMSecsSinceEpoch();
        if (m_waiting != window) {
            m_waiting = window;
            m_waitingSince = now;
        } else if (now - m_waitingSince > StuckAfter) {
            m_problems.append(QStringLiteral("stayed open: ") + describe(window));
            dismiss(window);
        }
        return;
    }
    m_handled.removeAll(nullptr);
    m_handled.append(window);
    handle(window);
}

bool ModalScript::isUnasked(QWidget *window) const
{
    return qobject_cast<QProgressDialog *>(window) &&
           (m_steps.isEmpty() || !m_steps.first().mismatch(window).isEmpty());
}

void ModalScript::handle(QWidget *window)
{
    if (m_steps.isEmpty()) {
        m_problems.append(QStringLiteral("not announced: ") + describe(window));
        dismiss(window);
        return;
    }
    const Step step = m_steps.takeFirst();
    const QString mismatch = step.mismatch(window);
    if (!mismatch.isEmpty()) {
        m_problems.append(QStringLiteral("expected %1, got %2").arg(step.description, mismatch));
        dismiss(window);
        return;
    }
    // Queued: the answer may open the next window, and a timer does not fire again while its own
    // slot runs.
    QPointer<QWidget> guard(window);
    QMetaObject::invokeMethod(
        this,
        [this, guard, step] {
            if (guard)
                step.act(guard);
            if (guard && !guard->isVisible())
                m_handled.removeAll(guard);
        },
        Qt::QueuedConnection);
}

void ModalScript::dismiss(QWidget *window)
{
    if (auto *dialog = qobject_cast<QDialog *>(window))
        dialog->reject();
    else
        window->close();
}

} // namespace TarnTest
