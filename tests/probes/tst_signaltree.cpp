// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "signalsamples.h"

#include <probes/initialvalueline.h>
#include <probes/signaltree.h>
#include <probes/value2tree.h>
#include <support/modeltext.h>
#include <support/testcase.h>
#include <widgets/treerows.h>

#include <QApplication>
#include <QBrush>
#include <QFont>
#include <QLabel>
#include <QTest>
#include <QTreeWidget>

#include <functional>
#include <memory>

using namespace TARN;
using TarnTest::bus;
using TarnTest::modelText;
using TarnTest::net;

namespace {

/// A bus whose name, members and flags are all told apart by its rows.
SignalItem sampleBus()
{
    SignalItem item = bus("top.d", {"top.d[2]", "top.d[1]", "top.d[0]"});
    item.displayName = QStringLiteral("d");
    item.members[0].displayName = QStringLiteral("d[2]");
    item.members[1].enabled = false;
    item.members[2].usable = false;
    return item;
}

/// Text, look and whether an item is stored, of a row and its children.
QString rowText(const QTreeWidgetItem *row, const QString &indent = QString())
{
    constexpr Qt::ItemFlags both = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    const QString stored = row->data(0, Qt::UserRole).isValid() ? signalOfRow(row).name : "-";
    QString text =
        QStringLiteral("%1%2 %3 %4%5%6 %7 %8\n")
            .arg(indent, row->text(0), row->foreground(0).color().name(),
                 row->font(0).italic() ? "italic " : "", (row->flags() & both) == both ? "on" : "",
                 (row->flags() & both) == 0 ? "off" : "", QString::number(row->type()), stored);
    if (row->toolTip(0) != row->text(0))
        text += QStringLiteral("%1tool tip %2\n").arg(indent, row->toolTip(0));
    for (int i = 0; i < row->childCount(); ++i)
        text += rowText(row->child(i), indent + "  ");
    return text;
}

const char *const SampleRows = "d #000000 italic on 1002 top.d\n"
                               "  d[2] #000000 italic on 1002 -\n"
                               "  top.d[1] #a0a0a4 off 1002 -\n"
                               "  top.d[0] #ff0000 on 1002 -\n";

/// A bus that cannot be used itself, with members that can, or the other way round.
SignalItem mixedBus(bool enabled)
{
    SignalItem item = bus("d", 4);
    item.enabled = enabled;
    item.members[1].enabled = false;
    item.members[3].enabled = false;
    return item;
}

/// Which rows can be selected and are enabled, children in brackets.
QString flagsText(const QTreeWidgetItem *row)
{
    QString text = row->flags() & Qt::ItemIsSelectable ? "s" : "-";
    text += row->flags() & Qt::ItemIsEnabled ? "e" : "-";
    for (int i = 0; i < row->childCount(); ++i)
        text += " (" + flagsText(row->child(i)) + ")";
    return text;
}

QString mixedFlags(bool enabled)
{
    return QString(enabled ? "se" : "--") + " (se) (--) (se) (--)";
}

using AddRow = std::function<QTreeWidgetItem *(QTreeWidget *, const SignalItem &)>;

/// The values tree with one port.
struct Values
{
    QTreeWidget tree;
    QTreeWidgetItem *port = new QTreeWidgetItem(&tree, 1001);
    InitialValueLine line{0, nullptr};

    QStringList labels() const
    {
        QStringList texts;
        for (int i = 0; i < port->childCount(); ++i)
            texts.append(qobject_cast<QLabel *>(tree.itemWidget(port->child(i), 0))->text());
        return texts;
    }
};

} // namespace

Q_DECLARE_METATYPE(AddRow)

class TestSignalTree : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QPalette palette = QApplication::palette();
        palette.setColor(QPalette::WindowText, Qt::black);
        QApplication::setPalette(palette);
    }

    void defaultItemIsUnset()
    {
        const QTreeWidgetItem row(QStringList("foreign"));
        const SignalItem item = signalOfRow(&row);
        QVERIFY(item.name.isNull() && item.displayName.isNull() && item.members.isEmpty());
        QVERIFY(item.enabled && item.usable);
        QCOMPARE(item.kind, -1);
        QCOMPARE(item.width(), 1);
        QCOMPARE(QByteArray(QMetaType::typeName(qMetaTypeId<SignalItem>())),
                 QByteArray("TARN::SignalItem"));
    }

    void appendsTopLevelRows()
    {
        QTreeWidget tree;
        signal2TreeItem(&tree, net("first"), 1001);
        signal2TreeItem(&tree, sampleBus(), 1002);
        QCOMPARE(rowText(tree.topLevelItem(0)), QStringLiteral("first #000000 on 1001 first\n"));
        QCOMPARE(rowText(tree.topLevelItem(1)), QString(SampleRows));
        QCOMPARE(signalOfRow(tree.topLevelItem(1)).members.size(), 3);
    }

    void appendsChildRows()
    {
        QTreeWidget tree;
        auto *parent = new QTreeWidgetItem(&tree, 1001);
        signal2TreeItem(parent, net("first"), 1002);
        signal2TreeItem(parent, sampleBus(), 1002);
        QCOMPARE(parent->childCount(), 2);
        QCOMPARE(rowText(parent->child(1)), QString(SampleRows));
    }

    void insertsRows()
    {
        QTreeWidget tree;
        signal2TreeItem(&tree, net("a"), 1002);
        signal2TreeItem(&tree, net("b"), 1002);
        signal2TreeItemWithIndex(&tree, sampleBus(), 1002, 1);
        QCOMPARE(tree.topLevelItemCount(), 3);
        QCOMPARE(rowText(tree.topLevelItem(1)), QString(SampleRows));
    }

    void rowsHaveTheFlagsOfTheirOwnItem_data()
    {
        QTest::addColumn<AddRow>("add");
        QTest::newRow("top level") << AddRow([](QTreeWidget *tree, const SignalItem &item) {
            signal2TreeItem(tree, item, 0);
            return tree->topLevelItem(0);
        });
        QTest::newRow("below a row") << AddRow([](QTreeWidget *tree, const SignalItem &item) {
            auto *port = new QTreeWidgetItem(tree);
            signal2TreeItem(port, item, 0);
            return port->child(0);
        });
        QTest::newRow("below a row that is in no tree yet")
            << AddRow([](QTreeWidget *tree, const SignalItem &item) {
                   auto *port = new QTreeWidgetItem;
                   signal2TreeItem(port, item, 0);
                   tree->addTopLevelItem(port);
                   return port->child(0);
               });
        QTest::newRow("below a disabled row")
            << AddRow([](QTreeWidget *tree, const SignalItem &item) {
                   auto *port = new QTreeWidgetItem(tree);
                   port->setDisabled(true);
                   signal2TreeItem(port, item, 0);
                   return port->child(0);
               });
        QTest::newRow("below a row that is disabled later")
            << AddRow([](QTreeWidget *tree, const SignalItem &item) {
                   auto *port = new QTreeWidgetItem(tree);
                   signal2TreeItem(port, item, 0);
                   port->setDisabled(true);
                   return port->child(0);
               });
        QTest::newRow("at an index") << AddRow([](QTreeWidget *tree, const SignalItem &item) {
            signal2TreeItem(tree, net("a"), 0);
            signal2TreeItem(tree, net("b"), 0);
            signal2TreeItemWithIndex(tree, item, 0, 1);
            return tree->topLevelItem(1);
        });
        QTest::newRow("by module") << AddRow([](QTreeWidget *tree, const SignalItem &item) {
            auto *module = new QTreeWidgetItem;
            signal2TreeItemForHierarchy(module, item, {"d", "3", "2", "1", "0"}, 0);
            tree->addTopLevelItem(module);
            return module->child(0);
        });
        QTest::newRow("all at once") << AddRow([](QTreeWidget *tree, const SignalItem &item) {
            signals2Tree(tree, {net("a"), item}, 0);
            return tree->topLevelItem(1);
        });
        QTest::newRow("clone") << AddRow([](QTreeWidget *tree, const SignalItem &item) {
            const std::unique_ptr<QTreeWidgetItem> row(newSignalRow(item, 0));
            tree->addTopLevelItem(row->clone());
            return tree->topLevelItem(0);
        });
        QTest::newRow("clone of a clone") << AddRow([](QTreeWidget *tree, const SignalItem &item) {
            const std::unique_ptr<QTreeWidgetItem> row(newSignalRow(item, 0));
            const std::unique_ptr<QTreeWidgetItem> copy(row->clone());
            auto *port = new QTreeWidgetItem(tree);
            port->addChild(copy->clone());
            return port->child(0);
        });
        QTest::newRow("clone of a row with other texts")
            << AddRow([](QTreeWidget *tree, const SignalItem &item) {
                   const std::unique_ptr<QTreeWidgetItem> row(newSignalRow(item, 0));
                   row->child(0)->setText(0, "other");
                   tree->addTopLevelItem(row->clone());
                   return tree->topLevelItem(0);
               });
        QTest::newRow("taken out and put back")
            << AddRow([](QTreeWidget *tree, const SignalItem &item) {
                   signal2TreeItem(tree, item, 0);
                   QTreeWidgetItem *row = tree->takeTopLevelItem(0);
                   row->insertChildren(0, row->takeChildren());
                   tree->addTopLevelItem(row);
                   return row;
               });
        QTest::newRow("removal of others") << AddRow([](QTreeWidget *tree, const SignalItem &item) {
            for (int i = 0; i < 100; ++i)
                signal2TreeItem(tree, net("a"), 0);
            signal2TreeItem(tree, item, 0);
            QList<QTreeWidgetItem *> others;
            for (int i = 0; i < 100; ++i)
                others.append(tree->topLevelItem(i));
            removeTopLevelRows(tree, others);
            return tree->topLevelItem(0);
        });
    }
    void rowsHaveTheFlagsOfTheirOwnItem()
    {
        QFETCH(AddRow, add);
        for (bool enabled : {false, true}) {
            QTreeWidget tree;
            QTreeWidgetItem *row = add(&tree, mixedBus(enabled));
            QCOMPARE(flagsText(row), mixedFlags(enabled));
            // The view selects by the flags.
            tree.setSelectionMode(QAbstractItemView::ExtendedSelection);
            tree.expandAll();
            tree.selectAll();
            QCOMPARE(row->isSelected(), enabled);
            QVERIFY(row->child(0)->isSelected() && row->child(2)->isSelected());
            QVERIFY(!row->child(1)->isSelected() && !row->child(3)->isSelected());
        }
    }

    void listsMakeTheSameRows()
    {
        const QList<SignalItem> items{net("a"), sampleBus(), net("b")};
        QTreeWidget one, other;
        auto *onePort = new QTreeWidgetItem(&one, 1001);
        auto *otherPort = new QTreeWidgetItem(&other, 1001);
        for (const SignalItem &item : items) {
            signal2TreeItem(&one, item, 1002);
            signal2TreeItem(onePort, item, 1002);
            signal2ProbeOutTreeItem(onePort, item, 1002);
        }
        signals2Tree(&other, items, 1002);
        for (const SignalItem &item : items) {
            signals2Tree(otherPort, {item}, 1002);
            signals2ProbeOutTree(otherPort, {item}, 1002);
        }
        QCOMPARE(rowText(other.invisibleRootItem()), rowText(one.invisibleRootItem()));
        QCOMPARE(onePort->childCount(), 6);
    }

    void hierarchyRowsShowTheTextsAndKeepTheItems()
    {
        QTreeWidget tree;
        auto *parent = new QTreeWidgetItem(&tree, 1001);
        signal2TreeItemForHierarchy(parent, sampleBus(), {"bus", "m2", "", "m0"}, 1002);
        QCOMPARE(parent->childCount(), 1);
        QCOMPARE(rowText(parent->child(0)), QStringLiteral("bus #000000 italic on 1002 top.d\n"
                                                           "  m2 #000000 italic on 1002 top.d[2]\n"
                                                           "   #a0a0a4 off 1002 top.d[1]\n"
                                                           "  m0 #ff0000 on 1002 top.d[0]\n"));
    }

    void hierarchyTextMayBeNull()
    {
        QTreeWidgetItem parent;
        signal2TreeItemForHierarchy(&parent, net("a"), {QString()}, 1002);
        QCOMPARE(parent.child(0)->text(0), QString());
    }

    void hierarchyWithTheWrongNumberOfTextsAddsNothing()
    {
        QTreeWidgetItem parent;
        signal2TreeItemForHierarchy(&parent, sampleBus(), {"bus", "m2", "m1"}, 1002);
        signal2TreeItemForHierarchy(&parent, sampleBus(), {"bus", "m2", "m1", "m0", "x"}, 1002);
        signal2TreeItemForHierarchy(&parent, net("a"), {}, 1002);
        QCOMPARE(parent.childCount(), 0);
    }

    void probeOutRowsHaveNoMembers()
    {
        QTreeWidget tree;
        auto *parent = new QTreeWidgetItem(&tree, 1001);
        signal2ProbeOutTreeItem(parent, sampleBus(), 1002);
        QCOMPARE(rowText(parent->child(0)), QStringLiteral("d #000000 italic on 1002 top.d\n"));
        QCOMPARE(signalOfRow(parent->child(0)).members.size(), 3);
    }

    void valuesAreDealtOutFromTheLeft()
    {
        Values values;
        QString bits = QStringLiteral("1100101");
        value2Tree(&values.tree, values.port, bus("d", 4), bits, &values.line, 1002);
        QCOMPARE(bits, QStringLiteral("101"));
        value2Tree(&values.tree, values.port, net("a"), bits, &values.line, 1002);
        value2Tree(&values.tree, values.port, bus("e", 2), bits, &values.line, 1002);
        QCOMPARE(bits, QString());
        QCOMPARE(values.labels(), QStringList({"1100", "1", "01"}));
        QCOMPARE(values.line.getStringValue(), QStringLiteral("1100101"));
        QCOMPARE(values.line.getWidth(), 7);
        QCOMPARE(values.port->child(0)->type(), 1002);
    }

    void tooFewBitsAreZeros_data()
    {
        QTest::addColumn<QString>("bits");
        QTest::newRow("none") << "";
        QTest::newRow("two") << "11";
        QTest::newRow("all but one") << "111";
    }
    void tooFewBitsAreZeros()
    {
        QFETCH(QString, bits);
        Values values;
        value2Tree(&values.tree, values.port, bus("d", 4), bits, &values.line, 1002);
        QCOMPARE(bits, QString());
        value2Tree(&values.tree, values.port, bus("e", 3), bits, &values.line, 1002);
        QCOMPARE(values.labels(), QStringList({"0000", "000"}));
    }

    void valueNeedsAPort()
    {
        Values values;
        QString bits = QStringLiteral("11");
        value2Tree(&values.tree, nullptr, net("a"), bits, &values.line, 1002);
        QCOMPARE(bits, QStringLiteral("11"));
        QCOMPARE(values.line.getWidth(), 0);
        QVERIFY(values.tree.findChildren<QLabel *>().isEmpty());
    }

    void valuesOfAListAreTheSame()
    {
        const QList<SignalItem> items{bus("d", 4), net("a"), bus("e", 3)};
        Values one, other;
        QString oneBits = QStringLiteral("110010"), otherBits = oneBits;
        for (const SignalItem &item : items) {
            value2Tree(&one.tree, one.port, item, oneBits, &one.line, 1002);
            new QTreeWidgetItem(other.port, 1002);
        }
        values2Tree(&other.tree, other.port, items, otherBits, &other.line);
        QCOMPARE(other.labels(), one.labels());
        QCOMPARE(one.labels(), QStringList({"1100", "1", "000"}));
        QCOMPARE(otherBits, oneBits);
        QCOMPARE(other.line.getStringValue(), one.line.getStringValue());
    }

    void labelsAreAsHighAsTheirRows()
    {
        Values values;
        values.tree.setStyleSheet(
            "QTreeWidget::item { height: 20px;}QTreeWidget{ icon-size: 17px; }");
        QString bits = QStringLiteral("1");
        value2Tree(&values.tree, values.port, net("a"), bits, &values.line, 1002);
        values.port->setExpanded(true);
        values.tree.show();
        QCOMPARE(values.tree.visualItemRect(values.port->child(0)).height(), 20);
    }
};

TARN_TEST_MAIN(TestSignalTree)
#include "tst_signaltree.moc"
