// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "pluginmanager.h"

#include "iplugin.h"
#include "objectpool.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>
#include <QSet>

#include <algorithm>

namespace ExtSys {

PluginManager::PluginManager(const QList<AcceptedPlugin> &accepted)
    : m_accepted(accepted)
{
}

PluginManager::~PluginManager()
{
    shutDown();
    while (!m_plugins.isEmpty())
        delete m_plugins.takeLast().root;
}

bool PluginManager::loadFolder(const QString &folder, QStringList *errors)
{
    const QDir dir(folder);
    if (!dir.exists()) {
        errors->append(tr("The plug-in folder %1 does not exist.").arg(folder));
        return false;
    }
    const int errorsBefore = errors->size();
    QSet<QString> seen; // The version links of a library lead to the same file.
    for (const QFileInfo &file : dir.entryInfoList(QDir::Files, QDir::Name)) {
        if (!QLibrary::isLibrary(file.fileName()) || seen.contains(file.canonicalFilePath()))
            continue;
        seen.insert(file.canonicalFilePath());
        const QString error = load(file);
        if (!error.isEmpty())
            errors->append(error);
    }
    return errors->size() == errorsBefore;
}

QString PluginManager::load(const QFileInfo &file)
{
    const QString path = file.absoluteFilePath();
    QPluginLoader loader(path);
    const QJsonObject metaData = loader.metaData();
    if (metaData.isEmpty())
        return tr("%1 is not a plug-in: %2").arg(path, loader.errorString());
    const QString className = metaData.value(QLatin1String("className")).toString();
    const QString error = refusal(path, metaData.value(QLatin1String("IID")).toString(), className);
    if (!error.isEmpty())
        return error;

    QObject *object = loader.instance();
    if (!object)
        return tr("%1 cannot be loaded: %2").arg(path, loader.errorString());
    // By class, not by interface id: an IPlugin need not declare the id once more.
    if (!IPlugin::staticMetaObject.cast(object)) {
        const QString found = QString::fromLatin1(object->metaObject()->className());
        delete object;
        return tr("%1: its root object is a %2, not an ExtSys::IPlugin.").arg(path, found);
    }
    m_plugins.append({static_cast<IPlugin *>(object), path, className});
    return QString();
}

QString PluginManager::refusal(const QString &file, const QString &interfaceId,
                               const QString &className) const
{
    QStringList expected;
    bool accepted = false;
    for (const AcceptedPlugin &candidate : m_accepted) {
        expected.append(tr("class \"%1\" with interface id \"%2\"")
                            .arg(candidate.className, candidate.interfaceId));
        accepted |= candidate.interfaceId == interfaceId && candidate.className == className;
    }
    if (!accepted) {
        return tr("%1 is refused: found class \"%2\" with interface id \"%3\", expected %4.")
            .arg(file, className, interfaceId, expected.join(tr(" or ")));
    }
    for (const Plugin &plugin : m_plugins) {
        if (plugin.className == className)
            return tr("%1 is refused: class \"%2\" is already loaded from %3.")
                .arg(file, className, plugin.file);
    }
    return QString();
}

bool PluginManager::initialize(QStringList *errors)
{
    QList<Plugin> working;
    QList<Plugin> failed;
    for (const Plugin &plugin : qAsConst(m_plugins)) {
        if (plugin.root->initialize()) {
            working.append(plugin);
            continue;
        }
        errors->append(
            tr("Plug-in \"%1\" (%2) failed to initialize.").arg(plugin.className, plugin.file));
        failed.append(plugin);
    }
    m_plugins = working;
    m_initialized = true;
    for (const Plugin &plugin : qAsConst(failed)) {
        ObjectPool::release(plugin.root);
        delete plugin.root;
    }
    for (const Plugin &plugin : qAsConst(working))
        plugin.root->extensionsInitialized();
    return failed.isEmpty();
}

void PluginManager::shutDown()
{
    if (!m_initialized)
        return;
    m_initialized = false;
    for (int i = m_plugins.size() - 1; i >= 0; --i) {
        m_plugins.at(i).root->shutDown();
        ObjectPool::release(m_plugins.at(i).root);
    }
}

QList<IPlugin *> PluginManager::plugins() const
{
    QList<IPlugin *> roots;
    for (const Plugin &plugin : m_plugins)
        roots.append(plugin.root);
    return roots;
}

} // namespace ExtSys
