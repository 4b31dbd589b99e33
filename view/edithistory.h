// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/configdifference.h>
#include <model/configsnapshot.h>
#include <probes/typing.h>

#include <QObject>
#include <QString>
#include <QUndoStack>

#include <memory>

class QAction;
class QKeySequence;
class QLineEdit;

namespace TARN {

class TarnOptionWidget;

namespace private_impl {
class TarnViewPrivate;
}

/// The edits of a view as steps that can be undone.
///
/// Cores and pages are edited directly. When an edit is complete, record() compares what is shown
/// with the last step and adds a step if something differs. Undo and redo make cores and pages
/// equal to a snapshot, change only what differs, and show the first place that the step changed.
///
/// The view sets its modified mark as it does without steps: at each change, also for a key that
/// completes no edit. After undo and redo the mark follows the steps: it goes at the state that was
/// saved.
///
/// Belongs to the private object of the view; owns stack and actions. The actions are among those
/// of the view. A step needs the memory of what it changed.
class EditHistory final : public QObject
{
    Q_OBJECT

public:
    /// At most this many steps; the oldest one goes first.
    static constexpr int MaximumSteps = 1000;

    /// While one exists, nothing is recorded: the view itself changes its cores.
    class Pause
    {
    public:
        explicit Pause(EditHistory *history);
        ~Pause();
        Pause(const Pause &) = delete;
        Pause &operator=(const Pause &) = delete;

    private:
        EditHistory *m_history;
        bool m_former;
    };

    explicit EditHistory(private_impl::TarnViewPrivate *document);
    ~EditHistory() override;

    /// The view was filled from its file: forgets all steps. The state is the saved one unless the
    /// view is modified. Before this call nothing is recorded.
    void begin();

    /// An edit is complete. Looks at @p page alone, or at all pages without it. Text that is typed
    /// and not applied yet is left out.
    void record(TarnOptionWidget *page = nullptr);

    /// The user undid typing in a line: the mark goes when that leads back to the saved state.
    void followTyping();

    /// Makes typed text that is not applied yet a step of its own.
    void commitTyping();

    /// An edit made by the program: one step named @p text. Marks the view modified. Typed text
    /// becomes a step before it.
    void apply(const ConfigSnapshot &target, const QString &text);

    /// The cores were replaced by those of the file on disk: one step. It is the saved state,
    /// unless the view is modified: then no state is until the next save.
    void recordReload();

    /// The pages stored their widgets in the cores, which writes values in their full form. That is
    /// no step.
    void followStored();

    /// The file holds what is shown.
    void setSaved();

    /// What is shown, but for text that is typed and not applied yet.
    const ConfigSnapshot &current() const { return *m_current; }

    /// To look at: undo() and redo() of this class do more than those of the stack.
    const QUndoStack *stack() const { return &m_stack; }
    QAction *undoAction() const { return m_undo; }
    QAction *redoAction() const { return m_redo; }

public Q_SLOTS:
    /// Undo the last typing in the line that has the focus, or else the last step. Typed text
    /// elsewhere becomes a step before.
    void undo();
    void redo();

Q_SIGNALS:
    /// current() is another one: after begin(), a step, undo, redo, and a save that changed the
    /// form of values.
    void changed();

private:
    class Step;
    /// One state of the configuration. The steps to it and from it share the object: a save that
    /// changes the form of values changes the state for both.
    using State = std::shared_ptr<ConfigSnapshot>;

    QAction *addAction(const char *name, const QList<QKeySequence> &keys);
    void updateActions();
    ConfigSnapshot shown(Typing typing, const TarnOptionWidget *onlyPage = nullptr) const;
    /// Adds a step to @p target, which is shown already. Without @p text it is named after what it
    /// did.
    void push(const ConfigSnapshot &target, const QString &text = QString());
    /// Makes cores and pages equal to @p target, and shows the core of the change from @p former.
    void show(const State &target, const State &former);
    /// Shows the row of the last change. It takes the focus, and a line that loses the focus may
    /// show a box, during which view and history can go away.
    void showPlace();
    /// Undoes or redoes typing in the line with the focus. False when there is none.
    bool moveTyping(bool (QLineEdit::*available)() const, void (QLineEdit::*step)());
    /// Undoes or redoes a step, and lets the mark follow.
    void move(void (QUndoStack::*step)());

    private_impl::TarnViewPrivate *const d;
    QUndoStack m_stack;
    QAction *m_undo;
    QAction *m_redo;
    State m_current = std::make_shared<ConfigSnapshot>();
    ConfigDifference m_shown; ///< The last change that was not made on the pages.
    bool m_paused = true;     ///< Until begin().
};

} // namespace TARN
