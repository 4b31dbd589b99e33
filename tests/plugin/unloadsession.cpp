// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <core/iview.h>
#include <core/viewmanager.h>
#include <dev/devicearg.h>
#include <extsys/iplugin.h>
#include <extsys/objectpool.h>
#include <te/designmanager.h>
#include <te/project.h>
#include <te/taskengine.h>

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QRegExp>
#include <QRegExpValidator>
#include <QTextStream>
#include <QTreeWidget>

#include <dlfcn.h>

// usage: unloadsession PROJECT CONFIG LIBRARY...
//
// A host that loads one plug-in library after the other, shows a configuration file in it, shuts it
// down and closes the library. Prints a line for each step, so that a crash shows its place.

namespace {

void say(const QString &line)
{
    QTextStream(stdout) << line << endl;
}

/// What @p library exports as @p symbol.
template <typename Function>
Function resolve(void *library, const char *symbol)
{
    void *address = dlsym(library, symbol);
    if (!address)
        qFatal("%s", dlerror());
    return reinterpret_cast<Function>(address);
}

/// Calls the plug-in's view manager by the names that the library exports: linking the library
/// would keep it in memory.
void openInPlugin(void *library, const QString &file)
{
    using Instance = void *(*)();
    using Open = bool (*)(void *, const QString &, const DEV::DeviceArg &);
    const auto instance = resolve<Instance>(library, "_ZN4TARN15TarnViewManager8instanceEv");
    const auto open = resolve<Open>(
        library, "_ZN4TARN15TarnViewManager12openTarnViewERK7QStringRKN3DEV9DeviceArgE");
    void *manager = instance();
    if (!manager)
        qFatal("The library has no view manager.");
    open(manager, file, DEV::DeviceArg());
}

/// What the active view shows: its title, how many rows hold an item of the plug-in's own type, and
/// how many lines have a regular expression of the plug-in as their validator.
QString shown()
{
    const Core::IView *view = Core::ViewManager::activeView();
    if (!view)
        return QStringLiteral("no view");
    int items = 0;
    const auto trees = view->findChildren<QTreeWidget *>();
    for (QTreeWidget *tree : trees) {
        for (QTreeWidgetItemIterator row(tree); *row; ++row) {
            const QVariant item = (*row)->data(0, Qt::UserRole);
            items += QByteArray(item.typeName()) == "TARN::SignalItem";
        }
    }
    int lines = 0;
    const auto edits = view->findChildren<QLineEdit *>();
    for (QLineEdit *edit : edits)
        lines += qobject_cast<const QRegExpValidator *>(edit->validator()) != nullptr;
    return QStringLiteral("%1: %2 items, %3 lines").arg(view->windowTitle()).arg(items).arg(lines);
}

void useLibrary(const QString &path, const QString &config)
{
    void *library = dlopen(QFile::encodeName(path).constData(), RTLD_NOW | RTLD_LOCAL);
    if (!library)
        qFatal("%s", dlerror());
    QObject *root = resolve<QObject *(*)()>(library, "qt_plugin_instance")();
    auto *plugin = static_cast<ExtSys::IPlugin *>(root);
    say(QStringLiteral("initialised: %1").arg(plugin->initialize()));
    plugin->extensionsInitialized();
    openInPlugin(library, config);
    say(shown());
    Core::ViewManager::closeAllViews();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    plugin->shutDown();
    ExtSys::ObjectPool::release(plugin);
    delete plugin;
    dlclose(library);

    // Expressions share a cache of the process, which may still hold those of the library.
    const QRegExp digits(QStringLiteral("[A-F0-9]"));
    const QRegExp word(QStringLiteral("[a-z]+"));
    say(QStringLiteral("closed: %1 %2").arg(digits.exactMatch("F")).arg(word.exactMatch("F")));
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QStringList arguments = app.arguments().mid(1);
    TE::Project project;
    QString error;
    if (arguments.size() < 3 || !TE::readProject(arguments.takeFirst(), &project, &error))
        qFatal("no project: %s", qPrintable(error));
    TE::TaskEngine::instance()->designManager()->setProject(project);
    const QString config = arguments.takeFirst();
    for (const QString &library : qAsConst(arguments))
        useLibrary(library, config);
    return 0;
}
