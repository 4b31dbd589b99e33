// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "jobs.h"

#include <netweir/hierachy.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>
#include <select/tarnsignalselectdialog.h>
#include <support/benchmark.h>

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <map>
#include <memory>

using TarnBench::fail;
using TarnBench::Goal;
using TarnBench::Table;

namespace {

constexpr int Rounds = 3;

int numberOfRows(const QTreeWidgetItem *row)
{
    int rows = row->childCount();
    for (int i = 0; i < row->childCount(); ++i)
        rows += numberOfRows(row->child(i));
    return rows;
}

/// A visible dialog with a list of rows.
class Shown
{
public:
    virtual ~Shown() = default;
    QTreeWidget *list() const { return m_list; }
    QDialog *dialog() const { return m_dialog.get(); }
    int rows() const { return numberOfRows(m_list->invisibleRootItem()); }

protected:
    Shown() = default;
    Q_DISABLE_COPY(Shown)

    void show(QDialog *dialog, QTreeWidget *list)
    {
        m_dialog.reset(dialog);
        m_list = list;
        dialog->show();
        QApplication::processEvents();
    }

private:
    std::unique_ptr<QDialog> m_dialog;
    QTreeWidget *m_list = nullptr;
};

/// The search dialog with all nets and buses, flat or by module.
class Search final : public Shown
{
public:
    enum class Results { Flat, ByModule };

    Search(NETWEIR::RtlNetlist *netlist, Results results)
    {
        auto *dialog = new TARN::TarnSignalSelectDialog(netlist, TARN::ProbeTypeIn, nullptr);
        show(dialog, dialog->findChild<QTreeWidget *>(QStringLiteral("treeWidget")));
        m_chosen = dialog->findChild<QTreeWidget *>(QStringLiteral("treeWidgetAddSignal"));
        if (results == Results::ByModule)
            searchByModule(netlist);
        else
            call("on_pushButtonSearch_clicked");
        QApplication::processEvents();
    }

    QTreeWidget *chosen() const { return m_chosen; }
    void call(const char *slot) const { QMetaObject::invokeMethod(dialog(), slot); }

private:
    void searchByModule(NETWEIR::RtlNetlist *netlist)
    {
        TARN::SearchOptions options;
        options.useSearchIn = true;
        options.searchIn = netlist->top();
        options.includeSubentries = true;
        static_cast<TARN::TarnSignalSelectDialog *>(dialog())->setTreeWidget(
            TARN::searchNetsHierarchy(options));
    }

    QTreeWidget *m_chosen;
};

/// A dialog with plain rows of the same texts as those of another list.
class Bare final : public Shown
{
public:
    explicit Bare(const QTreeWidget *like)
    {
        auto *dialog = new QDialog;
        auto *list = new QTreeWidget;
        auto *layout = new QVBoxLayout(dialog);
        layout->addWidget(list);
        list->setUniformRowHeights(true);
        list->setHeaderHidden(true);
        list->setSelectionMode(QAbstractItemView::ExtendedSelection);
        list->setTextElideMode(Qt::ElideMiddle);
        dialog->resize(like->window()->size());
        show(dialog, list);
        list->addTopLevelItems(copiesBelow(like->invisibleRootItem()));
        QApplication::processEvents();
    }

private:
    static QList<QTreeWidgetItem *> copiesBelow(const QTreeWidgetItem *row)
    {
        QList<QTreeWidgetItem *> copies;
        for (int i = 0; i < row->childCount(); ++i) {
            const QTreeWidgetItem *child = row->child(i);
            auto *copy = new QTreeWidgetItem({child->text(0)});
            copy->addChildren(copiesBelow(child));
            copies.append(copy);
        }
        return copies;
    }
};

void press(QTreeWidget *list, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QKeyEvent event(QEvent::KeyPress, key, modifiers);
    QApplication::sendEvent(list, &event);
}

void click(QTreeWidget *list, const QTreeWidgetItem *row, Qt::KeyboardModifiers modifiers)
{
    const QPointF place = list->visualItemRect(row).center();
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, place, list->viewport()->mapToGlobal(place.toPoint()),
                          Qt::LeftButton, Qt::LeftButton, modifiers);
        QApplication::sendEvent(list->viewport(), &event);
    }
}

void selectAll(QTreeWidget *list)
{
    press(list, Qt::Key_A, Qt::ControlModifier);
}

/// The CPU times of actions, painting included, over all rounds.
class Times
{
public:
    void take(const std::string &action, const std::function<void()> &act)
    {

        m_times[action].push_back(TarnBench::timeOf([&act] {
            act();
            QApplication::processEvents();
        }));
    }

    double of(const std::string &action) const { return TarnBench::median(m_times.at(action)); }
    double ratio(const std::string &action) const { return of(action) / of(action + " bare"); }

private:
    std::map<std::string, std::vector<double>> m_times;
};

/// What both lists, that of the dialog and the bare one, go through.
void takeCommon(Times *times, QTreeWidget *list, const std::string &suffix)
{
    list->clearSelection();
    times->take("select" + suffix, [list] { selectAll(list); });
    list->clearSelection();
    times->take("expand" + suffix, [list] { list->expandAll(); });
    times->take("collapse" + suffix, [list] { list->collapseAll(); });
}

/// A selection of all rows with everything open, and what comes after it.
void takeSelecting(Times *times, const Search &search)
{
    QTreeWidget *list = search.list();
    list->expandAll();
    list->setCurrentItem(list->topLevelItem(0));
    times->take("select open", [list] { selectAll(list); });
    if (list->selectedItems().size() < search.rows() / 2)
        fail("not all rows were selected");
    times->take("deselect one",
                [list] { click(list, list->topLevelItem(0), Qt::ControlModifier); });
    times->take("extend", [list] { press(list, Qt::Key_End, Qt::ShiftModifier); });
    times->take("extend back", [list] { press(list, Qt::Key_Home, Qt::ShiftModifier); });
    selectAll(list);
    times->take("collapse selected", [list] { list->collapseAll(); });
    times->take("select one", [list] { press(list, Qt::Key_Down); });
    list->expandAll();
    selectAll(list);
    times->take("add open", [&search] { search.call("onAddSignal"); });
    search.call("onDelAllSignal");
    times->take("search again", [&search] { search.call("on_pushButtonSearch_clicked"); });
}

/// Moving rows between the two lists, with everything closed.
void takeMoving(Times *times, NETWEIR::RtlNetlist *netlist)
{
    const Search search(netlist, Search::Results::Flat);
    QTreeWidget *list = search.list();
    times->take("add all", [&search] { search.call("onAddAllSignal"); });
    times->take("add all again", [&search] { search.call("onAddAllSignal"); });
    times->take("remove all", [&search] { search.call("onDelAllSignal"); });
    list->selectAll();
    times->take("add", [&search] { search.call("onAddSignal"); });
    times->take("add again", [&search] { search.call("onAddSignal"); });
    times->take("double click",
                [list] { Q_EMIT list->itemDoubleClicked(list->topLevelItem(3), 0); });
    search.chosen()->selectAll();
    times->take("remove", [&search] { search.call("onDelSignal"); });
    if (search.chosen()->topLevelItemCount() != 0)
        fail("the chosen rows were not removed");
    list->clearSelection();
}

/// In another order in every other round: the first one to free so much pays for the second.
void takeClosing(Times *times, std::unique_ptr<Search> search, std::unique_ptr<Bare> bare,
                 bool bareFirst)
{
    if (bareFirst)
        times->take("close bare", [&bare] { bare.reset(); });
    times->take("close", [&search] { search.reset(); });
    if (!bareFirst)
        times->take("close bare", [&bare] { bare.reset(); });
}

void takeFlat(Times *times, NETWEIR::RtlNetlist *netlist, bool bareFirst)
{
    auto search = std::make_unique<Search>(netlist, Search::Results::Flat);
    auto bare = std::make_unique<Bare>(search->list());
    if (search->rows() != bare->rows())
        fail("the bare list has another number of rows");
    takeCommon(times, search->list(), "");
    takeCommon(times, bare->list(), " bare");
    takeSelecting(times, *search);
    takeClosing(times, std::move(search), std::move(bare), bareFirst);
}

void takeByModule(Times *times, NETWEIR::RtlNetlist *netlist)
{
    const Search search(netlist, Search::Results::ByModule);
    const Bare bare(search.list());
    for (const Shown *shown :
         {static_cast<const Shown *>(&search), static_cast<const Shown *>(&bare)}) {
        QTreeWidget *list = shown->list();
        list->setCurrentItem(list->topLevelItem(0));
        times->take(shown == &search ? "star" : "star bare",
                    [list] { press(list, Qt::Key_Asterisk); });
    }
    times->take("select modules", [&search] { selectAll(search.list()); });
    times->take("add modules", [&search] { search.call("onAddSignal"); });
}

} // namespace

bool measureLimits(NETWEIR::RtlNetlist *netlist)
{
    Times times;
    for (int round = 0; round < Rounds; ++round) {
        takeFlat(&times, netlist, round % 2 == 1);
        takeMoving(&times, netlist);
        takeByModule(&times, netlist);
    }
    constexpr double Quick = 2; // Seconds, for what must not grow with the square of the open rows.
    Table table(
        "Lists of 275,000 results, 1,025,000 rows with those below them; 25,000 can be opened");
    table.add("selecting all, nothing open", times.of("select"), "s");
    table.add("selecting all, everything open", times.of("select open"), "s");
    table.add("the same / bare rows, nothing open",
              times.of("select open") / times.of("select bare"), "x", 3);
    table.add("then removing one row from the selection", times.of("deselect one"), "s", Quick);
    table.add("then selecting up to the last row with Shift", times.of("extend"), "s", Quick);
    table.add("then back to the first one", times.of("extend back"), "s", Quick);
    table.add("closing everything that is selected", times.of("collapse selected"), "s", Quick);
    table.add("then selecting another row", times.of("select one"), "s", Quick);
    table.add("searching again while everything is selected and open", times.of("search again"),
              "s", Quick);
    table.add("opening everything / bare rows", times.ratio("expand"), "x", 2);
    table.add("closing everything / bare rows", times.ratio("collapse"), "x", 2);
    table.add("opening all modules with the asterisk / bare rows", times.ratio("star"), "x", 2);
    table.add("closing the dialog / bare rows", times.ratio("close"), "x", 2);
    table.add("adding the selected results", times.of("add"), "s", 0.5);
    table.add("the same again", times.of("add again"), "s", 0.5);
    table.add("the same with all rows open and selected", times.of("add open"), "s");
    table.add("adding all results and the rows below them", times.of("add all"), "s", 0.5);
    table.add("the same again", times.of("add all again"), "s");
    table.add("adding one result by a double click", times.of("double click"), "s", 0.5);
    table.add("removing the selected rows", times.of("remove"), "s", 0.5);
    table.add("removing all rows", times.of("remove all"), "s", 0.5);
    table.add("selecting all nets and buses of all modules, open", times.of("select modules"), "s",
              Quick);
    table.add("adding them", times.of("add modules"), "s", Quick);
    return table.print();
}
