// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <core/actionmanager.h>
#include <core/coreconstants.h>
#include <core/iview.h>
#include <core/viewmanager.h>
#include <dev/devicearg.h>
#include <plugin/newfiledialog.h>
#include <plugin/tarnconstants.h>
#include <plugin/tarnviewmanager.h>
#include <support/files.h>
#include <viewtest.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

using Core::ActionManager;
using Core::ViewManager;
using TARN::TarnView;
using TARN::TarnViewManager;
using namespace TarnTest;

namespace {

class OtherView : public Core::IView
{
    Q_OBJECT
};

} // namespace

class TestTarnViewManager : public ViewTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();

    void constantsAreFixed();
    void opensViewAndShowsIt();
    void keepsDeviceName();
    void sameFileIsShownAgain_data();
    void sameFileIsShownAgain();
    void showingAgainReadsNothing();
    void caseMakesAnotherFile();
    void viewsAreListedInOrderOfOpening();
    void failureShowsErrorAndLeavesNoView();
    void failureWithoutTextShowsNoSecondBox();
    void newFileOpensWithOneCoreMarkedModified();
    void closeFindsViewByAbsolutePath();
    void closeAsksTheFirstMatchOnly();
    void closeRefusedByViewIsStillFound();
    void saveFollowsModificationOfCurrentView();
    void saveNamesTheActiveView();
    void titleAloneDoesNotRefresh();
    void otherViewsModificationIsIgnored();
    void otherKindOfViewDisablesSave();
    void closingCurrentViewDisablesSave();
    void closingAnotherViewRefreshes();
    void closedOtherKindOfViewIsIgnored();
    void saveActionSaves();
    void saveSlotWorksForInactiveView();
    void unmodifiedViewIsNotSaved();
    void viewThatDiesUnclosedIsForgotten();
    void viewThatDiesWhileOpeningLeavesNothing();
    void fileOpenedWhileOpeningGetsOneView();
    void errorShowsNamesAsTheyAre();
    void errorSurvivesDeathOfItsParent();
    void contextHasPriorityOne();

private:
    QString makeFile(const QString &name) const { return writeConfig(name, {0}); }
    TarnView *open(const QString &file);
    void modify(TarnView *view) { QVERIFY(QMetaObject::invokeMethod(view, "onModified")); }
    static QAction *save();
    static QStringList files();

    TarnViewManager *m_manager = nullptr;
    std::unique_ptr<QTabWidget> m_area;
};

void TestTarnViewManager::initTestCase()
{
    m_area.reset(qobject_cast<QTabWidget *>(ViewManager::viewArea()));
    ViewManager::setDialogParent(m_area.get());
    m_area->resize(900, 600);
    m_area->show();

    m_manager = TarnViewManager::instance();
    QVERIFY(m_manager);
    QVERIFY(!m_manager->parent());
    QCOMPARE(m_manager->tarnViews(), QList<TarnView *>());
    QCOMPARE(m_manager->findChildren<QAction *>().size(), 0);

    m_manager->initialize();
    QCOMPARE(m_manager->findChildren<QAction *>().size(), 1);
    QCOMPARE(m_manager->findChild<QAction *>()->parent(), m_manager);
    QVERIFY(!m_manager->findChild<QAction *>()->isEnabled());
}

void TestTarnViewManager::cleanup()
{
    for (TarnView *view : m_manager->tarnViews())
        view->setModified(false);
    QVERIFY(ViewManager::closeAllViews());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(m_manager->tarnViews().size(), 0);
    ViewTest::cleanup();
}

/// With a view left open: the manager goes, the view stays.
void TestTarnViewManager::cleanupTestCase()
{
    ViewTest::init();
    m_manager->openTarnView(makeFile("last.tarn"), {});
    const QPointer<TarnView> view = m_manager->tarnViews().value(0);
    const QPointer<QAction> action = m_manager->findChild<QAction *>();
    const QPointer<TarnViewManager> manager = m_manager;
    QVERIFY(view && action);

    m_manager->deinit();
    QVERIFY(!TarnViewManager::instance());
    QVERIFY(!manager && !action);
    QVERIFY(view);
    QVERIFY(!save()->isEnabled());

    // No slot of the manager runs any more.
    view->setModified(true);
    view->setModified(false);
    QVERIFY(ViewManager::closeView(view));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!view);
    ViewTest::cleanup();
    m_area.reset();
}

TarnView *TestTarnViewManager::open(const QString &file)
{
    m_manager->openTarnView(file, {});
    return m_manager->tarnViews().isEmpty() ? nullptr : m_manager->tarnViews().last();
}

QAction *TestTarnViewManager::save()
{
    return ActionManager::command(Core::Constants::A_FILE_SAVE);
}

QStringList TestTarnViewManager::files()
{
    QStringList names;
    for (const TarnView *view : TarnViewManager::instance()->tarnViews())
        names.append(QFileInfo(view->file()).fileName());
    return names;
}

void TestTarnViewManager::constantsAreFixed()
{
    QCOMPARE(TARN::TARN_CONTEXT, "TARN.TarnViewManager.Context");
    QCOMPARE(Core::Constants::A_FILE_SAVE, "Core.Action.Save");
}

void TestTarnViewManager::opensViewAndShowsIt()
{
    const QString file = makeFile("a.tarn");
    QVERIFY(m_manager->openTarnView(file, {}));
    QCOMPARE(m_manager->tarnViews().size(), 1);
    TarnView *view = m_manager->tarnViews().first();
    QCOMPARE(view->file(), file);
    QCOMPARE(ViewManager::activeView(), view);
    QCOMPARE(ViewManager::views(), QList<Core::IView *>{view});
    const QString address = QStringLiteral("0x") + QString::number(quintptr(view), 16);
    QVERIFY2(debugLines().contains("create tarn view: " + address),
             qPrintable(debugLines().join('\n')));
}

void TestTarnViewManager::keepsDeviceName()
{
    DEV::DeviceArg device;
    device.family = "first";
    device.package = "second";
    device.speedGrade = "third";
    device.deviceName = "fourth";
    m_manager->openTarnView(makeFile("a.tarn"), device);
    QCOMPARE(m_manager->tarnViews().first()->deviceName(), QStringLiteral("fourth"));
}

void TestTarnViewManager::sameFileIsShownAgain_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("same") << "%1/a.tarn"
                          << "%1/a.tarn";
    QTest::newRow("dots") << "%1/a.tarn"
                          << "%1/sub/../a.tarn";
    QTest::newRow("relative") << "%1/a.tarn"
                              << "a.tarn";
    QTest::newRow("both relative") << "./a.tarn"
                                   << "sub/../a.tarn";
}

void TestTarnViewManager::sameFileIsShownAgain()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    const QString before = QDir::currentPath();
    QDir::setCurrent(path(""));
    QVERIFY(QDir().mkdir("sub"));
    makeFile("a.tarn");
    const QString firstPath = first.contains('%') ? first.arg(path("")) : first;
    TarnView *view = open(firstPath);
    open(makeFile("b.tarn"));
    QVERIFY(ViewManager::activeView() != view);

    QVERIFY(m_manager->openTarnView(second.contains('%') ? second.arg(path("")) : second, {}));
    QDir::setCurrent(before);
    QCOMPARE(view->file(), firstPath);
    QCOMPARE(files(), QStringList({"a.tarn", "b.tarn"}));
    QCOMPARE(ViewManager::activeView(), view);
}

void TestTarnViewManager::showingAgainReadsNothing()
{
    const QString file = makeFile("a.tarn");
    open(file);
    clearDebugLines();
    writeFile(file, "broken");
    QVERIFY(m_manager->openTarnView(file, {}));
    QCOMPARE(debugLines(), QStringList());
}

void TestTarnViewManager::caseMakesAnotherFile()
{
    open(makeFile("a.tarn"));
    open(makeFile("A.tarn"));
    QCOMPARE(files(), QStringList({"a.tarn", "A.tarn"}));
    QVERIFY(!m_manager->closeTarnView(path("a.TARN")));
}

void TestTarnViewManager::viewsAreListedInOrderOfOpening()
{
    const QString c = makeFile("c.tarn");
    open(c);
    open(makeFile("a.tarn"));
    open(makeFile("b.tarn"));
    open(c);
    QCOMPARE(files(), QStringList({"c.tarn", "a.tarn", "b.tarn"}));

    // A copy: changing it changes nothing in the manager.
    QList<TarnView *> copy = m_manager->tarnViews();
    copy.clear();
    QCOMPARE(m_manager->tarnViews().size(), 3);
}

void TestTarnViewManager::failureShowsErrorAndLeavesNoView()
{
    open(makeFile("good.tarn"));
    const QString missing = path("missing.tarn");
    QWidget *parent = nullptr;
    script().expectBox({QMessageBox::Critical, "Error", missing + " open file failed.",
                        QMessageBox::Ok, QString()},
                       QMessageBox::Ok, [&](QMessageBox *box) { parent = box->parentWidget(); });
    QVERIFY(m_manager->openTarnView(missing, {}));
    QCOMPARE(parent, ViewManager::dialogParent());
    QCOMPARE(files(), QStringList("good.tarn"));
    QCOMPARE(ViewManager::views().size(), 1);
    // The view is gone at once.
    QVERIFY(debugLines().contains("IView:  destoryed"));
}

void TestTarnViewManager::failureWithoutTextShowsNoSecondBox()
{
    extraction().messages = QStringList("ERROR: bad design");
    script().expectDialog("TARN::MessageDlg", "Design files contain some errors.",
                          [](QDialog *dialog) { dialog->accept(); });
    QVERIFY(m_manager->openTarnView(makeFile("a.tarn"), {}));
    QCOMPARE(m_manager->tarnViews().size(), 0);
    QVERIFY(debugLines().contains("IView: a.tarn destoryed"));
}

void TestTarnViewManager::newFileOpensWithOneCoreMarkedModified()
{
    TARN::NewFileDialog dialog(path(""), nullptr);
    dialog.findChild<QLineEdit *>("editName")->setText("new");
    dialog.accept();
    TarnView *view = open(dialog.filePath());
    QVERIFY(view);
    QVERIFY(view->isModified());
    QCOMPARE(view->windowTitle(), QStringLiteral("new.tarn"));
    QCOMPARE(view->shortTitle(), QStringLiteral("new.tarn *"));
    QVERIFY(save()->isEnabled());
    QCOMPARE(save()->text(), QStringLiteral("&Save \"new.tarn\""));
}

void TestTarnViewManager::closeFindsViewByAbsolutePath()
{
    open(makeFile("a.tarn"));
    open(makeFile("b.tarn"));
    QVERIFY(!m_manager->closeTarnView(path("missing.tarn")));
    QCOMPARE(m_manager->tarnViews().size(), 2);
    QVERIFY(m_manager->closeTarnView(path("sub/../a.tarn")));
    QCOMPARE(files(), QStringList("b.tarn"));
    QVERIFY(!m_manager->closeTarnView(path("a.tarn")));
}

/// Two views can name the same file only when the working folder changed in between.
void TestTarnViewManager::closeAsksTheFirstMatchOnly()
{
    const QString before = QDir::currentPath();
    const QString file = makeFile("a.tarn");
    QDir::setCurrent(path(""));
    TarnView *first = open("a.tarn");
    QDir::setCurrent(before);
    TarnView *second = open(file);
    QVERIFY(first != second);

    QDir::setCurrent(path(""));
    const bool closed = m_manager->closeTarnView(file);
    QDir::setCurrent(before);
    QVERIFY(closed);
    QCOMPARE(m_manager->tarnViews(), QList<TarnView *>{second});
}

void TestTarnViewManager::closeRefusedByViewIsStillFound()
{
    TarnView *view = open(makeFile("a.tarn"));
    modify(view);
    script().expectBox({QMessageBox::Question, "Save",
                        "Save changes to \"" + path("a.tarn") + "\" ?",
                        QMessageBox::Ok | QMessageBox::Discard | QMessageBox::Cancel, QString()},
                       QMessageBox::Cancel);
    QVERIFY(m_manager->closeTarnView(path("a.tarn")));
    QCOMPARE(files(), QStringList("a.tarn"));
}

void TestTarnViewManager::saveFollowsModificationOfCurrentView()
{
    QVERIFY(!save()->isEnabled());
    TarnView *view = open(makeFile("a.tarn"));
    QVERIFY(!save()->isEnabled());
    modify(view);
    QVERIFY(save()->isEnabled());
    view->setModified(false);
    QVERIFY(!save()->isEnabled());
}

void TestTarnViewManager::saveNamesTheActiveView()
{
    TarnView *a = open(makeFile("a.tarn"));
    QCOMPARE(save()->text(), QStringLiteral("&Save \"a.tarn\""));
    QCOMPARE(save()->toolTip(), QStringLiteral("Save \"a.tarn\""));
    open(makeFile("b %1.tarn"));
    QCOMPARE(save()->text(), QStringLiteral("&Save \"b %1.tarn\""));
    QCOMPARE(save()->toolTip(), QStringLiteral("Save \"b %1.tarn\""));
    ViewManager::showView(a);
    QCOMPARE(save()->text(), QStringLiteral("&Save \"a.tarn\""));
}

void TestTarnViewManager::titleAloneDoesNotRefresh()
{
    TarnView *view = open(makeFile("a.tarn"));
    view->setWindowTitle("other");
    QCOMPARE(save()->text(), QStringLiteral("&Save \"a.tarn\""));
    QCOMPARE(save()->toolTip(), QStringLiteral("Save \"a.tarn\""));
    view->setModified(false);
    QCOMPARE(save()->text(), QStringLiteral("&Save \"other\""));
    QCOMPARE(save()->toolTip(), QStringLiteral("Save \"other\""));
}

void TestTarnViewManager::otherViewsModificationIsIgnored()
{
    TarnView *a = open(makeFile("a.tarn"));
    open(makeFile("b.tarn"));
    modify(a);
    QVERIFY(!save()->isEnabled());
    QCOMPARE(save()->text(), QStringLiteral("&Save \"b.tarn\""));
    ViewManager::showView(a);
    QVERIFY(save()->isEnabled());

    // Without a view as its sender it does nothing.
    a->setWindowTitle("other");
    m_manager->onTarnViewModified(true);
    QCOMPARE(save()->text(), QStringLiteral("&Save \"a.tarn *\""));
}

void TestTarnViewManager::otherKindOfViewDisablesSave()
{
    QAction *action = m_manager->findChild<QAction *>();
    TarnView *a = open(makeFile("a.tarn"));
    modify(a);
    QVERIFY(action->isEnabled());
    auto *other = new OtherView;
    ViewManager::showView(other);
    QVERIFY(!action->isEnabled());
    QVERIFY(!save()->isEnabled());

    // While another kind of view is active, changes of the last editor view change nothing.
    a->setModified(true);
    QVERIFY(!action->isEnabled());

    ViewManager::showView(a);
    QVERIFY(action->isEnabled());
    ViewManager::showView(other);
    a->setModified(false);
    ViewManager::showView(a);
    QVERIFY(!action->isEnabled());
    m_manager->onCurrentViewChanged(nullptr);
    QVERIFY(!action->isEnabled());
}

void TestTarnViewManager::closingCurrentViewDisablesSave()
{
    QAction *action = m_manager->findChild<QAction *>();
    TarnView *view = open(makeFile("a.tarn"));
    modify(view);
    QVERIFY(action->isEnabled());
    m_manager->onTarnViewClosed(view);
    QVERIFY(!action->isEnabled());
    QCOMPARE(m_manager->tarnViews().size(), 0);
    view->setModified(false);
}

void TestTarnViewManager::closingAnotherViewRefreshes()
{
    TarnView *a = open(makeFile("a.tarn"));
    TarnView *b = open(makeFile("b.tarn"));
    modify(b);
    b->setWindowTitle("other");
    QVERIFY(ViewManager::closeView(a));
    QCOMPARE(files(), QStringList("b.tarn"));
    QVERIFY(save()->isEnabled());
    QCOMPARE(save()->text(), QStringLiteral("&Save \"other\""));
}

void TestTarnViewManager::closedOtherKindOfViewIsIgnored()
{
    TarnView *a = open(makeFile("a.tarn"));
    a->setWindowTitle("other");
    OtherView other;
    m_manager->onTarnViewClosed(&other);
    m_manager->onTarnViewClosed(nullptr);
    QCOMPARE(save()->text(), QStringLiteral("&Save \"a.tarn\""));
    QCOMPARE(files(), QStringList("a.tarn"));
}

void TestTarnViewManager::saveActionSaves()
{
    TarnView *view = open(makeFile("a.tarn"));
    modify(view);
    clearDebugLines();
    save()->trigger();
    QCOMPARE(debugLines(), QStringList("save lumo"));
    QVERIFY(!view->isModified());
    QVERIFY(!save()->isEnabled());
    QVERIFY(readFile(path("a.tarn")).contains("top"));
}

void TestTarnViewManager::saveSlotWorksForInactiveView()
{
    TarnView *view = open(makeFile("a.tarn"));
    modify(view);
    ViewManager::showView(new OtherView);
    m_manager->onActSave();
    QVERIFY(!view->isModified());
}

void TestTarnViewManager::unmodifiedViewIsNotSaved()
{
    m_manager->onActSave();
    open(makeFile("a.tarn"));
    clearDebugLines();
    m_manager->onActSave();
    QCOMPARE(debugLines(), QStringList());
}

void TestTarnViewManager::viewThatDiesUnclosedIsForgotten()
{
    TarnView *view = open(makeFile("a.tarn"));
    modify(view);
    delete view;
    QCOMPARE(m_manager->tarnViews().size(), 0);
    m_manager->onActSave();
    QVERIFY(!m_manager->closeTarnView(path("a.tarn")));
    QVERIFY(!save()->isEnabled());
}

void TestTarnViewManager::viewThatDiesWhileOpeningLeavesNothing()
{
    QPointer<TarnView> opening;
    extraction().whileBuilding = [&opening] {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *view = qobject_cast<TarnView *>(widget))
                opening = view;
        }
        QVERIFY(opening);
        delete opening;
    };
    QVERIFY(m_manager->openTarnView(makeFile("a.tarn"), {}));
    QVERIFY(!opening);
    QCOMPARE(m_manager->tarnViews().size(), 0);
}

void TestTarnViewManager::fileOpenedWhileOpeningGetsOneView()
{
    const QString file = makeFile("a.tarn");
    extraction().whileBuilding = [this, file] {
        extraction().whileBuilding = {};
        m_manager->openTarnView(file, {});
    };
    QVERIFY(m_manager->openTarnView(file, {}));
    QCOMPARE(files(), QStringList({"a.tarn"}));
    QCOMPARE(m_area->count(), 1);
}

void TestTarnViewManager::errorShowsNamesAsTheyAre()
{
    const QString file = path("<b>a</b>.tarn");
    script().expectBox(errorBox("Error", file + " open file failed."), QMessageBox::Ok,
                       [](QMessageBox *box) { QCOMPARE(box->textFormat(), Qt::PlainText); });
    m_manager->openTarnView(file, {});
}

void TestTarnViewManager::errorSurvivesDeathOfItsParent()
{
    auto *parent = new QWidget;
    ViewManager::setDialogParent(parent);
    const QString file = path("missing.tarn");
    script().expectBox(errorBox("Error", file + " open file failed."), QMessageBox::Ok,
                       [parent](QMessageBox *) { delete parent; });
    QVERIFY(m_manager->openTarnView(file, {}));
    ViewManager::setDialogParent(m_area.get());
    QCOMPARE(m_manager->tarnViews().size(), 0);
}

void TestTarnViewManager::contextHasPriorityOne()
{
    TarnView *view = open(makeFile("a.tarn"));
    QAction lower("lower");
    QAction higher("higher");
    ActionManager::registerAction(&lower, Core::Constants::A_FILE_SAVE, "Test.Lower");
    ActionManager::registerAction(&higher, Core::Constants::A_FILE_SAVE, "Test.Higher");
    ViewManager::registerContext(view, "Test.Lower", 0);
    QCOMPARE(save()->text(), QStringLiteral("&Save \"a.tarn\""));
    ViewManager::registerContext(view, "Test.Higher", 2);
    QCOMPARE(save()->text(), QStringLiteral("higher"));
}

TARN_TEST_MAIN(TestTarnViewManager)
#include "tst_tarnviewmanager.moc"
