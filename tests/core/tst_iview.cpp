// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/testcase.h>

#include <core/iview.h>

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

using Core::IView;

class TestIView : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void destructorWritesItsLine_data();
    void destructorWritesItsLine();
    void shortTitleFollowsWindowTitleUntilSet();
    void signalsOnlyRealChanges();
};

void TestIView::destructorWritesItsLine_data()
{
    QTest::addColumn<QString>("title");
    QTest::newRow("plain") << "a.tarn";
    QTest::newRow("empty") << "";
    QTest::newRow("quotes, percent, blanks") << " \"50 %1\" *";
    QTest::newRow("umlaut") << QStringLiteral("\u00e4.tarn");
}

void TestIView::destructorWritesItsLine()
{
    QFETCH(QString, title);
    auto *view = new IView;
    view->setWindowTitle(title);
    QCOMPARE(debugLines(), QStringList());
    delete view;
    QCOMPARE(debugLines(),
             QStringList(QStringLiteral("IView: ") + title + QStringLiteral(" destoryed")));
}

void TestIView::shortTitleFollowsWindowTitleUntilSet()
{
    IView view;
    QCOMPARE(view.shortTitle(), QString());
    view.setWindowTitle(QStringLiteral("a"));
    QCOMPARE(view.shortTitle(), QStringLiteral("a"));
    view.setShortTitle(QStringLiteral("b *"));
    view.setWindowTitle(QStringLiteral("c"));
    QCOMPARE(view.shortTitle(), QStringLiteral("b *"));
    view.setShortTitle(QString());
    QCOMPARE(view.shortTitle(), QString());
}

void TestIView::signalsOnlyRealChanges()
{
    IView view;
    QSignalSpy spy(&view, &IView::shortTitleChanged);
    view.setWindowTitle(QStringLiteral("a"));
    view.setWindowTitle(QStringLiteral("a"));
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.last().first().toString(), QStringLiteral("a"));
    view.setShortTitle(QStringLiteral("a"));
    view.setWindowTitle(QStringLiteral("b"));
    QCOMPARE(spy.size(), 1);
    view.setShortTitle(QStringLiteral("c"));
    QCOMPARE(spy.size(), 2);
    QCOMPARE(spy.last().first().toString(), QStringLiteral("c"));
}

TARN_TEST_MAIN(TestIView)
#include "tst_iview.moc"
