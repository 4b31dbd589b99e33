// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QAction;

namespace Core {

class ActionManager
{
public:
    static void registerAction(QAction *action, const QString &id, const QString &context);

    /// The action that was registered last for @p id in @p context.
    static QAction *action(const QString &id, const QString &context);
};

} // namespace Core
