// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/setting.h>
#include <support/testcase.h>
#include <widgets/largetreewidget.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTest>

#include <algorithm>
#include <functional>
#include <memory>
#include <random>

using TARN::LargeTreeWidget;

namespace {

QString textOf(int number)
{
    return QString::number(number);
}

QString textOf(const QTreeWidgetItem *row)
{
    return row ? row->text(0) : QStringLiteral("-");
}

QString textOf(const QModelIndex &index)
{
    return index.isValid() ? index.data().toString() : QStringLiteral("-");
}

QString textOf(const QItemSelection &selection)
{
    QStringList ranges;
    for (const QItemSelectionRange &range : selection)
        ranges.append(textOf(QModelIndex(range.topLeft())) + ".." +
                      textOf(QModelIndex(range.bottomRight())));
    return ranges.join(' ');
}

/// A visible tree that notes its signals.
class Watched
{
public:
    explicit Watched(QTreeWidget *tree)
        : m_tree(tree)
    {
        tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
        tree->setUniformRowHeights(true);
        tree->setHeaderHidden(true);
        tree->resize(200, 250);
        tree->show();
        const auto note = [this](const char *what) {
            return [this, what](const auto &...about) {
                m_notes.append(what + (QString() + ... + (' ' + textOf(about))));
            };
        };
        QObject::connect(tree, &QTreeWidget::itemSelectionChanged, tree, note("selection"));
        QObject::connect(tree, &QTreeWidget::currentItemChanged, tree, note("current"));
        QObject::connect(tree, &QTreeWidget::itemExpanded, tree, note("expanded"));
        QObject::connect(tree, &QTreeWidget::itemCollapsed, tree, note("collapsed"));
        QObject::connect(tree, &QTreeWidget::itemActivated, tree, note("activated"));
        const QItemSelectionModel *model = tree->selectionModel();
        QObject::connect(model, &QItemSelectionModel::selectionChanged, tree, note("changed"));
        QObject::connect(model, &QItemSelectionModel::currentChanged, tree, note("index"));
        QObject::connect(model, &QItemSelectionModel::currentRowChanged, tree, note("row"));
    }

    QTreeWidget *tree() const { return m_tree.get(); }
    QItemSelectionModel *selection() const { return m_tree->selectionModel(); }

    /// All rows, a row before its children.
    QList<QTreeWidgetItem *> rows() const
    {
        QList<QTreeWidgetItem *> rows;
        for (QTreeWidgetItemIterator row(m_tree.get()); *row; ++row)
            rows.append(*row);
        return rows;
    }

    /// All that can be seen or asked, and the signals since the last call.
    QString state()
    {
        // A tree that collapses all rows tells of them in the order of their addresses.
        const auto other =
            std::stable_partition(m_notes.begin(), m_notes.end(),
                                  [](const QString &note) { return note.startsWith("collapsed"); });
        std::sort(m_notes.begin(), other);
        QStringList lines = m_notes;
        m_notes.clear();
        lines.append("ranges " + textOf(selection()->selection()));
        QStringList words{"selected"};
        for (const QTreeWidgetItem *row : m_tree->selectedItems())
            words.append(row->text(0));
        lines.append(words.join(' '));
        words = QStringList{"rows"};
        for (QTreeWidgetItem *row : rows())
            words.append(row->text(0) + (row->isSelected() ? "*" : "") +
                         (selection()->isSelected(indexOf(row)) ? "*" : "") +
                         (row->isExpanded() ? "+" : ""));
        lines.append(words.join(' '));
        lines.append(QString("current %1, some %2, at %3")
                         .arg(textOf(m_tree->currentItem()))
                         .arg(selection()->hasSelection())
                         .arg(m_tree->verticalScrollBar()->value()));
        return lines.join('\n');
    }

    QModelIndex indexOf(const QTreeWidgetItem *row) const
    {
        const QTreeWidgetItem *parent = row->parent();
        const int place = parent ? parent->indexOfChild(const_cast<QTreeWidgetItem *>(row))
                                 : m_tree->indexOfTopLevelItem(const_cast<QTreeWidgetItem *>(row));
        return m_tree->model()->index(place, 0, parent ? indexOf(parent) : QModelIndex());
    }

private:
    std::unique_ptr<QTreeWidget> m_tree;
    QStringList m_notes;
};

/// The same changes to any number of trees: the random numbers of a change are drawn once.
class Changes
{
public:
    using Change = std::function<void(const Watched &)>;

    explicit Changes(quint32 seed)
        : m_random(seed)
    {
    }

    int below(int bound) { return int(m_random() % quint32(bound)); }

    /// Adds rows at a random place.
    Change grow()
    {
        const quint32 seed = quint32(m_random());
        const QString prefix = QString::number(++m_grown) + '/';
        return [=](const Watched &watched) {
            Changes changes(seed);
            QList<QTreeWidgetItem *> parents = watched.rows();
            parents.append(watched.tree()->invisibleRootItem());
            QTreeWidgetItem *parent = parents.at(changes.below(parents.size()));
            parent->insertChildren(changes.below(parent->childCount() + 1),
                                   changes.newRows(prefix, 3));
        };
    }

    Change any()
    {
        switch (below(12)) {
        case 0:
            return onRow([](const Watched &watched, QTreeWidgetItem *row) {
                watched.tree()->setCurrentItem(row);
            });
        case 1:
            return onRow([](const Watched &, QTreeWidgetItem *row) {
                row->setSelected(!row->isSelected());
            });
        case 2:
        case 3:
            return onRow([](const Watched &, QTreeWidgetItem *row) {
                row->setExpanded(!row->isExpanded());
            });
        case 4:
            return selectRanges();
        case 5:
            return click();
        case 6:
            return wholeTree();
        case 7:
            return below(4) == 0 ? onRow([](const Watched &, QTreeWidgetItem *row) { delete row; })
                                 : grow();
        default:
            return key();
        }
    }

private:
    QList<QTreeWidgetItem *> newRows(const QString &prefix, int depth)
    {
        QList<QTreeWidgetItem *> rows;
        const int count = 1 + below(4);
        for (int i = 0; i < count; ++i) {
            const QString name = prefix + QString::number(i);
            auto *row = new QTreeWidgetItem({name});
            if (below(8) == 0)
                row->setFlags(Qt::ItemIsEnabled);
            if (below(12) == 0)
                row->setFlags(Qt::ItemIsSelectable);
            if (depth > 0 && below(2) == 0)
                row->addChildren(newRows(name + '.', depth - 1));
            rows.append(row);
        }
        return rows;
    }

    Change onRow(const std::function<void(const Watched &, QTreeWidgetItem *)> &change)
    {
        const quint32 number = quint32(m_random());
        return [=](const Watched &watched) {
            const QList<QTreeWidgetItem *> rows = watched.rows();
            if (!rows.isEmpty())
                change(watched, rows.at(int(number % quint32(rows.size()))));
        };
    }

    Change selectRanges()
    {
        using Model = QItemSelectionModel;
        static constexpr Model::SelectionFlag kinds[] = {Model::Select, Model::Deselect,
                                                         Model::Toggle, Model::NoUpdate};
        Model::SelectionFlags command = kinds[below(4)];
        for (const auto flag : {Model::Clear, Model::Current, Model::Rows})
            command |= below(2) == 0 ? flag : Model::NoUpdate;
        const quint32 seed = quint32(m_random());
        return [=](const Watched &watched) {
            Changes changes(seed);
            const QList<QTreeWidgetItem *> rows = watched.rows();
            QItemSelection ranges;
            const int count = rows.isEmpty() ? 0 : changes.below(5);
            for (int i = 0; i < count; ++i) {
                const QModelIndex first = watched.indexOf(rows.at(changes.below(rows.size())));
                const int more =
                    changes.below(watched.tree()->model()->rowCount(first.parent()) - first.row());
                const QItemSelectionRange range(first, first.sibling(first.row() + more, 0));
                // As in every selection that a view makes, none comes twice.
                if (std::none_of(ranges.cbegin(), ranges.cend(),
                                 [&](const auto &other) { return other.intersects(range); }))
                    ranges.append(range);
            }
            watched.selection()->select(ranges, command);
        };
    }

    Change click()
    {
        static constexpr Qt::KeyboardModifiers modifiers[] = {
            Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier,
            Qt::ShiftModifier | Qt::ControlModifier};
        const Qt::KeyboardModifiers modifier = modifiers[below(4)];
        const QPoint place(40 + below(100), below(240));
        return [=](const Watched &watched) {
            QTest::mouseClick(watched.tree()->viewport(), Qt::LeftButton, modifier, place);
        };
    }

    Change wholeTree()
    {
        switch (below(6)) {
        case 0:
            return [](const Watched &watched) { watched.tree()->expandAll(); };
        case 1:
            return [](const Watched &watched) { watched.tree()->collapseAll(); };
        case 2:
            return [](const Watched &watched) { watched.tree()->clearSelection(); };
        case 3:
            return [](const Watched &watched) { watched.selection()->clear(); };
        case 4:
            return [](const Watched &watched) { watched.tree()->selectAll(); };
        default:
            return [](const Watched &watched) { watched.tree()->reset(); };
        }
    }

    Change key()
    {
        static constexpr int keys[] = {Qt::Key_Up,       Qt::Key_Down,   Qt::Key_Home,
                                       Qt::Key_End,      Qt::Key_PageUp, Qt::Key_PageDown,
                                       Qt::Key_Left,     Qt::Key_Right,  Qt::Key_Space,
                                       Qt::Key_Asterisk, Qt::Key_Plus,   Qt::Key_Minus};
        static constexpr Qt::KeyboardModifiers modifiers[] = {
            Qt::NoModifier, Qt::ShiftModifier, Qt::ShiftModifier, Qt::ControlModifier,
            Qt::KeypadModifier};
        const int key = keys[below(12)];
        const Qt::KeyboardModifiers modifier = modifiers[below(5)];
        if (below(6) == 0)
            return [](const Watched &watched) {
                QTest::keyClick(watched.tree(), Qt::Key_A, Qt::ControlModifier);
            };
        return [=](const Watched &watched) {
            QTest::keyClick(watched.tree(), Qt::Key(key), modifier);
        };
    }

    std::mt19937 m_random;
    int m_grown = 0;
};

} // namespace

class TestLargeTreeWidget : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // So long after a click the view scrolls. It must not happen to one tree alone.
        QApplication::setDoubleClickInterval(3600 * 1000);
    }

    /// Signals, selection, its order, current row, expansion and scroll position, after each of
    /// many random keys, clicks and calls.
    void behavesLikeEveryTree()
    {
        const quint32 rounds = TarnTest::setting("TARN_TREE_ROUNDS", 40);
        const quint32 seed = TarnTest::setting("TARN_TREE_SEED", 1);
        for (quint32 round = 0; round < rounds; ++round) {
            Watched plain(new QTreeWidget);
            Watched large(new LargeTreeWidget);
            Changes changes(seed + round);
            for (int step = 0; step < 60; ++step) {
                const Changes::Change change = step < 3 ? changes.grow() : changes.any();
                change(plain);
                change(large);
                const QString expected = plain.state();
                const QString state = large.state();
                if (state != expected) {
                    const QString message = QStringLiteral("seed %1, step %2:\n%3\nexpected:\n%4");
                    QFAIL(qPrintable(message.arg(seed + round).arg(step).arg(state, expected)));
                }
            }
        }
    }

    /// Nothing is selected, but only because a row was selected and then toggled.
    void clearingForgetsWhatWasToggled()
    {
        Watched plain(new QTreeWidget);
        Watched large(new LargeTreeWidget);
        for (Watched *watched : {&plain, &large}) {
            watched->tree()->addTopLevelItems(
                {new QTreeWidgetItem({"a"}), new QTreeWidgetItem({"b"})});
            const QModelIndex a = watched->tree()->model()->index(0, 0);
            watched->selection()->select(a, QItemSelectionModel::Select);
            watched->selection()->select(a, QItemSelectionModel::Toggle);
            QVERIFY(watched->tree()->selectedItems().isEmpty());
            watched->tree()->clearSelection();
            watched->selection()->select(a.sibling(1, 0), QItemSelectionModel::SelectCurrent);
        }
        QCOMPARE(textOf(plain.selection()->selection()), QString("b..b"));
        QCOMPARE(large.state(), plain.state());
    }
};

TARN_TEST_MAIN(TestLargeTreeWidget)
#include "tst_largetreewidget.moc"
