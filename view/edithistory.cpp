// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "edithistory.h"

#include "tarnoptionwidget.h"
#include "tarnview.h"
#include "tarnview_p.h"

#include <model/configdifference.h>
#include <model/tarncore.h>

#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QLineEdit>
#include <QUndoCommand>

namespace TARN {

/// The way from one snapshot to another and back.
class EditHistory::Step final : public QUndoCommand
{
public:
    Step(EditHistory *history, const QString &text, const ConfigSnapshot &before,
         const ConfigSnapshot &after)
        : QUndoCommand(text)
        , m_history(history)
        , m_before(before)
        , m_after(after)
    {
    }

    void undo() override { m_history->show(m_before); }

    void redo() override
    {
        if (m_done)
            m_history->show(m_after);
        m_done = true; // The stack calls this for the new step as well, which is shown already.
    }

private:
    EditHistory *m_history;
    ConfigSnapshot m_before;
    ConfigSnapshot m_after;
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
                                             Qt::CTRL | Qt::Key_Z)))
    , m_redo(addAction("redoAction", withKey(QKeySequence::keyBindings(QKeySequence::Redo),
                                             Qt::CTRL | Qt::SHIFT | Qt::Key_Z)))
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
    m_current = shown();
    m_stack.clear();
    if (d->q->isModified())
        m_stack.resetClean();
    Q_EMIT changed();
}

void EditHistory::record(TarnOptionWidget *page)
{
    if (!m_paused)
        push(shown(page), QString());
}

void EditHistory::commitTyping() {}

void EditHistory::apply(const ConfigSnapshot &target, const QString &text)
{
    if (m_paused)
        return;
    commitTyping();
    const ConfigSnapshot before = m_current;
    show(target);
    m_current = before;
    d->q->onModified();
    push(target, text);
}

void EditHistory::recordReload()
{
    push(shown(), tr("Reload File"));
    if (d->q->isModified())
        m_stack.resetClean();
    else
        m_stack.setClean();
}

void EditHistory::setSaved()
{
    m_current = shown();
    m_stack.setClean();
}

void EditHistory::undo()
{
    QLineEdit *line = lineWithFocus(d->q);
    if (line && line->isUndoAvailable()) {
        line->undo();
        d->q->onModified();
        return;
    }
    move(&QUndoStack::undo);
}

void EditHistory::redo()
{
    QLineEdit *line = lineWithFocus(d->q);
    if (line && line->isRedoAvailable()) {
        line->redo();
        d->q->onModified();
        return;
    }
    move(&QUndoStack::redo);
}

void EditHistory::move(void (QUndoStack::*step)())
{
    if (m_paused)
        return;
    commitTyping();
    (m_stack.*step)();
    if (m_stack.isClean())
        d->q->showUnmodified();
    else
        d->q->onModified();
    Q_EMIT changed();
}

ConfigSnapshot EditHistory::shown(TarnOptionWidget *) const
{
    return snapshotOf(d->cores, m_current);
}

bool EditHistory::push(const ConfigSnapshot &target, const QString &text)
{
    if (sameObjects(m_current, target))
        return false;
    const ConfigSnapshot before = m_current;
    m_current = target;
    m_stack.push(
        new Step(this, text.isEmpty() ? textOf(difference(before, target)) : text, before, target));
    Q_EMIT changed();
    return true;
}

void EditHistory::show(const ConfigSnapshot &target)
{
    const Pause pause(this);
    const ConfigDifference difference = TARN::difference(m_current, target);
    d->showSnapshot(m_current, target);
    m_current = target;
    if (difference.core >= 0)
        d->q->changeTarnWidget(target.cores.at(difference.core).index);
}

} // namespace TARN
