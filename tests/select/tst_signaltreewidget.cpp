// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/modeltext.h>
#include <support/testcase.h>

#include <probes/signalsamples.h>
#include <probes/signaltree.h>
#include <select/signaltreewidget.h>

#include <QApplication>
#include <QDataStream>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

#include <memory>

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
    void dispatch(QDragMoveEvent *event) { dragMoveEvent(event); }
    void dispatch(QMouseEvent *event)
    {
        if (event->type() == QEvent::MouseMove)
            mouseMoveEvent(event);
        else
            mousePressEvent(event);
    }
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

class SignalTreeWidgetTest : public TarnTest::TestCase
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
    void dragIsFollowedAsUsual();
    void dragCarriesAllRolesOfTheRow();
};

void SignalTreeWidgetTest::dropMovesRowsBesideTheTarget_data()
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

void SignalTreeWidgetTest::dropMovesRowsBesideTheTarget()
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

void SignalTreeWidgetTest::dropOnMemberOrDraggedRowDoesNothing_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("member") << "c[0]";
    QTest::newRow("dragged row") << "b";
    QTest::newRow("other dragged row") << "e";
}

void SignalTreeWidgetTest::dropOnMemberOrDraggedRowDoesNothing()
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

void SignalTreeWidgetTest::dropThatDoesNothingRemovesItsMark()
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

void SignalTreeWidgetTest::dropBelowTheLastRowAppendsCopies()
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

void SignalTreeWidgetTest::dropBelowLeavesMemberRowsWhereTheyAre()
{
    List list;
    list.select({"b", "c[1]"});
    const Drop drop(list, list.pointBelow());
    QCOMPARE(list.order(), QString("abcdefb"));
    QCOMPARE(list.selectedItems(), QList<QTreeWidgetItem *>{list.topLevelItem(1)});
}

void SignalTreeWidgetTest::positionIsRounded()
{
    List list;
    list.select({"a"});
    const Drop drop(list, list.pointIn("d", 9.5));
    QCOMPARE(list.order(), QString("bcdaef"));
}

void SignalTreeWidgetTest::middleOfAnOddRowIsItsLowerHalf()
{
    List list;
    list.setStyleSheet("QTreeWidget::item { height: 21px;}");
    QCOMPARE(list.visualItemRect(list.row("a")).height(), 21);
    list.select({"a"});
    const Drop drop(list, list.pointIn("d", 10));
    QCOMPARE(list.order(), QString("bcdaef"));
}

void SignalTreeWidgetTest::manyRowsKeepTheirOrder()
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

void SignalTreeWidgetTest::copiesCarryTheSignals()
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

void SignalTreeWidgetTest::onlyTheLeftButtonPresses()
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

void SignalTreeWidgetTest::memberRowsAreNotDragged()
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

void SignalTreeWidgetTest::dragIsFollowedAsUsual()
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

void SignalTreeWidgetTest::dragCarriesAllRolesOfTheRow()
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

TARN_TEST_MAIN(SignalTreeWidgetTest)

#include "tst_signaltreewidget.moc"
