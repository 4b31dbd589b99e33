// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/modeltext.h>
#include <support/testcase.h>

#include <probes/signalsamples.h>
#include <probes/signaltree.h>
#include <select/signaltreewidget.h>

#include <QApplication>
#include <QChildEvent>
#include <QDataStream>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QMimeData>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

#include <functional>
#include <memory>
#include <utility>

using namespace TARN;
using namespace TarnTest;

namespace {

/// A list with the rows a to f, of which c is an expanded bus; open to the events of the mouse.
class List : public signalTreeWidget
{
public:
    List()
    {
        setHeaderHidden(true);
        setDragDropMode(QAbstractItemView::InternalMove);
        setSelectionMode(QAbstractItemView::ExtendedSelection);
        setStyleSheet("QTreeWidget::item { height: 20px;}");
        signals2Tree(this, {net("a"), net("b"), bus("c", 2), net("d"), net("e"), net("f")}, 0);
        topLevelItem(2)->setExpanded(true);
        resize(200, 400);
        show();
        if (!QTest::qWaitForWindowExposed(this))
            qFatal("the list does not come up");
    }

    using signalTreeWidget::mimeData;

    /// A drag begins: the view has drawn the rows and makes a QDrag. Before that it could not bear
    /// that a drop deletes them.
    void childEvent(QChildEvent *event) override
    {
        signalTreeWidget::childEvent(event);
        if (event->added() && m_drop)
            std::exchange(m_drop, {})();
    }

    bool isDragging() const { return state() == DraggingState; }

    QTreeWidgetItem *row(const QString &text) const
    {
        return findItems(text, Qt::MatchExactly | Qt::MatchRecursive).value(0);
    }

    void select(const QStringList &texts)
    {
        clearSelection();
        for (const QString &text : texts)
            row(text)->setSelected(true);
    }

    /// The point @p y pixels below the upper edge of the row.
    QPointF pointIn(const QString &text, double y) const
    {
        return visualItemRect(row(text)).topLeft() + QPointF(5, y);
    }
    QPointF pointBelow() const { return QPointF(5, viewport()->height() - 5); }

    /// The top-level rows in order.
    QString order() const
    {
        QString result;
        for (int i = 0; i < topLevelItemCount(); ++i)
            result += topLevelItem(i)->text(0);
        return result;
    }

    void dispatch(QDropEvent *event) { dropEvent(event); }
    /// Drags what is selected and drops it at @p point while the drag goes on. On the off-screen
    /// platform no drag ends in a move, after which the view would remove the rows.
    void dragTo(const QPointF &point)
    {
        m_drop = [this, point] {
            const QMimeData dragged;
            QDropEvent drop(point, Qt::MoveAction, &dragged, Qt::LeftButton, Qt::NoModifier);
            dropEvent(&drop);
        };
        startDrag(Qt::MoveAction);
        QVERIFY(!m_drop);
    }

    /// The top-level rows in order, '*' selected, '+' expanded, '!' current.
    QString stateOfRows() const
    {
        QString result;
        for (int i = 0; i < topLevelItemCount(); ++i) {
            const QTreeWidgetItem *row = topLevelItem(i);
            result += row->text(0);
            result += QLatin1String(row->isSelected() ? "*" : "");
            result += QLatin1String(row->isExpanded() ? "+" : "");
            result += QLatin1String(row == currentItem() ? "!" : "");
        }
        return result;
    }

    bool isInSight(const QTreeWidgetItem *row) const
    {
        return viewport()->rect().contains(visualItemRect(row));
    }

    void dispatch(QDragMoveEvent *event) { dragMoveEvent(event); }
    void dispatch(QMouseEvent *event)
    {
        if (event->type() == QEvent::MouseMove)
            mouseMoveEvent(event);
        else
            mousePressEvent(event);
    }

private:
    std::function<void()> m_drop;
};

/// Counts how often the widgets that it watches are painted.
class PaintCounter : public QObject
{
public:
    int count = 0;

    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

/// A drop of dragged rows that counts what it does.
struct Drop
{
    Drop(List &list, const QPointF &point)
        : dragged(&list, &signalTreeWidget::itemDragged)
        , event(point, Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier)
    {
        list.dispatch(&event);
    }

    QMimeData data;
    QSignalSpy dragged;
    QDropEvent event;
};

} // namespace

class TestSignalTreeWidget : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void dropMovesRowsBesideTheTarget_data();
    void dropMovesRowsBesideTheTarget();
    void dropOnMemberOrDraggedRowDoesNothing_data();
    void dropOnMemberOrDraggedRowDoesNothing();
    void dropThatDoesNothingRemovesItsMark();
    void dropBelowTheLastRowAppendsCopies();
    void dropBelowLeavesMemberRowsWhereTheyAre();
    void positionIsRounded();
    void middleOfAnOddRowIsItsLowerHalf();
    void manyRowsKeepTheirOrder();
    void copiesCarryTheSignals();
    void onlyTheLeftButtonPresses();
    void memberRowsAreNotDragged();
    void otherButtonsDragNothing_data();
    void otherButtonsDragNothing();
    void dragIsFollowedAsUsual();
    void dragCarriesAllRolesOfTheRow();
    void rowsStaySelectedAndExpandedAfterADrag_data();
    void rowsStaySelectedAndExpandedAfterADrag();
    void dragWithoutADropSelectsNothingElse();
    void droppedRowsAreInSight();
    void arrowsWithAltMoveRows_data();
    void arrowsWithAltMoveRows();
    void otherArrowsMoveNothing_data();
    void otherArrowsMoveNothing();
    void rowsMovedByKeysAreInSight();
    void manyRowsMoveByKeysInTime();
};

void TestSignalTreeWidget::dropMovesRowsBesideTheTarget_data()
{
    QTest::addColumn<QStringList>("dragged");
    QTest::addColumn<QString>("target");
    QTest::addColumn<double>("y");
    QTest::addColumn<QString>("order");
    QTest::newRow("down, upper half") << QStringList{"a"} << "d" << 9.0 << "bcadef";
    QTest::newRow("down, lower half") << QStringList{"a"} << "d" << 10.0 << "bcdaef";
    QTest::newRow("up, upper half") << QStringList{"e"} << "b" << 9.0 << "aebcdf";
    QTest::newRow("up, lower half") << QStringList{"e"} << "b" << 10.0 << "abecdf";
    QTest::newRow("top edge") << QStringList{"e"} << "a" << 0.0 << "eabcdf";
    QTest::newRow("bottom edge") << QStringList{"a"} << "f" << 19.0 << "bcdefa";
    QTest::newRow("below a bus, not into it") << QStringList{"a"} << "c" << 15.0 << "bcadef";
    QTest::newRow("scattered, in order of the rows")
        << QStringList{"f", "a", "c"} << "d" << 15.0 << "bdacfe";
    QTest::newRow("beside its neighbour") << QStringList{"a"} << "b" << 3.0 << "abcdef";
    QTest::newRow("bus") << QStringList{"c"} << "a" << 3.0 << "cabdef";
}

void TestSignalTreeWidget::dropMovesRowsBesideTheTarget()
{
    QFETCH(QStringList, dragged);
    QFETCH(QString, target);
    QFETCH(double, y);
    List list;
    QCOMPARE(list.visualItemRect(list.row("a")).height(), 20);
    list.select(dragged);
    QString orderWhenTold;
    connect(&list, &signalTreeWidget::itemDragged, &list, [&] { orderWhenTold = list.order(); });
    const Drop drop(list, list.pointIn(target, y));
    QTEST(list.order(), "order");
    QTEST(orderWhenTold, "order");
    // After an accepted move the view would remove rows itself.
    QCOMPARE(drop.event.dropAction(), Qt::CopyAction);
    QVERIFY(!drop.event.isAccepted());
    QCOMPARE(drop.dragged.size(), 1);
    QVERIFY(list.selectedItems().isEmpty() ||
            !dragged.contains(list.selectedItems().first()->text(0)));
}

void TestSignalTreeWidget::dropOnMemberOrDraggedRowDoesNothing_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("member") << "c[0]";
    QTest::newRow("dragged row") << "b";
    QTest::newRow("other dragged row") << "e";
}

void TestSignalTreeWidget::dropOnMemberOrDraggedRowDoesNothing()
{
    QFETCH(QString, target);
    List list;
    list.select({"b", "e"});
    const Drop drop(list, list.pointIn(target, 15));
    QCOMPARE(list.order(), QString("abcdef"));
    QCOMPARE(drop.event.dropAction(), Qt::IgnoreAction);
    QVERIFY(!drop.event.isAccepted());
    QCOMPARE(drop.dragged.size(), 0);
    QCOMPARE(list.selectedItems().size(), 2);
}

void TestSignalTreeWidget::dropThatDoesNothingRemovesItsMark()
{
    List list;
    list.select({"b"});
    QCoreApplication::processEvents();
    PaintCounter paints;
    list.viewport()->installEventFilter(&paints);
    QCoreApplication::processEvents();
    QCOMPARE(paints.count, 0);
    const Drop drop(list, list.pointIn("b", 5));
    QTRY_VERIFY(paints.count > 0);
}

void TestSignalTreeWidget::dropBelowTheLastRowAppendsCopies()
{
    List list;
    list.select({"c", "b"});
    const Drop drop(list, list.pointBelow());
    // The view removes what is selected after the drag: the rows that were dragged.
    QCOMPARE(list.order(), QString("abcdefbc"));
    QCOMPARE(drop.event.dropAction(), Qt::MoveAction);
    QVERIFY(drop.event.isAccepted());
    QCOMPARE(drop.dragged.size(), 1);
    QVERIFY(list.topLevelItem(1)->isSelected());
    QVERIFY(list.topLevelItem(2)->isSelected());
    QCOMPARE(list.selectedItems().size(), 2);
    QCOMPARE(list.topLevelItem(7)->childCount(), 2);
}

void TestSignalTreeWidget::dropBelowLeavesMemberRowsWhereTheyAre()
{
    List list;
    list.select({"b", "c[1]"});
    const Drop drop(list, list.pointBelow());
    QCOMPARE(list.order(), QString("abcdefb"));
    QCOMPARE(list.selectedItems(), QList<QTreeWidgetItem *>{list.topLevelItem(1)});
}

void TestSignalTreeWidget::positionIsRounded()
{
    List list;
    list.select({"a"});
    const Drop drop(list, list.pointIn("d", 9.5));
    QCOMPARE(list.order(), QString("bcdaef"));
}

void TestSignalTreeWidget::middleOfAnOddRowIsItsLowerHalf()
{
    List list;
    list.setStyleSheet("QTreeWidget::item { height: 21px;}");
    QCOMPARE(list.visualItemRect(list.row("a")).height(), 21);
    list.select({"a"});
    const Drop drop(list, list.pointIn("d", 10));
    QCOMPARE(list.order(), QString("bcdaef"));
}

void TestSignalTreeWidget::manyRowsKeepTheirOrder()
{
    List list;
    list.clear();
    QList<SignalItem> items;
    for (int i = 0; i < 60; ++i)
        items.append(net(QString("%1,").arg(i)));
    signals2Tree(&list, items, 0);
    QStringList moved;
    QStringList stays;
    for (int i = 0; i < 60; ++i) {
        const bool move = i % 2 == 1 && i > 10;
        (move ? moved : stays).append(items.at(i).name);
        list.topLevelItem(i)->setSelected(move);
    }
    const Drop drop(list, list.pointIn("0,", 1));
    QCOMPARE(list.order(), (moved + stays).join(QString()));
}

void TestSignalTreeWidget::copiesCarryTheSignals()
{
    List list;
    const SignalItem before = signalOfRow(list.row("c"));
    list.select({"c"});
    const Drop drop(list, list.pointIn("a", 1));
    const SignalItem after = signalOfRow(list.topLevelItem(0));
    QCOMPARE(after.name, before.name);
    QCOMPARE(after.kind, before.kind);
    QCOMPARE(after.members.size(), 2);
    QCOMPARE(modelText(list.model()), QString("c\n    c[1]\n    c[0]\na\nb\nd\ne\nf\n"));
}

void TestSignalTreeWidget::onlyTheLeftButtonPresses()
{
    List list;
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton, Qt::LeftButton}) {
        QMouseEvent press(QEvent::MouseButtonPress, list.pointIn("b", 5), button, button,
                          Qt::NoModifier);
        list.dispatch(&press);
        const bool left = button == Qt::LeftButton;
        QCOMPARE(press.isAccepted(), left);
        QCOMPARE(list.row("b")->isSelected(), left);
    }
}

void TestSignalTreeWidget::memberRowsAreNotDragged()
{
    List list;
    const auto isMoveTaken = [&list] {
        QMouseEvent move(QEvent::MouseMove, list.pointIn("a", 5), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        list.dispatch(&move);
        return move.isAccepted();
    };
    list.setCurrentItem(list.row("c[1]"));
    QVERIFY(!isMoveTaken());
    list.setCurrentItem(list.row("c"));
    QVERIFY(isMoveTaken());
    list.setCurrentItem(nullptr);
    QVERIFY(!isMoveTaken());
}

void TestSignalTreeWidget::otherButtonsDragNothing_data()
{
    QTest::addColumn<int>("buttons");
    QTest::addColumn<bool>("drags");
    QTest::newRow("left") << int(Qt::LeftButton) << true;
    QTest::newRow("right") << int(Qt::RightButton) << false;
    QTest::newRow("middle") << int(Qt::MiddleButton) << false;
    QTest::newRow("left and right") << int(Qt::LeftButton | Qt::RightButton) << true;
}

void TestSignalTreeWidget::otherButtonsDragNothing()
{
    QFETCH(int, buttons);
    List list;
    // A click before makes the row one that can be dragged.
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                      list.pointIn("b", 5).toPoint());
    const auto moveTo = [&](const QPointF &point) {
        QMouseEvent move(QEvent::MouseMove, point, Qt::NoButton, Qt::MouseButtons(buttons),
                         Qt::NoModifier);
        list.dispatch(&move);
        return move.isAccepted();
    };
    QTEST(moveTo(list.pointIn("b", 6)), "drags");
    QTEST(list.isDragging(), "drags");
}

void TestSignalTreeWidget::dragIsFollowedAsUsual()
{
    List list;
    // Internal moves need a real drag.
    list.setDragDropMode(QAbstractItemView::DragDrop);
    const std::unique_ptr<QMimeData> data(list.mimeData({list.row("a")}));
    QDragMoveEvent move(list.pointIn("d", 5).toPoint(), Qt::CopyAction, data.get(), Qt::LeftButton,
                        Qt::NoModifier);
    move.ignore();
    list.dispatch(&move);
    QVERIFY(move.isAccepted());
}

void TestSignalTreeWidget::dragCarriesAllRolesOfTheRow()
{
    List list;
    const std::unique_ptr<QMimeData> data(list.mimeData({list.row("c")}));
    QCOMPARE(data->formats(), QStringList{"application/x-qabstractitemmodeldatalist"});
    QByteArray bytes = data->data(data->formats().first());
    QDataStream stream(&bytes, QIODevice::ReadOnly);
    int row = 0;
    int column = 0;
    QMap<int, QVariant> roles;
    stream >> row >> column >> roles;
    QVERIFY(stream.atEnd());
    QCOMPARE(stream.status(), QDataStream::Ok);
    QCOMPARE(row, 2);
    QCOMPARE(roles.value(Qt::DisplayRole).toString(), QString("c"));
    QCOMPARE(roles.value(Qt::ToolTipRole).toString(), QString("c"));
    QVERIFY(roles.contains(Qt::ForegroundRole));
    const auto item = roles.value(Qt::UserRole).value<SignalItem>();
    QCOMPARE(item.name, QString("c"));
    QCOMPARE(item.kind, 1);
    QVERIFY(item.enabled);
    QVERIFY(item.usable);
    QCOMPARE(item.members.size(), 2);
    QCOMPARE(item.members.last().name, QString("c[0]"));
}

void TestSignalTreeWidget::rowsStaySelectedAndExpandedAfterADrag_data()
{
    QTest::addColumn<QStringList>("dragged");
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("state");
    QTest::newRow("beside") << QStringList{"a"} << "d"
                            << "bc+da*!ef";
    QTest::newRow("beside, expanded") << QStringList{"c"} << "a"
                                      << "ac*+!bdef";
    QTest::newRow("beside, several") << QStringList{"f", "c", "a"} << "d"
                                     << "bda*!c*+f*e";
}

void TestSignalTreeWidget::rowsStaySelectedAndExpandedAfterADrag()
{
    QFETCH(QStringList, dragged);
    QFETCH(QString, target);
    List list;
    list.select(dragged);
    QSignalSpy told(&list, &signalTreeWidget::itemDragged);
    list.dragTo(list.pointIn(target, 15));
    QTEST(list.stateOfRows(), "state");
    QCOMPARE(told.size(), 1);
}

void TestSignalTreeWidget::dragWithoutADropSelectsNothingElse()
{
    List list;
    list.select({"a"});
    list.dragTo(list.pointIn("d", 15));
    QCOMPARE(list.stateOfRows(), QString("bc+da*!ef"));
    list.select({"b", "e"});
    list.dragTo(list.pointIn("c[0]", 5));
    QCOMPARE(list.stateOfRows(), QString("b*c+da!e*f"));
}

void TestSignalTreeWidget::droppedRowsAreInSight()
{
    List list;
    list.resize(200, 90);
    list.select({"a", "b"});
    list.scrollToItem(list.row("f"));
    list.dragTo(list.pointIn("f", 15));
    QCOMPARE(list.stateOfRows(), QString("c+defa*!b*"));
    QVERIFY(list.isInSight(list.row("a")));
    QVERIFY(list.isInSight(list.row("b")));
}

void TestSignalTreeWidget::arrowsWithAltMoveRows_data()
{
    QTest::addColumn<QStringList>("selected");
    QTest::addColumn<QString>("current");
    QTest::addColumn<int>("key");
    QTest::addColumn<QStringList>("states"); // After each press.
    const int up = Qt::Key_Up;
    const int down = Qt::Key_Down;
    QTest::newRow("one up") << QStringList{"b"} << "b" << up
                            << QStringList{"b*!ac+def", "b*!ac+def"};
    QTest::newRow("one down") << QStringList{"e"} << "e" << down
                              << QStringList{"abc+dfe*!", "abc+dfe*!"};
    QTest::newRow("past an expanded bus")
        << QStringList{"d"} << "d" << up << QStringList{"abd*!c+ef", "ad*!bc+ef"};
    QTest::newRow("an expanded bus")
        << QStringList{"c"} << "c" << down << QStringList{"abdc*+!ef", "abdec*+!f"};
    QTest::newRow("a block") << QStringList{"b", "c"} << "c" << down
                             << QStringList{"adb*c*+!ef", "adeb*c*+!f", "adefb*c*+!"};
    QTest::newRow("apart, until they meet at the end")
        << QStringList{"b", "d"} << "b" << up
        << QStringList{"b*!ad*c+ef", "b*!d*ac+ef", "b*!d*ac+ef"};
    QTest::newRow("apart, down") << QStringList{"a", "e"} << "f" << down
                                 << QStringList{"ba*c+df!e*", "bc+a*df!e*"};
    QTest::newRow("all") << QStringList{"a", "b", "c", "d", "e", "f"} << "a" << up
                         << QStringList{"a*!b*c*+d*e*f*"};
    QTest::newRow("none") << QStringList() << "b" << down << QStringList{"ab!c+def"};
    QTest::newRow("a member") << QStringList{"c[0]"} << "c[0]" << up << QStringList{"abc+def"};
    QTest::newRow("a member and another row")
        << QStringList{"c[0]", "e"} << "e" << up << QStringList{"abc+e*!df"};
}

void TestSignalTreeWidget::arrowsWithAltMoveRows()
{
    QFETCH(QStringList, selected);
    QFETCH(QString, current);
    QFETCH(int, key);
    QFETCH(QStringList, states);
    List list;
    list.setCurrentItem(list.row(current), 0, QItemSelectionModel::NoUpdate);
    list.select(selected);
    QSignalSpy told(&list, &signalTreeWidget::itemDragged);
    for (const QString &state : qAsConst(states)) {
        QTest::keyClick(&list, Qt::Key(key), Qt::AltModifier);
        QCOMPARE(list.stateOfRows(), state);
        QCOMPARE(list.selectedItems().size(), selected.size());
    }
    // Only a drop emits the signal.
    QCOMPARE(told.size(), 0);
    QCOMPARE(signalOfRow(list.row("c")).members.size(), 2);
}

void TestSignalTreeWidget::otherArrowsMoveNothing_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::newRow("alone") << int(Qt::Key_Up) << int(Qt::NoModifier);
    QTest::newRow("Shift") << int(Qt::Key_Down) << int(Qt::ShiftModifier);
    QTest::newRow("Ctrl") << int(Qt::Key_Down) << int(Qt::ControlModifier);
    QTest::newRow("Alt and Shift") << int(Qt::Key_Up) << int(Qt::AltModifier | Qt::ShiftModifier);
    QTest::newRow("Alt, to the right") << int(Qt::Key_Right) << int(Qt::AltModifier);
}

void TestSignalTreeWidget::otherArrowsMoveNothing()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    List list;
    list.setCurrentItem(list.row("b"));
    QTest::keyClick(&list, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(list.order(), QString("abcdef"));
}

void TestSignalTreeWidget::rowsMovedByKeysAreInSight()
{
    List list;
    list.resize(200, 90);
    list.setCurrentItem(list.row("a"));
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up}) {
        for (int i = 0; i < 6; ++i) {
            QTest::keyClick(&list, key, Qt::AltModifier);
            QVERIFY(list.isInSight(list.row("a")));
        }
    }
}

void TestSignalTreeWidget::manyRowsMoveByKeysInTime()
{
    List list;
    list.clear();
    QList<SignalItem> items;
    for (int i = 0; i < 20000; ++i)
        items.append(net(QString::number(i)));
    signals2Tree(&list, items, 0);
    QItemSelection selection;
    for (int i = 1; i < items.size(); i += 2)
        selection.select(list.model()->index(i, 0), list.model()->index(i, 0));
    list.selectionModel()->select(selection, QItemSelectionModel::Select);
    QElapsedTimer timer;
    timer.start();
    QTest::keyClick(&list, Qt::Key_Up, Qt::AltModifier);
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString("%1 ms").arg(timer.elapsed())));
    QCOMPARE(list.topLevelItem(0)->text(0), QString("1"));
    QCOMPARE(list.topLevelItem(1)->text(0), QString("0"));
    QCOMPARE(list.topLevelItem(19999)->text(0), QString("19998"));
    QCOMPARE(list.selectedItems().size(), 10000);
}

TARN_TEST_MAIN(TestSignalTreeWidget)

#include "tst_signaltreewidget.moc"
