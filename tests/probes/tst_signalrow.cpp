// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "signalsamples.h"

#include <probes/signalrow.h>
#include <probes/signaltree.h>
#include <support/testcase.h>

#include <QApplication>
#include <QBrush>
#include <QFont>
#include <QMimeData>
#include <QTest>
#include <QTreeWidget>

#include <memory>
#include <vector>

using namespace TARN;
using TarnTest::bus;
using TarnTest::net;

namespace {

enum Trait { Disabled = 1, Unusable = 2, Named = 4, Empty = 8, Traits = 16 };

SignalItem sample(int traits)
{
    SignalItem item = traits & Empty ? net("") : net("top.clk");
    item.enabled = !(traits & Disabled);
    item.usable = !(traits & Unusable);
    if (traits & Named)
        item.displayName = QStringLiteral("clk");
    return item;
}

/// The same row as one that stores its roles.
QTreeWidgetItem *ordinaryRow(const SignalItem &item, bool holdsItem, int type)
{
    auto *row = new QTreeWidgetItem(type);
    if (holdsItem)
        row->setData(0, Qt::UserRole, QVariant::fromValue(item));
    const QString text = item.displayName.isEmpty() ? item.name : item.displayName;
    row->setText(0, text);
    row->setToolTip(0, text);
    if (!item.displayName.isEmpty()) {
        QFont font;
        font.setItalic(true);
        row->setFont(0, font);
    }
    constexpr Qt::ItemFlags usable = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    if (!item.enabled) {
        row->setForeground(0, QBrush(Qt::gray));
        row->setFlags(row->flags() & ~usable);
        return row;
    }
    row->setForeground(0, item.usable ? QApplication::palette().windowText() : QBrush(Qt::red));
    row->setFlags(row->flags() | usable);
    return row;
}

QString textOf(const QVariant &value)
{
    if (value.userType() != qMetaTypeId<SignalItem>()) {
        QString text;
        QDebug(&text) << value;
        return text;
    }
    const auto item = value.value<SignalItem>();
    return QStringLiteral("item %1 %2 enabled %3 usable %4 kind %5 members %6")
        .arg(item.name, item.displayName.isNull() ? "none" : "'" + item.displayName + "'")
        .arg(item.enabled)
        .arg(item.usable)
        .arg(item.kind)
        .arg(TarnTest::namesOf(item.members).join(' '));
}

/// What differs between two rows, empty when nothing does.
QString difference(const QTreeWidgetItem *one, const QTreeWidgetItem *other)
{
    if (one->flags() != other->flags())
        return QStringLiteral("flags");
    if (one->childCount() != other->childCount())
        return QStringLiteral("children");
    for (int column = 0; column < 2; ++column) {
        for (int role = 0; role < Qt::UserRole + 3; ++role) {
            const QString a = textOf(one->data(column, role));
            const QString b = textOf(other->data(column, role));
            if (a != b)
                return QStringLiteral("column %1 role %2: %3, not %4")
                    .arg(QString::number(column), QString::number(role), a, b);
        }
    }
    return QString();
}

/// A tree with access to its drag data.
class DragTree : public QTreeWidget
{
public:
    using QTreeWidget::mimeData;
};

QByteArray dragged(QTreeWidgetItem *row)
{
    DragTree tree;
    tree.addTopLevelItem(row);
    const std::unique_ptr<QMimeData> data(tree.mimeData({row}));
    return data->data("application/x-qabstractitemmodeldatalist");
}

} // namespace

class TestSignalRow : public TarnTest::TestCase
{
    Q_OBJECT

    static void addRows()
    {
        QTest::addColumn<int>("traits");
        QTest::addColumn<bool>("holdsItem");
        for (int traits = 0; traits < Traits; ++traits) {
            QTest::addRow("%d with item", traits) << traits << true;
            QTest::addRow("%d without item", traits) << traits << false;
        }
    }

    static ComputedSignalRow::Holds holds(bool item)
    {
        return item ? SignalRow::Holds::Item : SignalRow::Holds::Nothing;
    }

    static SignalRow *rowOf(const SignalItem &item, bool holdsItem)
    {
        return new SignalRow(item, holds(holdsItem), 1002);
    }

    /// One made in each way.
    static std::vector<std::unique_ptr<ComputedSignalRow>> rowsOf(const SignalItem &item,
                                                                  bool holdsItem)
    {
        std::vector<std::unique_ptr<ComputedSignalRow>> rows;
        rows.emplace_back(rowOf(item, holdsItem));
        rows.emplace_back(newRowOf(item, holds(holdsItem), 1002));
        rows.emplace_back(newRowOf(SignalItem(item), holds(holdsItem), 1002));
        return rows;
    }

private Q_SLOTS:
    void isLikeARowThatStoresItsRoles_data() { addRows(); }
    void isLikeARowThatStoresItsRoles()
    {
        QFETCH(int, traits);
        QFETCH(bool, holdsItem);
        const SignalItem item = sample(traits);
        const std::unique_ptr<QTreeWidgetItem> ordinary(ordinaryRow(item, holdsItem, 1002));
        for (const auto &row : rowsOf(item, holdsItem)) {
            QCOMPARE(row->type(), 1002);
            QCOMPARE(difference(row.get(), ordinary.get()), QString());
            QCOMPARE(row->item().has_value(), holdsItem);
            row->storeRoles();
            QCOMPARE(difference(row.get(), ordinary.get()), QString());
            QVERIFY(!row->item());
        }
    }

    void smallRowsHaveAnyItem_data()
    {
        QTest::addColumn<SignalItem>("item");
        QTest::addColumn<bool>("isSmall");
        QTest::newRow("net") << net("clk") << true;
        QTest::newRow("bit of a bus") << bus("d", 1).members.constFirst() << true;
        QTest::newRow("default") << SignalItem() << true;
        QTest::newRow("bus") << bus("d", 2) << false;
        SignalItem item = net("clk");
        item.enabled = item.usable = false;
        QTest::newRow("neither enabled nor usable") << item << true;
        item.displayName = QStringLiteral("clock");
        QTest::newRow("display name") << item << false;
        item.displayName = QLatin1String("");
        QTest::newRow("empty display name") << item << false;
        for (const int kind : {-2, 2, 255, 256}) {
            item = net("clk");
            item.kind = kind;
            QTest::addRow("kind %d", kind) << item << false;
        }
    }
    void smallRowsHaveAnyItem()
    {
        QFETCH(SignalItem, item);
        QFETCH(bool, isSmall);
        for (const auto &row : rowsOf(item, true)) {
            const std::unique_ptr<QTreeWidgetItem> copy(row->clone());
            QVERIFY(row->item());
            QCOMPARE(textOf(QVariant::fromValue(*row->item())), textOf(QVariant::fromValue(item)));
            QCOMPARE(difference(copy.get(), row.get()), QString());
        }
        const auto rows = rowsOf(item, true);
        QCOMPARE(dynamic_cast<NetRow *>(rows.at(1).get()) != nullptr, isSmall);
        QCOMPARE(dynamic_cast<NetRow *>(rows.at(2).get()) != nullptr, isSmall);
        // Lists have a million of them.
        QCOMPARE(sizeof(NetRow), sizeof(QTreeWidgetItem) + sizeof(QString));
    }

    void dragsLikeARowThatStoresItsRoles_data() { addRows(); }
    void dragsLikeARowThatStoresItsRoles()
    {
        QFETCH(int, traits);
        SignalItem item = sample(traits);
        SignalRow *row = rowOf(item, false); // The item itself has no stream operators.
        row->storeRoles();
        QCOMPARE(dragged(row), dragged(ordinaryRow(item, false, 1002)));
    }

    void clonesLikeAnOrdinaryRow()
    {
        SignalItem item = bus("d", 2);
        item.displayName = QStringLiteral("data");
        QTreeWidget tree;
        signal2TreeItem(&tree, item, 1002);
        const std::unique_ptr<QTreeWidgetItem> copy(tree.topLevelItem(0)->clone());
        QCOMPARE(difference(copy.get(), tree.topLevelItem(0)), QString());
        QCOMPARE(copy->childCount(), 2);
        QCOMPARE(difference(copy->child(1), tree.topLevelItem(0)->child(1)), QString());
        QCOMPARE(copy->type(), int(QTreeWidgetItem::Type));
        QCOMPARE(copy->child(0)->type(), int(QTreeWidgetItem::Type));
        QVERIFY(!copy->treeWidget());
        QVERIFY(!copy->isExpanded() && !copy->isSelected());
    }

    void cloneOfAChangedRowHasTheChanges()
    {
        const std::unique_ptr<SignalRow> row(rowOf(net("clk"), true));
        row->setText(0, QStringLiteral("other"));
        row->setText(1, QStringLiteral("second"));
        const std::unique_ptr<QTreeWidgetItem> copy(row->clone());
        QCOMPARE(copy->text(0), QStringLiteral("other"));
        QCOMPARE(copy->text(1), QStringLiteral("second"));
        QCOMPARE(signalOfRow(copy.get()).name, QStringLiteral("clk"));
    }

    void takesValuesByHand_data()
    {
        QTest::addColumn<int>("role");
        QTest::addColumn<QVariant>("value");
        QTest::newRow("display") << int(Qt::DisplayRole) << QVariant(QStringLiteral("other"));
        QTest::newRow("edit") << int(Qt::EditRole) << QVariant(QStringLiteral("other"));
        QTest::newRow("tool tip") << int(Qt::ToolTipRole) << QVariant(QStringLiteral("tip"));
        QTest::newRow("no tool tip") << int(Qt::ToolTipRole) << QVariant();
        QTest::newRow("font") << int(Qt::FontRole) << QVariant(QFont("Sans", 31));
        QTest::newRow("no font") << int(Qt::FontRole) << QVariant();
        QTest::newRow("colour") << int(Qt::ForegroundRole) << QVariant(QBrush(Qt::blue));
        QTest::newRow("item") << int(Qt::UserRole) << QVariant::fromValue(net("other"));
        QTest::newRow("no item") << int(Qt::UserRole) << QVariant();
        QTest::newRow("check state") << int(Qt::CheckStateRole) << QVariant(int(Qt::Checked));
        QTest::newRow("of others") << Qt::UserRole + 1 << QVariant(17);
    }
    void takesValuesByHand()
    {
        QFETCH(int, role);
        QFETCH(QVariant, value);
        for (int traits = 0; traits < Traits; ++traits) {
            for (const bool holdsItem : {true, false}) {
                const std::unique_ptr<QTreeWidgetItem> ordinary(
                    ordinaryRow(sample(traits), holdsItem, 1002));
                ordinary->setData(0, role, value);
                for (const auto &row : rowsOf(sample(traits), holdsItem)) {
                    row->setData(0, role, value);
                    QCOMPARE(difference(row.get(), ordinary.get()), QString());
                }
            }
        }
    }

    void followsThePaletteOfTheApplication()
    {
        const std::unique_ptr<SignalRow> row(rowOf(net("clk"), true));
        const QPalette former = QApplication::palette();
        QPalette palette = former;
        palette.setColor(QPalette::WindowText, QColor(1, 2, 3));
        QApplication::setPalette(palette);
        const QColor shown = row->foreground(0).color();
        QApplication::setPalette(former);
        QCOMPARE(shown, QColor(1, 2, 3));
        QCOMPARE(row->foreground(0).color(), former.color(QPalette::WindowText));
    }

    void disabledRowCannotBeSelected()
    {
        QTreeWidget tree;
        signal2TreeItem(&tree, sample(Disabled), 1002);
        signal2TreeItem(&tree, sample(Unusable), 1002);
        tree.setSelectionMode(QAbstractItemView::ExtendedSelection);
        tree.selectAll();
        QCOMPARE(tree.selectedItems(), QList<QTreeWidgetItem *>{tree.topLevelItem(1)});
    }
};

TARN_TEST_MAIN(TestSignalRow)
#include "tst_signalrow.moc"
