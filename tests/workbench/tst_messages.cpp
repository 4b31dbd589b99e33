// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <workbench/messagelog.h>
#include <workbench/messagesdock.h>

#include <support/testcase.h>

#include <QApplication>
#include <QPlainTextEdit>
#include <QTest>

#include <thread>

using Workbench::MessageLog;
using Workbench::MessagesDock;

class TestMessages : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void messagesAppearInOrderAndGoOn();
    void floodKeepsTheLatest();
    void dockIsBounded();
    void longMessagesAreCut();
    void otherThreadsMayWrite();
    void nothingIsCaughtAfterwards();

private:
    static QString shown(const MessagesDock &dock)
    {
        return dock.findChild<QPlainTextEdit *>(QStringLiteral("messages"))->toPlainText();
    }
};

void TestMessages::messagesAppearInOrderAndGoOn()
{
    MessageLog log;
    const MessagesDock dock(&log);
    qDebug("one");
    qDebug().noquote() << "two & <b>three</b>";
    QTRY_COMPARE(shown(dock), QStringLiteral("one\ntwo & <b>three</b>"));
    QCOMPARE(debugLines(), QStringList({"one", "two & <b>three</b>"}));
    qDebug("four");
    log.flush();
    QVERIFY(shown(dock).endsWith(QLatin1String("\nfour")));
}

void TestMessages::floodKeepsTheLatest()
{
    MessageLog log;
    QStringList received;
    connect(&log, &MessageLog::messagesAdded, this,
            [&received](const QStringList &messages) { received += messages; });
    for (int i = 0; i < MessageLog::MostPending + 10; ++i)
        qDebug("%d", i);
    log.flush();
    QCOMPARE(received.size(), MessageLog::MostPending);
    QCOMPARE(received.first(), QStringLiteral("10"));
    QCOMPARE(received.last(), QString::number(MessageLog::MostPending + 9));
    log.flush();
    QCOMPARE(received.size(), MessageLog::MostPending);
}

void TestMessages::dockIsBounded()
{
    MessageLog log;
    const MessagesDock dock(&log);
    for (int i = 0; i < 7000; ++i) {
        qDebug("%d", i);
        if (i % 1000 == 0)
            log.flush();
    }
    log.flush();
    const QStringList lines = shown(dock).split('\n');
    QCOMPARE(lines.size(), MessagesDock::MostLines);
    QCOMPARE(lines.last(), QStringLiteral("6999"));
}

void TestMessages::longMessagesAreCut()
{
    MessageLog log;
    const MessagesDock dock(&log);
    qDebug("%s", QByteArray(1000000, 'x').constData());
    log.flush();
    QCOMPARE(shown(dock).size(), MessageLog::LongestMessage);
}

void TestMessages::otherThreadsMayWrite()
{
    MessageLog log;
    const MessagesDock dock(&log);
    std::thread writer([] {
        for (int i = 0; i < 100; ++i)
            qInfo("from a thread");
    });
    writer.join();
    QTRY_COMPARE(shown(dock).count(QLatin1String("from a thread")), 100);
}

void TestMessages::nothingIsCaughtAfterwards()
{
    {
        MessageLog log;
        qDebug("during");
    }
    qDebug("after");
    QCOMPARE(debugLines(), QStringList({"during", "after"}));
}

TARN_TEST_MAIN(TestMessages)
#include "tst_messages.moc"
