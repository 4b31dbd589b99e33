// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "extsys_global.h"

#include <QCoreApplication>
#include <QList>
#include <QString>
#include <QStringList>

class QFileInfo;

namespace ExtSys {

class IPlugin;

/// The metadata that a plug-in must have to be loaded.
struct AcceptedPlugin
{
    QString interfaceId;
    QString className;
};

/// Loads plug-ins from a folder and drives their lives: loadFolder(), initialize(), shutDown().
///
/// Owns the root objects of the plug-ins. Libraries stay in memory until the process ends. A
/// library is loaded, and its code run, only when its metadata names an accepted plug-in.
class EXTSYS_EXPORT PluginManager
{
    Q_DECLARE_TR_FUNCTIONS(ExtSys::PluginManager)

public:
    explicit PluginManager(const QList<AcceptedPlugin> &accepted);
    /// Shuts the plug-ins down and deletes their root objects.
    ~PluginManager();

    PluginManager(const PluginManager &) = delete;
    PluginManager &operator=(const PluginManager &) = delete;

    /// Loads the libraries of @p folder in the order of their file names. Refused libraries are
    /// skipped: each adds a message to @p errors, and the result is false.
    bool loadFolder(const QString &folder, QStringList *errors);

    /// Calls initialize() of the loaded plug-ins in the order of loading, then
    /// extensionsInitialized() of those that succeeded. Deletes the root objects of those that
    /// failed: each adds a message to @p errors, and the result is false.
    bool initialize(QStringList *errors);

    /// Calls shutDown() of the initialised plug-ins in reverse order and deletes the pool objects
    /// of each plug-in after its shutDown(). Has no effect the second time.
    void shutDown();

    /// The root objects of the loaded plug-ins; after initialize(), of the initialised ones.
    QList<IPlugin *> plugins() const;

private:
    struct Plugin
    {
        IPlugin *root;
        QString file;
        QString className;
    };

    QString load(const QFileInfo &file);
    QString refusal(const QString &file, const QString &interfaceId,
                    const QString &className) const;

    QList<AcceptedPlugin> m_accepted;
    QList<Plugin> m_plugins;
    bool m_initialized = false;
};

} // namespace ExtSys
