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

/// What the host has at the moment, for the session to change.
struct OtherHost
{
    static OtherHost &self();

    bool hasEngine = true;
    bool hasDesignManager = true;
    bool hasFlowManager = true;
    QMap<QString, QVariant> design; ///< What DesignManager::getSourceFileInfo() returns.
    QMap<QString, QVariant> options;
    Core::Project project;
    QList<QPointer<QObject>> pool;                            ///< What the plug-in handed over.
    QMap<QPair<QString, QString>, QPointer<QAction>> actions; ///< By id and context.
};
