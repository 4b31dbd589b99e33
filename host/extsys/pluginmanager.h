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

/// What the metadata of a plug-in has to say for the host to load it.
struct AcceptedPlugin
{
    QString interfaceId;
    QString className;
};

/// Loads plug-ins from a folder and drives their lives: loadFolder(), initialize(), shutDown().
///
/// Owns the root objects of the plug-ins. Libraries stay in memory until the process ends. A
/// library is only loaded, and its code only run, when its metadata names an accepted plug-in.
class EXTSYS_EXPORT PluginManager
{
    Q_DECLARE_TR_FUNCTIONS(ExtSys::PluginManager)

public:
    explicit PluginManager(const QList<AcceptedPlugin> &accepted);
    /// Shuts the plug-ins down and deletes their root objects.
    ~PluginManager();

    PluginManager(const PluginManager &) = delete;
    PluginManager &operator=(const PluginManager &) = delete;

    /// Loads every library of @p folder, in order of file names. Appends one message to @p errors
    /// for each one refused and returns false when there were any; the others are loaded.
    bool loadFolder(const QString &folder, QStringList *errors);

    /// initialize() of every loaded plug-in in order of loading, then extensionsInitialized() of
    /// those that succeeded. Appends one message to @p errors for each that failed, which takes
    /// no further part, and returns false when there were any.
    bool initialize(QStringList *errors);

    /// shutDown() of every initialised plug-in in reverse order; the objects that a plug-in handed
    /// over are deleted after its shutDown(). Does nothing the second time.
    void shutDown();

    /// The root objects of the loaded plug-ins, or of the initialised ones after initialize().
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
