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

/// Writes its letter to a log and then runs the action of the test.
class Recorder final : public QUtil::IEventHandler
{
public:
    Recorder(const QString &name, QStringList *log)
        : m_name(name)
        , m_log(log)
    {
    }

    void handleIEvent(const IEvent *event) override
    {
        m_log->append(m_name + QLatin1Char(':') + event->name());
        const auto action = then; // It may delete the recorder.
        if (action)
            action();
    }

    void join(const QString &name) { EventManager::instance()->subscribe(this, name); }
    void leave(const QString &name) { EventManager::instance()->unsubscribe(this, name); }

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
    static void send(const QString &name) { EventManager::instance()->send(IEvent(name)); }
};

void TestEventManager::eventCarriesNameAndValues()
{
    const IEvent event(QStringLiteral("E"), {{QStringLiteral("file"), QStringLiteral("a.v")}});
    QCOMPARE(event.name(), QStringLiteral("E"));
    QCOMPARE(event.get(QStringLiteral("file")).toString(), QStringLiteral("a.v"));
    QVERIFY(!event.get(QStringLiteral("type")).isValid());
}

void TestEventManager::handlersReceiveInOrderOfSubscription()
{
    QStringList log;
    Recorder a(QStringLiteral("a"), &log);
    Recorder b(QStringLiteral("b"), &log);
    Recorder c(QStringLiteral("c"), &log);
    c.join(QStringLiteral("E"));
    a.join(QStringLiteral("E"));
    b.join(QStringLiteral("F"));
    send(QStringLiteral("E"));
    send(QStringLiteral("F"));
    send(QStringLiteral("nobody"));
    QCOMPARE(log, QStringList({"c:E", "a:E", "b:F"}));
}

void TestEventManager::subscribingTwiceDeliversOnce()
{
    QStringList log;
    Recorder a(QStringLiteral("a"), &log);
    a.join(QStringLiteral("E"));
    a.join(QStringLiteral("E"));
    send(QStringLiteral("E"));
    QCOMPARE(log, QStringList("a:E"));
    a.leave(QStringLiteral("E"));
    send(QStringLiteral("E"));
    QCOMPARE(log.size(), 1);
}

void TestEventManager::leavingWithoutJoiningIsHarmless()
{
    QStringList log;
    Recorder a(QStringLiteral("a"), &log);
    Recorder b(QStringLiteral("b"), &log);
    a.leave(QStringLiteral("E"));
    b.join(QStringLiteral("E"));
    a.leave(QStringLiteral("E"));
    a.leave(QStringLiteral("never heard of"));
    send(QStringLiteral("E"));
    QCOMPARE(log, QStringList("b:E"));
}

void TestEventManager::deadHandlersReceiveNothing()
{
    QStringList log;
    auto a = std::make_unique<Recorder>(QStringLiteral("a"), &log);
    a->join(QStringLiteral("E"));
    a->join(QStringLiteral("F"));
    a.reset();
    send(QStringLiteral("E"));
    send(QStringLiteral("F"));
    QCOMPARE(log, QStringList());
}

void TestEventManager::lateJoinerMissesTheEventOfTheMoment()
{
    QStringList log;
    Recorder a(QStringLiteral("a"), &log);
    Recorder b(QStringLiteral("b"), &log);
    a.join(QStringLiteral("E"));
    a.then = [&b] { b.join(QStringLiteral("E")); };
    send(QStringLiteral("E"));
    QCOMPARE(log, QStringList("a:E"));
    send(QStringLiteral("E"));
    QCOMPARE(log, QStringList({"a:E", "a:E", "b:E"}));
}

void TestEventManager::handlerThatLeavesAndComesBackIsLate()
{
    QStringList log;
    Recorder a(QStringLiteral("a"), &log);
    Recorder b(QStringLiteral("b"), &log);
    a.join(QStringLiteral("E"));
    b.join(QStringLiteral("E"));
    a.then = [&a, &b] {
        a.leave(QStringLiteral("E"));
        a.join(QStringLiteral("E"));
        b.leave(QStringLiteral("E"));
        b.join(QStringLiteral("E"));
    };
    send(QStringLiteral("E"));
    QCOMPARE(log, QStringList("a:E"));
}

void TestEventManager::leaverBeforeItsTurnReceivesNothing()
{
    QStringList log;
    Recorder a(QStringLiteral("a"), &log);
    Recorder b(QStringLiteral("b"), &log);
    Recorder c(QStringLiteral("c"), &log);
    for (Recorder *recorder : {&a, &b, &c})
        recorder->join(QStringLiteral("E"));
    a.then = [&a, &b] {
        a.leave(QStringLiteral("E"));
        b.leave(QStringLiteral("E"));
    };
    send(QStringLiteral("E"));
    QCOMPARE(log, QStringList({"a:E", "c:E"}));
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
    QFETCH(QStringList, expected);

    QStringList log;
    std::map<QChar, std::unique_ptr<Recorder>> recorders;
    for (const QChar name : QStringLiteral("abcd")) {
        recorders[name] = std::make_unique<Recorder>(QString(name), &log);
        recorders[name]->join(QStringLiteral("E"));
    }
    recorders[killer.at(0)]->then = [&recorders, victims] {
        for (const QChar victim : victims)
            recorders[victim].reset();
    };
    send(QStringLiteral("E"));
    QCOMPARE(log, expected);
}

void TestEventManager::nestedDeliveryReachesLateJoinersOnlyInside()
{
    QStringList log;
    Recorder a(QStringLiteral("a"), &log);
    Recorder b(QStringLiteral("b"), &log);
    Recorder late(QStringLiteral("late"), &log);
    a.join(QStringLiteral("E"));
    b.join(QStringLiteral("E"));
    a.then = [&a, &late] {
        a.then = nullptr;
        late.join(QStringLiteral("E"));
        send(QStringLiteral("E"));
    };
    send(QStringLiteral("E"));
    QCOMPARE(log, QStringList({"a:E", "a:E", "b:E", "late:E", "b:E"}));
}

void TestEventManager::nestedDeathEndsTheOuterDeliveryToTheDead()
{
    QStringList log;
    Recorder a(QStringLiteral("a"), &log);
    auto b = std::make_unique<Recorder>(QStringLiteral("b"), &log);
    auto c = std::make_unique<Recorder>(QStringLiteral("c"), &log);
    Recorder d(QStringLiteral("d"), &log);
    for (Recorder *recorder : {&a, b.get(), c.get(), &d})
        recorder->join(QStringLiteral("E"));
    a.then = [&a, &b, &c] {
        a.then = nullptr;
        b->then = [&b, &c] {
            c.reset();
            b.reset();
        };
        send(QStringLiteral("E"));
    };
    send(QStringLiteral("E"));
    QCOMPARE(log, QStringList({"a:E", "a:E", "b:E", "d:E", "d:E"}));
}

void TestEventManager::joiningOtherNamesDuringDelivery()
{
    QStringList log;
    Recorder a(QStringLiteral("a"), &log);
    Recorder b(QStringLiteral("b"), &log);
    a.join(QStringLiteral("E"));
    b.join(QStringLiteral("E"));
    a.then = [&a] {
        for (int i = 0; i < 100; ++i)
            a.join(QStringLiteral("other %1").arg(i));
    };
    send(QStringLiteral("E"));
    QCOMPARE(log, QStringList({"a:E", "b:E"}));
}

void TestEventManager::manyHandlersTakeNoQuadraticTime()
{
    constexpr int Count = 100000;
    QStringList log;
    std::vector<std::unique_ptr<Recorder>> recorders;
    for (int i = 0; i < Count; ++i) {
        recorders.push_back(std::make_unique<Recorder>(QString(), &log));
        recorders.back()->join(QStringLiteral("E"));
    }
    // The first deletes all others: linear removal would take minutes.
    recorders.front()->then = [&recorders] {
        for (size_t i = 1; i < recorders.size(); ++i)
            recorders[i].reset();
    };
    send(QStringLiteral("E"));
    QCOMPARE(log.size(), 1);
}

QTEST_APPLESS_MAIN(TestEventManager)
#include "tst_eventmanager.moc"
