// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core_global.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

class QAction;
class QKeySequence;

namespace Core {

/// One menu command per command id, shared by all contexts.
///
/// A command forwards to the action that the active context registered for its id: it shows that
/// action's text, tool tip, icon, shortcut and enabled state, follows their changes, and triggers
/// the action. Without an action the command is disabled and shows its default text. A destroyed
/// action is forgotten. ViewManager sets the contexts of the active view.
class CORE_EXPORT ActionManager : public QObject
{
    Q_OBJECT

public:
    static ActionManager *instance();

    /// Registers @p action (not owned) for command @p id in @p context, in place of an action that
    /// was registered for both before.
    static void registerAction(QAction *action, const QString &id, const QString &context);

    // For the application:

    /// The command of @p id, created on first use; owned by the manager.
    static QAction *command(const QString &id);
    /// The text shown while no active context has an action.
    static void setDefaultText(const QString &id, const QString &text);
    /// The shortcut used while the action has none of its own.
    static void setDefaultShortcut(const QString &id, const QKeySequence &shortcut);
    /// The active contexts. The first one with an action for a command wins.
    static void setActiveContexts(const QStringList &contexts);

private:
    struct Private;

    ActionManager();
    ~ActionManager() override;

    std::unique_ptr<Private> d;
};

} // namespace Core
