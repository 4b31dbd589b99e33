// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "edithistory.h"

#include "tarnoptionwidget.h"
#include "tarnview.h"
#include "tarnview_p.h"

#include <model/tarncore.h>

#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QLineEdit>
#include <QUndoCommand>

#include <utility>

namespace TARN {

/// The way from one snapshot to another and back.
class EditHistory::Step final : public QUndoCommand
{
public:
    Step(EditHistory *history, const QString &text, State before, State after)
        : QUndoCommand(text)
        , m_history(history)
        , m_before(std::move(before))
        , m_after(std::move(after))
    {
    }

    void undo() override { m_history->show(m_before, m_after); }

    void redo() override
    {
        if (m_done)
            m_history->show(m_after, m_before);
        m_done = true; // The stack calls this for the new step as well, which is shown already.
    }

private:
    EditHistory *m_history;
    State m_before;
    State m_after;
    bool m_done = false;
};

namespace {

QList<QKeySequence> withKey(QList<QKeySequence> keys, const QKeySequence &key)
{
    if (!keys.contains(key))
        keys.append(key);
    return keys;
}

/// The line of @p view that the user types in, null when there is none.
QLineEdit *lineWithFocus(const QWidget *view)
{
    auto *line = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    return line && line->window() == view->window() && view->isAncestorOf(line) ? line : nullptr;
}

QString textOf(const ConfigDifference &difference)
{
    const int count = difference.count;
    switch (difference.kind) {
    case ConfigDifference::CoresAdded:
        return count == 1 ? EditHistory::tr("Add Core") : EditHistory::tr("Add Cores");
    case ConfigDifference::CoresRemoved:
        return count == 1 ? EditHistory::tr("Remove Core") : EditHistory::tr("Remove Cores");
    case ConfigDifference::PortsAdded:
        return count == 1 ? EditHistory::tr("Add Port") : EditHistory::tr("Add Ports");
    case ConfigDifference::PortsRemoved:
        return count == 1 ? EditHistory::tr("Remove Port") : EditHistory::tr("Remove Ports");
    case ConfigDifference::Signals:
        return EditHistory::tr("Change Signals");
    case ConfigDifference::InitialValue:
        return EditHistory::tr("Change Initial Value");
    case ConfigDifference::UserClock:
        return EditHistory::tr("Change User Clock");
    case ConfigDifference::Several:
    case ConfigDifference::None:
        break;
    }
    return EditHistory::tr("Edit");
}

} // namespace

EditHistory::Pause::Pause(EditHistory *history)
    : m_history(history)
    , m_former(history->m_paused)
{
    m_history->m_paused = true;
}

EditHistory::Pause::~Pause()
{
    m_history->m_paused = m_former;
}

EditHistory::EditHistory(private_impl::TarnViewPrivate *document)
    : d(document)
    , m_undo(addAction("undoAction", withKey(QKeySequence::keyBindings(QKeySequence::Undo),
                                             Qt::CTRL + Qt::Key_Z)))
    , m_redo(addAction("redoAction", withKey(QKeySequence::keyBindings(QKeySequence::Redo),
                                             Qt::CTRL + Qt::SHIFT + Qt::Key_Z)))
{
    m_stack.setUndoLimit(MaximumSteps);
    connect(m_undo, &QAction::triggered, this, &EditHistory::undo);
    connect(m_redo, &QAction::triggered, this, &EditHistory::redo);
    connect(&m_stack, &QUndoStack::indexChanged, this, &EditHistory::updateActions);
    updateActions();
}

EditHistory::~EditHistory()
{
    m_stack.disconnect(this);
}

QAction *EditHistory::addAction(const char *name, const QList<QKeySequence> &keys)
{
    auto *action = new QAction(this);
    action->setObjectName(QLatin1String(name));
    action->setShortcuts(keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    if (d->q) // A document may be without a view.
        d->q->addAction(action);
    return action;
}

void EditHistory::updateActions()
{
    m_undo->setEnabled(m_stack.canUndo());
    m_undo->setText(m_stack.canUndo() ? tr("&Undo %1").arg(m_stack.undoText()) : tr("&Undo"));
    m_redo->setEnabled(m_stack.canRedo());
    m_redo->setText(m_stack.canRedo() ? tr("&Redo %1").arg(m_stack.redoText()) : tr("&Redo"));
}

// Steps

void EditHistory::begin()
{
    m_paused = false;
    m_current = std::make_shared<ConfigSnapshot>(shown(Typing::LeftOut));
    m_stack.clear();
    if (d->q->isModified())
        m_stack.resetClean();
    Q_EMIT changed();
}

void EditHistory::record(TarnOptionWidget *page)
{
    if (m_paused)
        return;
    const ConfigSnapshot target = shown(Typing::LeftOut, page);
    if (!sameObjects(*m_current, target))
        push(target);
}

void EditHistory::followTyping()
{
    if (!m_paused && m_stack.isClean() && sameObjects(*m_current, shown(Typing::Included)))
        d->q->showUnmodified();
}

void EditHistory::commitTyping()
{
    if (m_paused)
        return;
    const ConfigSnapshot target = shown(Typing::Included);
    if (sameObjects(*m_current, target))
        return;
    for (TarnOptionWidget *page : qAsConst(d->optionWidgets))
        page->keepTyping();
    push(target);
}

void EditHistory::apply(const ConfigSnapshot &target, const QString &text)
{
    commitTyping();
    if (m_paused || sameObjects(*m_current, target))
        return;
    const State before = m_current;
    show(std::make_shared<ConfigSnapshot>(target), before);
    d->q->onModified();
    m_current = before;
    push(target, text);
    showPlace();
}

void EditHistory::recordReload()
{
    if (m_paused)
        return;
    const ConfigSnapshot target = shown(Typing::LeftOut);
    if (!sameObjects(*m_current, target))
        push(target, tr("Reload File"));
    if (d->q->isModified())
        m_stack.resetClean();
    else
        m_stack.setClean();
}

void EditHistory::followStored()
{
    if (m_paused)
        return;
    const ConfigSnapshot stored = shown(Typing::LeftOut);
    if (sameObjects(*m_current, stored))
        return;
    *m_current = stored;
    Q_EMIT changed();
}

void EditHistory::setSaved()
{
    m_stack.setClean();
}

void EditHistory::push(const ConfigSnapshot &target, const QString &text)
{
    const State before = m_current;
    m_current = std::make_shared<ConfigSnapshot>(target);
    const QString name = text.isEmpty() ? textOf(difference(*before, target)) : text;
    m_stack.push(new Step(this, name, before, m_current));
    Q_EMIT changed();
}

ConfigSnapshot EditHistory::shown(Typing typing, const TarnOptionWidget *onlyPage) const
{
    const QList<TarnOptionWidget *> &pages = d->optionWidgets;
    QVector<qint32> indexes;
    for (const TarnOptionWidget *page : pages)
        indexes.append(page->core()->index);
    const bool sameCount = m_current->cores.size() == pages.size();
    const auto contentOf = [&](int i, const std::shared_ptr<const CoreSnapshot> &former) {
        if (onlyPage && sameCount && pages.at(i) != onlyPage)
            return m_current->cores.at(i).content;
        auto content = pages.at(i)->shown(typing, former);
        shareSignals(pages.at(i)->core(), *content);
        return content;
    };
    return snapshotOf(indexes, contentOf, *m_current);
}

// Undo and redo

void EditHistory::undo()
{
    if (!moveTyping(&QLineEdit::isUndoAvailable, &QLineEdit::undo))
        move(&QUndoStack::undo);
}

void EditHistory::redo()
{
    if (!moveTyping(&QLineEdit::isRedoAvailable, &QLineEdit::redo))
        move(&QUndoStack::redo);
}

bool EditHistory::moveTyping(bool (QLineEdit::*available)() const, void (QLineEdit::*step)())
{
    QLineEdit *line = lineWithFocus(d->q);
    if (!line || !(line->*available)())
        return false;
    (line->*step)();
    d->q->onModified();
    followTyping();
    return true;
}

void EditHistory::move(void (QUndoStack::*step)())
{
    if (m_paused)
        return;
    commitTyping();
    const int former = m_stack.index();
    (m_stack.*step)();
    if (m_stack.index() == former)
        return;
    if (m_stack.isClean())
        d->q->showUnmodified();
    else
        d->q->onModified();
    Q_EMIT changed();
    showPlace();
}

void EditHistory::show(const State &target, const State &former)
{
    const Pause pause(this);
    const bool hadFocus = d->q->isAncestorOf(QApplication::focusWidget());
    d->showSnapshot(*m_current, *target);
    m_current = target;
    m_shown = difference(*former, *target);
    TarnOptionWidget *page = d->optionWidgets.value(m_shown.core);
    if (!page)
        return;
    d->q->changeTarnWidget(page->core()->index);
    // The widget with the focus may have gone. Without the focus, the keys would do nothing more.
    if (hadFocus && !d->q->isAncestorOf(QApplication::focusWidget()))
        page->setFocus();
}

void EditHistory::showPlace()
{
    TarnOptionWidget *page = d->optionWidgets.value(m_shown.core);
    if (page && (m_shown.port >= 0 || m_shown.kind == ConfigDifference::UserClock))
        page->showRow(m_shown.type, m_shown.port, m_shown.signal, -1);
}

} // namespace TARN
