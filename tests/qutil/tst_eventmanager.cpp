// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/testcase.h>

#include <qutil/eventmanager.h>
#include <qutil/ievent.h>
#include <qutil/ieventhandler.h>

#include <QTest>

#include <functional>
#include <memory>

using QUtil::EventManager;
using QUtil::IEvent;

namespace {

const QString E = QStringLiteral("E");

/// Writes its letter to a log and then runs the action of the test.
class Recorder final : public QUtil::IEventHandler
{
public:
    /// Subscribes to @p events.
    Recorder(const QString &name, QStringList *log, const QStringList &events = {E})
        : m_name(name)
        , m_log(log)
    {
        for (const QString &event : events)
            join(event);
    }

    void handleIEvent(const IEvent *event) override
    {
        m_log->append(m_name + ':' + event->name());
        const auto action = then; // It may delete the recorder.
        if (action)
            action();
    }

    void join(const QString &event = E) { EventManager::instance()->subscribe(this, event); }
    void leave(const QString &event = E) { EventManager::instance()->unsubscribe(this, event); }

    std::function<void()> then;

private:
    QString m_name;
    QStringList *m_log;
};

} // namespace

class TestEventManager : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void eventCarriesNameAndValues();
    void handlersReceiveInOrderOfSubscription();
    void subscribingTwiceDeliversOnce();
    void leavingWithoutJoiningIsHarmless();
    void deadHandlersReceiveNothing();
    void lateJoinerMissesTheEventOfTheMoment();
    void handlerThatLeavesAndComesBackIsLate();
    void leaverBeforeItsTurnReceivesNothing();
    void handlersMayDieDuringDelivery_data();
    void handlersMayDieDuringDelivery();
    void nestedDeliveryReachesLateJoinersOnlyInside();
    void nestedDeathEndsTheOuterDeliveryToTheDead();
    void joiningOtherNamesDuringDelivery();
    void manyHandlersTakeNoQuadraticTime();

private:
    static void send(const QString &event) { EventManager::instance()->send(IEvent(event)); }
    /// What the recorders write when the event is sent.
    QStringList logOf(const QString &event = E)
    {
        m_log.clear();
        send(event);
        return m_log;
    }

    QStringList m_log;
};

void TestEventManager::init()
{
    TestCase::init();
    m_log.clear();
}

void TestEventManager::eventCarriesNameAndValues()
{
    const IEvent event("E", {{"file", "a.v"}});
    QCOMPARE(event.name(), QStringLiteral("E"));
    QCOMPARE(event.get("file").toString(), QStringLiteral("a.v"));
    QVERIFY(!event.get("type").isValid());
}

void TestEventManager::handlersReceiveInOrderOfSubscription()
{
    Recorder a("a", &m_log, {});
    Recorder b("b", &m_log, {"F"});
    Recorder c("c", &m_log);
    a.join();
    QCOMPARE(logOf(E), QStringList({"c:E", "a:E"}));
    QCOMPARE(logOf("F"), QStringList("b:F"));
    QCOMPARE(logOf("nobody"), QStringList());
}

void TestEventManager::subscribingTwiceDeliversOnce()
{
    Recorder a("a", &m_log, {E, E});
    QCOMPARE(logOf(), QStringList("a:E"));
    a.leave();
    QCOMPARE(logOf(), QStringList());
}

void TestEventManager::leavingWithoutJoiningIsHarmless()
{
    Recorder a("a", &m_log, {});
    a.leave();
    Recorder b("b", &m_log);
    a.leave();
    a.leave("never heard of");
    QCOMPARE(logOf(), QStringList("b:E"));
}

void TestEventManager::deadHandlersReceiveNothing()
{
    Recorder("a", &m_log, {"E", "F"});
    QCOMPARE(logOf(E), QStringList());
    QCOMPARE(logOf("F"), QStringList());
}

void TestEventManager::lateJoinerMissesTheEventOfTheMoment()
{
    Recorder a("a", &m_log);
    Recorder b("b", &m_log, {});
    a.then = [&b] { b.join(); };
    QCOMPARE(logOf(), QStringList("a:E"));
    QCOMPARE(logOf(), QStringList({"a:E", "b:E"}));
}

void TestEventManager::handlerThatLeavesAndComesBackIsLate()
{
    Recorder a("a", &m_log);
    Recorder b("b", &m_log);
    a.then = [&a, &b] {
        for (Recorder *recorder : {&a, &b}) {
            recorder->leave();
            recorder->join();
        }
    };
    QCOMPARE(logOf(), QStringList("a:E"));
}

void TestEventManager::leaverBeforeItsTurnReceivesNothing()
{
    Recorder a("a", &m_log);
    Recorder b("b", &m_log);
    Recorder c("c", &m_log);
    a.then = [&a, &b] {
        a.leave();
        b.leave();
    };
    QCOMPARE(logOf(), QStringList({"a:E", "c:E"}));
}

void TestEventManager::handlersMayDieDuringDelivery_data()
{
    QTest::addColumn<QString>("killer");
    QTest::addColumn<QString>("victims");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("itself") << "b"
                            << "b" << QStringList{"a:E", "b:E", "c:E", "d:E"};
    QTest::newRow("its successor") << "b"
                                   << "c" << QStringList{"a:E", "b:E", "d:E"};
    QTest::newRow("its predecessor") << "b"
                                     << "a" << QStringList{"a:E", "b:E", "c:E", "d:E"};
    QTest::newRow("the last") << "a"
                              << "d" << QStringList{"a:E", "b:E", "c:E"};
    QTest::newRow("everybody") << "b"
                               << "abcd" << QStringList{"a:E", "b:E"};
    QTest::newRow("all others") << "c"
                                << "abd" << QStringList{"a:E", "b:E", "c:E"};
}

void TestEventManager::handlersMayDieDuringDelivery()
{
    QFETCH(QString, killer);
    QFETCH(QString, victims);

    std::map<QChar, std::unique_ptr<Recorder>> recorders;
    for (const QChar name : QStringLiteral("abcd"))
        recorders[name] = std::make_unique<Recorder>(name, &m_log);
    recorders[killer.at(0)]->then = [&recorders, victims] {
        for (const QChar victim : victims)
            recorders[victim].reset();
    };
    QTEST(logOf(), "expected");
}

void TestEventManager::nestedDeliveryReachesLateJoinersOnlyInside()
{
    Recorder a("a", &m_log);
    Recorder b("b", &m_log);
    Recorder late("late", &m_log, {});
    a.then = [&a, &late] {
        a.then = nullptr;
        late.join();
        send(E);
    };
    QCOMPARE(logOf(), QStringList({"a:E", "a:E", "b:E", "late:E", "b:E"}));
}

void TestEventManager::nestedDeathEndsTheOuterDeliveryToTheDead()
{
    Recorder a("a", &m_log);
    auto b = std::make_unique<Recorder>("b", &m_log);
    auto c = std::make_unique<Recorder>("c", &m_log);
    Recorder d("d", &m_log);
    a.then = [&a, &b, &c] {
        a.then = nullptr;
        b->then = [&b, &c] {
            c.reset();
            b.reset();
        };
        send(E);
    };
    QCOMPARE(logOf(), QStringList({"a:E", "a:E", "b:E", "d:E", "d:E"}));
}

void TestEventManager::joiningOtherNamesDuringDelivery()
{
    Recorder a("a", &m_log);
    Recorder b("b", &m_log);
    a.then = [&a] {
        for (int i = 0; i < 100; ++i)
            a.join(QStringLiteral("other %1").arg(i));
    };
    QCOMPARE(logOf(), QStringList({"a:E", "b:E"}));
}

void TestEventManager::manyHandlersTakeNoQuadraticTime()
{
    constexpr int Count = 100000;
    std::vector<std::unique_ptr<Recorder>> recorders;
    for (int i = 0; i < Count; ++i)
        recorders.push_back(std::make_unique<Recorder>(QString(), &m_log));
    // The first deletes all others: linear removal would take minutes.
    recorders.front()->then = [&recorders] {
        for (size_t i = 1; i < recorders.size(); ++i)
            recorders[i].reset();
    };
    QCOMPARE(logOf().size(), 1);
}

QTEST_APPLESS_MAIN(TestEventManager)
#include "tst_eventmanager.moc"
