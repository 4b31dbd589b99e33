// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "viewtest.h"

#include <support/files.h>
#include <support/modeltext.h>

#include <model/tarnconfig.h>
#include <model/tarncore.h>
#include <probes/signalsamples.h>
#include <te/designmanager.h>
#include <te/taskengine.h>
#include <te/teconstants.h>
#include <view/reloadbanner.h>
#include <view/tarnoptionwidget.h>

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace TarnTest {

ViewTest::ViewTest() = default;

ViewTest::~ViewTest() = default;

void ViewTest::init()
{
    WindowTest::init();
    m_folder = std::make_unique<QTemporaryDir>();
    extraction().reset();
    setProject({QStringLiteral("top.v")});
}

void ViewTest::cleanup()
{
    for (const QPointer<QWidget> &container : qAsConst(m_containers))
        delete container;
    m_containers.clear();
    TE::TaskEngine::instance()->designManager()->closeProject();
    m_folder.reset();
    WindowTest::cleanup();
}

QString ViewTest::path(const QString &name) const
{
    return m_folder->filePath(name);
}

QString ViewTest::writeConfig(const QString &name, const QList<int> &indexes) const
{
    QList<TARN::TarnCore *> cores;
    for (int index : indexes) {
        auto *core = new TARN::TarnCore(index);
        core->addProbeIn(0);
        core->getProbeIn(0)->signals.append(net(QStringLiteral("top/clk")));
        cores.append(core);
    }
    QDir().mkpath(QFileInfo(path(name)).path());
    if (!TARN::writeTARNConfigToXml(cores, path(name)))
        qFatal("cannot write %s", qPrintable(path(name)));
    qDeleteAll(cores);
    return path(name);
}

QString ViewTest::writeEmptyConfig(const QString &name) const
{
    return writeConfig(name, {});
}

void ViewTest::setProject(const QStringList &sources, const QString &top) const
{
    TE::Project project;
    project.workingDir = m_folder->path();
    for (const QString &source : sources) {
        writeFile(path(source), "module top; endmodule\n");
        project.sources.append({path(source), TE::fileTypeOf(source), true});
    }
    project.options.insert(TE::OPT::TOPMODULE, top);
    TE::TaskEngine::instance()->designManager()->setProject(project);
}

ShownView ViewTest::show(const QString &filePath)
{
    auto *container = new QWidget;
    m_containers.append(container);
    auto *layout = new QVBoxLayout(container);
    auto *view = new TARN::TarnView(container);
    layout->addWidget(view);
    container->resize(view->size());
    container->show();
    QString error;
    if (!view->open(filePath, QString(), &error))
        qFatal("cannot open %s: %s", qPrintable(filePath), qPrintable(error));
    return {container, view};
}

QTreeWidget *ViewTest::treeOf(const TARN::TarnView *view)
{
    return view->findChild<QTreeWidget *>(QStringLiteral("treeWidget"));
}

QString ViewTest::treeTextOf(const TARN::TarnView *view)
{
    return modelText(treeOf(view)->model());
}

QList<TARN::TarnOptionWidget *> ViewTest::pagesOf(const TARN::TarnView *view)
{
    const auto *stack = view->findChild<QStackedWidget *>(QStringLiteral("stackedWidget"));
    QList<TARN::TarnOptionWidget *> pages;
    for (int i = 0; i < stack->count(); ++i)
        pages.append(qobject_cast<TARN::TarnOptionWidget *>(stack->widget(i)));
    return pages;
}

TARN::TarnOptionWidget *ViewTest::currentPageOf(const TARN::TarnView *view)
{
    const auto *stack = view->findChild<QStackedWidget *>(QStringLiteral("stackedWidget"));
    return qobject_cast<TARN::TarnOptionWidget *>(stack->currentWidget());
}

QList<TARN::ReloadBanner *> ViewTest::bannersOf(const TARN::TarnView *view)
{
    return view->findChildren<TARN::ReloadBanner *>();
}

void ViewTest::clickBanner(const TARN::TarnView *view, const QString &button)
{
    const QList<TARN::ReloadBanner *> banners = bannersOf(view);
    if (banners.size() != 1)
        qFatal("%d banners instead of one", int(banners.size()));
    banners.first()->findChild<QPushButton *>(button)->click();
}

void ViewTest::openMenu(const TARN::TarnView *view, int row)
{
    QTreeWidget *tree = treeOf(view);
    QPoint position(5, tree->viewport()->height() - 2);
    if (row >= 0)
        position = tree->visualItemRect(tree->topLevelItem(row)).center();
    Q_EMIT tree->customContextMenuRequested(position);
}

ModalScript::Box errorBox(const QString &title, const QString &text)
{
    ModalScript::Box box;
    box.icon = QMessageBox::Critical;
    box.title = title;
    box.text = text;
    return box;
}

} // namespace TarnTest
