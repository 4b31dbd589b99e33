// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "viewtest.h"

#include <support/files.h>
#include <support/modeltext.h>
#include <support/setting.h>

#include <model/configcheck.h>
#include <model/configsnapshot.h>
#include <model/configwriter.h>
#include <model/tarnconfig.h>
#include <model/tarncore.h>
#include <netweir/netlistbuilder.h>
#include <probes/initialvalueline.h>
#include <probes/probeportsoptionwidget.h>
#include <probes/signalsamples.h>
#include <probes/signaltree.h>
#include <view/edithistory.h>
#include <view/tarnoptionwidget.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>

#include <functional>
#include <memory>
#include <vector>

using TARN::ConfigSnapshot;
using TARN::EditHistory;
using TARN::InitialValueLine;
using TARN::SignalItem;
using TARN::TarnCore;
using TARN::TarnOptionWidget;
using TARN::TarnView;
using TarnTest::bus;
using TarnTest::ModalScript;
using TarnTest::modelText;
using TarnTest::net;
using TarnTest::readFile;
using TarnTest::ShownView;
using TarnTest::writeFile;

namespace {

using CoreList = std::vector<std::unique_ptr<TarnCore>>;

template <typename Widget>
Widget *child(const QWidget *widget, const char *name)
{
    auto *found = widget->findChild<Widget *>(QLatin1String(name));
    if (!found)
        qFatal("there is no %s", name);
    return found;
}

QTreeWidget *tree(const QWidget *page, const char *name)
{
    return child<QTreeWidget>(page, name);
}

InitialValueLine *lineOf(const QWidget *page, int port)
{
    QTreeWidget *values = tree(page, "treeValue");
    return qobject_cast<InitialValueLine *>(values->itemWidget(values->topLevelItem(port), 0));
}

QLineEdit *clockOf(const QWidget *page)
{
    return child<QLineEdit>(page, "lineEditUserClock");
}

/// Rows, values, bits and clock of a page.
QString rowsOf(const TarnOptionWidget *page)
{
    QString rows = modelText(tree(page, "treeProbeIn")->model()) +
                   modelText(tree(page, "treeProbeOut")->model());
    QTreeWidget *values = tree(page, "treeValue");
    for (int i = 0; i < values->topLevelItemCount(); ++i) {
        const InitialValueLine *line = lineOf(page, i);
        rows += QStringLiteral("%1 %2 %3:")
                    .arg(line->index())
                    .arg(line->isEnabled())
                    .arg(line->displayText());
        const QTreeWidgetItem *port = values->topLevelItem(i);
        for (int k = 0; k < port->childCount(); ++k) {
            auto *label = qobject_cast<QLabel *>(values->itemWidget(port->child(k), 0));
            rows += QLatin1Char(' ') + (label ? label->text() : QStringLiteral("?"));
        }
        rows += QLatin1Char('\n');
    }
    const auto *check = child<QCheckBox>(page, "checkUserClock");
    const QLineEdit *clock = clockOf(page);
    return rows + QStringLiteral("clock %1 %2 %3\n")
                      .arg(check->isChecked())
                      .arg(clock->isEnabled())
                      .arg(clock->text());
}

/// The core of @p page as a save would write it, typed text included. The module is left out: each
/// save sets it.
std::unique_ptr<TarnCore> shownCore(const TarnOptionWidget *page)
{
    const TarnCore *core = page->core();
    auto copy = TARN::newCore(core->index, *TARN::snapshotOf(*core));
    copy->module.clear();
    copy->userClock = clockOf(page)->text();
    copy->syncUserClock = child<QCheckBox>(page, "checkUserClock")->isChecked();
    for (int i = 0; i < copy->probeOuts.size(); ++i)
        copy->probeOuts.at(i)->initialValue = lineOf(page, i)->displayText();
    return copy;
}

QList<TarnCore *> pointersTo(const CoreList &cores)
{
    QList<TarnCore *> pointers;
    for (const auto &core : cores)
        pointers.append(core.get());
    return pointers;
}

QByteArray bytesOf(const CoreList &cores)
{
    return TARN::ConfigWriter(pointersTo(cores)).content();
}

/// What the user sees and what a save would write.
struct State
{
    QString rows;
    QByteArray bytes;
};

bool operator==(const State &left, const State &right)
{
    return left.rows == right.rows && left.bytes == right.bytes;
}

/// Prints the first line that differs.
char *toString(const State &state)
{
    return QTest::toString(state.rows + QString::fromUtf8(state.bytes));
}

} // namespace

class TestEditHistory : public TarnTest::ViewTest
{
    Q_OBJECT

private:
    TarnView *view() const { return m_shown.view; }
    EditHistory *history() const { return m_shown.view->history(); }

    /// One edit as the user makes it.
    struct Edit
    {
        QByteArray name;
        QString step;
        /// Core, tree and row that undo shows, and redo.
        QString undone;
        QString redone;
        std::function<void(TestEditHistory *)> make;
    };
    static const QVector<Edit> &edits();
    static void addEditRows();
    QString place() const;

    TarnOptionWidget *page() const { return currentPageOf(m_shown.view); }
    /// The page of a core, made current.
    TarnOptionWidget *page(int core) const;
    CoreList shownCores() const;
    State state() const;
    /// What new pages would show of the same cores.
    State freshState() const;
    int steps() const { return history()->stack()->index(); }
    /// Empty when titles and mark agree with @p modified.
    QString titleFaults(bool modified) const;

    // Edits as the user makes them.
    void click(const char *button) const { child<QAbstractButton>(page(), button)->click(); }
    void activate() const;
    void focus(QWidget *widget) const;
    void addCore();
    void removeCore(int row, const std::function<void()> &behindTheQuestion = {});
    void removePorts(const QByteArray &kind, const QList<int> &rows) const;
    /// Changes the rows in the dialog of the port and accepts it.
    void editPort(const QByteArray &kind, int port,
                  const std::function<void(QTreeWidget *)> &change);
    /// Types digits behind the prefix, and leaves the line unless @p apply is false.
    void typeValue(int port, const QString &digits, bool apply = true) const;
    void typeClock(const QString &name, bool apply = true) const;
    void chooseClock();
    void reload(const QByteArray &content) const;
    /// The saved file with other signals and values.
    QByteArray otherContent() const;

    ShownView m_shown;

    /// Random edits with a list of what should be there after each step.
    struct Reference
    {
        QVector<State> states;
        int index = 0;
        int clean = 0; ///< -1: nowhere.
        bool modified = false;

        void push(const State &state);
    };
    Reference m_reference;
    QRandomGenerator m_random;
    bool m_typing = false; ///< Text may be typed and not applied.
    int m_changes = 0;     ///< How often the history told of a change.

    int random(int count) { return int(m_random.bounded(count)); }
    SignalItem randomSignal();
    QString randomDigits(int port);
    void expectSteps(const State &before, bool maybeMore = false);
    void randomEdit();
    void randomCores();
    void randomPorts();
    void randomDialog();
    void randomTyping(bool apply);
    void randomUndo(bool redo);
    bool hasTyping() const;
    void expectTyping();
    void dealTypedBits();
    void randomSave();
    void randomReload();
    QString faults() const;

private Q_SLOTS:
    void init();

    void actionsBelongToTheView();
    void everyEditIsOneStep_data();
    void everyEditIsOneStep();
    void everyEditShowsItsPlace_data();
    void everyEditShowsItsPlace();
    void markFollowsTheSavedState();
    void savedStateIsLostWithItsStep();
    void fileWithoutCoresIsNeverClean();
    void reloadOfAnUnmodifiedViewIsClean();
    void reloadOfAModifiedViewIsNotClean();
    void removalIsUndoneWithoutAQuestion();
    void stepsBehindTheQuestionOfARemoval();
    void nothingIsRecordedWithoutAChange();
    void typedTextIsAStepBeforeUndo();
    void typedTextIsAStepBeforeASave();
    void committedTypingCountsAsApplied();
    void hiddenTypedTextIsKept();
    void lineWithTypingGoesFirst_data();
    void lineWithTypingGoesFirst();
    void typingIsUndoneWhereTheLineIgnoresKeys();
    void keysReachTheView_data();
    void keysReachTheView();
    void focusStaysInTheView();
    void dialogOfAPortThatGoesIsClosed();
    void programmedEditIsOneStep();
    void openingAgainForgetsTheSteps();
    void oldestStepGoesFirst();
    void stepsShareWhatTheyDoNotChange();
    void randomEditsAreUndoneAndRedone();
};

void TestEditHistory::init()
{
    ViewTest::init();
    TarnCore first(0);
    for (int i = 0; i < 3; ++i) {
        first.addProbeIn(i);
        first.addProbeOut(i);
        first.probeIns.last()->signals = {net(QStringLiteral("top/in%1").arg(i))};
        first.probeOuts.last()->signals = {bus(QStringLiteral("top/out%1").arg(i), 8)};
        first.probeOuts.last()->initialValue = QStringLiteral("0x1%1").arg(i);
    }
    TarnCore second(1);
    second.addProbeIn(0);
    second.probeIns.last()->signals = {bus(QStringLiteral("top/bus"), 4)};
    second.addProbeOut(0);
    second.probeOuts.last()->signals = {net(QStringLiteral("top/driven"))};
    second.probeOuts.last()->initialValue = QStringLiteral("0x1");
    first.syncUserClock = true;
    first.userClock = QStringLiteral("top/clk");
    extraction().build = [] {
        NETWEIR::NetlistBuilder builder(QStringLiteral("top"));
        for (const char *name : {"clk", "clock"})
            builder.addNet(builder.top(), QLatin1String(name));
        return builder.take();
    };
    if (!TARN::writeTARNConfigToXml({&first, &second}, path("a.tarn")))
        qFatal("cannot write");
    m_shown = show(path("a.tarn"));
    activate();
}

/// Modal windows leave the view's window inactive.
void TestEditHistory::activate() const
{
    QCoreApplication::processEvents(); // One of them may tell that the modal window was left.
    QApplication::setActiveWindow(m_shown.container);
}

TarnOptionWidget *TestEditHistory::page(int core) const
{
    view()->changeTarnWidget(core);
    return page();
}

CoreList TestEditHistory::shownCores() const
{
    CoreList cores;
    for (const TarnOptionWidget *page : pagesOf(view()))
        cores.push_back(shownCore(page));
    return cores;
}

State TestEditHistory::state() const
{
    State state;
    state.rows = treeTextOf(view());
    for (const TarnOptionWidget *page : pagesOf(view()))
        state.rows += rowsOf(page);
    state.bytes = bytesOf(shownCores());
    return state;
}

State TestEditHistory::freshState() const
{
    State state;
    state.rows = treeTextOf(view());
    CoreList fresh;
    for (const std::unique_ptr<TarnCore> &core : shownCores()) {
        const TarnOptionWidget page(core.get(), nullptr, nullptr);
        state.rows += rowsOf(&page);
        fresh.push_back(shownCore(&page));
    }
    state.bytes = bytesOf(fresh);
    return state;
}

QString TestEditHistory::titleFaults(bool modified) const
{
    const QString title = QStringLiteral("a.tarn") + (modified ? " *" : "");
    QStringList faults;
    if (view()->isModified() != modified)
        faults.append(QStringLiteral("modified %1").arg(view()->isModified()));
    if (view()->windowTitle() != title)
        faults.append(QStringLiteral("title ") + view()->windowTitle());
    if (view()->shortTitle() != title)
        faults.append(QStringLiteral("short title ") + view()->shortTitle());
    const QList<TarnOptionWidget *> pages = pagesOf(view());
    const QTreeWidget *cores = treeOf(view());
    const int current = cores->indexOfTopLevelItem(cores->currentItem());
    if (current < 0 || pages.value(current) != page())
        faults.append(QStringLiteral("current core %1").arg(current));
    if (child<QDockWidget>(view(), "dockWidget_2")->windowTitle() !=
        QStringLiteral("tarn_%1").arg(page()->core()->index))
        faults.append(QStringLiteral("title of the page"));
    if (cores->topLevelItemCount() != pages.size())
        faults.append(QStringLiteral("%1 items").arg(cores->topLevelItemCount()));
    return faults.join(QStringLiteral("; "));
}

// Edits

void TestEditHistory::focus(QWidget *widget) const
{
    if (!m_shown.container->isActiveWindow())
        activate();
    widget->setFocus();
    if (!widget->hasFocus())
        qFatal("%s does not get the focus", qPrintable(widget->objectName()));
}

void TestEditHistory::addCore()
{
    script().expectMenu({"Add", "-Remove"}, "Add");
    openMenu(view(), -1);
    activate();
}

void TestEditHistory::removeCore(int row, const std::function<void()> &behindTheQuestion)
{
    const auto meanwhile = [behindTheQuestion](QMessageBox *) {
        if (behindTheQuestion)
            behindTheQuestion();
    };
    script().expectMenu({"Add", "Remove"}, "Remove");
    script().expectBox({QMessageBox::Question, "Remove TARn",
                        QString("Do you want to remove TARN %1 ?").arg(row),
                        QMessageBox::Ok | QMessageBox::Cancel, QString()},
                       QMessageBox::Ok, meanwhile);
    openMenu(view(), row);
    activate();
}

void TestEditHistory::removePorts(const QByteArray &kind, const QList<int> &rows) const
{
    QTreeWidget *ports = tree(page(), "treeProbe" + kind);
    ports->clearSelection();
    for (int row : rows)
        ports->topLevelItem(row)->setSelected(true);
    click("btnProbe" + kind + "Remove");
}

void TestEditHistory::editPort(const QByteArray &kind, int port,
                               const std::function<void(QTreeWidget *)> &change)
{
    script().expectDialog("TARN::ProbeDialog", QString("Probe %1 Port").arg(QString(kind)),
                          [change](QDialog *dialog) {
                              change(child<QTreeWidget>(dialog, "treeWidget"));
                              dialog->accept();
                          });
    QTreeWidget *ports = tree(page(), "treeProbe" + kind);
    Q_EMIT ports->itemDoubleClicked(ports->topLevelItem(port), 0);
    activate();
}

void TestEditHistory::typeValue(int port, const QString &digits, bool apply) const
{
    InitialValueLine *line = lineOf(page(), port);
    if (apply)
        focus(line);
    line->setCursorPosition(2);
    QTest::keyClicks(line, digits);
    if (apply)
        focus(tree(page(), "treeProbeIn"));
}

void TestEditHistory::typeClock(const QString &name, bool apply) const
{
    QLineEdit *clock = clockOf(page());
    if (apply)
        focus(clock);
    clock->selectAll();
    QTest::keyClicks(clock, name);
    if (apply)
        QTest::keyClick(clock, Qt::Key_Return);
}

void TestEditHistory::chooseClock()
{
    script().expectDialog("TARN::TarnSignalSelectDialog", "Search Nets", [](QDialog *dialog) {
        child<QLineEdit>(dialog, "lineEditName")->setText(QStringLiteral("clock"));
        child<QPushButton>(dialog, "pushButtonSearch")->click();
        child<QPushButton>(dialog, "btnAddAll")->click();
        dialog->accept();
    });
    click("btnUserClock");
    activate();
}

void TestEditHistory::reload(const QByteArray &content) const
{
    writeFile(path("a.tarn"), content);
    view()->checkForReload();
    clickBanner(view(), "btnA");
}

QByteArray TestEditHistory::otherContent() const
{
    QByteArray content = readFile(path("a.tarn"));
    return content.replace("top/in1", "top/other").replace("0x12", "0xFF");
}

const QVector<TestEditHistory::Edit> &TestEditHistory::edits()
{
    using Test = TestEditHistory;
    static const QVector<Edit> all = {
        {"core added", "Add Core", "tarn_1 ", "tarn_2 ", [](Test *t) { t->addCore(); }},
        {"core removed", "Remove Core", "tarn_0 ", "tarn_0 ", [](Test *t) { t->removeCore(0); }},
        {"last core removed", "Remove Core", "tarn_1 ", "tarn_0 ",
         [](Test *t) { t->removeCore(1); }},
        {"Probe In added", "Add Port", "tarn_0 treeProbeIn 2", "tarn_0 treeProbeIn 3",
         [](Test *t) { t->click("btnProbeInAdd"); }},
        {"Probe Out added", "Add Port", "tarn_0 treeProbeOut 2", "tarn_0 treeProbeOut 3",
         [](Test *t) { t->click("btnProbeOutAdd"); }},
        {"Probe In removed", "Remove Port", "tarn_0 treeProbeIn 1", "tarn_0 treeProbeIn 1",
         [](Test *t) { t->removePorts("In", {1}); }},
        {"Probe Outs removed", "Remove Ports", "tarn_0 treeProbeOut 0", "tarn_0 treeProbeOut 0",
         [](Test *t) {
             t->removePorts("Out", {0, 2});
         }},
        {"all Probe Ins removed", "Remove Ports", "tarn_0 treeProbeIn 0", "tarn_0 ",
         [](Test *t) {
             t->removePorts("In", {0, 1, 2});
         }},
        {"signals of a Probe In", "Change Signals", "tarn_0 treeProbeIn 1/0",
         "tarn_0 treeProbeIn 1/0",
         [](Test *t) {
             t->editPort("In", 1, [](QTreeWidget *list) {
                 delete list->takeTopLevelItem(0);
                 TARN::signal2TreeItem(list, bus("top/d", 4), 0);
             });
         }},
        {"signal appended to a Probe Out", "Change Signals", "tarn_0 treeProbeOut 2",
         "tarn_0 treeProbeOut 2/1",
         [](Test *t) {
             t->editPort("Out", 2,
                         [](QTreeWidget *list) { TARN::signal2TreeItem(list, net("top/e"), 0); });
         }},
        {"no signals left", "Change Signals", "tarn_0 treeProbeOut 0/0", "tarn_0 treeProbeOut 0",
         [](Test *t) { t->editPort("Out", 0, [](QTreeWidget *list) { list->clear(); }); }},
        {"value typed", "Change Initial Value", "tarn_0 treeProbeOut 1", "tarn_0 treeProbeOut 1",
         [](Test *t) { t->typeValue(1, "A5"); }},
        {"clock switched off", "Change User Clock", "tarn_0 lineEditUserClock",
         "tarn_0 checkUserClock", [](Test *t) { t->click("checkUserClock"); }},
        {"clock typed", "Change User Clock", "tarn_0 lineEditUserClock", "tarn_0 lineEditUserClock",
         [](Test *t) { t->typeClock("top/other"); }},
        {"clock chosen", "Change User Clock", "tarn_0 lineEditUserClock",
         "tarn_0 lineEditUserClock", [](Test *t) { t->chooseClock(); }},
        {"file reloaded", "Reload File", "tarn_0 treeProbeIn 1/0", "tarn_0 treeProbeIn 1/0",
         [](Test *t) { t->reload(t->otherContent()); }},
        {"file without cores reloaded", "Reload File", "tarn_0 treeProbeIn 0", "tarn_0 ",
         [](Test *t) { t->reload(readFile(t->writeEmptyConfig("empty.tarn"))); }},
    };
    return all;
}

void TestEditHistory::addEditRows()
{
    QTest::addColumn<int>("edit");
    for (int i = 0; i < edits().size(); ++i)
        QTest::newRow(edits().at(i).name) << i;
}

/// The current core, and the row or widget that has the focus on its page.
QString TestEditHistory::place() const
{
    QString place = treeOf(view())->currentItem()->text(0) + QLatin1Char(' ');
    QWidget *focus = QApplication::focusWidget();
    if (!focus || !page()->isAncestorOf(focus) || focus->objectName().startsWith("qt_"))
        return place;
    place += focus->objectName();
    if (auto *rows = qobject_cast<QTreeWidget *>(focus)) {
        QTreeWidgetItem *row = rows->currentItem();
        place += QLatin1Char(' ');
        if (row->parent())
            place += QString::number(rows->indexOfTopLevelItem(row->parent())) + QLatin1Char('/');
        place += QString::number(row->parent() ? row->parent()->indexOfChild(row)
                                               : rows->indexOfTopLevelItem(row));
    }
    return place;
}

void TestEditHistory::actionsBelongToTheView()
{
    QAction *undo = history()->undoAction();
    QAction *redo = history()->redoAction();
    QCOMPARE(view()->actions().mid(0, 2), (QList<QAction *>{undo, redo}));
    QCOMPARE(undo->text(), QString("&Undo"));
    QCOMPARE(redo->text(), QString("&Redo"));
    QVERIFY(!undo->isEnabled() && !redo->isEnabled());
    QVERIFY(undo->shortcuts().contains(QKeySequence("Ctrl+Z")));
    QVERIFY(redo->shortcuts().contains(QKeySequence("Ctrl+Shift+Z")));
    for (const QKeySequence &key : QKeySequence::keyBindings(QKeySequence::Redo))
        QVERIFY(redo->shortcuts().contains(key));
    QCOMPARE(undo->shortcutContext(), Qt::WidgetWithChildrenShortcut);

    click("btnProbeInAdd");
    QCOMPARE(undo->text(), QString("&Undo Add Port"));
    QVERIFY(undo->isEnabled() && !redo->isEnabled());
    undo->trigger();
    QCOMPARE(undo->text(), QString("&Undo"));
    QCOMPARE(redo->text(), QString("&Redo Add Port"));
    QVERIFY(!undo->isEnabled() && redo->isEnabled());
    redo->trigger();
    QVERIFY(undo->isEnabled() && !redo->isEnabled());
}

void TestEditHistory::everyEditIsOneStep_data()
{
    addEditRows();
}

void TestEditHistory::everyEditIsOneStep()
{
    QFETCH(int, edit);
    const State before = state();
    QSignalSpy changed(history(), &EditHistory::changed);
    edits().at(edit).make(this);
    QCOMPARE(history()->stack()->count(), 1);
    QCOMPARE(history()->stack()->undoText(), edits().at(edit).step);
    QCOMPARE(changed.count(), 1);
    const State after = state();
    QVERIFY(!(after == before));
    QCOMPARE(after, freshState());
    const bool reloaded = !view()->isModified();

    history()->undo();
    QCOMPARE(state(), before);
    QCOMPARE(changed.count(), 2);
    const bool cleanBefore = edits().at(edit).step != "Reload File";
    QCOMPARE(titleFaults(!cleanBefore), QString());

    history()->redo();
    QCOMPARE(state(), after);
    QCOMPARE(changed.count(), 3);
    QCOMPARE(titleFaults(!reloaded), QString());
    QCOMPARE(history()->stack()->count(), 1);

    // The pages work on: the next edit is another step.
    page(0);
    click("btnProbeInAdd");
    const State later = state();
    QCOMPARE(history()->stack()->count(), 2);
    history()->undo();
    QCOMPARE(state(), after);
    history()->undo();
    QCOMPARE(state(), before);
    history()->redo();
    history()->redo();
    QCOMPARE(state(), later);
    QCOMPARE(later, freshState());
}

void TestEditHistory::everyEditShowsItsPlace_data()
{
    addEditRows();
}

void TestEditHistory::everyEditShowsItsPlace()
{
    QFETCH(int, edit);
    edits().at(edit).make(this);
    for (int i = 0; i < 2; ++i) {
        page(1);
        treeOf(view())->setFocus();
        history()->undo();
        QCOMPARE(place(), edits().at(edit).undone);
        page(1);
        treeOf(view())->setFocus();
        history()->redo();
        QCOMPARE(place(), edits().at(edit).redone);
    }
}

// The mark

void TestEditHistory::markFollowsTheSavedState()
{
    QSignalSpy status(view(), &TarnView::modificationStatusChanged);
    const auto told = [&] {
        QList<bool> values;
        for (const QList<QVariant> &arguments : qAsConst(status))
            values.append(arguments.first().toBool());
        status.clear();
        return values;
    };
    click("btnProbeInAdd");
    QCOMPARE(told(), QList<bool>{true});
    history()->undo();
    QCOMPARE(told(), QList<bool>{false});
    QCOMPARE(titleFaults(false), QString());
    history()->redo();
    QCOMPARE(told(), QList<bool>{true});

    QVERIFY(view()->save());
    QCOMPARE(told(), QList<bool>{false});
    QCOMPARE(titleFaults(false), QString());
    click("btnProbeOutAdd");
    history()->undo();
    QCOMPARE(titleFaults(false), QString());
    history()->undo();
    QCOMPARE(titleFaults(true), QString());
    QCOMPARE(told(), (QList<bool>{true, false, true}));
    history()->redo();
    QCOMPARE(told(), QList<bool>{false});
    QCOMPARE(titleFaults(false), QString());

    // A key that completes no edit marks as well, until a step leads to the saved state.
    QTest::keyClick(lineOf(page(), 0), Qt::Key_End);
    QTest::keyClick(lineOf(page(), 0), Qt::Key_Left);
    QCOMPARE(titleFaults(true), QString());
    QCOMPARE(told(), QList<bool>{true});
    history()->undo();
    QCOMPARE(told(), QList<bool>());
    history()->redo();
    QCOMPARE(told(), QList<bool>{false});
}

void TestEditHistory::savedStateIsLostWithItsStep()
{
    click("btnProbeInAdd");
    QVERIFY(view()->save());
    history()->undo();
    click("btnProbeOutAdd");
    history()->undo();
    QCOMPARE(titleFaults(true), QString());
    history()->redo();
    QCOMPARE(titleFaults(true), QString());
    QVERIFY(view()->save());
    QCOMPARE(titleFaults(false), QString());
}

void TestEditHistory::fileWithoutCoresIsNeverClean()
{
    m_shown = show(writeEmptyConfig("a.tarn"));
    QVERIFY(view()->isModified());
    QCOMPARE(history()->stack()->count(), 0);
    click("btnProbeInAdd");
    history()->undo();
    // The first edit found the mark set: it stays in the short title alone.
    QVERIFY(view()->isModified());
    QCOMPARE(view()->windowTitle(), QString("a.tarn"));
    QCOMPARE(view()->shortTitle(), QString("a.tarn *"));
}

void TestEditHistory::reloadOfAnUnmodifiedViewIsClean()
{
    const State before = state();
    reload(otherContent());
    QCOMPARE(titleFaults(false), QString());
    click("btnProbeInAdd");
    history()->undo();
    QCOMPARE(titleFaults(false), QString());
    history()->undo();
    QCOMPARE(titleFaults(true), QString());
    QCOMPARE(state(), before);
    // Back in the file.
    QVERIFY(view()->save());
    QCOMPARE(readFile(path("a.tarn")).contains("top/in1"), true);
    history()->redo();
    QCOMPARE(titleFaults(true), QString());

    // The same content again is no step.
    QVERIFY(view()->save());
    const int steps = history()->stack()->count();
    reload(readFile(path("a.tarn")));
    QCOMPARE(history()->stack()->count(), steps);
    QCOMPARE(titleFaults(false), QString());
}

void TestEditHistory::reloadOfAModifiedViewIsNotClean()
{
    click("btnProbeInAdd");
    const State edited = state();
    reload(otherContent());
    QCOMPARE(titleFaults(true), QString());
    history()->undo();
    QCOMPARE(state(), edited);
    QCOMPARE(titleFaults(true), QString());
    history()->undo();
    QCOMPARE(titleFaults(true), QString());
    history()->redo();
    history()->redo();
    QCOMPARE(titleFaults(true), QString());
    QVERIFY(view()->save());
    QCOMPARE(titleFaults(false), QString());
}

void TestEditHistory::removalIsUndoneWithoutAQuestion()
{
    addCore();
    clearDebugLines();
    history()->undo(); // A box would fail the test.
    QCOMPARE(pagesOf(view()).size(), 2);
    QCOMPARE(debugLines(), QStringList());
}

void TestEditHistory::stepsBehindTheQuestionOfARemoval()
{
    const State opened = state();
    addCore();
    removeCore(2, [this] { history()->undo(); }); // The core itself goes.
    QCOMPARE(state(), opened);
    QCOMPARE(steps(), 0);
    QCOMPARE(titleFaults(false), QString());

    addCore();
    removeCore(0, [this] { history()->undo(); });
    QCOMPARE(pagesOf(view()).size(), 1);
    QCOMPARE(steps(), 1);
    history()->undo();
    QCOMPARE(state(), opened);
    QCOMPARE(titleFaults(false), QString());
}

void TestEditHistory::nothingIsRecordedWithoutAChange()
{
    tree(page(), "treeProbeIn")->clearSelection();
    click("btnProbeInRemove");
    editPort("In", 0, [](QTreeWidget *) {});
    typeValue(0, "10");
    typeClock("top/clk");
    QCOMPARE(history()->stack()->count(), 0);
    QCOMPARE(titleFaults(true), QString()); // As at each of these actions.
    click("checkUserClock");
    click("checkUserClock");
    QCOMPARE(history()->stack()->count(), 2);
}

// Typed text

void TestEditHistory::typedTextIsAStepBeforeUndo()
{
    click("btnProbeInAdd");
    const State before = state();
    typeValue(1, "7C", false);
    typeClock("top/c", false);
    const State typed = freshState();
    QCOMPARE(history()->stack()->count(), 1);
    history()->undo();
    QCOMPARE(history()->stack()->count(), 2);
    QCOMPARE(history()->stack()->index(), 1);
    QCOMPARE(state(), before);
    history()->redo();
    QCOMPARE(state(), typed);
    // Later edits leave it alone.
    click("btnProbeInAdd");
    history()->undo();
    QCOMPARE(state(), typed);
}

void TestEditHistory::typedTextIsAStepBeforeASave()
{
    typeValue(1, "7C", false);
    QVERIFY(view()->save());
    QVERIFY(readFile(path("a.tarn")).contains("0x7C"));
    QCOMPARE(history()->stack()->count(), 1);
    QCOMPARE(titleFaults(false), QString());
    const State saved = freshState();
    history()->undo();
    QCOMPARE(titleFaults(true), QString());
    QCOMPARE(lineOf(page(), 1)->displayText(), QString("0x11"));
    history()->redo();
    QCOMPARE(state(), saved);
    QCOMPARE(titleFaults(false), QString());
}

void TestEditHistory::committedTypingCountsAsApplied()
{
    typeValue(1, "7C", false);
    typeClock("top/c", false);
    history()->commitTyping();
    QCOMPARE(history()->stack()->count(), 1);
    history()->commitTyping();
    QCOMPARE(history()->stack()->count(), 1);
    // From now on the steps undo it, and not the lines.
    QVERIFY(!lineOf(page(), 1)->isUndoAvailable());
    QVERIFY(!clockOf(page())->isUndoAvailable());
    click("btnProbeInAdd");
    QCOMPARE(history()->stack()->count(), 2);
    QCOMPARE(history()->stack()->undoText(), QString("Add Port"));
    history()->undo();
    QCOMPARE(lineOf(page(), 1)->displayText(), QString("0x7C"));
    QCOMPARE(clockOf(page())->text(), QString("top/c"));
    history()->undo();
    QCOMPARE(lineOf(page(), 1)->displayText(), QString("0x11"));
    QCOMPARE(clockOf(page())->text(), QString("top/clk"));
}

void TestEditHistory::hiddenTypedTextIsKept()
{
    lineOf(page(), 1)->setFocus();
    typeValue(1, "7C", false);
    clockOf(page(0))->setText("top/c"); // By the program: applied at once.
    QCOMPARE(history()->stack()->count(), 1);
    page(1); // Hides the line, which does not apply its text.
    QCOMPARE(history()->stack()->count(), 1);
    click("btnProbeInAdd");
    QCOMPARE(history()->stack()->count(), 2);
    history()->undo();
    QCOMPARE(history()->stack()->undoText(), QString("Add Port"));
    QCOMPARE(history()->stack()->redoText(), QString("Change Initial Value"));
    QCOMPARE(lineOf(page(0), 1)->displayText(), QString("0x11"));
    history()->redo();
    QCOMPARE(lineOf(page(0), 1)->displayText(), QString("0x7C"));
    QCOMPARE(lineOf(page(0), 1)->getStringValue(), QString("01111100"));
}

void TestEditHistory::lineWithTypingGoesFirst_data()
{
    QTest::addColumn<bool>("clock");
    QTest::addColumn<bool>("byKey");
    for (const bool clock : {false, true}) {
        for (const bool byKey : {false, true})
            QTest::addRow("%s by %s", clock ? "clock" : "value", byKey ? "key" : "menu")
                << clock << byKey;
    }
}

void TestEditHistory::lineWithTypingGoesFirst()
{
    QFETCH(bool, clock);
    QFETCH(bool, byKey);
    click("btnProbeOutAdd");
    click("btnProbeInAdd");
    QLineEdit *line = clock ? clockOf(page()) : lineOf(page(), 1);
    line->setFocus();
    QVERIFY(line->hasFocus());
    const auto press = [&](const char *keys, QAction *action) {
        if (byKey)
            QTest::keySequence(view()->window(), QKeySequence(keys));
        else
            action->trigger();
    };
    const auto type = [&] {
        if (clock)
            QTest::keyClicks(line, "ab");
        else
            typeValue(1, "7C", false);
    };
    const QString before = line->displayText();
    QVERIFY(view()->save());
    type();
    QVERIFY(line->displayText() != before);
    QCOMPARE(titleFaults(true), QString());

    for (int i = 0; i < 5 && line->isUndoAvailable(); ++i)
        press("Ctrl+Z", history()->undoAction());
    QCOMPARE(line->displayText(), before);
    QCOMPARE(titleFaults(false), QString()); // Back at the saved state.
    QCOMPARE(history()->stack()->index(), 2);
    QVERIFY(line->hasFocus());
    press("Ctrl+Z", history()->undoAction()); // The line has nothing more.
    QCOMPARE(history()->stack()->index(), 1);
    QCOMPARE(tree(page(), "treeProbeIn")->topLevelItemCount(), 3);
    press("Ctrl+Shift+Z", history()->redoAction());
    QCOMPARE(history()->stack()->index(), 2);

    // What is applied is one step, however many keys it took.
    line = clock ? clockOf(page()) : lineOf(page(), 1);
    line->setFocus();
    if (clock)
        typeClock("top/x");
    else
        typeValue(1, "3D");
    line->setFocus();
    QCOMPARE(history()->stack()->index(), 3);
    press("Ctrl+Z", history()->undoAction());
    QCOMPARE(line->displayText(), before);
    QCOMPARE(history()->stack()->index(), 2);
}

void TestEditHistory::typingIsUndoneWhereTheLineIgnoresKeys()
{
    click("btnProbeInAdd");
    QLineEdit *line = lineOf(page(), 1);
    const QString before = line->displayText();
    line->setFocus();
    typeValue(1, "7C", false);
    line->setCursorPosition(0); // In front of the prefix.
    for (int i = 0; i < 5 && line->isUndoAvailable(); ++i)
        QTest::keySequence(view()->window(), QKeySequence("Ctrl+Z"));
    QCOMPARE(line->displayText(), before);
    QCOMPARE(history()->stack()->index(), 1);
}

void TestEditHistory::keysReachTheView_data()
{
    QTest::addColumn<QByteArray>("widget");
    for (const char *name : {"treeWidget", "treeProbeIn", "treeProbeOut", "btnProbeInAdd",
                             "checkUserClock", "lineEditUserClock"})
        QTest::newRow(name) << QByteArray(name);
    QTest::newRow("value") << QByteArray();
}

void TestEditHistory::keysReachTheView()
{
    QFETCH(QByteArray, widget);
    click("btnProbeInAdd");
    QWidget *owner = page();
    if (widget == "treeWidget")
        owner = view();
    QWidget *focused = widget.isEmpty() ? lineOf(page(), 2) : child<QWidget>(owner, widget);
    focused->setFocus();
    QVERIFY(focused->hasFocus());
    QTest::keySequence(view()->window(), QKeySequence("Ctrl+Z"));
    QCOMPARE(history()->stack()->index(), 0);
    QTest::keySequence(view()->window(), QKeySequence("Ctrl+Shift+Z"));
    QCOMPARE(history()->stack()->index(), 1);
}

void TestEditHistory::focusStaysInTheView()
{
    // The focus is on what undo takes away.
    addCore();
    child<QCheckBox>(page(2), "checkUserClock")->setFocus();
    history()->undo();
    QVERIFY(view()->isAncestorOf(QApplication::focusWidget()));
    page(0);
    click("btnProbeOutAdd");
    editPort("Out", 3, [](QTreeWidget *list) { TARN::signal2TreeItem(list, net("top/e"), 0); });
    lineOf(page(), 3)->setFocus();
    QVERIFY(lineOf(page(), 3)->hasFocus());
    QTest::keySequence(view()->window(), QKeySequence("Ctrl+Z"));
    QTest::keySequence(view()->window(), QKeySequence("Ctrl+Z"));
    QCOMPARE(history()->stack()->index(), 0);
    QVERIFY(view()->isAncestorOf(QApplication::focusWidget()));
    QTest::keySequence(view()->window(), QKeySequence("Ctrl+Shift+Z"));
    QCOMPARE(history()->stack()->index(), 1);
}

void TestEditHistory::dialogOfAPortThatGoesIsClosed()
{
    click("btnProbeInAdd");
    const State after = state();
    bool closed = false;
    script().expectDialog("TARN::ProbeDialog", "Probe In Port", [&](QDialog *dialog) {
        history()->undo();
        closed = !dialog->isVisible();
        if (!closed)
            dialog->reject();
    });
    QTreeWidget *ports = tree(page(), "treeProbeIn");
    Q_EMIT ports->itemDoubleClicked(ports->topLevelItem(3), 0);
    QVERIFY(closed);
    QCOMPARE(history()->stack()->count(), 1);
    history()->redo();
    QCOMPARE(state(), after);
}

// Other edits

void TestEditHistory::programmedEditIsOneStep()
{
    typeValue(0, "77", false);
    const State typed = freshState();
    ConfigSnapshot target = history()->current();
    CoreList cores;
    for (TarnCore *core : TARN::newCores(target))
        cores.emplace_back(core);
    cores.at(0)->probeIns.at(2)->signals = {net("top/replaced")};
    cores.at(1)->probeOuts.at(0)->initialValue = "0x0";
    target = TARN::snapshotOf(pointersTo(cores), target);
    history()->apply(target, "Replace top/in2");
    QCOMPARE(history()->stack()->count(), 2);
    QCOMPARE(history()->undoAction()->text(), QString("&Undo Replace top/in2"));
    QVERIFY(TARN::sameObjects(history()->current(), target));
    QCOMPARE(titleFaults(true), QString());
    const State after = state();
    QCOMPARE(after, freshState());
    // The typed value was not part of the target.
    QCOMPARE(lineOf(page(0), 0)->displayText(), QString("0x10"));
    history()->undo();
    QCOMPARE(state(), typed);
    history()->redo();
    QCOMPARE(state(), after);

    history()->apply(target, "Nothing");
    QCOMPARE(history()->stack()->count(), 2);
}

void TestEditHistory::openingAgainForgetsTheSteps()
{
    click("btnProbeInAdd");
    QVERIFY(view()->open(path("a.tarn"), QString(), nullptr));
    QCOMPARE(history()->stack()->count(), 0);
    QVERIFY(!view()->isModified());
    click("btnProbeInAdd");
    history()->undo();
    QCOMPARE(titleFaults(false), QString());
}

void TestEditHistory::oldestStepGoesFirst()
{
    for (int i = 0; i <= EditHistory::MaximumSteps; ++i)
        click("checkUserClock");
    QCOMPARE(history()->stack()->count(), EditHistory::MaximumSteps);
    for (int i = 0; i < EditHistory::MaximumSteps; ++i)
        history()->undo();
    QVERIFY(!history()->undoAction()->isEnabled());
    QVERIFY(!child<QCheckBox>(page(), "checkUserClock")->isChecked());
    QCOMPARE(titleFaults(true), QString()); // The saved state is out of reach.
}

void TestEditHistory::stepsShareWhatTheyDoNotChange()
{
    const ConfigSnapshot before = history()->current();
    typeValue(1, "A5");
    const ConfigSnapshot after = history()->current();
    QCOMPARE(after.cores.at(1).content, before.cores.at(1).content);
    const TARN::CoreSnapshot &former = *before.cores.at(0).content;
    const TARN::CoreSnapshot &core = *after.cores.at(0).content;
    QCOMPARE(core.probeIns, former.probeIns);
    QCOMPARE(core.probeOuts.at(0), former.probeOuts.at(0));
    QVERIFY(core.probeOuts.at(1) != former.probeOuts.at(1));
    QVERIFY(core.probeOuts.at(1)->signals.isSharedWith(former.probeOuts.at(1)->signals));
    history()->undo();
    QVERIFY(TARN::sameObjects(history()->current(), before));

    // Also after a reload, whose signals were read from the file.
    reload(otherContent());
    const ConfigSnapshot reloaded = history()->current();
    QCOMPARE(reloaded.cores.at(1).content, before.cores.at(1).content);
    for (const TarnOptionWidget *page : pagesOf(view())) {
        const TARN::CoreSnapshot &content = *reloaded.cores.at(page->core()->index).content;
        for (const TARN::ProbeIn *port : qAsConst(page->core()->probeIns))
            QVERIFY(port->signals.isSharedWith(content.probeIns.at(port->index)->signals));
    }
}

// Random edits

SignalItem TestEditHistory::randomSignal()
{
    const int number = random(6);
    if (random(2) == 0)
        return net(QStringLiteral("top/n%1").arg(number));
    return bus(QStringLiteral("top/b%1").arg(number), 1 + random(9));
}

/// Digits for the whole value of the port, within its width.
QString TestEditHistory::randomDigits(int port)
{
    const int width = lineOf(page(), port)->getWidth();
    QString digits;
    for (int left = (width + 3) / 4; left > 0; --left) {
        const int bits = digits.isEmpty() && width % 4 ? width % 4 : 4;
        digits += QString::number(random(1 << bits), 16).toUpper();
    }
    return digits;
}

void TestEditHistory::Reference::push(const State &state)
{
    states.resize(index + 1);
    if (clean > index)
        clean = -1;
    states.append(state);
    ++index;
    if (states.size() > EditHistory::MaximumSteps + 1) {
        states.removeFirst();
        --index;
        clean = qMax(-1, clean - 1);
    }
}

/// Compares the steps that came with what changed since @p before.
void TestEditHistory::expectSteps(const State &before, bool maybeMore)
{
    const State after = state();
    const bool differs = !(after == before);
    if (!maybeMore && m_changes != int(differs))
        qFatal("%d steps from\n%s\nto\n%s", m_changes, qPrintable(before.rows),
               qPrintable(after.rows));
    for (; m_changes > 0; --m_changes)
        m_reference.push(after);
}

void TestEditHistory::randomCores()
{
    const State before = state();
    const int count = pagesOf(view()).size();
    if (count < 4 && random(2) == 0)
        addCore();
    else if (count > 1)
        removeCore(random(count));
    else
        return;
    m_reference.modified = true;
    expectSteps(before);
}

void TestEditHistory::randomPorts()
{
    const State before = state();
    const QByteArray kind = random(2) == 0 ? "In" : "Out";
    const int count = tree(page(), "treeProbe" + kind)->topLevelItemCount();
    if (count < 4 && random(2) == 0) {
        click("btnProbe" + kind + "Add");
    } else if (count != 1) {
        QList<int> rows;
        for (int i = 0; i < count; ++i) {
            if (random(3) == 0)
                rows.append(i);
        }
        removePorts(kind, rows);
    } else {
        return;
    }
    m_reference.modified = true;
    expectSteps(before);
}

void TestEditHistory::randomDialog()
{
    const State before = state();
    const QByteArray kind = random(2) == 0 ? "In" : "Out";
    const int count = tree(page(), "treeProbe" + kind)->topLevelItemCount();
    if (count == 0)
        return;
    editPort(kind, random(count), [this](QTreeWidget *list) {
        for (int i = random(3); i > 0 && list->topLevelItemCount() > 0; --i)
            delete list->takeTopLevelItem(random(list->topLevelItemCount()));
        if (list->topLevelItemCount() > 1)
            list->addTopLevelItem(list->takeTopLevelItem(random(list->topLevelItemCount())));
        for (int i = random(3); i > 0; --i)
            TARN::signal2TreeItem(list, randomSignal(), 0);
    });
    m_reference.modified = true;
    expectSteps(before);
}

/// Returns with text that is not applied unless @p apply is true.
void TestEditHistory::randomTyping(bool apply)
{
    const State before = state();
    const int ports = tree(page(), "treeProbeOut")->topLevelItemCount();
    const int port = ports > 0 ? random(ports) : -1;
    if (random(3) > 0 && port >= 0 && lineOf(page(), port)->isEnabled())
        typeValue(port, randomDigits(port), apply);
    else if (clockOf(page())->isEnabled() && random(3) > 0)
        typeClock(QStringLiteral("top/c%1").arg(random(3)), apply);
    else if (apply)
        click("checkUserClock");
    else
        return;
    m_reference.modified = true;
    m_typing = !apply;
    if (apply)
        expectSteps(before);
}

bool TestEditHistory::hasTyping() const
{
    return !(state() == m_reference.states.at(m_reference.index));
}

/// What is typed becomes a step of its own before undo, save and reload.
void TestEditHistory::expectTyping()
{
    m_reference.push(freshState());
    --m_changes;
}

/// Typed text that became a step shows in the bits when its line loses the focus.
void TestEditHistory::dealTypedBits()
{
    for (int i = 0; i < tree(page(), "treeProbeOut")->topLevelItemCount(); ++i)
        lineOf(page(), i)->onTextChange();
}

void TestEditHistory::randomUndo(bool redo)
{
    // A line with the focus would undo its typing instead.
    auto *line = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    if (line && (line->isUndoAvailable() || line->isRedoAvailable())) {
        const State before = m_reference.states.at(m_reference.index);
        line->clearFocus();
        if (m_changes > 0) // What is typed may be in another line.
            expectSteps(before);
    }
    const bool typed = hasTyping();
    if (typed)
        expectTyping();
    m_typing = false;
    const int next = m_reference.index + (redo ? 1 : -1);
    if (redo)
        history()->redo();
    else
        history()->undo();
    if (next >= 0 && next < m_reference.states.size()) {
        m_reference.index = next;
        m_reference.modified = next != m_reference.clean;
        --m_changes;
    }
    if (typed)
        dealTypedBits();
    if (m_changes != 0)
        qFatal("%d more changes than expected", m_changes);
}

void TestEditHistory::randomSave()
{
    if (!TARN::checkConfig(pointersTo(shownCores()), page()->netlist()).isEmpty())
        return;
    const bool typed = hasTyping();
    if (typed)
        expectTyping();
    m_typing = false;
    if (!view()->save())
        qFatal("not saved");
    if (typed)
        dealTypedBits();
    m_reference.clean = m_reference.index;
    m_reference.modified = false;
    m_changes = 0; // One came when the save gave values their full form.
}

void TestEditHistory::randomReload()
{
    if (hasTyping())
        expectTyping();
    m_typing = false;
    const State before = m_reference.states.at(m_reference.index);
    writeFile(path("a.tarn"), m_reference.states.at(random(m_reference.states.size())).bytes);
    if (!view()->reloadTarnFile())
        qFatal("not reloaded");
    // A value in another form is a step, though it is shown and saved alike.
    expectSteps(before, true);
    m_reference.clean = m_reference.modified ? -1 : m_reference.index;
}

void TestEditHistory::randomEdit()
{
    const int choice = random(100);
    if (choice < 30)
        randomUndo(false);
    else if (choice < 52)
        randomUndo(true);
    else if (choice < 53)
        randomSave();
    else if (choice < 54)
        randomReload();
    else if (m_typing)
        randomUndo(false);
    else if (choice < 57)
        randomCores();
    else if (choice < 62)
        randomDialog();
    else if (choice < 75)
        randomPorts();
    else if (choice < 88)
        randomTyping(true);
    else if (choice < 94)
        randomTyping(false);
    else
        page(random(pagesOf(view()).size()));
}

/// Empty when everything is as expected.
QString TestEditHistory::faults() const
{
    QString faults = titleFaults(m_reference.modified);
    if (history()->stack()->index() != m_reference.index)
        faults += QStringLiteral(" step %1 instead of %2")
                      .arg(history()->stack()->index())
                      .arg(m_reference.index);
    if (history()->stack()->count() != m_reference.states.size() - 1)
        faults += QStringLiteral(" %1 steps").arg(history()->stack()->count());
    if (history()->stack()->isClean() != (m_reference.clean == m_reference.index))
        faults += QStringLiteral(" clean %1").arg(history()->stack()->isClean());
    return faults;
}

/// TARN_RANDOM_STEPS and TARN_RANDOM_SEED choose other edits. Above some ten thousand steps
/// QTEST_FUNCTION_TIMEOUT, in milliseconds, has to be set too.
void TestEditHistory::randomEditsAreUndoneAndRedone()
{
    const int steps = int(TarnTest::setting("TARN_RANDOM_STEPS", 1000));
    const quint32 seed = TarnTest::setting("TARN_RANDOM_SEED", 1);
    qInfo("%d steps, seed %u", steps, seed);
    m_random.seed(seed);
    m_reference = Reference();
    m_reference.states = {state()};
    m_changes = 0;
    m_typing = false;
    connect(history(), &EditHistory::changed, this, [this] { ++m_changes; });

    for (int i = 0; i < steps; ++i) {
        randomEdit();
        const QByteArray where = QStringLiteral("step %1, seed %2").arg(i).arg(seed).toUtf8();
        QVERIFY2(faults().isEmpty(), where + ": " + faults().toUtf8());
        if (m_typing)
            continue; // The rows show text that is no step yet.
        QVERIFY2(m_changes == 0, where);
        if (hasTyping()) {
            qInfo("%s", where.constData());
            QCOMPARE(state(), m_reference.states.at(m_reference.index));
        }
        if (i % 16 == 0)
            QCOMPARE(state(), freshState());
    }
    if (hasTyping())
        randomUndo(false);
    while (m_reference.index > 0) {
        randomUndo(false);
        QCOMPARE(state(), m_reference.states.at(m_reference.index));
    }
    QCOMPARE(state(), freshState());
    while (m_reference.index + 1 < m_reference.states.size()) {
        randomUndo(true);
        QCOMPARE(state(), m_reference.states.at(m_reference.index));
    }
    QCOMPARE(state(), freshState());
    QCOMPARE(faults(), QString());
}

TARN_TEST_MAIN(TestEditHistory)
#include "tst_edithistory.moc"
