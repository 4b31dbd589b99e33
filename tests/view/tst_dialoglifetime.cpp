// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "viewtest.h"

#include <support/files.h>
#include <support/modeltext.h>
#include <support/waiting.h>

#include <model/tarnconfig.h>
#include <model/tarncore.h>
#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnetlist.h>
#include <probes/initialvalueline.h>
#include <probes/signalsamples.h>
#include <probes/signaltree.h>
#include <qutil/eventmanager.h>
#include <qutil/ievent.h>
#include <te/teconstants.h>
#include <view/reloadbanner.h>
#include <view/tarnoptionwidget.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

using namespace TARN;
using TarnTest::ModalScript;
using TarnTest::modelText;
using TarnTest::ShownView;

namespace {

/// What a window depends on, and what an event removes.
enum Basis {
    FormerNetlist = 1,
    Port = 2, ///< The second of either kind, which the windows are about.
    Page = 4, ///< Of the first core.
    View = 8,
};

std::unique_ptr<NETWEIR::RtlNetlist> netlistOf(const QString &top)
{
    NETWEIR::NetlistBuilder builder(top);
    builder.addNet(builder.top(), QStringLiteral("net"));
    return builder.take();
}

bool isOpen(const QWidget *window)
{
    return window && window->isVisible();
}

QStringList signalRowsOf(const QTreeWidgetItem *port)
{
    QStringList rows;
    for (int i = 0; i < port->childCount(); ++i)
        rows.append(port->child(i)->text(0));
    return rows;
}

template <typename Widget>
Widget *child(const QWidget *parent, const char *name)
{
    return parent->findChild<Widget *>(QLatin1String(name));
}

/// Clicks the button of that name, even behind an open window.
void click(const QWidget *parent, const char *button)
{
    QTest::mouseClick(child<QAbstractButton>(parent, button), Qt::LeftButton);
}

QString rowsOf(const QWidget *parent, const char *tree)
{
    return modelText(child<QTreeWidget>(parent, tree)->model());
}

void add(const QDialog *dialog, const SignalItem &item)
{
    signals2Tree(child<QTreeWidget>(dialog, "treeWidget"), {item}, 0);
}

void search(const QDialog *dialog)
{
    child<QLineEdit>(dialog, "lineEditName")->setText(QStringLiteral("net"));
    click(dialog, "pushButtonSearch");
}

ModalScript::Box warning(const QString &text)
{
    return {QMessageBox::Warning, QStringLiteral("Warning"), text, QMessageBox::Ok, QString()};
}

/// One line per core and per port.
QString textOf(const QList<TarnCore *> &cores)
{
    QString text;
    const auto line = [&text](const QString &name, const ProbeIn *port) {
        text += QStringLiteral("  %1%2:").arg(name).arg(port->index);
        for (const SignalItem &item : port->signals)
            text += QLatin1Char(' ') + item.name;
        text += QLatin1Char('\n');
    };
    for (const TarnCore *core : cores) {
        text += QStringLiteral("core %1 clock %2\n").arg(core->index).arg(core->userClock);
        for (const ProbeIn *port : core->probeIns)
            line(QStringLiteral("in"), port);
        for (const ProbeOut *port : core->probeOuts) {
            line(QStringLiteral("out"), port);
            text.insert(text.size() - 1, QLatin1Char('=') + port->initialValue);
        }
    }
    return text;
}

} // namespace

class TestDialogLifetime;
using Function = void (TestDialogLifetime::*)();

struct Event
{
    const char *name;
    int takes;
    bool modifies;
    Function happen;
};

struct Window
{
    const char *name;
    int basis;
    Function open;
};

Q_DECLARE_METATYPE(Function)
Q_DECLARE_METATYPE(Event)
Q_DECLARE_METATYPE(Window)

/// An event happens while a window is open. The tests say whether the window closes, what it may
/// write and whether it still works. A use of deleted objects crashes here or is found by the
/// address sanitizer.
class TestDialogLifetime : public TarnTest::ViewTest
{
    Q_OBJECT

private:
    static const QVector<Event> &events();
    static const QVector<Window> &windows();

    QWidget *page() const { return pagesOf(m_shown.view).first(); }
    QTreeWidget *tree(const char *name) const { return child<QTreeWidget>(page(), name); }
    InitialValueLine *line() const;
    QString coresText() const;
    void checkRows() const;

    // Events
    void replaceNetlist();
    void loseNetlist();
    void failToReload();
    void reloadFile();
    void removeCore(int row);
    void removeFirstCore() { removeCore(0); }
    void removeSecondCore() { removeCore(1); }
    void addCore();
    void removePorts(int row);
    void removeFirstPorts() { removePorts(0); }
    void removeSecondPorts() { removePorts(1); }
    void closeContainer();
    void deleteView() { delete m_shown.view; }
    void deleteMainWindow() { m_mainWindow.reset(); }

    // Windows
    void editPort(ProbeType type, const std::function<void(QDialog *)> &action);
    void editProbe(ProbeType type);
    void editProbeIn() { editProbe(ProbeTypeIn); }
    void editProbeOut() { editProbe(ProbeTypeOut); }
    void searchForProbe(ProbeType type);
    void searchForProbeIn() { searchForProbe(ProbeTypeIn); }
    void searchForProbeOut() { searchForProbe(ProbeTypeOut); }
    void acceptTooManySignals(ProbeType type);
    void acceptTooManyProbeIns() { acceptTooManySignals(ProbeTypeIn); }
    void acceptTooManyProbeOuts() { acceptTooManySignals(ProbeTypeOut); }
    void pickClock(const std::function<void(QDialog *)> &action);
    void searchForClock();
    void chooseModule();
    void rejectValue();
    void addTooManyPorts(const QByteArray &kind);
    void addTooManyProbeIns() { addTooManyPorts("In"); }
    void addTooManyProbeOuts() { addTooManyPorts("Out"); }
    void removeLastPort(const QByteArray &kind);
    void removeLastProbeIn() { removeLastPort("In"); }
    void removeLastProbeOut() { removeLastPort("Out"); }
    void saveWithErrors();
    void readNetlist();
    void closeModified();

    void expectSearch(const std::function<void(QDialog *)> &action);
    void expectBox(const ModalScript::Box &box, QMessageBox::StandardButton answer);
    void happen();
    void useSearch(QDialog *dialog);
    void addAndAccept(QDialog *dialog, const std::function<void(QDialog *)> &searching);

    std::unique_ptr<QMainWindow> m_mainWindow;
    ShownView m_shown;

    Event m_event{};
    bool m_stays = false;
    bool m_happened = false;
    QList<QPointer<QDialog>> m_open;
    QString m_net;        ///< What a search finds.
    QString m_cores;      ///< Expected in the view at the end.
    QByteArray m_content; ///< Expected in the file at the end.
    bool m_modified = false;

private Q_SLOTS:
    void init();
    void cleanup();
    void eventBehindAWindow_data();
    void eventBehindAWindow();
    void typedValueShowsNoBox_data();
    void typedValueShowsNoBox();
    void savedAfterTheQuestionIsWhatIsThere_data();
    void savedAfterTheQuestionIsWhatIsThere();
};

const QVector<Event> &TestDialogLifetime::events()
{
    using Test = TestDialogLifetime;
    constexpr int Everything = Port | Page | View;
    static const QVector<Event> all = {
        {"netlist replaced", FormerNetlist, false, &Test::replaceNetlist},
        {"netlist lost", FormerNetlist, false, &Test::loseNetlist},
        {"netlist not read again", Everything, false, &Test::failToReload},
        {"file reloaded", Port | Page, false, &Test::reloadFile},
        {"core removed", Port | Page, true, &Test::removeFirstCore},
        {"other core removed", 0, true, &Test::removeSecondCore},
        {"core added", 0, true, &Test::addCore},
        {"port removed", Port, true, &Test::removeSecondPorts},
        {"other port removed", 0, true, &Test::removeFirstPorts},
        {"container closed", Everything, false, &Test::closeContainer},
        {"view deleted", Everything, false, &Test::deleteView},
        {"main window deleted", Everything, false, &Test::deleteMainWindow},
    };
    return all;
}

const QVector<Window> &TestDialogLifetime::windows()
{
    using Test = TestDialogLifetime;
    constexpr int OnPage = Page | View;
    constexpr int OnPort = Port | OnPage;
    static const QVector<Window> all = {
        {"Probe In port", OnPort, &Test::editProbeIn},
        {"Probe Out port", OnPort | FormerNetlist, &Test::editProbeOut},
        {"search for Probe In", OnPort, &Test::searchForProbeIn},
        {"search for Probe Out", OnPort | FormerNetlist, &Test::searchForProbeOut},
        {"too many signals of Probe In", OnPort, &Test::acceptTooManyProbeIns},
        {"too many signals of Probe Out", OnPort | FormerNetlist, &Test::acceptTooManyProbeOuts},
        {"search for the clock", OnPage, &Test::searchForClock},
        {"modules to search in", OnPage, &Test::chooseModule},
        {"rejected value", OnPort, &Test::rejectValue},
        {"too many Probe Ins", OnPage, &Test::addTooManyProbeIns},
        {"too many Probe Outs", OnPage, &Test::addTooManyProbeOuts},
        {"last Probe In", OnPage, &Test::removeLastProbeIn},
        {"last Probe Out", OnPage, &Test::removeLastProbeOut},
        {"errors of the check", View, &Test::saveWithErrors},
        {"progress of the netlist", 0, &Test::readNetlist},
        {"question before closing", View, &Test::closeModified},
    };
    return all;
}

void TestDialogLifetime::init()
{
    ViewTest::init();
    TarnCore first(0);
    for (int i = 0; i < 2; ++i) {
        first.addProbeIn(i);
        first.addProbeOut(i);
    }
    first.getProbeIn(0)->signals = {TarnTest::net("a")};
    first.getProbeIn(1)->signals = {TarnTest::net("in_edited")};
    first.getProbeOut(0)->signals = {TarnTest::net("b")};
    first.getProbeOut(0)->initialValue = QStringLiteral("0x0");
    first.getProbeOut(1)->signals = {TarnTest::bus("out_edited", 5)};
    first.getProbeOut(1)->initialValue = QStringLiteral("0x13");
    TarnCore second(1);
    second.addProbeIn(0);
    second.getProbeIn(0)->signals = {TarnTest::net("a")};
    QVERIFY(writeTARNConfigToXml({&first, &second}, path("a.tarn")));

    extraction().build = [] { return netlistOf("first"); };
    m_shown = show(path("a.tarn"));
    m_mainWindow = std::make_unique<QMainWindow>();
    m_mainWindow->setCentralWidget(m_shown.container);
    m_mainWindow->setGeometry(1, 1, 900, 600); // The tests would wait for a window at the origin.
    m_mainWindow->show();
    QApplication::setActiveWindow(m_mainWindow.get());
    QVERIFY(QTest::qWaitForWindowActive(m_mainWindow.get()));

    m_happened = false;
    m_open.clear();
    m_net = QStringLiteral("first/net");
}

void TestDialogLifetime::cleanup()
{
    m_mainWindow.reset();
    ViewTest::cleanup();
}

/// The line of the second Probe Out.
InitialValueLine *TestDialogLifetime::line() const
{
    QTreeWidget *values = tree("treeValue");
    return qobject_cast<InitialValueLine *>(values->itemWidget(values->topLevelItem(1), 0));
}

QString TestDialogLifetime::coresText() const
{
    QList<TarnCore *> cores;
    const QList<TarnOptionWidget *> pages = pagesOf(m_shown.view);
    for (const TarnOptionWidget *page : pages)
        cores.append(page->core());
    return textOf(cores);
}

/// The pages show what is in the cores.
void TestDialogLifetime::checkRows() const
{
    const QList<TarnOptionWidget *> pages = pagesOf(m_shown.view);
    for (const TarnOptionWidget *page : pages) {
        const auto *ins = child<QTreeWidget>(page, "treeProbeIn");
        QCOMPARE(ins->topLevelItemCount(), page->core()->probeIns.size());
        for (const ProbeIn *port : qAsConst(page->core()->probeIns))
            QCOMPARE(signalRowsOf(ins->topLevelItem(port->index)),
                     TarnTest::namesOf(port->signals));
        const auto *outs = child<QTreeWidget>(page, "treeProbeOut");
        const auto *values = child<QTreeWidget>(page, "treeValue");
        QCOMPARE(outs->topLevelItemCount(), page->core()->probeOuts.size());
        for (const ProbeOut *port : qAsConst(page->core()->probeOuts)) {
            QCOMPARE(signalRowsOf(outs->topLevelItem(port->index)),
                     TarnTest::namesOf(port->signals));
            QCOMPARE(values->topLevelItem(port->index)->childCount(), port->signals.size());
        }
    }
}

// Events

void TestDialogLifetime::replaceNetlist()
{
    extraction().build = [] { return netlistOf("second"); };
    m_net = QStringLiteral("second/net");
    QUtil::EventManager::instance()->send(
        QUtil::IEvent(TE::E_OPTION_CHANGE, {{TE::K_OPTION, TE::OPT::TOPMODULE}}));
    clickBanner(m_shown.view, "btnA");
}

void TestDialogLifetime::loseNetlist()
{
    extraction().build = [] { return nullptr; };
    m_net.clear();
    script().expectBox(
        TarnTest::errorBox("Design files contain some errors", "Get no module from design."));
    QVERIFY(!m_shown->readRtlNetlist());
}

void TestDialogLifetime::failToReload()
{
    extraction().build = [] { return nullptr; };
    m_shown->designFileChanged();
    script().expectBox(
        TarnTest::errorBox("Design files contain some errors", "Get no module from design."));
    clickBanner(m_shown.view, "btnA");
}

void TestDialogLifetime::reloadFile()
{
    TarnTest::writeFile(path("a.tarn"),
                        TarnTest::readFile(path("a.tarn")).replace("edited", "read"));
    m_shown->checkForReload();
    clickBanner(m_shown.view, "btnA");
}

void TestDialogLifetime::removeCore(int row)
{
    script().expectMenu({"Add", "Remove"}, "Remove");
    script().expectBox({QMessageBox::Question, "Remove TARn",
                        QString("Do you want to remove TARN %1 ?").arg(row),
                        QMessageBox::Ok | QMessageBox::Cancel, QString()});
    openMenu(m_shown.view, row);
}

void TestDialogLifetime::addCore()
{
    script().expectMenu({"Add", "-Remove"}, "Add");
    openMenu(m_shown.view, -1);
}

/// Removes the port of either kind, unless it is the last one.
void TestDialogLifetime::removePorts(int row)
{
    for (const QByteArray kind : {"In", "Out"}) {
        QTreeWidget *ports = tree("treeProbe" + kind);
        if (ports->topLevelItemCount() == 1)
            continue;
        ports->clearSelection();
        ports->topLevelItem(row)->setSelected(true);
        child<QPushButton>(page(), "btnProbe" + kind + "Remove")->click();
    }
}

void TestDialogLifetime::closeContainer()
{
    m_shown.container->setAttribute(Qt::WA_DeleteOnClose);
    m_shown.container->close();
}

/// To be called while the windows of m_open are open.
void TestDialogLifetime::happen()
{
    m_happened = true;
    m_modified = m_event.modifies || m_shown->isModified();
    (this->*m_event.happen)();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_content = TarnTest::readFile(path("a.tarn"));
    if (m_shown.view)
        m_cores = coresText();
    for (const QPointer<QDialog> &window : qAsConst(m_open))
        QCOMPARE(isOpen(window), m_stays);
}

// Windows

void TestDialogLifetime::editPort(ProbeType type, const std::function<void(QDialog *)> &action)
{
    const bool out = type == ProbeTypeOut;
    script().expectDialog("TARN::ProbeDialog", out ? "Probe Out Port" : "Probe In Port",
                          [this, action](QDialog *dialog) {
                              m_open.append(dialog);
                              add(dialog, TarnTest::net("added"));
                              action(dialog);
                          });
    QTreeWidget *ports = tree(out ? "treeProbeOut" : "treeProbeIn");
    const QPoint position = ports->visualItemRect(ports->topLevelItem(1)).center();
    QTest::mouseClick(ports->viewport(), Qt::LeftButton, {}, position);
    QTest::mouseDClick(ports->viewport(), Qt::LeftButton, {}, position);
}

/// Adds signals with the search and, when the dialog is still open then, accepts it.
void TestDialogLifetime::addAndAccept(QDialog *dialog,
                                      const std::function<void(QDialog *)> &searching)
{
    const QPointer<QDialog> guard(dialog);
    const bool out = dialog->windowTitle() == "Probe Out Port";
    expectSearch(searching);
    click(dialog, "btnAdd");
    if (!isOpen(guard))
        return;
    const QString former = out ? "out_edited" : "in_edited";
    QCOMPARE(m_cores.count(former), 1);
    m_cores.replace(former, (former + " added " + m_net).trimmed());
    m_modified = true;
    dialog->accept();
}

void TestDialogLifetime::editProbe(ProbeType type)
{
    editPort(type, [this](QDialog *dialog) {
        const QPointer<QDialog> guard(dialog);
        happen();
        if (isOpen(guard))
            addAndAccept(dialog, [this](QDialog *searching) { useSearch(searching); });
    });
}

void TestDialogLifetime::searchForProbe(ProbeType type)
{
    editPort(type, [this](QDialog *dialog) {
        addAndAccept(dialog, [this](QDialog *searching) {
            const QPointer<QDialog> guard(searching);
            m_open.append(searching);
            search(searching);
            happen();
            if (isOpen(guard))
                useSearch(searching);
        });
    });
}

void TestDialogLifetime::acceptTooManySignals(ProbeType type)
{
    editPort(type, [this](QDialog *dialog) {
        const QPointer<QDialog> guard(dialog);
        auto *list = child<QTreeWidget>(dialog, "treeWidget");
        add(dialog, TarnTest::bus("many", 257));
        expectBox(warning("Support 256 signals at most."), QMessageBox::Ok);
        dialog->accept();
        if (!isOpen(guard))
            return;
        delete list->takeTopLevelItem(list->topLevelItemCount() - 1);
        addAndAccept(dialog, [this](QDialog *searching) { useSearch(searching); });
    });
}

void TestDialogLifetime::pickClock(const std::function<void(QDialog *)> &action)
{
    click(page(), "checkUserClock");
    m_shown->showUnmodified();
    const QPointer<QLineEdit> clock(child<QLineEdit>(page(), "lineEditUserClock"));
    expectSearch([this, action](QDialog *dialog) {
        m_open.append(dialog);
        action(dialog);
    });
    click(page(), "btnUserClock");
    QCOMPARE(!clock, !m_stays);
    if (!m_stays)
        return;
    QCOMPARE(clock->text(), m_net);
    m_modified = m_modified || !m_net.isEmpty();
}

void TestDialogLifetime::searchForClock()
{
    pickClock([this](QDialog *dialog) {
        const QPointer<QDialog> guard(dialog);
        search(dialog);
        happen();
        if (isOpen(guard))
            useSearch(dialog);
    });
}

void TestDialogLifetime::chooseModule()
{
    pickClock([this](QDialog *dialog) {
        child<QCheckBox>(dialog, "checkBoxAdvancedFilter")->setChecked(true);
        auto *modules = child<QComboBox>(dialog, "comboBoxSearchIn");
        modules->view()->setCurrentIndex(modules->model()->index(0, 0));
        modules->showPopup();
        script().expectDialog("QComboBoxPrivateContainer", QString(), [this, modules](QDialog *) {
            const QPointer<QComboBox> guard(modules);
            happen();
            if (!guard)
                return;
            modules->hidePopup();
            useSearch(static_cast<QDialog *>(modules->window()));
        });
    });
}

/// Chooses all that is found.
void TestDialogLifetime::useSearch(QDialog *dialog)
{
    if (m_event.takes & FormerNetlist)
        QCOMPARE(rowsOf(dialog, "treeWidget"), QString());
    QCOMPARE(modelText(child<QComboBox>(dialog, "comboBoxSearchIn")->model()).trimmed(),
             m_net.section('/', 0, 0));
    search(dialog);
    QCOMPARE(rowsOf(dialog, "treeWidget").trimmed(), m_net);
    click(dialog, "btnAddAll");
    dialog->accept();
}

void TestDialogLifetime::rejectValue()
{
    const QPointer<InitialValueLine> line(this->line());
    line->setFocus();
    line->setText("0x3F");
    expectBox({QMessageBox::Information, "Error",
               "Value '3F' for Probe Out1 Initial Value exceeds the effective width.",
               QMessageBox::Ok, QString()},
              QMessageBox::Ok);
    // The one way to lose the focus after which Qt itself touches no widget of the page.
    QApplication::setActiveWindow(nullptr);
    QCOMPARE(!line, !m_stays);
    if (!m_stays)
        return;
    QCOMPARE(line->displayText(), QString("0x13"));
    QCOMPARE(line->getStringValue(), QString("10011"));
    m_modified = true;
}

void TestDialogLifetime::addTooManyPorts(const QByteArray &kind)
{
    for (int i = 2; i < 64; ++i)
        click(page(), "btnProbe" + kind + "Add");
    m_shown->showUnmodified();
    expectBox(warning("Support 64 Probe " + kind + "s at most."), QMessageBox::Ok);
    click(page(), "btnProbe" + kind + "Add");
}

void TestDialogLifetime::removeLastPort(const QByteArray &kind)
{
    tree("treeProbe" + kind)->topLevelItem(0)->setSelected(true);
    click(page(), "btnProbe" + kind + "Remove");
    m_shown->showUnmodified();
    expectBox(warning("Support 1 Probe " + kind + " at least."), QMessageBox::Ok);
    click(page(), "btnProbe" + kind + "Remove");
}

void TestDialogLifetime::saveWithErrors()
{
    click(page(), "checkUserClock");
    ModalScript::Box box =
        TarnTest::errorBox("Error", "Your settings contain some errors." + QString(13, ' '));
    box.detailedText = "Tarn 0: No synchronization clock specified";
    expectBox(box, QMessageBox::Ok);
    QVERIFY(!m_shown->save());
}

void TestDialogLifetime::readNetlist()
{
    extraction().whileBuilding = [this] {
        happen();
        extraction().build = [] { return netlistOf("first"); };
    };
    const bool read = m_shown->readRtlNetlist();
    QCOMPARE(read, !m_shown.view.isNull());
    if (read)
        QCOMPARE(pagesOf(m_shown.view).last()->netlist()->top()->instName(), QString("first"));
}

void TestDialogLifetime::closeModified()
{
    m_shown->onModified();
    expectBox({QMessageBox::Question, "Save",
               QString("Save changes to \"%1\" ?").arg(QDir::toNativeSeparators(path("a.tarn"))),
               QMessageBox::Ok | QMessageBox::Discard | QMessageBox::Cancel, QString()},
              QMessageBox::Cancel);
    m_shown->close();
    QCOMPARE(isOpen(m_shown.view), m_stays);
}

void TestDialogLifetime::expectSearch(const std::function<void(QDialog *)> &action)
{
    script().expectDialog("TARN::TarnSignalSelectDialog", "Search Nets", action);
}

/// The box behind which the event happens.
void TestDialogLifetime::expectBox(const ModalScript::Box &box, QMessageBox::StandardButton answer)
{
    script().expectBox(box, answer, [this](QMessageBox *shown) {
        m_open.append(shown);
        happen();
    });
}

void TestDialogLifetime::eventBehindAWindow_data()
{
    QTest::addColumn<Window>("window");
    QTest::addColumn<Event>("event");
    for (const Window &window : windows()) {
        for (const Event &event : events())
            QTest::addRow("%s: %s", window.name, event.name) << window << event;
    }
}

void TestDialogLifetime::eventBehindAWindow()
{
    QFETCH(Window, window);
    QFETCH(Event, event);
    m_event = event;
    m_stays = !(window.basis & event.takes);
    (this->*window.open)();

    QVERIFY(m_happened);
    QCOMPARE(m_open.count(nullptr), m_open.size());
    QCOMPARE(m_shown.view.isNull(), bool(m_event.takes & View));
    QCOMPARE(TarnTest::readFile(path("a.tarn")), m_content);
    if (!m_shown.view)
        return;
    QCOMPARE(coresText(), m_cores);
    checkRows();
    QCOMPARE(m_shown->isModified(), m_modified);
    QCOMPARE(m_shown->windowTitle(), QString(m_modified ? "a.tarn *" : "a.tarn"));
}

void TestDialogLifetime::typedValueShowsNoBox_data()
{
    QTest::addColumn<Function>("change");
    QTest::newRow("netlist replaced") << &TestDialogLifetime::replaceNetlist;
    QTest::newRow("file reloaded") << &TestDialogLifetime::reloadFile;
    QTest::newRow("port removed") << &TestDialogLifetime::removeSecondPorts;
    QTest::newRow("other port removed") << &TestDialogLifetime::removeFirstPorts;
    QTest::newRow("container closed") << &TestDialogLifetime::closeContainer;
    QTest::newRow("view deleted") << &TestDialogLifetime::deleteView;
    QTest::newRow("main window deleted") << &TestDialogLifetime::deleteMainWindow;
}

/// A value that is not applied yet, and does not fit, may lose its line.
void TestDialogLifetime::typedValueShowsNoBox()
{
    QFETCH(Function, change);
    line()->setFocus();
    line()->setText("0x3F");
    QVERIFY(line()->hasFocus());
    (this->*change)();
    TarnTest::runDueEvents(); // A box may be on its way.
    QCOMPARE(script().problems(), QString());
}

void TestDialogLifetime::savedAfterTheQuestionIsWhatIsThere_data()
{
    QTest::addColumn<Function>("change");
    QTest::newRow("netlist replaced") << &TestDialogLifetime::replaceNetlist;
    QTest::newRow("netlist lost") << &TestDialogLifetime::loseNetlist;
    QTest::newRow("file reloaded") << &TestDialogLifetime::reloadFile;
    QTest::newRow("core removed") << &TestDialogLifetime::removeFirstCore;
    QTest::newRow("port removed") << &TestDialogLifetime::removeSecondPorts;
}

void TestDialogLifetime::savedAfterTheQuestionIsWhatIsThere()
{
    QFETCH(Function, change);
    QString cores;
    m_shown->onModified();
    script().expectDialog("QMessageBox", "Save", [&](QDialog *question) {
        (this->*change)();
        cores = coresText();
        static_cast<QMessageBox *>(question)->button(QMessageBox::Ok)->click();
    });
    QVERIFY(m_shown->close());

    const QList<TarnCore *> saved = readTARNConfigFromXml(path("a.tarn"), nullptr, nullptr);
    QCOMPARE(textOf(saved), cores);
    qDeleteAll(saved);
}

TARN_TEST_MAIN(TestDialogLifetime)
#include "tst_dialoglifetime.moc"
