// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/testcase.h>

#include <view/reloadbanner.h>

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using TARN::ReloadBanner;

class TestReloadBanner : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void typesHaveTheirNumbers()
    {
        QCOMPARE(int(ReloadBanner::Changed), 0);
        QCOMPARE(int(ReloadBanner::Removed), 1);
    }

    void formHasItsObjects()
    {
        const ReloadBanner banner(ReloadBanner::Changed, "/a.tarn", nullptr);
        const auto *layout = qobject_cast<QHBoxLayout *>(banner.layout());
        QVERIFY(layout);
        QCOMPARE(layout->count(), 3);
        const auto *icon = banner.findChild<QLabel *>("label");
        QCOMPARE(layout->itemAt(0)->widget(), icon);
        const QImage attention(":/utils/image/attention.png");
        QVERIFY(!attention.isNull());
        QCOMPARE(icon->pixmap(Qt::ReturnByValue).toImage().convertToFormat(attention.format()),
                 attention);
        QCOMPARE(layout->itemAt(1)->widget(), banner.findChild<QLabel *>("labelFile"));
        const auto *buttons = banner.findChild<QWidget *>("widget");
        QCOMPARE(layout->itemAt(2)->widget(), buttons);
        const auto *column = qobject_cast<QVBoxLayout *>(buttons->layout());
        QVERIFY(column);
        QCOMPARE(column->objectName(), QStringLiteral("verticalLayout_2"));
        QCOMPARE(column->count(), 2);
        QCOMPARE(column->itemAt(0)->widget(), banner.findChild<QPushButton *>("btnA"));
        QCOMPARE(column->itemAt(1)->widget(), banner.findChild<QPushButton *>("btnB"));
    }

    void textsAndSignalsFollowTheType_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("textA");
        QTest::addColumn<QString>("textB");
        QTest::addColumn<QByteArray>("signalA");
        QTest::addColumn<QByteArray>("signalB");
        QTest::newRow("changed") << 0
                                 << "The file '/some/a %2.tarn' changed on disk.\n"
                                    "Do you want to reload?"
                                 << "Reload"
                                 << "Cancel" << QByteArray("reload") << QByteArray("cancel");
        QTest::newRow("removed") << 1
                                 << "The file '/some/a %2.tarn' has been removed on disk.\n"
                                    "Do you still want to keep it?"
                                 << "Keep It"
                                 << "Close" << QByteArray("keepIt") << QByteArray("closeIt");
    }

    void textsAndSignalsFollowTheType()
    {
        QFETCH(int, type);
        QFETCH(QByteArray, signalA);
        QFETCH(QByteArray, signalB);
        ReloadBanner banner(ReloadBanner::CheckType(type), "/some/a %2.tarn", nullptr);
        QTEST(banner.findChild<QLabel *>("labelFile")->text(), "text");
        auto *buttonA = banner.findChild<QPushButton *>("btnA");
        auto *buttonB = banner.findChild<QPushButton *>("btnB");
        QTEST(buttonA->text(), "textA");
        QTEST(buttonB->text(), "textB");

        QByteArrayList emitted;
        connect(&banner, &ReloadBanner::reload, this, [&] { emitted += "reload"; });
        connect(&banner, &ReloadBanner::cancel, this, [&] { emitted += "cancel"; });
        connect(&banner, &ReloadBanner::keepIt, this, [&] { emitted += "keepIt"; });
        connect(&banner, &ReloadBanner::closeIt, this, [&] { emitted += "closeIt"; });
        buttonA->click();
        QCOMPARE(emitted, QByteArrayList{signalA});
        buttonB->click();
        QCOMPARE(emitted, (QByteArrayList{signalA, signalB}));
    }

    void setTextReplacesTheMessage()
    {
        ReloadBanner banner(ReloadBanner::Changed, QString(), nullptr);
        banner.setText("Design files changed. Do you want to reload?");
        QCOMPARE(banner.findChild<QLabel *>("labelFile")->text(),
                 QStringLiteral("Design files changed. Do you want to reload?"));
    }

    void markupInThePathIsNotInterpreted()
    {
        const ReloadBanner banner(ReloadBanner::Changed, "/<b>a</b>.tarn", nullptr);
        QCOMPARE(banner.findChild<QLabel *>("labelFile")->textFormat(), Qt::PlainText);
    }
};

TARN_TEST_MAIN(TestReloadBanner)
#include "tst_reloadbanner.moc"
