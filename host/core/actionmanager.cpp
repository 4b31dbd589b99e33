// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "actionmanager.h"

#include <QAction>
#include <QHash>
#include <QKeySequence>
#include <QPointer>

#include <map>

namespace Core {

namespace {

struct Command
{
    QAction *proxy = nullptr; ///< What menus show; triggers the source.
    QString defaultText;
    QKeySequence defaultShortcut;
    QHash<QString, QPointer<QAction>> actions; ///< By context.
    QPointer<QAction> source;                  ///< The action of the active context.
};

} // namespace

struct ActionManager::Private
{
    /// A std::map, because its entries stay in place while receivers of an action's changes
    /// register more actions.
    std::map<QString, Command> commands;
    QStringList contexts;

    QAction *winner(const Command &command) const
    {
        for (const QString &context : contexts) {
            if (QAction *action = command.actions.value(context))
                return action;
        }
        return nullptr;
    }

    static void show(const Command &command)
    {
        QAction *shown = command.proxy;
        if (!shown)
            return;
        const QAction *source = command.source;
        const bool ownShortcut = source && !source->shortcuts().isEmpty();
        shown->setText(source ? source->text() : command.defaultText);
        shown->setToolTip(source ? source->toolTip() : QString());
        shown->setIcon(source ? source->icon() : QIcon());
        shown->setShortcuts(ownShortcut ? source->shortcuts()
                                        : QList<QKeySequence>{command.defaultShortcut});
        shown->setEnabled(source && source->isEnabled());
    }

    void update(Command &command) const
    {
        command.source = winner(command);
        show(command);
    }

    void updateAll()
    {
        for (auto &entry : commands)
            update(entry.second);
    }
};

ActionManager::ActionManager()
    : d(new Private)
{
}

ActionManager::~ActionManager() = default;

ActionManager *ActionManager::instance()
{
    // Never destroyed: its commands must not be deleted after the application object, which knows
    // their shortcuts.
    static auto *manager = new ActionManager;
    return manager;
}

void ActionManager::registerAction(QAction *action, const QString &id, const QString &context)
{
    if (!action)
        return;
    ActionManager *self = instance();
    Command &command = self->d->commands[id];
    command.actions.insert(context, action);
    connect(action, &QAction::changed, self, [&command] { Private::show(command); });
    connect(action, &QObject::destroyed, self, [self, &command] { self->d->update(command); });
    self->d->update(command);
}

QAction *ActionManager::command(const QString &id)
{
    ActionManager *self = instance();
    Command &command = self->d->commands[id];
    if (!command.proxy) {
        command.proxy = new QAction(self);
        connect(command.proxy, &QAction::triggered, self, [&command] {
            if (command.source && command.source->isEnabled())
                command.source->trigger();
        });
        self->d->update(command);
    }
    return command.proxy;
}

void ActionManager::setDefaultText(const QString &id, const QString &text)
{
    Private *d = instance()->d.get();
    Command &command = d->commands[id];
    command.defaultText = text;
    d->update(command);
}

void ActionManager::setDefaultShortcut(const QString &id, const QKeySequence &shortcut)
{
    Private *d = instance()->d.get();
    Command &command = d->commands[id];
    command.defaultShortcut = shortcut;
    d->update(command);
}

void ActionManager::setActiveContexts(const QStringList &contexts)
{
    instance()->d->contexts = contexts;
    instance()->d->updateAll();
}

} // namespace Core
