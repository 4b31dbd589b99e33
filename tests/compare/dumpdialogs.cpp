// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "dumpdialogs.h"

#include "dump.h"
#include "dumpnetlist.h"
#include "dumpsearch.h"
#include "emitted.h"
#include "widgettext.h"

#include <audit/designnames.h>
#include <audit/signalmarks.h>
#include <model/tarncore.h>
#include <probes/signaltree.h>
#include <select/netsearch.h>
#include <select/probedialog.h>
#include <select/rtlnetlisttreeview.h>
#include <select/tarnsignalselectdialog.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegExp>
#include <QTreeWidget>

using TARN::ProbeDialog;
using TARN::SignalItem;
using TARN::TarnSignalSelectDialog;

namespace TarnCompare {

namespace {

template <typename Widget>
Widget *part(const QWidget *window, const char *name)
{
    return window->findChild<Widget *>(QLatin1String(name));
}

QList<QTreeWidgetItem *> rowsOf(const QTreeWidget *tree)
{
    QList<QTreeWidgetItem *> rows;
    for (QTreeWidgetItemIterator row(const_cast<QTreeWidget *>(tree)); *row; ++row)
        rows.append(*row);
    return rows;
}

/// What a user does to the rows of a list.
void touchRows(QTreeWidget *tree, Choice *choice)
{
    const QList<QTreeWidgetItem *> rows = rowsOf(tree);
    if (rows.isEmpty())
        return;
    switch (choice->below(9)) {
    case 0:
        tree->selectAll();
        break;
    case 1:
        tree->expandAll();
        break;
    case 2:
        tree->collapseAll();
        break;
    case 3:
        tree->clearSelection();
        break;
    case 4:
        choice->any(rows)->setExpanded(choice->chance(70));
        break;
    case 5:
        tree->setCurrentItem(choice->any(rows));
        break;
    case 6: {
        // A shift click.
        const QModelIndex first = tree->model()->index(choice->below(tree->topLevelItemCount()), 0);
        const QModelIndex last = tree->model()->index(choice->below(tree->topLevelItemCount()), 0);
        tree->selectionModel()->select({first, last}, QItemSelectionModel::Select);
        break;
    }
    default:
        for (int count = 1 + choice->below(5); count > 0; --count)
            choice->any(rows)->setSelected(choice->chance(80));
    }
}

/// A row that stores a role is another kind of row; so is a copy.
void writeCopies(LongText *text, const QTreeWidget *tree, Choice *choice)
{
    const QList<QTreeWidgetItem *> rows = rowsOf(tree);
    if (rows.isEmpty())
        return;
    const std::unique_ptr<QTreeWidgetItem> copy(choice->any(rows)->clone());
    text->line(QStringLiteral("copy ") + rowText(copy.get()));
    copy->setToolTip(0, QStringLiteral("other"));
    copy->setDisabled(choice->chance(50));
    text->line(QStringLiteral("changed copy ") + rowText(copy.get()));
}

QString namesOf(const QList<SignalItem> &items)
{
    QStringList names;
    for (const SignalItem &item : items)
        names.append(QStringLiteral("%1:%2").arg(item.name).arg(item.members.size()));
    return quoted(names);
}

class SearchSession
{
public:
    SearchSession(Dump *dump, const NumberedNetlist &design, TARN::ProbeType type, Choice *choice)
        : m_dump(dump)
        , m_design(design)
        , m_choice(choice)
        , m_dialog(design.netlist(), type, nullptr)
        , m_results(part<QTreeWidget>(&m_dialog, "treeWidget"))
        , m_chosen(part<QTreeWidget>(&m_dialog, "treeWidgetAddSignal"))
    {
        m_emitted.countAll(m_results);
        m_emitted.countAll(m_chosen);
        if (choice->chance(50))
            m_dialog.show();
    }

    void run(int steps)
    {
        fill();
        search();
        for (int i = 0; i < steps; ++i)
            step();
        if (m_choice->chance(20)) {
            m_dialog.setNetlist(m_choice->chance(50) ? nullptr : m_design.netlist());
            write("another netlist");
        }
    }

private:
    void fill()
    {
        TARN::SearchOptions options;
        const int kind = m_choice->below(3);
        options.usePattern = kind > 0;
        options.patternSyntax = kind == 1 ? QRegExp::WildcardUnix : QRegExp::RegExp;
        const char *buttons[] = {"radioButtonNormal", "radioButtonWildcard",
                                 "radioButtonRegularExpression"};
        part<QRadioButton>(&m_dialog, buttons[kind])->setChecked(true);
        part<QLineEdit>(&m_dialog, "lineEditName")
            ->setText(m_choice->chance(30) ? QString() : anyPattern(m_design, options, m_choice));
        for (const char *box : {"checkBoxCaseSensitive", "checkBoxAdvancedFilter",
                                "checkBoxIncludeSubentries", "checkBoxHierarchyView"})
            part<QCheckBox>(&m_dialog, box)->setChecked(m_choice->chance(50));
        auto *box = part<QComboBox>(&m_dialog, "comboBoxSearchIn");
        auto *modules = dynamic_cast<QTreeWidget *>(box->view());
        const QList<QTreeWidgetItem *> rows = rowsOf(modules);
        if (m_choice->chance(50) && !rows.isEmpty()) {
            modules->setCurrentItem(m_choice->any(rows));
            Q_EMIT box->activated(0);
        }
    }

    void search()
    {
        part<QPushButton>(&m_dialog, "pushButtonSearch")->click();
        write("search");
        LongText copies;
        writeCopies(&copies, m_results, m_choice);
        copies.writeTo(m_dump);
    }

    void step()
    {
        switch (m_choice->below(9)) {
        case 0:
            fill();
            search();
            return;
        case 1:
            m_dialog.onAddSignal();
            break;
        case 2:
            m_dialog.onAddAllSignal();
            break;
        case 3:
            m_dialog.onDelSignal();
            break;
        case 4:
            if (m_choice->chance(20))
                m_dialog.onDelAllSignal();
            break;
        case 5:
            touchRows(m_chosen, m_choice);
            break;
        default:
            touchRows(m_results, m_choice);
        }
        write("step");
    }

    void write(const char *what)
    {
        QApplication::processEvents();
        m_dump->line(QStringLiteral("SEARCH DIALOG %1").arg(QLatin1String(what)));
        LongText text;
        writeWidget(&text, &m_dialog);
        text.writeTo(m_dump);
        m_dump->line(m_emitted.text());
        m_dump->line(QStringLiteral("chosen %1 selected %2 one %3")
                         .arg(namesOf(m_dialog.getSelectedNets()))
                         .arg(m_results->selectedItems().size())
                         .arg(quoted(m_dialog.getOneSelectedNetName())));
    }

    Dump *m_dump;
    const NumberedNetlist &m_design;
    Choice *m_choice;
    Emitted m_emitted;
    TarnSignalSelectDialog m_dialog;
    QTreeWidget *m_results;
    QTreeWidget *m_chosen;
};

class PortSession
{
public:
    PortSession(Dump *dump, const NumberedNetlist &design, const QList<SignalItem> &items,
                TARN::ProbeType type, Choice *choice)
        : m_dump(dump)
        , m_choice(choice)
        , m_names(design.netlist())
    {
        m_marks.setNames(&m_names);
        m_port.signals = items;
        m_dialog = std::make_unique<ProbeDialog>(&m_port, design.netlist(), type, nullptr);
        m_dialog->setMarks(choice->chance(70) ? &m_marks : nullptr);
        m_rows = part<QTreeWidget>(m_dialog.get(), "treeWidget");
        m_emitted.countAll(m_rows);
        m_dialog->show();
    }

    void run(int steps)
    {
        write("opened");
        for (int i = 0; i < steps; ++i) {
            if (m_choice->chance(25))
                m_dialog->onRemove();
            else
                touchRows(m_rows, m_choice);
            write("step");
        }
        m_dialog->accept();
        m_dump->line(QStringLiteral("PORT %1").arg(namesOf(m_port.signals)));
    }

private:
    void write(const char *what)
    {
        QApplication::processEvents();
        m_dump->line(QStringLiteral("PORT DIALOG %1").arg(QLatin1String(what)));
        LongText text;
        writeWidget(&text, m_dialog.get());
        writeCopies(&text, m_rows, m_choice);
        text.writeTo(m_dump);
        m_dump->line(m_emitted.text());
    }

    Dump *m_dump;
    Choice *m_choice;
    TARN::DesignNames m_names;
    TARN::SignalMarks m_marks;
    TARN::ProbeIn m_port;
    Emitted m_emitted;
    std::unique_ptr<ProbeDialog> m_dialog;
    QTreeWidget *m_rows = nullptr;
};

/// The tree of modules, as the box of the search dialog shows it, and single rows of it.
void writeModuleTree(Dump *dump, const NumberedNetlist &design, Choice *choice)
{
    TARN::RtlNetlistTreeView view;
    view.setNetlistData(design.netlist());
    LongText text;
    writeRows(&text, &view);
    for (const QTreeWidgetItem *row : rowsOf(&view))
        text.line(quoted(TARN::RtlNetlistTreeView::pathOf(row)));
    if (!design.nets().isEmpty()) {
        const std::unique_ptr<QTreeWidgetItem> row(view.buildNetItem(choice->any(design.nets())));
        text.line(rowText(row.get()));
    }
    if (!design.buses().isEmpty()) {
        const std::unique_ptr<QTreeWidgetItem> row(
            view.buildNetBusItem(choice->any(design.buses())));
        text.line(rowText(row.get()));
        for (int i = 0; i < row->childCount(); ++i)
            text.line(rowText(row->child(i)));
    }
    text.writeTo(dump);
}

} // namespace

void dumpDialogs(Dump *dump, const NumberedNetlist &design, int steps, Choice *choice)
{
    for (const TARN::ProbeType type : {TARN::ProbeTypeIn, TARN::ProbeTypeOut}) {
        SearchSession(dump, design, type, choice).run(steps);
        TarnSignalSelectDialog source(design.netlist(), type, nullptr);
        part<QPushButton>(&source, "pushButtonSearch")->click();
        source.onAddAllSignal();
        QList<SignalItem> items = source.getSelectedNets().mid(0, 60);
        for (SignalItem &item : items) {
            TARN::removeDisabledMembers(&item);
            if (choice->chance(20))
                item.name = alike(item.name, choice);
        }
        PortSession(dump, design, items, type, choice).run(steps);
    }
    writeModuleTree(dump, design, choice);
}

} // namespace TarnCompare
