// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "testview.h"

#include <support/testcase.h>

#include <core/actionmanager.h>
#include <core/viewmanager.h>

#include <QAction>
#include <QApplication>
#include <QEventLoop>
#include <QPointer>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

using Core::IView;
using Core::ViewManager;

class TestViewManager : public TarnTest::TestCase
{
    Q_OBJECT

public Q_SLOTS:
    // Connected by name, as plug-ins do.
    void onActiveted(Core::IView *view);
    void onClosed(Core::IView *view);

private Q_SLOTS:
    void init();
    void cleanup();

    void eachViewHasItsOwnContainer();
    void showingAgainOnlyActivates();
    void tabShowsShortTitleAndToolTip();
    void areaHasClosableMovableTabs();
    void movedTabsKeepTheOrderOfShowing();
    void switchingTabsActivates();

    void closingAsksTheViewOnce_data();
    void closingAsksTheViewOnce();
    void refusalKeepsViewAndContainer_data();
    void refusalKeepsViewAndContainer();
    void closedViewIsWholeUntilTheEventLoop();
    void siblingsSurvive();
    void closingTheLastAnnouncesNull();
    void closingAHiddenTabKeepsTheActiveView();
    void closingUnknownViewsDoesNothing();
    void closedViewIsNotShownAgain();
    void closeAllStopsAtTheFirstRefusal();
    void closeAllClosesInOrderOfShowing();
    void closingViewsNeverEndsTheApplication();

    void deletedViewLeaves();
    void deletedContainerReportsItsWholeView();
    void deletedAreaTakesItsViewsAlong();
    void newViewAtTheAddressOfADeletedOneIsAnnounced();

    void questionMayNest_data();
    void questionMayNest();
    void viewMayDieInItsQuestion();
    void containerMayDieInItsQuestion();

    void handlersMayOpenViewsOnClose();
    void handlersMayCloseViewsOnClose();
    void handlersMayCloseTheViewThatBecameActive();
    void everyReceiverSeesTheSameOrderOfActivations();

    void contextsFollowTheActiveView();
    void greaterPriorityWins();
    void contextRegisteredAgainChangesItsPriority();
    void dialogParentIsRememberedAndForgotten();

private:
    TestView *show(const QString &title);
    static QTabWidget *area() { return qobject_cast<QTabWidget *>(ViewManager::viewArea()); }
    static void deleteLaterNow()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    /// Closes @p view in the way that @p way names.
    static void close(TestView *view, const QString &way);
    static void addCloseWays();

    QStringList m_log;
    std::function<void(IView *)> m_onActiveted;
    std::function<void(IView *)> m_onClosed;
};

void TestViewManager::onActiveted(IView *view)
{
    m_log.append(QStringLiteral("active ") + (view ? view->windowTitle() : QStringLiteral("null")));
    if (m_onActiveted)
        m_onActiveted(view);
}

void TestViewManager::onClosed(IView *view)
{
    // The cast fails once the derived part is gone.
    const bool whole = qobject_cast<TestView *>(view) && view->parentWidget();
    m_log.append(QStringLiteral("closed ") +
                 (whole ? view->windowTitle() : QStringLiteral("a ruin")));
    if (m_onClosed)
        m_onClosed(view);
}

void TestViewManager::init()
{
    TestCase::init();
    connect(ViewManager::instance(), SIGNAL(viewActiveted(Core::IView *)), this,
            SLOT(onActiveted(Core::IView *)));
    connect(ViewManager::instance(), SIGNAL(viewClosed(Core::IView *)), this,
            SLOT(onClosed(Core::IView *)));
}

void TestViewManager::cleanup()
{
    m_onActiveted = nullptr;
    m_onClosed = nullptr;
    delete ViewManager::viewArea();
    QVERIFY(ViewManager::views().isEmpty());
    deleteLaterNow();
    ViewManager::instance()->disconnect(this);
    m_log.clear();
    TestCase::cleanup();
}

TestView *TestViewManager::show(const QString &title)
{
    auto *view = new TestView(title);
    ViewManager::showView(view);
    return view;
}

void TestViewManager::addCloseWays()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"closeView", "tab", "container", "container delete-on-close", "view"})
        QTest::newRow(way) << way;
}

void TestViewManager::close(TestView *view, const QString &way)
{
    if (way == QLatin1String("closeView")) {
        ViewManager::closeView(view);
    } else if (way == QLatin1String("tab")) {
        Q_EMIT area()->tabCloseRequested(area()->indexOf(view->parentWidget()));
    } else if (way == QLatin1String("view")) {
        view->close();
    } else {
        if (way.contains(QLatin1String("delete-on-close")))
            view->parentWidget()->setAttribute(Qt::WA_DeleteOnClose);
        view->parentWidget()->close();
    }
}

void TestViewManager::eachViewHasItsOwnContainer()
{
    const TestView *a = show(QStringLiteral("a"));
    const TestView *b = show(QStringLiteral("b"));
    QVERIFY(a->parentWidget());
    QVERIFY(b->parentWidget());
    QVERIFY(a->parentWidget() != b->parentWidget());
    QCOMPARE(area()->count(), 2);
    QCOMPARE(ViewManager::views(),
             QList<IView *>({const_cast<TestView *>(a), const_cast<TestView *>(b)}));
    QCOMPARE(ViewManager::activeView(), b);
    QCOMPARE(m_log, QStringList({"active a", "active b"}));
}

void TestViewManager::showingAgainOnlyActivates()
{
    TestView *a = show(QStringLiteral("a"));
    TestView *b = show(QStringLiteral("b"));
    const QWidget *container = a->parentWidget();
    ViewManager::showView(a);
    ViewManager::showView(a);
    QCOMPARE(a->parentWidget(), container);
    QCOMPARE(ViewManager::views(), QList<IView *>({a, b}));
    ViewManager::showView(nullptr);
    QCOMPARE(m_log, QStringList({"active a", "active b", "active a"}));
}

void TestViewManager::tabShowsShortTitleAndToolTip()
{
    TestView *a = show(QStringLiteral("R&D.tarn"));
    TestView *b = show(QStringLiteral("b.tarn"));
    QCOMPARE(area()->tabText(0), QStringLiteral("R&&D.tarn"));
    QCOMPARE(area()->tabToolTip(0), QStringLiteral("R&D.tarn"));
    b->setShortTitle(QStringLiteral("b.tarn *"));
    QCOMPARE(area()->tabText(1), QStringLiteral("b.tarn *"));
    QCOMPARE(area()->tabToolTip(1), QStringLiteral("b.tarn"));
    a->setWindowTitle(QStringLiteral("c.tarn"));
    QCOMPARE(area()->tabText(0), QStringLiteral("c.tarn"));
    b->setWindowTitle(QStringLiteral("long title"));
    QCOMPARE(area()->tabText(1), QStringLiteral("b.tarn *"));
    QCOMPARE(area()->tabToolTip(1), QStringLiteral("long title"));
}

void TestViewManager::areaHasClosableMovableTabs()
{
    QVERIFY(area());
    QVERIFY(area()->tabsClosable());
    QVERIFY(area()->isMovable());
    QCOMPARE(ViewManager::viewArea(), area());
}

void TestViewManager::movedTabsKeepTheOrderOfShowing()
{
    TestView *a = show(QStringLiteral("a"));
    TestView *b = show(QStringLiteral("b"));
    area()->tabBar()->moveTab(0, 1);
    QCOMPARE(ViewManager::views(), QList<IView *>({a, b}));
    a->setShortTitle(QStringLiteral("moved"));
    QCOMPARE(area()->tabText(1), QStringLiteral("moved"));
    QCOMPARE(ViewManager::activeView(), b);
    QVERIFY(ViewManager::closeView(b));
    QCOMPARE(area()->tabText(0), QStringLiteral("moved"));
}

void TestViewManager::switchingTabsActivates()
{
    TestView *a = show(QStringLiteral("a"));
    show(QStringLiteral("b"));
    area()->setCurrentIndex(0);
    QCOMPARE(ViewManager::activeView(), a);
    QCOMPARE(m_log.last(), QStringLiteral("active a"));
}

void TestViewManager::closingAsksTheViewOnce_data()
{
    addCloseWays();
}

void TestViewManager::closingAsksTheViewOnce()
{
    QFETCH(QString, way);
    show(QStringLiteral("a"));
    QPointer<TestView> view = show(QStringLiteral("b"));
    QPointer<QWidget> container = view->parentWidget();
    m_log.clear();
    close(view, way);
    QCOMPARE(view->questions, 1);
    QCOMPARE(m_log, QStringList({"closed b", "active a"}));
    QCOMPARE(area()->count(), 1);
    QCOMPARE(debugLines(), QStringList());
    deleteLaterNow();
    QVERIFY(!view);
    QVERIFY(!container);
    QCOMPARE(debugLines(), QStringList("IView: b destoryed"));
    QCOMPARE(m_log.size(), 2);
}

void TestViewManager::refusalKeepsViewAndContainer_data()
{
    addCloseWays();
}

void TestViewManager::refusalKeepsViewAndContainer()
{
    QFETCH(QString, way);
    area()->show();
    QPointer<TestView> view = show(QStringLiteral("a"));
    const QWidget *container = view->parentWidget();
    view->agreesToClose = [] { return false; };
    m_log.clear();
    close(view, way);
    QCOMPARE(view->questions, 1);
    deleteLaterNow();
    QVERIFY(view);
    QCOMPARE(view->parentWidget(), container);
    QVERIFY(view->isVisible());
    QCOMPARE(area()->count(), 1);
    QCOMPARE(ViewManager::activeView(), view);
    QCOMPARE(m_log, QStringList());
    QVERIFY(!ViewManager::closeView(view));
    QCOMPARE(view->questions, 2);
}

void TestViewManager::closedViewIsWholeUntilTheEventLoop()
{
    QPointer<TestView> view = show(QStringLiteral("a"));
    QVERIFY(ViewManager::closeView(view));
    QVERIFY(view);
    QVERIFY(view->parentWidget());
    QCOMPARE(ViewManager::views(), QList<IView *>());
    QCOMPARE(ViewManager::activeView(), nullptr);
    // Closing a closed view does not ask.
    QVERIFY(ViewManager::closeView(view));
    view->close();
    view->parentWidget()->close();
    QCOMPARE(view->questions, 1);
    QCOMPARE(m_log, QStringList({"active a", "closed a", "active null"}));
    deleteLaterNow();
    QVERIFY(!view);
}

void TestViewManager::siblingsSurvive()
{
    QPointer<TestView> a = show(QStringLiteral("a"));
    TestView *b = show(QStringLiteral("b"));
    QPointer<TestView> c = show(QStringLiteral("c"));
    b->parentWidget()->setAttribute(Qt::WA_DeleteOnClose);
    b->parentWidget()->close();
    deleteLaterNow();
    QVERIFY(a);
    QVERIFY(c);
    QCOMPARE(a->questions + c->questions, 0);
    QCOMPARE(ViewManager::views(), QList<IView *>({a, c}));
    QCOMPARE(area()->count(), 2);
}

void TestViewManager::closingTheLastAnnouncesNull()
{
    ViewManager::closeView(show(QStringLiteral("a")));
    ViewManager::closeView(show(QStringLiteral("b")));
    QCOMPARE(m_log, QStringList({"active a", "closed a", "active null", "active b", "closed b",
                                 "active null"}));
}

void TestViewManager::closingAHiddenTabKeepsTheActiveView()
{
    TestView *a = show(QStringLiteral("a"));
    TestView *b = show(QStringLiteral("b"));
    QVERIFY(ViewManager::closeView(a));
    QCOMPARE(ViewManager::activeView(), b);
    QCOMPARE(m_log, QStringList({"active a", "active b", "closed a"}));
}

void TestViewManager::closingUnknownViewsDoesNothing()
{
    TestView stranger(QStringLiteral("stranger"));
    QVERIFY(!ViewManager::closeView(nullptr));
    QVERIFY(!ViewManager::closeView(&stranger));
    QCOMPARE(stranger.questions, 0);
}

void TestViewManager::closedViewIsNotShownAgain()
{
    QPointer<TestView> view = show(QStringLiteral("a"));
    m_onClosed = [](IView *closed) { ViewManager::showView(closed); };
    QVERIFY(ViewManager::closeView(view));
    ViewManager::showView(view);
    QCOMPARE(area()->count(), 0);
    deleteLaterNow();
    QVERIFY(!view);
}

void TestViewManager::closeAllStopsAtTheFirstRefusal()
{
    show(QStringLiteral("a"));
    TestView *b = show(QStringLiteral("b"));
    TestView *c = show(QStringLiteral("c"));
    b->agreesToClose = [] { return false; };
    QVERIFY(!ViewManager::closeAllViews());
    QCOMPARE(ViewManager::views(), QList<IView *>({b, c}));
    QCOMPARE(c->questions, 0);
    b->agreesToClose = nullptr;
    QVERIFY(ViewManager::closeAllViews());
    QVERIFY(ViewManager::closeAllViews());
    QVERIFY(ViewManager::views().isEmpty());
}

void TestViewManager::closeAllClosesInOrderOfShowing()
{
    show(QStringLiteral("a"));
    show(QStringLiteral("b"));
    show(QStringLiteral("c"));
    area()->tabBar()->moveTab(2, 0);
    m_log.clear();
    // A view that is opened in the meantime is asked too.
    m_onClosed = [this](IView *view) {
        if (view->windowTitle() == QLatin1String("a"))
            show(QStringLiteral("d"));
    };
    QVERIFY(ViewManager::closeAllViews());
    QCOMPARE(m_log.filter(QStringLiteral("closed")),
             QStringList({"closed a", "closed b", "closed c", "closed d"}));
}

void TestViewManager::closingViewsNeverEndsTheApplication()
{
    QSignalSpy lastWindow(qApp, &QGuiApplication::lastWindowClosed);
    // The signal only comes while the application runs.
    QTimer::singleShot(0, [this] {
        show(QStringLiteral("a"))->parentWidget()->close();
        show(QStringLiteral("b"))->close();
        ViewManager::closeView(show(QStringLiteral("c")));
        QCoreApplication::exit(7);
    });
    QCOMPARE(QApplication::exec(), 7);
    QCOMPARE(lastWindow.size(), 0);
}

void TestViewManager::deletedViewLeaves()
{
    TestView *a = show(QStringLiteral("a"));
    TestView *b = show(QStringLiteral("b"));
    QPointer<QWidget> container = b->parentWidget();
    m_log.clear();
    delete b;
    QCOMPARE(ViewManager::views(), QList<IView *>{a});
    QCOMPARE(area()->count(), 1);
    QCOMPARE(m_log, QStringList("active a"));
    deleteLaterNow();
    QVERIFY(!container);
    delete a;
    QCOMPARE(m_log, QStringList({"active a", "active null"}));
}

void TestViewManager::deletedContainerReportsItsWholeView()
{
    show(QStringLiteral("a"));
    TestView *b = show(QStringLiteral("b"));
    m_log.clear();
    delete b->parentWidget();
    QCOMPARE(m_log, QStringList({"closed b", "active a"}));
    QCOMPARE(debugLines(), QStringList("IView: b destoryed"));
}

void TestViewManager::deletedAreaTakesItsViewsAlong()
{
    show(QStringLiteral("a"));
    show(QStringLiteral("b"));
    m_log.clear();
    delete ViewManager::viewArea();
    QCOMPARE(m_log.filter(QStringLiteral("closed")), QStringList({"closed a", "closed b"}));
    QCOMPARE(m_log.last(), QStringLiteral("active null"));
    QCOMPARE(ViewManager::views(), QList<IView *>());
    QCOMPARE(ViewManager::activeView(), nullptr);
    // A new area starts afresh.
    TestView *c = show(QStringLiteral("c"));
    QCOMPARE(ViewManager::activeView(), c);
}

void TestViewManager::newViewAtTheAddressOfADeletedOneIsAnnounced()
{
    alignas(TestView) static char place[sizeof(TestView)];
    TestView *other = show(QStringLiteral("other"));
    auto *first = new (place) TestView(QStringLiteral("first"));
    QAction action;
    Core::ActionManager::registerAction(&action, QStringLiteral("id.address"),
                                        QStringLiteral("context.first"));
    ViewManager::registerContext(first, QStringLiteral("context.first"), 1);
    ViewManager::showView(first);
    QVERIFY(Core::ActionManager::command(QStringLiteral("id.address"))->isEnabled());
    m_log.clear();
    m_onClosed = [first](IView *) {
        first->~TestView();
        ViewManager::showView(new (place) TestView(QStringLiteral("second")));
    };
    ViewManager::closeView(other);
    QCOMPARE(m_log, QStringList({"closed other", "active second"}));
    QVERIFY(!Core::ActionManager::command(QStringLiteral("id.address"))->isEnabled());
    ViewManager::activeView()->~IView();
    deleteLaterNow();
}

void TestViewManager::questionMayNest_data()
{
    addCloseWays();
}

/// The view's question box spins an event loop in which the view is closed once more.
void TestViewManager::questionMayNest()
{
    QFETCH(QString, way);
    for (const bool answer : {false, true}) {
        QPointer<TestView> view = show(QStringLiteral("a"));
        bool nestedResult = true;
        view->agreesToClose = [&] {
            QEventLoop loop;
            QTimer::singleShot(0, [&] {
                close(view, way);
                nestedResult = ViewManager::closeView(view) || ViewManager::closeAllViews();
                loop.quit();
            });
            loop.exec();
            return answer;
        };
        QCOMPARE(ViewManager::closeView(view), answer);
        QVERIFY(view);
        QVERIFY(!nestedResult);
        QCOMPARE(view->questions, 1);
        deleteLaterNow();
        QCOMPARE(view.isNull(), answer);
        delete view;
    }
    QCOMPARE(m_log,
             QStringList({"active a", "active null", "active a", "closed a", "active null"}));
}

void TestViewManager::viewMayDieInItsQuestion()
{
    TestView *a = show(QStringLiteral("a"));
    auto *b = show(QStringLiteral("b"));
    m_log.clear();
    b->agreesToClose = [b] {
        delete b;
        return false;
    };
    QVERIFY(ViewManager::closeView(b));
    QCOMPARE(ViewManager::views(), QList<IView *>{a});
    QCOMPARE(m_log, QStringList("active a"));
    deleteLaterNow();
    QCOMPARE(area()->count(), 1);
}

void TestViewManager::containerMayDieInItsQuestion()
{
    TestView *a = show(QStringLiteral("a"));
    auto *b = show(QStringLiteral("b"));
    m_log.clear();
    b->agreesToClose = [b] {
        delete b->parentWidget();
        return true;
    };
    QVERIFY(ViewManager::closeView(b));
    QCOMPARE(ViewManager::views(), QList<IView *>{a});
    QCOMPARE(m_log, QStringList({"closed b", "active a"}));
}

void TestViewManager::handlersMayOpenViewsOnClose()
{
    TestView *a = show(QStringLiteral("a"));
    m_log.clear();
    m_onClosed = [this](IView *) { show(QStringLiteral("b")); };
    QVERIFY(ViewManager::closeView(a));
    QCOMPARE(m_log, QStringList({"closed a", "active b"}));
    QCOMPARE(ViewManager::views().size(), 1);
}

void TestViewManager::handlersMayCloseViewsOnClose()
{
    TestView *a = show(QStringLiteral("a"));
    TestView *b = show(QStringLiteral("b"));
    TestView *c = show(QStringLiteral("c"));
    m_log.clear();
    m_onClosed = [a, b](IView *view) { ViewManager::closeView(view == b ? a : b); };
    QVERIFY(ViewManager::closeView(b));
    QCOMPARE(m_log, QStringList({"closed b", "closed a"}));
    QCOMPARE(ViewManager::views(), QList<IView *>{c});
    m_onClosed = nullptr;
    QVERIFY(ViewManager::closeView(c));
    QCOMPARE(m_log, QStringList({"closed b", "closed a", "closed c", "active null"}));
}

void TestViewManager::handlersMayCloseTheViewThatBecameActive()
{
    show(QStringLiteral("a"));
    m_log.clear();
    m_onActiveted = [](IView *view) {
        if (view && view->windowTitle() == QLatin1String("b"))
            ViewManager::closeView(view);
    };
    show(QStringLiteral("b"));
    QCOMPARE(m_log, QStringList({"active b", "closed b", "active a"}));
    QCOMPARE(ViewManager::views().size(), 1);
    deleteLaterNow();
    QCOMPARE(area()->count(), 1);
}

void TestViewManager::everyReceiverSeesTheSameOrderOfActivations()
{
    TestView *a = show(QStringLiteral("a"));
    show(QStringLiteral("b"));
    m_log.clear();
    QStringList second;
    const auto connection =
        connect(ViewManager::instance(), &ViewManager::viewActiveted,
                [&second](IView *view) { second.append("active " + view->windowTitle()); });
    m_onActiveted = [a](IView *view) {
        if (view != a)
            ViewManager::showView(a);
    };
    show(QStringLiteral("c"));
    disconnect(connection);
    QCOMPARE(m_log, QStringList({"active c", "active a"}));
    QCOMPARE(second, m_log);
}

void TestViewManager::contextsFollowTheActiveView()
{
    QAction action(QStringLiteral("of a"));
    Core::ActionManager::registerAction(&action, QStringLiteral("id.follow"),
                                        QStringLiteral("context.a"));
    const QAction *command = Core::ActionManager::command(QStringLiteral("id.follow"));
    auto *a = new TestView(QStringLiteral("a"));
    ViewManager::registerContext(a, QStringLiteral("context.a"), 1);
    QVERIFY(!command->isEnabled());
    ViewManager::showView(a);
    QVERIFY(command->isEnabled());
    TestView *b = show(QStringLiteral("b"));
    QVERIFY(!command->isEnabled());
    ViewManager::registerContext(b, QStringLiteral("context.a"), 1);
    QVERIFY(command->isEnabled());
    delete b;
    ViewManager::closeView(a);
    QVERIFY(!command->isEnabled());
    ViewManager::registerContext(nullptr, QStringLiteral("context.a"), 1);
}

void TestViewManager::greaterPriorityWins()
{
    QAction low(QStringLiteral("low"));
    QAction high(QStringLiteral("high"));
    const QString id = QStringLiteral("id.priority");
    Core::ActionManager::registerAction(&low, id, QStringLiteral("context.low"));
    Core::ActionManager::registerAction(&high, id, QStringLiteral("context.high"));
    TestView *view = show(QStringLiteral("a"));
    ViewManager::registerContext(view, QStringLiteral("context.low"), 1);
    QCOMPARE(Core::ActionManager::command(id)->text(), QStringLiteral("low"));
    ViewManager::registerContext(view, QStringLiteral("context.high"), 2);
    QCOMPARE(Core::ActionManager::command(id)->text(), QStringLiteral("high"));
    ViewManager::registerContext(view, QStringLiteral("context.lowest"), 0);
    QCOMPARE(Core::ActionManager::command(id)->text(), QStringLiteral("high"));
}

void TestViewManager::contextRegisteredAgainChangesItsPriority()
{
    QAction one(QStringLiteral("one"));
    QAction two(QStringLiteral("two"));
    const QString id = QStringLiteral("id.again");
    Core::ActionManager::registerAction(&one, id, QStringLiteral("context.1"));
    Core::ActionManager::registerAction(&two, id, QStringLiteral("context.2"));
    TestView *view = show(QStringLiteral("a"));
    ViewManager::registerContext(view, QStringLiteral("context.1"), 1);
    ViewManager::registerContext(view, QStringLiteral("context.2"), 1);
    QCOMPARE(Core::ActionManager::command(id)->text(), QStringLiteral("one"));
    ViewManager::registerContext(view, QStringLiteral("context.1"), 0);
    QCOMPARE(Core::ActionManager::command(id)->text(), QStringLiteral("two"));
}

void TestViewManager::dialogParentIsRememberedAndForgotten()
{
    QCOMPARE(ViewManager::dialogParent(), nullptr);
    {
        QWidget window;
        ViewManager::setDialogParent(&window);
        QCOMPARE(ViewManager::dialogParent(), &window);
    }
    QCOMPARE(ViewManager::dialogParent(), nullptr);
}

TARN_TEST_MAIN(TestViewManager)
#include "tst_viewmanager.moc"
