// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "handeditor.h"

#include <audit/designnames.h>
#include <audit/replacement.h>
#include <fakeextraction.h>
#include <model/configwriter.h>
#include <netweir/hierachy.h>
#include <netweir/rtlnetlist.h>
#include <probes/initialvalueline.h>
#include <probes/probeportsoptionwidget.h>
#include <probes/signalitem.h>
#include <select/probedialog.h>
#include <select/tarnsignalselectdialog.h>
#include <view/edithistory.h>
#include <view/tarnoptionwidget.h>
#include <view/tarnview.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QRegExp>
#include <QStackedWidget>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace TarnTest {

namespace {

using Tool::EditStep;

template <typename Widget>
Widget *child(const QWidget *widget, const char *name)
{
    auto *found = widget->findChild<Widget *>(QLatin1String(name));
    if (!found)
        qFatal("there is no %s", name);
    return found;
}

TARN::SignalItem itemOf(const QTreeWidgetItem *row)
{
    return row->data(0, Qt::UserRole).value<TARN::SignalItem>();
}

QTreeWidget *treeOf(const QWidget *page, TARN::ProbeType type)
{
    return child<QTreeWidget>(page, type == TARN::ProbeTypeOut ? "treeProbeOut" : "treeProbeIn");
}

/// The row of what is called so, members included. Null when there is none.
QTreeWidgetItem *rowNamed(const QTreeWidget *tree, const QString &name)
{
    for (QTreeWidgetItemIterator row(const_cast<QTreeWidget *>(tree)); *row; ++row) {
        if ((*row)->text(0) == name)
            return *row;
    }
    return nullptr;
}

} // namespace

HandEditor::HandEditor(const QString &filePath, const MakeNetlist &makeNetlist)
    : m_container(std::make_unique<QWidget>())
    , m_view(new TARN::TarnView(m_container.get()))
{
    FakeExtraction::instance().build = makeNetlist;
    auto *layout = new QVBoxLayout(m_container.get());
    layout->addWidget(m_view);
    m_container->resize(m_view->size());
    m_container->show();
    QString error;
    if (!m_view->open(filePath, QString(), &error))
        qFatal("cannot open %s: %s", qPrintable(filePath), qPrintable(error));
}

HandEditor::~HandEditor() = default;

QList<TARN::TarnOptionWidget *> HandEditor::pages() const
{
    const auto *stack = child<QStackedWidget>(m_view, "stackedWidget");
    QList<TARN::TarnOptionWidget *> all;
    for (int i = 0; i < stack->count(); ++i)
        all.append(qobject_cast<TARN::TarnOptionWidget *>(stack->widget(i)));
    return all;
}

QWidget *HandEditor::page(int core) const
{
    for (TARN::TarnOptionWidget *page : pages()) {
        if (page->core()->index == core)
            return page;
    }
    qFatal("there is no core %d", core);
}

// Windows

void HandEditor::meetingWindows(const std::function<void()> &action)
{
    ++m_listening;
    QTimer::singleShot(0, m_container.get(), [this] { meetWindow(); });
    action();
    --m_listening;
}

void HandEditor::meetWindow()
{
    if (m_listening == 0)
        return;
    // First, because a window may open another one.
    QTimer::singleShot(0, m_container.get(), [this] { meetWindow(); });
    QWidget *window = QApplication::activePopupWidget();
    if (!window)
        window = QApplication::activeModalWidget();
    if (!window || window->property("met").toBool())
        return;
    window->setProperty("met", true);
    meet(window);
}

void HandEditor::meet(QWidget *window)
{
    if (auto *menu = qobject_cast<QMenu *>(window)) {
        for (QAction *action : menu->actions()) {
            if (action->text() != m_menuChoice)
                continue;
            menu->setActiveAction(action);
            QTest::keyClick(menu, Qt::Key_Return);
            return;
        }
    } else if (auto *box = qobject_cast<QMessageBox *>(window)) {
        if (box->icon() != QMessageBox::Question)
            m_boxes.append(box->text());
        box->button(QMessageBox::Ok)->click();
    } else if (auto *port = qobject_cast<TARN::ProbeDialog *>(window)) {
        m_onPort(port);
    } else if (auto *search = qobject_cast<TARN::TarnSignalSelectDialog *>(window)) {
        m_onSearch(search);
    }
}

// Steps

QStringList HandEditor::execute(const EditStep &step)
{
    m_boxes.clear();
    m_view->changeTarnWidget(step.target.core); // Lines of hidden pages take no values.
    switch (step.kind) {
    case EditStep::AddCore:
        chooseFromMenu(-1, QStringLiteral("Add"));
        break;
    case EditStep::AddIn:
        click(page(step.target.core), "btnProbeInAdd");
        break;
    case EditStep::AddOut:
        click(page(step.target.core), "btnProbeOutAdd");
        break;
    case EditStep::Signals:
        editPort(step, [this, &step](QDialog *dialog) {
            m_onSearch = [this, &step](QDialog *search) {
                for (const QString &name : step.names) {
                    this->search(search, name, step.wildcard);
                    step.wildcard ? choose(search, QString()) : choose(search, name);
                }
                search->accept();
            };
            child<QAbstractButton>(dialog, "btnAdd")->click();
        });
        break;
    case EditStep::Value:
        typeValue(step);
        break;
    case EditStep::Clock:
        setClock(step);
        break;
    case EditStep::Remove:
        removePort(step);
        break;
    case EditStep::Replace:
    case EditStep::ReplacePrefix:
        replace(step);
        break;
    }
    return m_boxes;
}

void HandEditor::chooseFromMenu(int row, const QString &text)
{
    auto *tree = child<QTreeWidget>(m_view, "treeWidget");
    QPoint position(5, tree->viewport()->height() - 2);
    if (row >= 0) {
        tree->scrollToItem(tree->topLevelItem(row));
        position = tree->visualItemRect(tree->topLevelItem(row)).center();
    }
    m_menuChoice = text;
    meetingWindows([&] { Q_EMIT tree->customContextMenuRequested(position); });
}

void HandEditor::click(QWidget *page, const char *button)
{
    meetingWindows([&] { child<QPushButton>(page, button)->click(); });
}

void HandEditor::removePort(const EditStep &step)
{
    if (step.target.port < 0) {
        QWidget *going = page(step.target.core);
        const int row = pages().indexOf(static_cast<TARN::TarnOptionWidget *>(going));
        chooseFromMenu(row, QStringLiteral("Remove"));
        return;
    }
    if (!step.names.isEmpty()) {
        editPort(step, [&step](QDialog *dialog) {
            auto *list = child<QTreeWidget>(dialog, "treeWidget");
            for (int i = 0; i < list->topLevelItemCount(); ++i) {
                QTreeWidgetItem *row = list->topLevelItem(i);
                row->setSelected(step.names.contains(itemOf(row).name));
            }
            child<QAbstractButton>(dialog, "btnRemove")->click();
        });
        return;
    }
    const bool out = step.target.type == TARN::ProbeTypeOut;
    QTreeWidget *tree = treeOf(page(step.target.core), step.target.type);
    tree->clearSelection();
    tree->topLevelItem(step.target.port)->setSelected(true);
    click(page(step.target.core), out ? "btnProbeOutRemove" : "btnProbeInRemove");
}

void HandEditor::editPort(const EditStep &step, const std::function<void(QDialog *)> &edit)
{
    auto *ports = page(step.target.core)->findChild<TARN::ProbePortsOptionWidget *>();
    QTreeWidgetItem *row = treeOf(ports, step.target.type)->topLevelItem(step.target.port);
    m_onPort = [&edit](QDialog *dialog) {
        edit(dialog);
        dialog->accept();
        if (dialog->isVisible())
            dialog->reject();
    };
    meetingWindows([&] {
        if (step.target.type == TARN::ProbeTypeOut)
            ports->editProbeOut(row, 0);
        else
            ports->editProbeIn(row, 0);
    });
}

void HandEditor::search(QDialog *dialog, const QString &name, bool wildcard)
{
    // A bit of a bus is found below its bus.
    QString found = QRegExp::escape(name);
    const int bracket = name.lastIndexOf(QLatin1Char('['));
    if (bracket >= 0 && !name.midRef(bracket).contains(QLatin1Char(':')))
        found += QLatin1Char('|') + QRegExp::escape(name.left(bracket)) +
                 QLatin1String("\\[-?\\d+:-?\\d+\\]");
    child<QLineEdit>(dialog, "lineEditName")->setText(wildcard ? name : found);
    child<QRadioButton>(dialog, wildcard ? "radioButtonWildcard" : "radioButtonRegularExpression")
        ->setChecked(true);
    child<QCheckBox>(dialog, "checkBoxCaseSensitive")->setChecked(!wildcard);
    child<QPushButton>(dialog, "pushButtonSearch")->click();
}

/// Takes over the row called @p name, or all rows that can be chosen.
void HandEditor::choose(QDialog *dialog, const QString &name)
{
    auto *results = child<QTreeWidget>(dialog, "treeWidget");
    results->clearSelection();
    if (QTreeWidgetItem *row = rowNamed(results, name)) {
        if (!row->flags().testFlag(Qt::ItemIsSelectable)) {
            chooseUsableBits(dialog);
            return;
        }
        row->setSelected(true);
    }
    for (int i = 0; name.isEmpty() && i < results->topLevelItemCount(); ++i)
        results->topLevelItem(i)->setSelected(true);
    child<QPushButton>(dialog, "btnAdd")->click();
}

/// The only result is a bus that cannot be chosen as a whole.
void HandEditor::chooseUsableBits(QDialog *dialog)
{
    child<QPushButton>(dialog, "btnAddAll")->click();
    auto *chosen = child<QTreeWidget>(dialog, "treeWidgetAddSignal");
    chosen->clearSelection();
    for (int i = 0; i < chosen->topLevelItemCount(); ++i)
        chosen->topLevelItem(i)->setSelected(itemOf(chosen->topLevelItem(i)).members.isEmpty());
    child<QPushButton>(dialog, "btnDel")->click();
}

void HandEditor::typeValue(const EditStep &step)
{
    auto *values = child<QTreeWidget>(page(step.target.core), "treeValue");
    auto *line = qobject_cast<TARN::InitialValueLine *>(
        values->itemWidget(values->topLevelItem(step.target.port), 0));
    line->setCursorPosition(2);
    QTest::keyClicks(line, step.names.first().mid(2));
    meetingWindows([&] { line->onTextChange(); });
}

void HandEditor::setClock(const EditStep &step)
{
    const QString name = step.names.first();
    const bool none = name == QLatin1String("none");
    QWidget *core = page(step.target.core);
    auto *box = child<QCheckBox>(core, "checkUserClock");
    if (none) {
        child<QLineEdit>(core, "lineEditUserClock")->setText(QString());
    } else {
        if (!box->isChecked())
            box->click();
        m_onSearch = [this, &name](QDialog *dialog) {
            search(dialog, name, false);
            choose(dialog, name);
            dialog->accept();
        };
        click(core, "btnUserClock");
    }
    if (none && box->isChecked())
        box->click();
}

void HandEditor::replace(const EditStep &step)
{
    const TARN::DesignNames names(pages().first()->netlist());
    TARN::ConfigSnapshot target = m_view->history()->current();
    const auto function = step.kind == EditStep::Replace ? TARN::replaceName : TARN::replacePrefix;
    if (function(&target, step.names.first(), step.names.last(), names) > 0)
        m_view->history()->apply(target, QStringLiteral("Replace"));
    else
        m_boxes.append(QStringLiteral("Support 256 signals at most."));
}

// Saving

QByteArray HandEditor::storedContent()
{
    QList<TARN::TarnCore *> cores;
    for (TARN::TarnOptionWidget *page : pages()) {
        page->save();
        page->core()->module = page->netlist()->top()->instName();
        cores.append(page->core());
    }
    return TARN::ConfigWriter(cores).content();
}

bool HandEditor::save()
{
    bool saved = false;
    meetingWindows([&] { saved = m_view->save(); });
    return saved;
}

} // namespace TarnTest
