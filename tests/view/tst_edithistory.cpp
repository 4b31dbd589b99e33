// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "viewtest.h"

#include <view/edithistory.h>

#include <QAction>
#include <QTest>

using namespace TarnTest;

class TestEditHistory : public ViewTest
{
    Q_OBJECT

private Q_SLOTS:
    void addedCoreGoesAndComesBack();
};

void TestEditHistory::addedCoreGoesAndComesBack()
{
    const ShownView shown = show(writeConfig("a.tarn", {0, 1}));
    TARN::EditHistory *history = shown->history();
    QVERIFY(shown->actions().contains(history->undoAction()));
    QVERIFY(!history->undoAction()->isEnabled());

    script().expectMenu({"Add", "-Remove"}, "Add");
    openMenu(shown.view, -1);
    QCOMPARE(pagesOf(shown.view).size(), 3);
    QCOMPARE(history->undoAction()->text(), QStringLiteral("&Undo Add Core"));

    history->undoAction()->trigger();
    QCOMPARE(treeTextOf(shown.view), QStringLiteral("tarn_0\ntarn_1\n"));
    QCOMPARE(pagesOf(shown.view).size(), 2);
    QVERIFY(!shown->isModified());
    QCOMPARE(shown->windowTitle(), QStringLiteral("a.tarn"));

    history->redoAction()->trigger();
    QCOMPARE(treeTextOf(shown.view), QStringLiteral("tarn_0\ntarn_1\ntarn_2\n"));
    QVERIFY(shown->isModified());
    QCOMPARE(shown->windowTitle(), QStringLiteral("a.tarn *"));
}

TARN_TEST_MAIN(TestEditHistory)
#include "tst_edithistory.moc"
