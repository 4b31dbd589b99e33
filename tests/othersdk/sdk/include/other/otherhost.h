// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <core/projectmanager.h>

#include <QList>
#include <QMap>
#include <QObject>
#include <QPair>
#include <QPointer>
#include <QVariant>

class QAction;

/// The state of the host, which the session changes.
struct OtherHost
{
    static OtherHost &self();

    bool hasEngine = true;
    bool hasDesignManager = true;
    bool hasFlowManager = true;
    QMap<QString, QVariant> design; ///< The result of DesignManager::getSourceFileInfo().
    QMap<QString, QVariant> options;
    Core::Project project;
    QList<QPointer<QObject>> pool;                            ///< The objects from the plug-in.
    QMap<QPair<QString, QString>, QPointer<QAction>> actions; ///< By id and context.
};
