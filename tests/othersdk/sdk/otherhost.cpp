// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <other/otherhost.h>

#include <core/actionmanager.h>
#include <core/iview.h>
#include <core/viewmanager.h>
#include <extsys/iplugin.h>
#include <netweir/hierachy.h>
#include <netweir/rtlextraction.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>
#include <qutil/eventmanager.h>
#include <qutil/ievent.h>
#include <qutil/ieventhandler.h>
#include <te/designmanager.h>
#include <te/flowmanager.h>
#include <te/taskengine.h>

#include <QAction>
#include <QVBoxLayout>

OtherHost &OtherHost::self()
{
    static OtherHost host;
    return host;
}

namespace Core {

void ActionManager::registerAction(QAction *action, const QString &id, const QString &context)
{
    OtherHost::self().actions.insert({id, context}, action);
}

QAction *ActionManager::action(const QString &id, const QString &context)
{
    return OtherHost::self().actions.value({id, context});
}

Project *ProjectManager::currentProject()
{
    return &OtherHost::self().project;
}

ViewManager *ViewManager::instance()
{
    static ViewManager manager;
    return &manager;
}

void ViewManager::showView(IView *view)
{
    if (!m_views.contains(view)) {
        auto *window = new QWidget;
        (new QVBoxLayout(window))->addWidget(view);
        m_views.append(view);
        window->show();
    }
    emit viewActiveted(view);
}

void ViewManager::closeView(IView *view)
{
    QWidget *window = view->parentWidget();
    if (!view->close())
        return;
    m_views.removeAll(view);
    m_contexts.remove(view);
    emit viewClosed(view);
    delete window;
}

void ViewManager::registerContext(IView *view, const QString &context, int)
{
    m_contexts.insert(view, context);
}

QWidget *ViewManager::dialogParent()
{
    return nullptr;
}

} // namespace Core

namespace ExtSys {

void IPlugin::addAutoReleasedObject(QObject *object)
{
    OtherHost::self().pool.append(object);
}

} // namespace ExtSys

namespace NETWEIR {

RtlNetlist::RtlNetlist()
    : m_top(new Hierachy)
{
    auto *leaf = new Hierachy;
    m_nodes = {m_top, leaf};
    m_top->m_instName = m_top->m_moduleName = QStringLiteral("top");
    m_top->m_children = {leaf};
    leaf->m_instName = QStringLiteral("u0");
    leaf->m_moduleName = QStringLiteral("leaf");
    leaf->m_parent = m_top;

    const QString top = QStringLiteral("top");
    m_buses = {new RtlNetBus(
        top, QStringLiteral("data[1:0]"),
        {newNet(top, QStringLiteral("data[1]")), newNet(top, QStringLiteral("data[0]"))})};
    m_top->m_buses = m_buses;
    m_top->m_nets = {newNet(top, QStringLiteral("clk")), newNet(top, QStringLiteral("done"), true)};
    leaf->m_nets = {newNet(QStringLiteral("top/u0"), QStringLiteral("q"))};
}

RtlNetlist::~RtlNetlist()
{
    qDeleteAll(m_buses);
    qDeleteAll(m_nets);
    qDeleteAll(m_nodes);
}

RtlNet *RtlNetlist::newNet(const QString &path, const QString &name, bool driven)
{
    m_nets.append(new RtlNet(path, name, driven));
    return m_nets.last();
}

RtlNet *RtlNetlist::findNet(const QString &fullPathName)
{
    foreach (RtlNet *net, m_nets) {
        if (net->fullPathName() == fullPathName)
            return net;
    }
    return nullptr;
}

void catchRtlModules(QStringList &tops, QStringList &modules, QStringList &messages,
                     QMap<QString, QVariant> &info, QWidget *)
{
    tops.append(QStringLiteral("top"));
    modules.append({QStringLiteral("leaf"), QStringLiteral("top")});
    messages.append(QStringLiteral("%1 files read").arg(info.value("Files").toList().size()));
}

void catchRtlNetsWithProgressDialog(RtlNetlist **netlist, QStringList &, QWidget *)
{
    *netlist = new RtlNetlist;
}

} // namespace NETWEIR

namespace QUtil {

EventManager *EventManager::instance()
{
    static EventManager manager;
    return &manager;
}

void EventManager::send(const IEvent *event)
{
    foreach (IEventHandler *handler, m_handlers.values(event->name()))
        handler->handleIEvent(event);
}

} // namespace QUtil

namespace TE {

QMap<QString, QVariant> DesignManager::getSourceFileInfo()
{
    return OtherHost::self().design;
}

DesignManager::Record DesignManager::getFileInfo(const QString &file)
{
    Record record;
    record.enabled = true;
    record.type = file.endsWith(QLatin1String(".v")) ? 2 : 9;
    return record;
}

QVariant DesignManager::getOptionValue(const QString &name)
{
    return OtherHost::self().options.value(name);
}

QString DesignManager::workingDir()
{
    return QStringLiteral("/design");
}

QString FlowManager::resultFile(const QString &id)
{
    return QStringLiteral("/design/") + id;
}

TaskEngine *TaskEngine::instance()
{
    static TaskEngine engine;
    return OtherHost::self().hasEngine ? &engine : nullptr;
}

DesignManager *TaskEngine::designManager()
{
    static DesignManager manager;
    return OtherHost::self().hasDesignManager ? &manager : nullptr;
}

FlowManager *TaskEngine::flowManager()
{
    static FlowManager manager;
    return OtherHost::self().hasFlowManager ? &manager : nullptr;
}

} // namespace TE
