// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/testcase.h>
#include <widgets/treerows.h>

#include <QApplication>
#include <QScrollBar>
#include <QTest>
#include <QTreeWidget>

using Rows = QList<QTreeWidgetItem *>;

namespace {

/// A tree of @p count rows, every third with two children, the first of them with one of its own.
void fill(QTreeWidget *tree, int count)
{
    tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    for (int i = 0; i < count; ++i) {
        auto *row = new QTreeWidgetItem(tree, {QString::number(i)});
        if (i % 3 == 0) {
            auto *child = new QTreeWidgetItem(row, {"a"});
            new QTreeWidgetItem(row, {"b"});
            new QTreeWidgetItem(child, {"deep"});
        }
    }
}

/// Rows with their children; '+' expanded, '*' selected, '!' current.
QString stateOf(const QTreeWidget &tree, QTreeWidgetItem *row)
{
    QString text = row->text(0);
    text += QLatin1String(row->childCount() > 0 && row->isExpanded() ? "+" : "");
    text += QLatin1String(row->isSelected() ? "*" : "");
    text += QLatin1String(tree.currentItem() == row ? "!" : "");
    for (int i = 0; i < row->childCount(); ++i)
        text += QLatin1Char('(') + stateOf(tree, row->child(i)) + QLatin1Char(')');
    return text;
}

QString stateOf(const QTreeWidget &tree)
{
    return stateOf(tree, tree.invisibleRootItem());
}

void decorate(QTreeWidget *tree)
{
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        QTreeWidgetItem *row = tree->topLevelItem(i);
        row->setExpanded(i % 5 != 0);
        row->setSelected(i % 5 < 2);
        if (row->childCount() > 0) {
            row->child(0)->setExpanded(i % 4 > 1);
            row->child(1)->setSelected(i % 7 == 0);
            row->child(0)->child(0)->setSelected(i % 9 == 0);
        }
    }
}

} // namespace

class TestTreeRows : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void toldNumbersChangeNothingElse()
    {
        TARN::RowNumbers numbers;
        Rows rows;
        for (int i = 0; i < 3; ++i) {
            rows.append(new QTreeWidgetItem({QString::number(i)}));
            QCOMPARE(numbers.count(), i);
            numbers.tell(rows.last());
            QVERIFY(!rows.last()->parent());
            rows.last()->addChild(new QTreeWidgetItem({"a"}));
        }
        // Also where the numbers turn out wrong.
        for (const int before : {0, 2}) {
            QTreeWidget tree;
            fill(&tree, before);
            tree.addTopLevelItems(rows);
            for (int i = 0; i < 3; ++i) {
                const QModelIndex child =
                    tree.model()->index(0, 0, tree.model()->index(before + i, 0));
                QCOMPARE(child.data().toString(), QString("a"));
                QCOMPARE(child.parent().row(), before + i);
                QCOMPARE(tree.indexOfTopLevelItem(rows.at(i)), before + i);
            }
            for (QTreeWidgetItem *row : qAsConst(rows))
                tree.takeTopLevelItem(tree.indexOfTopLevelItem(row));
        }
        qDeleteAll(rows);
    }

    void keepsTheStateOfTheRest_data()
    {
        QTest::addColumn<int>("step");
        QTest::addColumn<int>("current");
        QTest::addColumn<int>("child");
        QTest::newRow("few") << 20 << 45 << -1;
        QTest::newRow("many") << 2 << 45 << -1;
        QTest::newRow("current in a child") << 2 << 45 << 0;
        QTest::newRow("none current") << 3 << -1 << -1;
    }
    void keepsTheStateOfTheRest()
    {
        QFETCH(int, step);
        QFETCH(int, current);
        QFETCH(int, child);
        // The same twice: at once, and one by one as the view itself does it.
        QTreeWidget tree, plain;
        for (QTreeWidget *each : {&tree, &plain}) {
            fill(each, 120);
            QTreeWidgetItem *row = each->topLevelItem(current);
            each->setCurrentItem(row && child >= 0 ? row->child(child) : row, 0,
                                 QItemSelectionModel::NoUpdate);
            decorate(each);
        }
        Rows doomed, plainDoomed;
        for (int i = 0; i < 120; i += step) {
            doomed.append(tree.topLevelItem(i));
            plainDoomed.append(plain.topLevelItem(i));
        }
        TARN::removeTopLevelRows(&tree, doomed);
        qDeleteAll(plainDoomed);
        QCOMPARE(stateOf(tree), stateOf(plain));
        QVERIFY(tree.topLevelItemCount() < 120);
    }

    void currentRowMayGo()
    {
        QTreeWidget tree;
        fill(&tree, 60);
        tree.setCurrentItem(tree.topLevelItem(6)->child(0)->child(0));
        Rows doomed;
        for (int i = 0; i < 30; ++i)
            doomed.append(tree.topLevelItem(i));
        TARN::removeTopLevelRows(&tree, doomed);
        QCOMPARE(tree.topLevelItemCount(), 30);
        QVERIFY(!tree.currentItem() || tree.indexOfTopLevelItem(tree.currentItem()) >= 0);
    }

    void removesWhatIsSelected_data()
    {
        QTest::addColumn<QVector<int>>("starts");
        QTest::addColumn<int>("length");
        QTest::newRow("nothing") << QVector<int>() << 0;
        QTest::newRow("few") << QVector<int>{4, 50} << 3;
        QTest::newRow("many, not in order") << QVector<int>{90, 10, 50} << 12;
        QTest::newRow("overlapping") << QVector<int>{20, 30} << 25;
        QTest::newRow("all") << QVector<int>{0} << 120;
    }
    void removesWhatIsSelected()
    {
        QFETCH(QVector<int>, starts);
        QFETCH(int, length);
        QTreeWidget tree, plain;
        for (QTreeWidget *each : {&tree, &plain}) {
            fill(each, 120);
            each->expandAll();
            for (const int start : starts) {
                const QModelIndex first = each->model()->index(start, 0);
                const QModelIndex last = each->model()->index(start + length - 1, 0);
                each->selectionModel()->select(QItemSelection(first, last),
                                               QItemSelectionModel::Select);
            }
            each->topLevelItem(15)->setDisabled(true); // Spanned by a range, yet not selected.
            each->topLevelItem(60)->child(1)->setSelected(true);
            each->topLevelItem(3)->child(1)->setSelected(true);
        }
        Rows doomed = plain.selectedItems();
        doomed.erase(std::remove_if(doomed.begin(), doomed.end(),
                                    [](const QTreeWidgetItem *row) { return row->parent(); }),
                     doomed.end());
        const int gone = doomed.size();
        qDeleteAll(doomed);
        TARN::removeSelectedTopLevelRows(&tree);
        QCOMPARE(stateOf(tree), stateOf(plain));
        QCOMPARE(tree.topLevelItemCount(), 120 - gone);
    }

    void removesAll()
    {
        QTreeWidget tree;
        fill(&tree, 60);
        Rows doomed;
        for (int i = 0; i < 60; ++i)
            doomed.append(tree.topLevelItem(i));
        TARN::removeTopLevelRows(&tree, doomed);
        QCOMPARE(tree.topLevelItemCount(), 0);
    }

    void keepsTheScrollPosition_data()
    {
        QTest::addColumn<int>("current");
        QTest::newRow("none current") << -1;
        QTest::newRow("current out of sight") << 5;
    }
    void keepsTheScrollPosition()
    {
        QFETCH(int, current);
        QTreeWidget tree;
        fill(&tree, 900);
        tree.resize(200, 200);
        tree.show();
        QVERIFY(QTest::qWaitForWindowExposed(&tree));
        tree.setCurrentItem(tree.topLevelItem(current));
        tree.verticalScrollBar()->setValue(400);
        Rows doomed;
        for (int i = 600; i < 700; ++i)
            doomed.append(tree.topLevelItem(i));
        TARN::removeTopLevelRows(&tree, doomed);
        QCOMPARE(tree.verticalScrollBar()->value(), 400);
        QCOMPARE(tree.itemAt(5, 5)->text(0), QStringLiteral("400"));
    }

    void arrangingKeepsTheState_data()
    {
        QTest::addColumn<int>("current");
        QTest::newRow("none current") << -1;
        QTest::newRow("a row") << 44;
        QTest::newRow("a child") << 45;
    }
    void arrangingKeepsTheState()
    {
        QFETCH(int, current);
        QTreeWidget tree;
        fill(&tree, 120);
        QTreeWidgetItem *row = tree.topLevelItem(current);
        const bool inChild = row && row->childCount() > 0;
        tree.setCurrentItem(inChild ? row->child(0) : row, 0, QItemSelectionModel::NoUpdate);
        decorate(&tree);
        tree.resize(200, 200);
        tree.show();
        tree.verticalScrollBar()->setValue(30);
        Rows rows;
        QString expected;
        for (int i = 0; i < 120; ++i) {
            rows.append(tree.topLevelItem(i * 7 % 120));
            expected += stateOf(tree, rows.last());
        }
        TARN::arrangeTopLevelRows(&tree, rows);
        QString actual;
        for (int i = 0; i < 120; ++i)
            actual += stateOf(tree, tree.topLevelItem(i));
        QCOMPARE(actual, expected);
        QCOMPARE(tree.verticalScrollBar()->value(), 30);
    }

    void visitsSelectedRowsOfADeepTree()
    {
        const int depth = 1000;
        QTreeWidget tree;
        auto *top = new QTreeWidgetItem({"0"});
        QTreeWidgetItem *row = top;
        for (int level = 1; level < depth; ++level)
            row = new QTreeWidgetItem(row, {QString::number(level)});
        tree.addTopLevelItem(top);
        QItemSelection selection;
        QModelIndex index = tree.model()->index(0, 0);
        for (int level = 0; level < depth; ++level) {
            if (level % 2 == 0)
                selection.append(QItemSelectionRange(index));
            index = tree.model()->index(0, 0, index);
        }
        tree.selectionModel()->select(selection, QItemSelectionModel::Select);
        int expected = 0;
        TARN::forEachSelectedRow(&tree, [&expected](const QTreeWidgetItem *visited) {
            QCOMPARE(visited->text(0), QString::number(expected));
            expected += 2;
        });
        QCOMPARE(expected, depth);
    }

    void rowsAreBroughtIntoSight_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("other");
        QTest::addColumn<bool>("both");
        QTest::newRow("below") << 60 << 62 << true;
        QTest::newRow("below, the last first") << 62 << 60 << true;
        QTest::newRow("above") << 3 << 1 << true;
        QTest::newRow("in sight already") << 31 << 32 << true;
        QTest::newRow("too far apart") << 10 << 80 << false;
        QTest::newRow("too far apart, the last first") << 80 << 10 << false;
    }
    void rowsAreBroughtIntoSight()
    {
        QFETCH(int, row);
        QFETCH(int, other);
        QTreeWidget tree;
        fill(&tree, 120);
        tree.resize(200, 200);
        tree.show();
        tree.verticalScrollBar()->setValue(30);
        TARN::bringIntoSight(&tree, tree.topLevelItem(row), tree.topLevelItem(other));
        const auto isInSight = [&tree](int number) {
            const QRect place = tree.visualItemRect(tree.topLevelItem(number));
            return tree.viewport()->rect().contains(place);
        };
        QVERIFY(isInSight(row));
        QTEST(isInSight(other), "both");
        QCOMPARE(tree.verticalScrollBar()->value() == 30, row == 31);
    }
};

TARN_TEST_MAIN(TestTreeRows)
#include "tst_treerows.moc"
