// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "markedrows.h"
#include "signalsamples.h"

#include <support/modeltext.h>
#include <support/windowfit.h>
#include <support/windowtest.h>

#include <model/tarncore.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetlist.h>
#include <probes/initialvalueline.h>
#include <probes/probeportsoptionwidget.h>
#include <probes/signaltree.h>
#include <qutil/eventmanager.h>
#include <qutil/ievent.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDropEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSplitter>
#include <QStyle>
#include <QTest>
#include <QTreeWidget>

#include <functional>
#include <memory>

using namespace TARN;
using TarnTest::bus;
using TarnTest::FontSize;
using TarnTest::MarkedDesign;
using TarnTest::marksOf;
using TarnTest::ModalScript;
using TarnTest::modelText;
using TarnTest::net;
using TarnTest::tipOver;

namespace {

using Signals = QList<SignalItem>;

std::unique_ptr<TarnCore> coreOf(const QList<Signals> &ins, const QList<Signals> &outs,
                                 const QStringList &values = {})
{
    auto core = std::make_unique<TarnCore>(0);
    for (int i = 0; i < ins.size(); ++i) {
        core->addProbeIn(i);
        core->getProbeIn(i)->signals = ins.at(i);
    }
    for (int i = 0; i < outs.size(); ++i) {
        core->addProbeOut(i);
        core->getProbeOut(i)->signals = outs.at(i);
        core->getProbeOut(i)->initialValue = values.value(i, QStringLiteral("0x0"));
    }
    return core;
}

Signals nets(int count)
{
    Signals items;
    for (int i = 0; i < count; ++i)
        items.append(net(QString::number(i)));
    return items;
}

/// A page with its core, driven by the names of its widgets and slots.
struct Fixture
{
    std::unique_ptr<TarnCore> core;
    QPointer<ProbePortsOptionWidget> page;
    std::unique_ptr<QSignalSpy> modified;

    explicit Fixture(std::unique_ptr<TarnCore> edited, NETWEIR::RtlNetlist *netlist = nullptr)
        : core(std::move(edited))
        , page(new ProbePortsOptionWidget(core.get(), netlist, nullptr))
        , modified(new QSignalSpy(page, &ProbePortsOptionWidget::modified))
    {
    }
    ~Fixture() { delete page; }

    template <typename Widget>
    Widget *find(const char *name) const
    {
        return page->findChild<Widget *>(QLatin1String(name));
    }
    QTreeWidget *in() const { return find<QTreeWidget>("treeProbeIn"); }
    QTreeWidget *out() const { return find<QTreeWidget>("treeProbeOut"); }
    QTreeWidget *values() const { return find<QTreeWidget>("treeValue"); }
    QString textOf(const QTreeWidget *tree) const { return modelText(tree->model()); }
    void click(const char *button) { find<QPushButton>(button)->click(); }

    InitialValueLine *line(int port) const
    {
        return qobject_cast<InitialValueLine *>(
            values()->itemWidget(values()->topLevelItem(port), 0));
    }
    QLabel *label(int port, int signal) const
    {
        return qobject_cast<QLabel *>(
            values()->itemWidget(values()->topLevelItem(port)->child(signal), 0));
    }
    /// What the tree of values shows, each port in one piece.
    QStringList shownValues() const
    {
        QStringList ports;
        for (int i = 0; i < values()->topLevelItemCount(); ++i) {
            QString text = line(i)->displayText();
            QTreeWidgetItem *row = values()->topLevelItem(i);
            for (int k = 0; k < row->childCount(); ++k)
                text += QLatin1Char(' ') + label(i, k)->text();
            ports.append(text + QLatin1String(line(i)->isEnabled() ? "" : " off"));
        }
        return ports;
    }

    /// Replaces the signals of the port and rebuilds the rows.
    void setSignals(int port, const Signals &items)
    {
        core->getProbeOut(port)->signals = items;
        page->updateProbeOutTree();
    }
    /// Opens the dialog of the first port.
    void editFirst(bool ofOuts)
    {
        if (ofOuts)
            page->editProbeOut(out()->topLevelItem(0), 0);
        else
            page->editProbeIn(in()->topLevelItem(0), 0);
    }
    /// The rows of the Probe Out ports and those of their values lie side by side, and every widget
    /// in its row.
    void verifyAligned() const
    {
        int y = -20 * out()->verticalScrollBar()->value();
        QTreeWidgetItemIterator value(values());
        for (QTreeWidgetItemIterator row(out()); *row; ++row, ++value) {
            QVERIFY(*value);
            if ((*row)->parent() && !(*row)->parent()->isExpanded()) {
                QVERIFY(!(*value)->parent()->isExpanded());
                QVERIFY(!values()->itemWidget(*value, 0)->isVisible());
                continue;
            }
            const QRect rect = values()->visualItemRect(*value);
            QCOMPARE(rect.top(), y);
            QCOMPARE(rect.height(), 20);
            QCOMPARE(out()->visualItemRect(*row).top(), y);
            QCOMPARE(out()->visualItemRect(*row).height(), 20);
            const QWidget *widget = values()->itemWidget(*value, 0);
            QCOMPARE(widget->height(), 20);
            if (values()->viewport()->rect().intersects(rect)) {
                QVERIFY(widget->isVisible());
                QCOMPARE(widget->geometry(), rect);
            } else {
                QVERIFY(!widget->isVisible() || widget->geometry() == rect);
            }
            y += 20;
        }
        QVERIFY(!*value);
    }
    void show()
    {
        page->resize(900, 500);
        page->show();
        QApplication::setActiveWindow(page->window());
        QVERIFY(QTest::qWaitForWindowActive(page->window()));
    }
};

ModalScript::Box warning(const QString &text)
{
    return {QMessageBox::Warning, QStringLiteral("Warning"), text, QMessageBox::Ok, QString()};
}

QTreeWidget *listOf(const QDialog *dialog)
{
    return dialog->findChild<QTreeWidget *>(QStringLiteral("treeWidget"));
}

/// Chooses all nets of that name. Each has to be one that the user could choose alone as well.
void searchAndAddAll(const QDialog *dialog, const QString &name)
{
    dialog->findChild<QLineEdit *>(QStringLiteral("lineEditName"))->setText(name);
    dialog->findChild<QPushButton *>(QStringLiteral("pushButtonSearch"))->click();
    const QTreeWidget *found = listOf(dialog);
    for (int i = 0; i < found->topLevelItemCount(); ++i)
        QVERIFY(found->topLevelItem(i)->flags() & Qt::ItemIsEnabled);
    dialog->findChild<QPushButton *>(QStringLiteral("btnAddAll"))->click();
}

/// Adds what a search for @p name finds to the list of the dialog of a port, and accepts it.
void addBySearch(ModalScript *script, QDialog *dialog, const QString &name)
{
    script->expectDialog("TARN::TarnSignalSelectDialog", "Search Nets", [name](QDialog *search) {
        searchAndAddAll(search, name);
        search->accept();
    });
    dialog->findChild<QAbstractButton *>(QStringLiteral("btnAdd"))->click();
    dialog->accept();
}

/// The places of a row in the rows above, from the top: "2.0".
QString placeOf(const QTreeWidgetItem *row)
{
    if (!row->parent())
        return QString::number(
            row->treeWidget()->indexOfTopLevelItem(const_cast<QTreeWidgetItem *>(row)));
    return QStringLiteral("%1.%2")
        .arg(placeOf(row->parent()))
        .arg(row->parent()->indexOfChild(const_cast<QTreeWidgetItem *>(row)));
}

/// The bus of the marked design, as stored with these members.
SignalItem busD(const QStringList &members)
{
    return bus("top/d[3:0]", members);
}

/// Whether trees were painted.
class PaintCount : public QObject
{
public:
    explicit PaintCount(const QList<QTreeWidget *> &trees)
    {
        for (QTreeWidget *tree : trees)
            tree->viewport()->installEventFilter(this);
    }
    void reset() { m_any = false; }
    bool any() const { return m_any; }

    bool eventFilter(QObject *, QEvent *event) override
    {
        m_any = m_any || event->type() == QEvent::Paint;
        return false;
    }

private:
    bool m_any = false;
};

using PageAction = std::function<void(Fixture &)>;

std::unique_ptr<NETWEIR::RtlNetlist> netlistWith(const QString &net)
{
    NETWEIR::NetlistBuilder builder("top");
    builder.addNet(builder.top(), net);
    return builder.take();
}

} // namespace

Q_DECLARE_METATYPE(TARN::ProbeType)
Q_DECLARE_METATYPE(PageAction)

class TestProbePortsOptionWidget : public TarnTest::WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void interfaceKeepsItsNames_data()
    {
        QTest::addColumn<QByteArray>("signature");
        for (const char *name : {"modified()",
                                 "netlistChanged()",
                                 "save()",
                                 "setNlsdata(NETWEIR::RtlNetlist*)",
                                 "spendModified()",
                                 "onAddProbeIn()",
                                 "onRemoveProbeIn()",
                                 "onAddProbeOut()",
                                 "onRemoveProbeOut()",
                                 "editProbeIn(QTreeWidgetItem*,int)",
                                 "editProbeOut(QTreeWidgetItem*,int)",
                                 "onProbeOutClicked(QTreeWidgetItem*,int)",
                                 "onValueTreeClicked(QTreeWidgetItem*,int)",
                                 "onProbeOutTreeCollapsed(QTreeWidgetItem*)",
                                 "onProbeOutTreeExpanded(QTreeWidgetItem*)",
                                 "onValueTreeCollapsed(QTreeWidgetItem*)",
                                 "onValueTreeExpanded(QTreeWidgetItem*)",
                                 "onScrollProbeOutChanged()",
                                 "onScrollInitialValueChanged()",
                                 "onCheckUserClock()",
                                 "onbtnUserClock()",
                                 "updateProbeInTree()",
                                 "updateProbeOutTree()"})
            QTest::newRow(name) << QByteArray(name);
    }
    void interfaceKeepsItsNames()
    {
        QFETCH(QByteArray, signature);
        QVERIFY(ProbePortsOptionWidget::staticMetaObject.indexOfMethod(signature) >= 0);
    }

    void form()
    {
        Fixture f(coreOf({}, {}));
        QCOMPARE(f.find<QPushButton>("btnProbeInAdd")->text(), QStringLiteral("Add"));
        QCOMPARE(f.find<QPushButton>("btnProbeInRemove")->text(), QStringLiteral("Remove"));
        QCOMPARE(f.find<QPushButton>("btnProbeOutAdd")->text(), QStringLiteral("Add"));
        QCOMPARE(f.find<QPushButton>("btnProbeOutRemove")->text(), QStringLiteral("Remove"));
        QCOMPARE(f.find<QPushButton>("btnUserClock")->text(), QStringLiteral("..."));
        QCOMPARE(f.find<QLabel>("labelPorts")->text(), QStringLiteral("Ports"));
        QCOMPARE(f.find<QLabel>("labelInitialValue")->text(), QStringLiteral("Initial Value"));
        QCOMPARE(f.find<QLabel>("labelClock")->text(), QStringLiteral("Clock:"));
        QCOMPARE(f.find<QCheckBox>("checkUserClock")->text(),
                 QStringLiteral("Output Probe Synchronizes with User Clock"));
        QVERIFY(f.find<QLineEdit>("lineEditUserClock"));
        const auto *splitter = f.page->findChild<QSplitter *>();
        QCOMPARE(splitter->count(), 2);
        QCOMPARE(qobject_cast<QGroupBox *>(splitter->widget(0))->title(),
                 QStringLiteral("Probe In"));
        QCOMPARE(qobject_cast<QGroupBox *>(splitter->widget(1))->title(),
                 QStringLiteral("Probe Out"));
        for (const QTreeWidget *tree : {f.in(), f.out(), f.values()}) {
            QCOMPARE(tree->columnCount(), 1);
            QVERIFY(tree->isHeaderHidden());
            QCOMPARE(tree->styleSheet(),
                     QStringLiteral(
                         "QTreeWidget::item { height: 20px;}QTreeWidget{ icon-size: 17px; }"));
        }
        QCOMPARE(f.in()->selectionMode(), QAbstractItemView::ExtendedSelection);
        QCOMPARE(f.out()->selectionMode(), QAbstractItemView::ExtendedSelection);
    }

    void nothingIsCutOff_data() { FontSize::addSizes(); }
    void nothingIsCutOff()
    {
        QFETCH(double, points);
        const FontSize font(points);
        Fixture f(coreOf({{net("a")}}, {{bus("e", 8)}}, {"0xA5"}));
        f.show();
        QCOMPARE(TarnTest::layoutFaults(f.page), QString());
    }

    void showsThePorts()
    {
        Fixture f(
            coreOf({{net("a"), bus("d", 2)}, {}}, {{bus("e", 4), net("b")}, {}}, {"0x16", "0x0"}));
        QCOMPARE(f.textOf(f.in()), QStringLiteral("Probe In0\n"
                                                  "    a\n"
                                                  "    d\n"
                                                  "        d[1]\n"
                                                  "        d[0]\n"
                                                  "Probe In1\n"));
        QCOMPARE(f.textOf(f.out()), QStringLiteral("Probe Out0\n"
                                                   "    e\n"
                                                   "    b\n"
                                                   "Probe Out1\n"));
        QCOMPARE(f.shownValues(), QStringList({"0x16 1011 0", "0x0 off"}));
        for (const QTreeWidget *tree : {f.in(), f.out(), f.values()}) {
            QCOMPARE(tree->topLevelItem(0)->type(), 1001);
            QCOMPARE(tree->topLevelItem(0)->child(1)->type(), 1002);
        }
        QCOMPARE(f.line(1)->index(), 1);
        QCOMPARE(f.line(0)->inputMask(), QStringLiteral("NN>HH;0"));
    }

    void showingAndSavingChangesNothing()
    {
        const auto netlist = NETWEIR::NetlistBuilder("top").take();
        Fixture f(coreOf({{net("a")}}, {{bus("e", 8)}}, {"0xA5"}));
        f.core->userClock = QStringLiteral("top/clk");
        f.show();
        f.page->setNlsdata(netlist.get());
        QUtil::EventManager::instance()->send(QUtil::IEvent("TE.Device.Change"));
        f.page->save();
        QCOMPARE(f.modified->count(), 0);
        QCOMPARE(f.core->getProbeOut(0)->initialValue, QStringLiteral("0xA5"));
    }

    void storedValueGoesIntoTheLineAsItStands_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("shown");
        QTest::newRow("fits") << 8 << "0xA5"
                              << "0xA5 10100101";
        QTest::newRow("shorter") << 8 << "0x1"
                                 << "0x10 00010000";
        QTest::newRow("longer") << 8 << "0x123"
                                << "0x12 00010010";
        QTest::newRow("longer in the same digits") << 5 << "0xF1"
                                                   << "0x11 10001";
        QTest::newRow("none") << 8 << ""
                              << "0x00 00000000";
    }
    void storedValueGoesIntoTheLineAsItStands()
    {
        QFETCH(int, width);
        QFETCH(QString, stored);
        QFETCH(QString, shown);
        const Fixture f(coreOf({}, {{bus("d", width)}}, {stored}));
        QCOMPARE(f.shownValues(), QStringList(shown));
    }

    void rowsAre20PixelsHighAndAligned()
    {
        Fixture f(coreOf({{net("a"), bus("d", 3)}}, {{bus("e", 4), net("b")}, {net("c")}, {}}));
        f.show();
        f.in()->expandAll();
        f.out()->expandAll();
        f.verifyAligned();
        QCOMPARE(f.values()->viewport()->mapToGlobal(QPoint()).y(),
                 f.out()->viewport()->mapToGlobal(QPoint()).y());
        for (QTreeWidgetItemIterator in(f.in()); *in; ++in)
            QCOMPARE(f.in()->visualItemRect(*in).height(), 20);
    }

    void labelsStandAboveTheirTrees()
    {
        Fixture f(coreOf({}, {}));
        f.show();
        const auto standsAbove = [](const QWidget *upper, const QWidget *lower) {
            return upper->x() == lower->x() && upper->geometry().bottom() < lower->y();
        };
        QVERIFY(standsAbove(f.find<QLabel>("labelPorts"), f.out()));
        QVERIFY(standsAbove(f.find<QLabel>("labelInitialValue"), f.values()));
    }

    void valueFollowsTheWidth_data()
    {
        QTest::addColumn<Signals>("before");
        QTest::addColumn<QString>("value");
        QTest::addColumn<Signals>("after");
        QTest::addColumn<QString>("shown");
        const SignalItem a = net("a");
        QTest::newRow("4 to 5") << Signals{bus("d", 4)} << "0xF" << Signals{bus("d", 4), a}
                                << "0x1E 1111 0";
        QTest::newRow("4 to 12") << Signals{bus("d", 4)} << "0x9"
                                 << Signals{bus("d", 4), bus("e", 8)} << "0x900 1001 00000000";
        QTest::newRow("8 to 4") << Signals{bus("d", 8)} << "0xA5" << Signals{bus("d", 4)}
                                << "0xA 1010";
        QTest::newRow("5 to 4") << Signals{bus("d", 5)} << "0x1E" << Signals{bus("d", 4)}
                                << "0xF 1111";
        QTest::newRow("same") << Signals{bus("d", 5)} << "0x13" << Signals{a, bus("d", 4)}
                              << "0x13 1 0011";
        QTest::newRow("to none") << Signals{bus("d", 5)} << "0x1E" << Signals{} << "0x0 off";
        QTest::newRow("from none") << Signals{} << "0x0" << Signals{bus("d", 6)} << "0x00 000000";
        QTest::newRow("in other pieces")
            << Signals{bus("d", 8)} << "0xA5" << Signals{a, bus("e", 3), bus("f", 4)}
            << "0xA5 1 010 0101";
    }
    void valueFollowsTheWidth()
    {
        QFETCH(Signals, before);
        QFETCH(QString, value);
        QFETCH(Signals, after);
        QFETCH(QString, shown);
        Fixture f(coreOf({}, {before}, {value}));
        QCOMPARE(f.line(0)->displayText(), value);
        f.setSignals(0, after);
        QCOMPARE(f.shownValues(), QStringList(shown));
        QCOMPARE(f.values()->topLevelItem(0)->childCount(), after.size());
        QCOMPARE(f.out()->topLevelItem(0)->childCount(), after.size());
    }

    void rebuildOfAShownPageKeepsTheRowsInPlace()
    {
        Fixture f(coreOf({}, {nets(60), nets(20), nets(60), nets(60)}));
        f.show();
        for (const int port : {0, 2, 3})
            f.out()->topLevelItem(port)->setExpanded(true);
        QScrollBar *scrollBar = f.out()->verticalScrollBar();
        for (const int row : {0, 50, 90, scrollBar->maximum()}) {
            scrollBar->setValue(row);
            f.verifyAligned();
            f.page->updateProbeOutTree();
            QCOMPARE(scrollBar->value(), row);
            QCOMPARE(f.values()->verticalScrollBar()->value(), row);
            f.verifyAligned();
        }
        scrollBar->setValue(50);
        f.setSignals(2, nets(80));
        f.setSignals(0, nets(10));
        QCOMPARE(scrollBar->value(), 50);
        f.verifyAligned();
        QCOMPARE(scrollBar->maximum(), f.values()->verticalScrollBar()->maximum());
        f.page->resize(900, 700);
        f.verifyAligned();
        f.out()->topLevelItem(2)->setExpanded(false);
        f.verifyAligned();
    }

    void rebuildOfAShownPageKeepsTheFocus()
    {
        Fixture f(coreOf({}, {{bus("d", 8)}, nets(3)}, {"0xA5"}));
        f.show();
        f.out()->expandAll();
        f.out()->setFocus();
        f.page->updateProbeOutTree();
        QVERIFY(f.out()->hasFocus());

        f.line(0)->setFocus();
        f.line(0)->setText("0x3C");
        f.page->updateProbeOutTree();
        QVERIFY(f.line(0)->hasFocus());
        QCOMPARE(f.shownValues().first(), QStringLiteral("0x3C 00111100"));
        f.verifyAligned();
    }

    void tabKeyBringsTheNextLineIntoSight()
    {
        Fixture f(coreOf({}, {nets(60), {net("a")}}));
        f.show();
        f.out()->expandAll();
        f.line(0)->setFocus();
        QVERIFY(!f.values()->viewport()->rect().intersects(f.line(1)->geometry()));
        QTest::keyClick(f.line(0), Qt::Key_Tab);
        QVERIFY(f.line(1)->hasFocus());
        QVERIFY(f.values()->viewport()->rect().contains(f.line(1)->geometry()));
        f.verifyAligned();
    }

    void rebuildKeepsExpansionAndTypedText()
    {
        Fixture f(coreOf({}, {{bus("d", 8)}, {net("a")}}, {"0xA5", "0x1"}));
        f.show();
        f.out()->topLevelItem(0)->setExpanded(true);
        f.line(0)->setText("0xC3");
        f.setSignals(0, {bus("d", 8), net("b")});
        QCOMPARE(f.shownValues(), QStringList({"0x186 11000011 0", "0x1 1"}));
        QVERIFY(f.out()->topLevelItem(0)->isExpanded());
        QVERIFY(f.values()->topLevelItem(0)->isExpanded());
        QVERIFY(!f.values()->topLevelItem(1)->isExpanded());
    }

    void rebuildFitsTypedText_data()
    {
        QTest::addColumn<Signals>("before");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("shown");
        const Signals five{bus("d", 5)};
        // As many bits as the port had count, from the right; all when it had none.
        QTest::newRow("too wide, growing") << five << "0xF1" << 6 << "0x22 100010";
        QTest::newRow("too wide, shrinking") << five << "0xF1" << 4 << "0x8 1000";
        QTest::newRow("broken prefix") << five << "Zx11" << 5 << "0x00 00000";
        QTest::newRow("broken prefix, growing") << five << "Zx11" << 9 << "0x000 000000000";
        QTest::newRow("from none") << Signals{} << "0xF" << 6 << "0x3C 111100";
    }
    void rebuildFitsTypedText()
    {
        QFETCH(Signals, before);
        QFETCH(QString, typed);
        QFETCH(int, width);
        QFETCH(QString, shown);
        Fixture f(coreOf({}, {before}));
        f.line(0)->setText(typed);
        f.setSignals(0, {bus("d", width)});
        QCOMPARE(f.shownValues(), QStringList(shown));
    }

    void rebuildShowsNoBox()
    {
        Fixture f(coreOf({}, {{bus("d", 5)}}));
        f.show();
        f.line(0)->setFocus();
        f.line(0)->setText("0xFF");
        f.setSignals(0, {}); // Disables the line, which takes the focus from it.
        QVERIFY(!f.line(0)->hasFocus());
        f.setSignals(0, {bus("d", 5)});
        f.line(0)->setText("0x1F");
        f.line(0)->onTextChange();
        QCOMPARE(f.shownValues(), QStringList({"0x1F 11111"}));
    }

    void addsPorts()
    {
        Fixture f(coreOf({{}}, {{net("a")}}, {"0x1"}));
        f.click("btnProbeInAdd");
        QCOMPARE(f.textOf(f.in()), QStringLiteral("Probe In0\nProbe In1\n"));
        QCOMPARE(f.core->getProbeIn(1)->index, 1);
        QCOMPARE(f.modified->count(), 1);
        f.click("btnProbeOutAdd");
        QCOMPARE(f.textOf(f.out()), QStringLiteral("Probe Out0\n    a\nProbe Out1\n"));
        QCOMPARE(f.core->getProbeOut(1)->index, 1);
        QCOMPARE(f.shownValues(), QStringList({"0x1 1", "0x0 off"}));
        QCOMPARE(f.line(1)->index(), 1);
        QCOMPARE(f.values()->topLevelItem(1)->type(), 1001);
        QCOMPARE(f.modified->count(), 2);
    }

    void adds64PortsAtMost()
    {
        QList<Signals> ports;
        for (int i = 0; i < 63; ++i)
            ports.append(Signals());
        Fixture f(coreOf(ports, ports));
        f.click("btnProbeInAdd");
        f.click("btnProbeOutAdd");
        QCOMPARE(f.modified->count(), 2);
        script().expectBox(warning("Support 64 Probe Ins at most."));
        f.click("btnProbeInAdd");
        script().expectBox(warning("Support 64 Probe Outs at most."));
        f.click("btnProbeOutAdd");
        QCOMPARE(f.in()->topLevelItemCount(), 64);
        QCOMPARE(f.out()->topLevelItemCount(), 64);
        QCOMPARE(f.core->probeIns.size(), 64);
        QCOMPARE(f.core->probeOuts.size(), 64);
        QCOMPARE(f.modified->count(), 2);
    }

    void keepsTheLastPort_data()
    {
        QTest::addColumn<bool>("selected");
        QTest::newRow("selected") << true;
        QTest::newRow("not selected") << false;
    }
    void keepsTheLastPort()
    {
        QFETCH(bool, selected);
        Fixture f(coreOf({{}}, {{}}));
        f.in()->topLevelItem(0)->setSelected(selected);
        f.out()->topLevelItem(0)->setSelected(selected);
        script().expectBox(warning("Support 1 Probe In at least."));
        f.click("btnProbeInRemove");
        script().expectBox(warning("Support 1 Probe Out at least."));
        f.click("btnProbeOutRemove");
        QCOMPARE(f.in()->topLevelItemCount(), 1);
        QCOMPARE(f.out()->topLevelItemCount(), 1);
        QCOMPARE(f.modified->count(), 0);
    }

    void removesAllOfTwoPorts()
    {
        Fixture f(coreOf({{net("a")}, {}}, {{net("b")}, {}}));
        f.in()->expandAll();
        f.in()->selectAll(); // Ports and their signals.
        f.click("btnProbeInRemove");
        f.out()->expandAll();
        f.out()->selectAll();
        f.click("btnProbeOutRemove");
        QCOMPARE(f.textOf(f.in()) + f.textOf(f.out()) + f.textOf(f.values()), QString());
        QVERIFY(f.core->probeIns.isEmpty());
        QVERIFY(f.core->probeOuts.isEmpty());
        QCOMPARE(f.modified->count(), 2);
        // Without ports nothing is kept back any more.
        f.click("btnProbeInRemove");
        f.click("btnProbeOutRemove");
        QCOMPARE(f.modified->count(), 4);
    }

    void removesFromTheMiddle()
    {
        Fixture f(coreOf({{net("a")}, {net("b")}, {net("c")}},
                         {{net("d")}, {bus("e", 4)}, {bus("f", 8)}}, {"0x1", "0x9", "0xA5"}));
        f.in()->topLevelItem(1)->setSelected(true);
        f.click("btnProbeInRemove");
        QCOMPARE(f.textOf(f.in()), QStringLiteral("Probe In0\n    a\nProbe In1\n    c\n"));
        QCOMPARE(f.core->getProbeIn(1)->index, 1);

        const QPointer<InitialValueLine> removed = f.line(1);
        f.out()->topLevelItem(1)->setSelected(true);
        f.click("btnProbeOutRemove");
        QVERIFY(!removed);
        QCOMPARE(f.textOf(f.out()), QStringLiteral("Probe Out0\n    d\nProbe Out1\n    f\n"));
        QCOMPARE(f.shownValues(), QStringList({"0x1 1", "0xA5 10100101"}));
        QCOMPARE(f.values()->findChildren<QLabel *>().size(), 2);
        QCOMPARE(f.line(1)->index(), 1);
        QCOMPARE(f.core->getProbeOut(1)->index, 1);
        f.page->save();
        QCOMPARE(f.core->getProbeOut(1)->initialValue, QStringLiteral("0xA5"));
        QCOMPARE(f.modified->count(), 2);
    }

    void removesPortsInTheOrderOfTheSelection()
    {
        const QList<Signals> ports{{net("a")}, {net("b")}, {net("c")}, {net("d")}};
        Fixture f(coreOf(ports, ports, {"0x0", "0x1", "0x0", "0x1"}));
        for (QTreeWidget *tree : {f.in(), f.out()}) {
            tree->topLevelItem(2)->setSelected(true);
            tree->topLevelItem(0)->setSelected(true);
        }
        f.click("btnProbeInRemove");
        QCOMPARE(f.textOf(f.in()), QStringLiteral("Probe In0\n    b\nProbe In1\n    d\n"));
        QCOMPARE(TarnTest::namesOf(f.core->getProbeIn(0)->signals), QStringList("b"));
        QCOMPARE(TarnTest::namesOf(f.core->getProbeIn(1)->signals), QStringList("d"));
        f.click("btnProbeOutRemove");
        QCOMPARE(f.textOf(f.out()), QStringLiteral("Probe Out0\n    b\nProbe Out1\n    d\n"));
        QCOMPARE(f.shownValues(), QStringList({"0x1 1", "0x1 1"}));
        QCOMPARE(TarnTest::namesOf(f.core->getProbeOut(0)->signals), QStringList("b"));
        QCOMPARE(TarnTest::namesOf(f.core->getProbeOut(1)->signals), QStringList("d"));
    }

    void rowsBelowARemovedOneGoWithIt()
    {
        Fixture f(coreOf({{bus("d", 2)}, {bus("e", 2), net("a")}, {}}, {}));
        f.in()->topLevelItem(0)->setSelected(true);
        f.in()->topLevelItem(0)->child(0)->child(1)->setSelected(true);
        f.in()->topLevelItem(1)->child(0)->setSelected(true);
        f.in()->topLevelItem(1)->child(0)->child(0)->setSelected(true);
        f.click("btnProbeInRemove");
        QCOMPARE(f.textOf(f.in()), QStringLiteral("Probe In0\n    a\nProbe In1\n"));
        QCOMPARE(f.core->probeIns.size(), 2);
    }

    void removesFromAShownPage()
    {
        Fixture f(
            coreOf({}, {{bus("d", 4)}, {net("a"), net("b")}, {net("c")}}, {"0x9", "0x2", "0x1"}));
        f.show();
        f.out()->expandAll();
        f.out()->topLevelItem(1)->setSelected(true);
        f.click("btnProbeOutRemove");
        f.values()->doItemsLayout(); // Looks at all widgets of the tree.
        QCOMPARE(f.shownValues(), QStringList({"0x9 1001", "0x1 1"}));
        QCOMPARE(f.values()->findChildren<QLabel *>().size(), 2);
        f.verifyAligned();
    }

    void removingASignalRowLeavesThePortAlone()
    {
        Fixture f(coreOf({{net("a"), net("b")}, {}}, {{net("c")}, {}}));
        f.in()->topLevelItem(0)->child(0)->setSelected(true);
        f.click("btnProbeInRemove");
        QCOMPARE(f.textOf(f.in()), QStringLiteral("Probe In0\n    b\nProbe In1\n"));
        f.page->save();
        QCOMPARE(f.core->getProbeIn(0)->signals.size(), 2);
        QCOMPARE(f.modified->count(), 1);

        f.out()->topLevelItem(0)->child(0)->setSelected(true);
        f.click("btnProbeOutRemove");
        QCOMPARE(f.textOf(f.out()), QStringLiteral("Probe Out0\n    c\nProbe Out1\n"));
        QCOMPARE(f.core->probeOuts.size(), 2);
        QCOMPARE(f.modified->count(), 2);
    }

    void signalRowEndsTheRemovalOfProbeOuts()
    {
        Fixture f(coreOf({}, {{net("a")}, {net("b")}, {net("c")}}));
        f.out()->topLevelItem(0)->setSelected(true);
        f.out()->topLevelItem(1)->child(0)->setSelected(true);
        f.out()->topLevelItem(2)->setSelected(true);
        const auto selected = f.out()->selectedItems();
        int expected = 3;
        for (const QTreeWidgetItem *item : selected) {
            if (item->parent())
                break;
            --expected;
        }
        f.click("btnProbeOutRemove");
        QCOMPARE(f.core->probeOuts.size(), expected);
        QCOMPARE(f.values()->topLevelItemCount(), expected);
        QVERIFY(expected > 0);
    }

    void removingAFocusedLineShowsNoBox()
    {
        Fixture f(coreOf({}, {{bus("d", 5)}, {net("a")}}));
        f.show();
        f.out()->topLevelItem(0)->setSelected(true);
        f.line(0)->setFocus();
        f.line(0)->setText("0xFF");
        f.page->onRemoveProbeOut();
        QCOMPARE(f.core->probeOuts.size(), 1);
    }

    void deletingThePageShowsNoBox_data()
    {
        QTest::addColumn<bool>("inAWindow");
        QTest::addColumn<bool>("hidden");
        QTest::newRow("window") << false << false;
        QTest::newRow("hidden window") << false << true;
        QTest::newRow("part of a window") << true << false;
        QTest::newRow("hidden part of a window") << true << true;
    }
    void linesAreInertBeforeTheirPageGoes()
    {
        QWidget container; // The page is not hidden before it is deleted.
        Fixture f(coreOf({}, {{bus("d", 5)}}));
        f.page->setParent(&container);
        container.show();
        QApplication::setActiveWindow(&container);
        InitialValueLine *line = f.line(0);
        line->setFocus();
        line->setText("0xFF");
        QVERIFY(line->hasFocus());
        QObject::connect(f.find<QLabel>("labelPorts"), &QObject::destroyed, line,
                         [line] { line->clearFocus(); });
        f.core.reset();
        delete f.page;
    }

    void deletingThePageShowsNoBox()
    {
        QFETCH(bool, inAWindow);
        QFETCH(bool, hidden);
        QWidget window;
        Fixture f(coreOf({}, {{bus("d", 5)}}));
        if (inAWindow) {
            f.page->setParent(&window);
            window.show();
        }
        f.show();
        f.line(0)->setFocus();
        f.line(0)->setText("0xFF");
        QVERIFY(f.line(0)->hasFocus());
        if (hidden)
            f.page->hide();
        f.core.reset();
        delete f.page;
    }

    void editsAPort_data()
    {
        QTest::addColumn<bool>("out");
        QTest::newRow("in") << false;
        QTest::newRow("out") << true;
    }
    void editsAPort()
    {
        QFETCH(bool, out);
        const QList<Signals> ports{{net("a")}, {bus("d", 4)}};
        Fixture f(coreOf(ports, ports, {"0x1", "0x9"}));
        f.show();
        QTreeWidget *tree = out ? f.out() : f.in();
        const auto add = [tree](QDialog *dialog) {
            tree->setCurrentItem(tree->topLevelItem(0));
            signal2TreeItem(listOf(dialog), net("new"), 0);
            dialog->accept();
        };
        script().expectDialog("TARN::ProbeDialog", out ? "Probe Out Port" : "Probe In Port", add);
        const QRect row = tree->visualItemRect(tree->topLevelItem(1));
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, row.center());
        QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, row.center());

        const ProbeIn *port = out ? f.core->getProbeOut(1) : f.core->getProbeIn(1);
        QCOMPARE(TarnTest::namesOf(port->signals), QStringList({"d", "new"}));
        QCOMPARE(tree->topLevelItem(1)->childCount(), 2);
        QCOMPARE(tree->currentItem(), tree->topLevelItem(1));
        QVERIFY(tree->topLevelItem(1)->isExpanded());
        QCOMPARE(f.shownValues().at(1), out ? QStringLiteral("0x12 1001 0") : "0x9 1001");
        QCOMPARE(f.modified->count(), 1);
    }

    void cancelledEditChangesNothing()
    {
        Fixture f(coreOf({{net("a")}}, {}));
        script().expectDialog("TARN::ProbeDialog", "Probe In Port", [](QDialog *dialog) {
            signal2TreeItem(listOf(dialog), net("new"), 0);
            dialog->reject();
        });
        f.page->editProbeIn(f.in()->topLevelItem(0), 0);
        QCOMPARE(f.textOf(f.in()), QStringLiteral("Probe In0\n    a\n"));
        QCOMPARE(f.modified->count(), 0);
    }

    void editsFromTheRowOfAMember()
    {
        Fixture f(coreOf({{}, {bus("d", 2)}}, {}));
        script().expectDialog("TARN::ProbeDialog", "Probe In Port", [](QDialog *dialog) {
            QCOMPARE(modelText(listOf(dialog)->model()), QStringLiteral("d\n    d[1]\n    d[0]\n"));
            dialog->reject();
        });
        f.page->editProbeIn(f.in()->topLevelItem(1)->child(0)->child(1), 0);
    }

    void returnAndEnterOpenTheCurrentPort_data()
    {
        QTest::addColumn<bool>("out");
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("in, Return") << false << Qt::Key_Return;
        QTest::newRow("in, Enter") << false << Qt::Key_Enter;
        QTest::newRow("out, Return") << true << Qt::Key_Return;
        QTest::newRow("out, Enter") << true << Qt::Key_Enter;
    }
    void returnAndEnterOpenTheCurrentPort()
    {
        QFETCH(bool, out);
        QFETCH(Qt::Key, key);
        Fixture f(coreOf({{}, {net("a")}}, {{}, {net("a")}}));
        QTreeWidget *tree = out ? f.out() : f.in();
        f.page->show();
        f.page->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(f.page));
        tree->setFocus();
        tree->setCurrentItem(nullptr);
        QTest::keyClick(tree, key);

        script().expectDialog(
            "TARN::ProbeDialog", out ? "Probe Out Port" : "Probe In Port", [](QDialog *dialog) {
                QCOMPARE(modelText(listOf(dialog)->model()), QStringLiteral("a\n"));
                dialog->reject();
            });
        tree->setCurrentItem(tree->topLevelItem(1));
        QTest::keyClick(tree, key);
    }

    void rowWithoutAPortIsNotEdited()
    {
        Fixture f(coreOf({{}}, {{}}));
        f.page->editProbeIn(new QTreeWidgetItem(f.in(), 1001), 0);
        f.page->editProbeOut(new QTreeWidgetItem(f.out(), 1001), 0);
    }

    void newNetlistWhileADialogIsOpen_data() { editsAPort_data(); }
    void newNetlistWhileADialogIsOpen()
    {
        QFETCH(bool, out);
        auto former = NETWEIR::NetlistBuilder("top").take();
        const auto netlist = netlistWith("flag");
        Fixture f(coreOf({{net("a")}}, {{net("b")}}), former.get());
        QSignalSpy changed(f.page, &ProbePortsOptionWidget::netlistChanged);
        script().expectDialog("TARN::ProbeDialog", out ? "Probe Out Port" : "Probe In Port",
                              [&](QDialog *dialog) {
                                  f.page->setNlsdata(netlist.get());
                                  former.reset();
                                  QCOMPARE(dialog->isVisible(), !out);
                                  if (!out)
                                      addBySearch(&script(), dialog, "flag");
                              });
        f.editFirst(out);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(f.textOf(f.in()), out ? QStringLiteral("Probe In0\n    a\n")
                                       : QStringLiteral("Probe In0\n    a\n    top/flag\n"));
        QCOMPARE(f.textOf(f.out()), QStringLiteral("Probe Out0\n    b\n"));
        QCOMPARE(f.modified->count(), out ? 0 : 1);
    }

    void dialogsOfThePortsSearchTheNetlist_data() { editsAPort_data(); }
    void dialogsOfThePortsSearchTheNetlist()
    {
        QFETCH(bool, out);
        const auto netlist = netlistWith("flag");
        Fixture f(coreOf({{}}, {{}}));
        f.page->setNlsdata(netlist.get());
        script().expectDialog("TARN::ProbeDialog", out ? "Probe Out Port" : "Probe In Port",
                              [&](QDialog *dialog) { addBySearch(&script(), dialog, "flag"); });
        f.editFirst(out);
        const ProbeIn *port = out ? f.core->getProbeOut(0) : f.core->getProbeIn(0);
        QCOMPARE(TarnTest::namesOf(port->signals), QStringList("top/flag"));
    }

    void newNetlistRebuildsTheProbeInsOnly()
    {
        Fixture f(coreOf({{net("a")}}, {{net("b")}}));
        f.core->getProbeIn(0)->signals = {net("c")};
        f.core->getProbeOut(0)->signals = {net("d")};
        f.page->setNlsdata(nullptr);
        QCOMPARE(f.textOf(f.in()), QStringLiteral("Probe In0\n    c\n"));
        QCOMPARE(f.textOf(f.out()), QStringLiteral("Probe Out0\n    b\n"));
    }

    void pageMayGoWhileADialogIsOpen()
    {
        for (const bool out : {true, false}) {
            Fixture f(coreOf({{net("a")}}, {{net("b")}}));
            script().expectDialog("TARN::ProbeDialog", out ? "Probe Out Port" : "Probe In Port",
                                  [&f](QDialog *) {
                                      delete f.page;
                                      f.core.reset();
                                  });
            f.editFirst(out);
            QVERIFY(!f.page);
            QCOMPARE(f.modified->count(), 0);
        }
    }

    void clickSelectsTheTwin()
    {
        const Signals three{net("a"), net("b"), net("c")};
        Fixture f(coreOf({}, {three, {}, three}));
        QTreeWidgetItem *row = f.out()->topLevelItem(2);
        QTreeWidgetItem *valueRow = f.values()->topLevelItem(2);
        f.page->onProbeOutClicked(row->child(2), 0);
        QCOMPARE(f.values()->selectedItems(), QList<QTreeWidgetItem *>{valueRow->child(2)});
        f.page->onProbeOutClicked(row, 0);
        QCOMPARE(f.values()->selectedItems(), QList<QTreeWidgetItem *>{valueRow});
        f.page->onValueTreeClicked(valueRow->child(1), 0);
        QCOMPARE(f.out()->selectedItems(), QList<QTreeWidgetItem *>{row->child(1)});
        f.page->onValueTreeClicked(valueRow, 0);
        QCOMPARE(f.out()->selectedItems(), QList<QTreeWidgetItem *>{row});

        // Without a twin nothing is selected.
        delete valueRow->child(2);
        f.page->onProbeOutClicked(row->child(2), 0);
        QVERIFY(f.values()->selectedItems().isEmpty());
        // Nor for a row that is neither a port nor a signal of one.
        QTreeWidgetItem *foreign = new QTreeWidgetItem(1003);
        row->insertChild(0, foreign);
        f.page->onProbeOutClicked(foreign, 0);
        QVERIFY(f.values()->selectedItems().isEmpty());
        for (const int type : {1000, 1002}) {
            valueRow->setSelected(true);
            foreign = new QTreeWidgetItem(type);
            f.out()->insertTopLevelItem(0, foreign);
            f.page->onProbeOutClicked(foreign, 0);
            QVERIFY(f.values()->selectedItems().isEmpty());
        }
    }

    void clicksReachTheOtherTree()
    {
        Fixture f(coreOf({}, {{net("a"), net("b")}}));
        f.show();
        f.out()->expandAll();
        QWidget *label = f.values()->itemWidget(f.values()->topLevelItem(0)->child(1), 0);
        QTest::mouseClick(label->window()->windowHandle(), Qt::LeftButton, {},
                          label->mapTo(label->window(), label->rect().center()));
        QCOMPARE(f.out()->selectedItems(),
                 QList<QTreeWidgetItem *>{f.out()->topLevelItem(0)->child(1)});
        QTreeWidgetItem *first = f.out()->topLevelItem(0)->child(0);
        QTest::mouseClick(f.out()->viewport(), Qt::LeftButton, {},
                          f.out()->visualItemRect(first).center());
        QCOMPARE(f.values()->selectedItems(),
                 QList<QTreeWidgetItem *>{f.values()->topLevelItem(0)->child(0)});
    }

    void expansionIsMirrored()
    {
        Fixture f(coreOf({}, {{net("a")}, {net("b")}}));
        f.out()->topLevelItem(1)->setExpanded(true);
        QVERIFY(f.values()->topLevelItem(1)->isExpanded());
        QVERIFY(!f.values()->topLevelItem(0)->isExpanded());
        f.values()->topLevelItem(1)->setExpanded(false);
        QVERIFY(!f.out()->topLevelItem(1)->isExpanded());
        f.values()->topLevelItem(0)->setExpanded(true);
        QVERIFY(f.out()->topLevelItem(0)->isExpanded());
        f.out()->topLevelItem(0)->setExpanded(false);
        QVERIFY(!f.values()->topLevelItem(0)->isExpanded());
        f.page->onProbeOutTreeExpanded(f.out()->topLevelItem(0)->child(0)); // Has no twin.
    }

    void scrollingIsMirrored()
    {
        Fixture f(coreOf({}, {nets(100), nets(100)}));
        f.show();
        QScrollBar *out = f.out()->verticalScrollBar();
        QScrollBar *values = f.values()->verticalScrollBar();
        f.out()->topLevelItem(0)->setExpanded(true);
        f.out()->scrollToItem(f.out()->topLevelItem(0)->child(90));
        QVERIFY(out->value() > 50);
        QCOMPARE(values->value(), out->value());
        QCOMPARE(values->maximum(), out->maximum());
        values->setValue(7);
        QCOMPARE(out->value(), 7);
        out->setValue(out->maximum());
        QCOMPARE(values->value(), values->maximum());
        QTreeWidgetItem *last = f.values()->topLevelItem(1);
        QCOMPARE(f.values()->visualItemRect(last).top(),
                 f.out()->visualItemRect(f.out()->topLevelItem(1)).top());
    }

    void scrollingReachesRowsThatAreNotLaidOutYet()
    {
        Signals many;
        for (int i = 0; i < 100; ++i)
            many.append(net(QString::number(i)));
        Fixture f(coreOf({}, {{}, many}));
        f.show();
        f.out()->topLevelItem(0)->setSelected(true);
        f.click("btnProbeOutRemove");
        f.out()->topLevelItem(0)->setExpanded(true);
        f.out()->scrollToItem(f.out()->topLevelItem(0)->child(90));
        QVERIFY(f.out()->verticalScrollBar()->value() > 50);
        QCoreApplication::processEvents();
        QCOMPARE(f.values()->verticalScrollBar()->value(), f.out()->verticalScrollBar()->value());
    }

    void rebuildingKeepsPlaceAndExpansion_data()
    {
        QTest::addColumn<bool>("out");
        QTest::addColumn<QString>("change");
        for (const bool out : {false, true}) {
            for (const char *change : {"add", "remove", "edit", "netlist"})
                QTest::addRow("%s %s", change, out ? "out" : "in") << out << change;
        }
    }
    void rebuildingKeepsPlaceAndExpansion()
    {
        QFETCH(bool, out);
        QFETCH(QString, change);
        Signals many;
        for (int i = 0; i < 40; ++i)
            many.append(net(QString::number(i)));
        const QList<Signals> ports{many, many, many, {}};
        Fixture f(coreOf(ports, ports));
        f.show();
        QTreeWidget *tree = out ? f.out() : f.in();
        tree->topLevelItem(0)->setExpanded(true);
        tree->topLevelItem(1)->setExpanded(true);
        tree->scrollToItem(tree->topLevelItem(1)->child(30));
        const int place = tree->verticalScrollBar()->value();
        QVERIFY(place > 0);

        if (change == "add") {
            f.click(out ? "btnProbeOutAdd" : "btnProbeInAdd");
        } else if (change == "remove") {
            tree->topLevelItem(2)->setSelected(true);
            f.click(out ? "btnProbeOutRemove" : "btnProbeInRemove");
        } else if (change == "netlist") {
            f.page->setNlsdata(nullptr);
        } else {
            // From a signal whose port is out of sight.
            script().expectDialog("TARN::ProbeDialog", out ? "Probe Out Port" : "Probe In Port",
                                  [](QDialog *dialog) { dialog->accept(); });
            Q_EMIT tree->itemDoubleClicked(tree->topLevelItem(1)->child(30), 0);
        }
        QCoreApplication::processEvents();
        QCOMPARE(tree->verticalScrollBar()->value(), place);
        QVERIFY(tree->topLevelItem(0)->isExpanded());
        QVERIFY(tree->topLevelItem(1)->isExpanded());
        QVERIFY(!tree->topLevelItem(2)->isExpanded());
        if (out)
            QCOMPARE(f.values()->verticalScrollBar()->value(), place);
    }

    void longNamesAreElidedInTheMiddle()
    {
        const QString name = QString("top/") + QString(500, 'n');
        Fixture f(coreOf({{net(name)}}, {{net(name)}}));
        for (const QTreeWidget *tree : {f.in(), f.out()}) {
            QCOMPARE(tree->textElideMode(), Qt::ElideMiddle);
            QCOMPARE(tree->topLevelItem(0)->child(0)->toolTip(0), name);
        }
    }

    void bitsThatDoNotFitAreInTheToolTip()
    {
        Fixture f(coreOf({}, {{bus("d", 256)}}, {"0x1"}));
        f.show();
        QTreeWidgetItem *row = f.values()->topLevelItem(0)->child(0);
        const auto *label = qobject_cast<QLabel *>(f.values()->itemWidget(row, 0));
        QCOMPARE(label->toolTip(), label->text());
        f.line(0)->setText("0x8");
        f.line(0)->onTextChange();
        QVERIFY(label->text().contains('1'));
        QCOMPARE(label->toolTip(), label->text());
    }

    void labelsOutOfSightHaveNoStyleYet()
    {
        Fixture f(coreOf({}, {nets(200), {bus("d", 9), net("e")}}, {"0x0", "0x155"}));
        f.out()->expandAll();
        f.show();
        const auto isPolished = [&f](int signal) {
            return f.label(0, signal)->testAttribute(Qt::WA_WState_Polished);
        };
        QVERIFY(f.label(0, 0)->isVisible());
        QVERIFY(isPolished(0));
        for (int i = 30; i < 200; ++i) {
            QVERIFY(f.label(0, i)->isHidden());
            QVERIFY(!isPolished(i));
        }
        QVERIFY(f.label(0, 150)->sizeHint().height() > 0); // Needs the style.
        QVERIFY(isPolished(150));
        f.values()->scrollToItem(f.values()->topLevelItem(0)->child(100),
                                 QAbstractItemView::PositionAtTop);
        QVERIFY(f.label(0, 100)->isVisible());
        QVERIFY(isPolished(100));
        QVERIFY(!f.label(0, 0)->isVisible());
        f.verifyAligned();
        QCOMPARE(f.label(1, 0)->toolTip(), QStringLiteral("010101010"));
        QCOMPARE(f.label(1, 1)->toolTip(), QString());
    }

    void rebuiltRowsHaveNewLabels()
    {
        Fixture f(coreOf({}, {nets(2)}, {"0x0"}));
        const QPointer<QLabel> former = f.label(0, 1);
        former->setObjectName(QStringLiteral("former"));
        f.setSignals(0, nets(3));
        QVERIFY(!former);
        QCOMPARE(f.values()->viewport()->findChildren<QLabel *>().size(), 3);
        QVERIFY(!f.values()->findChild<QLabel *>(QStringLiteral("former")));
    }

    void labelsWithoutAccessibleObjectGetOne()
    {
        Fixture f(coreOf({}, {{net("a")}}, {"0x1"}));
        QAccessibleInterface *object = QAccessible::queryAccessibleInterface(f.label(0, 0));
        QVERIFY(object);
        QCOMPARE(object->role(), QAccessible::StaticText);
        QCOMPARE(object->text(QAccessible::Name), QStringLiteral("1"));
        QCOMPARE(f.label(0, 0)->metaObject(), &QLabel::staticMetaObject);
    }

    void labelsLookLikeThoseThatHadTheirStyleAtOnce_data()
    {
        QTest::addColumn<PageAction>("change");
        const auto add = [](const char *name, const PageAction &change) {
            QTest::newRow(name) << change;
        };
        const QFont font(QStringLiteral("DejaVu Serif"), 12, QFont::Bold, true);
        const QString sheet =
            QStringLiteral("QLabel { color: red; border: 1px solid blue; padding-left: 9px }");
        QPalette dark = QApplication::palette();
        for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText})
            dark.setColor(role, Qt::yellow);
        add("no change", [](Fixture &) {});
        add("font of the application", [=](Fixture &) { QApplication::setFont(font); });
        add("font of labels", [=](Fixture &) { QApplication::setFont(font, "QLabel"); });
        add("font of the page", [=](Fixture &f) { f.page->setFont(font); });
        add("font of the tree", [=](Fixture &f) { f.values()->setFont(font); });
        add("palette of the application", [=](Fixture &) { QApplication::setPalette(dark); });
        add("another palette of the application", [=](Fixture &) {
            // The first one goes to all widgets, because it replaces the palettes of classes.
            QApplication::setPalette(dark);
            QPalette other = dark;
            other.setColor(QPalette::Text, Qt::red);
            QApplication::setPalette(other);
        });
        add("palette of labels", [=](Fixture &) { QApplication::setPalette(dark, "QLabel"); });
        add("palette of the page", [=](Fixture &f) { f.page->setPalette(dark); });
        add("style sheet of the application", [=](Fixture &) { qApp->setStyleSheet(sheet); });
        add("style sheet and palette", [=](Fixture &) {
            qApp->setStyleSheet(QStringLiteral("QLabel { background: cyan }"));
            QApplication::setPalette(dark);
        });
        add("style sheet of the page", [=](Fixture &f) { f.page->setStyleSheet(sheet); });
        add("style sheet of the tree",
            [=](Fixture &f) { f.values()->setStyleSheet(f.values()->styleSheet() + sheet); });
        add("style", [](Fixture &) { QApplication::setStyle(QStringLiteral("windows")); });
        add("disabled", [](Fixture &f) { f.page->setEnabled(false); });
        add("from right to left", [](Fixture &f) { f.page->setLayoutDirection(Qt::RightToLeft); });
    }
    void labelsLookLikeThoseThatHadTheirStyleAtOnce()
    {
        QFETCH(PageAction, change);
        const QString style = QApplication::style()->objectName();
        const QFont font = QApplication::font();
        const QPalette palette = QApplication::palette();
        Fixture f(coreOf({}, {nets(60)}));
        f.out()->expandAll();
        f.show();
        QLabel plain(QStringLiteral("0"), f.values()->viewport());
        plain.setFixedHeight(20);
        plain.show();
        change(f);
        // One after the change, and one more after the palette is another one again.
        for (const int signal : {40, 20}) {
            f.values()->scrollToItem(f.values()->topLevelItem(0)->child(signal),
                                     QAbstractItemView::PositionAtTop);
            QLabel *label = f.label(0, signal);
            QVERIFY(label->isVisible());
            plain.setGeometry(label->geometry());
            plain.show();
            QCOMPARE(label->sizeHint(), plain.sizeHint());
            QCOMPARE(label->grab().toImage(), plain.grab().toImage());
            QApplication::setPalette(palette, "QLabel");
            QApplication::setPalette(palette);
            QCOMPARE(label->grab().toImage(), plain.grab().toImage());
        }
        qApp->setStyleSheet(QString());
        QApplication::setStyle(style);
        QApplication::setFont(font, "QLabel");
        QApplication::setFont(font);
    }

    void tabGoesThroughThePageInReadingOrder()
    {
        auto core = coreOf({{}}, {{net("a")}, {}, {net("b")}});
        core->syncUserClock = true;
        Fixture f(std::move(core));
        f.show();
        f.click("btnProbeOutAdd");
        f.setSignals(1, {net("c")});
        f.setSignals(3, {net("d")});
        f.in()->setFocus();
        QStringList names;
        do {
            const QWidget *focused = QApplication::focusWidget();
            const auto *line = qobject_cast<const InitialValueLine *>(focused);
            names.append(line ? QString("line %1").arg(line->index()) : focused->objectName());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        } while (QApplication::focusWidget() != f.in() && names.size() < 20);
        QCOMPARE(names.join(' '),
                 QStringLiteral("treeProbeIn btnProbeInAdd btnProbeInRemove treeProbeOut "
                                "line 0 line 1 line 2 line 3 btnProbeOutAdd btnProbeOutRemove "
                                "checkUserClock lineEditUserClock btnUserClock"));
    }

    void userClockOfTheCore_data()
    {
        QTest::addColumn<bool>("on");
        QTest::newRow("on") << true;
        QTest::newRow("off") << false;
    }
    void userClockOfTheCore()
    {
        QFETCH(bool, on);
        auto core = coreOf({}, {});
        core->userClock = QStringLiteral("top.clk");
        core->syncUserClock = on;
        Fixture f(std::move(core));
        QCOMPARE(f.find<QLineEdit>("lineEditUserClock")->text(), QStringLiteral("top.clk"));
        auto *check = f.find<QCheckBox>("checkUserClock");
        for (const bool state : {on, !on}) {
            QCOMPARE(check->isChecked(), state);
            for (const char *name : {"labelClock", "lineEditUserClock", "btnUserClock"})
                QCOMPARE(f.find<QWidget>(name)->isEnabled(), state);
            f.page->save();
            QCOMPARE(f.core->syncUserClock, state);
            check->click();
        }
        check->setChecked(!on); // Not by the user.
        QCOMPARE(f.modified->count(), 2);
        f.find<QLineEdit>("lineEditUserClock")->setText("other");
        QCOMPARE(f.modified->count(), 3);
        f.page->save();
        QCOMPARE(f.core->userClock, QStringLiteral("other"));
    }

    void picksTheUserClock_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("net");
        QTest::addColumn<bool>("accept");
        QTest::addColumn<int>("modified");
        QTest::newRow("accepted") << "old"
                                  << "clk" << true << 2; // The text changes as well.
        QTest::newRow("the same") << "top/clk"
                                  << "clk" << true << 1;
        QTest::newRow("cancelled") << "old"
                                   << "clk" << false << 0;
        QTest::newRow("nothing chosen") << "old"
                                        << "none" << true << 0;
    }
    void picksTheUserClock()
    {
        QFETCH(QString, before);
        QFETCH(QString, net);
        QFETCH(bool, accept);
        QFETCH(int, modified);
        NETWEIR::NetlistBuilder builder("top");
        // Fit for a clock: only the mark for Probe In counts.
        NETWEIR::NetMarks marks;
        marks.excludedForProbeOut = true;
        builder.addNet(builder.top(), "clk", marks);
        const auto netlist = builder.take();
        auto core = coreOf({}, {});
        core->userClock = before;
        core->syncUserClock = true;
        Fixture f(std::move(core), netlist.get());
        script().expectDialog("TARN::TarnSignalSelectDialog", "Search Nets", [=](QDialog *dialog) {
            searchAndAddAll(dialog, net);
            dialog->done(accept ? QDialog::Accepted : QDialog::Rejected);
        });
        f.click("btnUserClock");
        QCOMPARE(f.find<QLineEdit>("lineEditUserClock")->text(), modified ? "top/clk" : before);
        QCOMPARE(f.modified->count(), modified);
    }

    void newNetlistWhileTheUserClockIsPicked()
    {
        auto former = NETWEIR::NetlistBuilder("top").take();
        const auto netlist = netlistWith("clk");
        auto core = coreOf({}, {});
        core->syncUserClock = true;
        Fixture f(std::move(core), former.get());
        script().expectDialog("TARN::TarnSignalSelectDialog", "Search Nets", [&](QDialog *dialog) {
            f.page->setNlsdata(netlist.get());
            former.reset();
            searchAndAddAll(dialog, "clk");
            dialog->accept();
        });
        f.click("btnUserClock");
        QCOMPARE(f.find<QLineEdit>("lineEditUserClock")->text(), QStringLiteral("top/clk"));
    }

    void pageMayGoWhileTheUserClockIsPicked()
    {
        Fixture f(coreOf({}, {}));
        script().expectDialog("TARN::TarnSignalSelectDialog", "Search Nets",
                              [&f](QDialog *) { delete f.page; });
        f.page->onbtnUserClock();
        QVERIFY(!f.page);
    }

    void savesWhatTheLinesShow()
    {
        Fixture f(coreOf({}, {{bus("d", 8)}, {}, {bus("e", 5)}}, {"0x00", "0x0", "0x1F"}));
        f.line(0)->setText("0xC3"); // Not applied yet.
        f.page->save();
        QCOMPARE(f.core->getProbeOut(0)->initialValue, QStringLiteral("0xC3"));
        QCOMPARE(f.core->getProbeOut(1)->initialValue, QStringLiteral("0x0"));
        QCOMPARE(f.core->getProbeOut(2)->initialValue, QStringLiteral("0x1F"));
    }

    void savesByTheNumberOfThePort()
    {
        Fixture f(coreOf({}, {{net("a")}, {net("b")}, {net("c")}}, {"0x1", "0x0", "0x1"}));
        f.core->getProbeOut(0)->index = 1;
        f.core->getProbeOut(1)->index = 0;
        f.core->getProbeOut(2)->index = 7; // No such row.
        f.core->getProbeOut(2)->initialValue = QStringLiteral("kept");
        f.page->save();
        QCOMPARE(f.core->getProbeOut(0)->initialValue, QStringLiteral("0x0"));
        QCOMPARE(f.core->getProbeOut(1)->initialValue, QStringLiteral("0x1"));
        QCOMPARE(f.core->getProbeOut(2)->initialValue, QStringLiteral("kept"));
    }

    void typingMarksThePageModified()
    {
        Fixture f(coreOf({}, {{bus("d", 8)}}));
        f.show();
        f.line(0)->setFocus();
        f.line(0)->setCursorPosition(2);
        QTest::keyClicks(f.line(0), "a5");
        QCOMPARE(f.modified->count(), 2);
        f.out()->setFocus();
        QCOMPARE(f.shownValues(), QStringList({"0xA5 10100101"}));
    }

    void editsAreCompleteAfterModified_data()
    {
        QTest::addColumn<PageAction>("act");
        QTest::addColumn<QString>("log");
        const auto row = [](const char *name, const char *log, const PageAction &act) {
            QTest::newRow(name) << act << QString(log);
        };
        const auto clock = [](const Fixture &f) { return f.find<QLineEdit>("lineEditUserClock"); };
        row("add in", "modified edited", [](Fixture &f) { f.click("btnProbeInAdd"); });
        row("add out", "modified edited", [](Fixture &f) { f.click("btnProbeOutAdd"); });
        row("remove in", "modified edited", [](Fixture &f) {
            f.in()->topLevelItem(1)->setSelected(true);
            f.click("btnProbeInRemove");
        });
        row("remove out", "modified edited", [](Fixture &f) {
            f.out()->topLevelItem(0)->setSelected(true);
            f.click("btnProbeOutRemove");
        });
        row("clock box", "modified edited",
            [](Fixture &f) { f.find<QCheckBox>("checkUserClock")->click(); });
        row("clock typed", "modified modified",
            [=](Fixture &f) { QTest::keyClicks(clock(f), "ab"); });
        row("clock typed, Return", "modified edited", [=](Fixture &f) {
            clock(f)->setFocus();
            QTest::keyClicks(clock(f), "a");
            QTest::keyClick(clock(f), Qt::Key_Return);
            QTest::keyClick(clock(f), Qt::Key_Return);
        });
        row("clock typed, focus lost", "modified edited", [=](Fixture &f) {
            clock(f)->setFocus();
            QTest::keyClicks(clock(f), "a");
            f.in()->setFocus();
        });
        row("clock typed and taken back", "modified modified", [=](Fixture &f) {
            clock(f)->setFocus();
            QTest::keyClicks(clock(f), "a");
            QTest::keyClick(clock(f), Qt::Key_Backspace);
            f.in()->setFocus();
        });
        row("clock typed, page hidden", "modified", [=](Fixture &f) {
            clock(f)->setFocus();
            QTest::keyClicks(clock(f), "a");
            f.page->hide();
        });
        row("clock typed, hidden within the window", "modified", [=](Fixture &f) {
            clock(f)->setFocus();
            QTest::keyClicks(clock(f), "a");
            f.find<QGroupBox>("groupBoxProbeOut")->hide();
        });
        row("clock typed, page closed", "modified", [=](Fixture &f) {
            clock(f)->setFocus();
            QTest::keyClicks(clock(f), "a");
            f.page->close();
        });
        row("clock typed, page deleted", "modified", [=](Fixture &f) {
            clock(f)->setFocus();
            QTest::keyClicks(clock(f), "a");
            delete f.page;
        });
        row("clock dropped", "modified edited", [=](Fixture &f) {
            QMimeData data;
            data.setText("clk");
            QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(clock(f), &enter);
            QDropEvent event({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(clock(f), &event);
            QTRY_VERIFY(clock(f)->hasFocus());
            f.in()->setFocus();
        });
        row("clock set", "modified edited", [=](Fixture &f) { clock(f)->setText("clk"); });
        row("clock set after typing", "modified modified edited", [=](Fixture &f) {
            QTest::keyClicks(clock(f), "a");
            clock(f)->setText("clk");
        });
        row("value typed", "modified modified", [](Fixture &f) {
            f.line(1)->setFocus();
            f.line(1)->setCursorPosition(2);
            QTest::keyClicks(f.line(1), "12");
        });
        row("value applied", "modified modified edited", [](Fixture &f) {
            f.line(1)->setFocus();
            f.line(1)->setCursorPosition(2);
            QTest::keyClicks(f.line(1), "12");
            f.out()->setFocus();
        });
        row("value typed, page hidden", "modified", [](Fixture &f) {
            f.line(1)->setFocus();
            f.line(1)->setCursorPosition(2);
            QTest::keyClicks(f.line(1), "1");
            f.page->hide();
        });
        row("value typed, port removed", "modified modified edited", [](Fixture &f) {
            f.line(1)->setFocus();
            f.line(1)->setCursorPosition(2);
            QTest::keyClicks(f.line(1), "1");
            f.out()->topLevelItem(1)->setSelected(true);
            f.click("btnProbeOutRemove");
        });
        row("no edit", "", [](Fixture &f) {
            f.page->updateProbeInTree();
            f.page->updateProbeOutTree();
            f.page->setNlsdata(nullptr);
            f.page->save();
            f.line(1)->onTextChange();
            f.page->showRow(ProbeTypeOut, 1, 0, -1);
            f.page->showRow(ProbeTypeIn, -1, -1, -1);
        });
    }
    void editsAreCompleteAfterModified()
    {
        QFETCH(PageAction, act);
        auto core = coreOf({{net("a")}, {net("b")}}, {{net("c")}, {bus("d", 8)}}, {"0x0", "0x00"});
        core->syncUserClock = true;
        Fixture f(std::move(core));
        f.show();
        QStringList log;
        connect(f.page, &ProbePortsOptionWidget::modified, this, [&log] { log += "modified"; });
        connect(f.page, &ProbePortsOptionWidget::edited, this, [&log] { log += "edited"; });
        act(f);
        QTEST(log.join(' '), "log");
    }

    void dialogsCompleteOneEdit_data()
    {
        QTest::addColumn<bool>("accept");
        QTest::newRow("accepted") << true;
        QTest::newRow("rejected") << false;
    }
    void dialogsCompleteOneEdit()
    {
        QFETCH(bool, accept);
        const auto netlist = netlistWith("clk");
        auto core = coreOf({{net("a")}}, {{net("b")}});
        core->syncUserClock = true;
        Fixture f(std::move(core), netlist.get());
        QStringList log;
        connect(f.page, &ProbePortsOptionWidget::modified, this, [&log] { log += "modified"; });
        connect(f.page, &ProbePortsOptionWidget::edited, this, [&log] { log += "edited"; });
        for (const bool out : {false, true}) {
            script().expectDialog(
                "TARN::ProbeDialog", out ? "Probe Out Port" : "Probe In Port",
                [=](QDialog *dialog) { accept ? dialog->accept() : dialog->reject(); });
            f.editFirst(out);
            QCOMPARE(log.join(' '), QString(accept ? "modified edited" : ""));
            log.clear();
        }
        script().expectDialog("TARN::TarnSignalSelectDialog", "Search Nets", [=](QDialog *dialog) {
            searchAndAddAll(dialog, "clk");
            accept ? dialog->accept() : dialog->reject();
        });
        f.click("btnUserClock");
        QCOMPARE(log.join(' '), QString(accept ? "modified modified edited" : ""));
    }

    void refusedEditsAreNone()
    {
        Fixture f(coreOf({{}}, {{}}));
        const QSignalSpy edited(f.page, &ProbePortsOptionWidget::edited);
        script().expectBox(warning("Support 1 Probe In at least."));
        f.click("btnProbeInRemove");
        script().expectBox(warning("Support 1 Probe Out at least."));
        f.click("btnProbeOutRemove");
        QCOMPARE(edited.count(), 0);
    }

    void pageMayGoWhenItIsModified()
    {
        Fixture f(coreOf({{}}, {{}}));
        connect(f.page, &ProbePortsOptionWidget::modified, this, [&f] { delete f.page; });
        f.page->onAddProbeIn();
        QVERIFY(!f.page);
    }

    void clockLineLeavesUndoToTheWindow()
    {
        auto core = coreOf({}, {});
        core->syncUserClock = true;
        Fixture f(std::move(core));
        f.show();
        QAction undo;
        undo.setShortcut(QKeySequence::Undo);
        const QSignalSpy undone(&undo, &QAction::triggered);
        f.page->addAction(&undo);
        auto *clock = f.find<QLineEdit>("lineEditUserClock");
        clock->setFocus();
        QTest::keyClicks(clock, "ab");
        QTest::keyClick(clock, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(clock->text(), QString());
        QCOMPARE(undone.count(), 0);
        QTest::keyClicks(clock, "cd");
        clock->setCursorPosition(1);
        QTest::keyClick(clock, Qt::Key_Return);
        QCOMPARE(clock->cursorPosition(), 1);
        QTest::keyClick(clock, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(undone.count(), 1);
        QCOMPARE(clock->text(), QString("cd"));
    }

    void clockLineTellsThatTypingWasUndone()
    {
        auto core = coreOf({}, {});
        core->syncUserClock = true;
        Fixture f(std::move(core));
        f.show();
        const QSignalSpy undone(f.page, &ProbePortsOptionWidget::typingUndone);
        auto *clock = f.find<QLineEdit>("lineEditUserClock");
        clock->setFocus();
        QTest::keyClicks(clock, "ab");
        QCOMPARE(undone.count(), 0);
        QTest::keyClick(clock, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(undone.count(), 1);
        QTest::keyClicks(clock, "cd");
        QCOMPARE(undone.count(), 1);
        clock->undo(); // As the context menu does.
        QCOMPARE(undone.count(), 2);
        QCOMPARE(clock->text(), QString());
    }

    void showsARow_data()
    {
        QTest::addColumn<ProbeType>("type");
        QTest::addColumn<int>("port");
        QTest::addColumn<int>("signal");
        QTest::addColumn<int>("bit");
        QTest::addColumn<QString>("shown");
        const auto row = [](const char *name, ProbeType type, int port, int signal, int bit,
                            const char *shown) {
            QTest::newRow(name) << type << port << signal << bit << QString(shown);
        };
        row("in, port", ProbeTypeIn, 20, -1, -1, "20");
        row("in, signal", ProbeTypeIn, 20, 1, -1, "20.1");
        row("in, bit", ProbeTypeIn, 20, 1, 3, "20.1.3");
        row("in, bit of a net", ProbeTypeIn, 20, 0, 3, "20.0");
        row("in, no such signal", ProbeTypeIn, 20, 7, -1, "20");
        row("in, no such bit", ProbeTypeIn, 20, 1, 8, "20.1");
        row("out, port", ProbeTypeOut, 20, -1, -1, "20");
        row("out, signal", ProbeTypeOut, 20, 1, -1, "20.1");
        row("out, bit", ProbeTypeOut, 20, 1, 3, "20.1");
        row("out, first", ProbeTypeOut, 0, 0, -1, "0.0");
    }
    void showsARow()
    {
        QFETCH(ProbeType, type);
        QFETCH(int, port);
        QFETCH(int, signal);
        QFETCH(int, bit);
        QList<Signals> ports;
        for (int i = 0; i < 40; ++i)
            ports.append({net("a"), bus("d", 8)});
        Fixture f(coreOf(ports, ports));
        f.show();
        f.in()->topLevelItem(3)->setSelected(true);
        f.out()->topLevelItem(3)->setSelected(true);
        f.values()->topLevelItem(3)->setSelected(true);
        f.out()->scrollToBottom();
        QApplication::processEvents();

        f.page->showRow(type, port, signal, bit);
        QApplication::processEvents();
        const bool out = type == ProbeTypeOut;
        const QTreeWidget *tree = out ? f.out() : f.in();
        QTEST(placeOf(tree->currentItem()), "shown");
        QCOMPARE(tree->selectedItems(), QList<QTreeWidgetItem *>{tree->currentItem()});
        const QRect place = tree->visualItemRect(tree->currentItem());
        QVERIFY(!place.isEmpty());
        QVERIFY(tree->viewport()->rect().contains(place.center()));
        QVERIFY(tree->hasFocus());
        if (out) {
            QCOMPARE(f.values()->selectedItems().size(), 1);
            QTEST(placeOf(f.values()->selectedItems().constFirst()), "shown");
            f.verifyAligned();
        }
    }

    void showsTheUserClock()
    {
        auto core = coreOf({}, {});
        core->userClock = QStringLiteral("top/clk");
        core->syncUserClock = true;
        Fixture f(std::move(core));
        f.show();
        f.page->showRow(ProbeTypeIn, -1, -1, -1);
        auto *clock = f.find<QLineEdit>("lineEditUserClock");
        QVERIFY(clock->hasFocus());
        QCOMPARE(clock->selectedText(), QStringLiteral("top/clk"));
        f.find<QCheckBox>("checkUserClock")->click();
        f.page->showRow(ProbeTypeIn, -1, -1, -1);
        QVERIFY(f.find<QCheckBox>("checkUserClock")->hasFocus());
    }

    void lineOfTheShownPortKeepsTheFocus()
    {
        Fixture f(coreOf({}, {{net("a")}, {net("b")}}));
        f.show();
        f.line(1)->setFocus();
        f.page->showRow(ProbeTypeOut, 1, -1, -1);
        QVERIFY(f.line(1)->hasFocus());
        f.page->showRow(ProbeTypeOut, 0, -1, -1);
        QVERIFY(f.out()->hasFocus());
    }

    void rowsAreMarkedByPainting()
    {
        Fixture f(coreOf({{net("top/gone"), net("top/clk"), busD({"top/d[3]", "top/x"})},
                          {net("top/clk"), busD({"top/d[1]", "top/d[0]"})}},
                         {{net("top/clk")}, {net("top/rst"), busD({"top/d[3]", "top/d[0]"})}}));
        f.show();
        for (QTreeWidget *tree : {f.in(), f.out()})
            tree->expandAll();
        const QString rows = f.textOf(f.in()) + f.textOf(f.out());
        MarkedDesign design;
        f.page->setMarks(&design.marks);
        QApplication::processEvents();
        QCOMPARE(marksOf(f.in()), QStringLiteral("Probe In0: red\n"
                                                 "top/gone: red\n"
                                                 "top/d[3:0]: amber\n"
                                                 "top/x: red\n"
                                                 "Probe In1: amber\n"
                                                 "top/d[3:0]: amber\n"
                                                 "top/d[0]: amber\n"));
        QCOMPARE(marksOf(f.out()), QStringLiteral("Probe Out1: amber\n"
                                                  "top/rst: amber\n"));
        QCOMPARE(marksOf(f.values()), QString());
        QCOMPARE(f.textOf(f.in()) + f.textOf(f.out()), rows);
        const QTreeWidgetItem *gone = f.in()->topLevelItem(0)->child(0);
        QCOMPARE(gone->toolTip(0), QStringLiteral("top/gone"));
        QCOMPARE(gone->foreground(0).color(), QApplication::palette().windowText().color());
        f.verifyAligned();
    }

    void pageWithoutMarksLooksAsEver()
    {
        Fixture f(coreOf({{net("top/gone"), net("top/clk")}}, {{net("top/gone")}}));
        f.show();
        f.in()->expandAll();
        const QTreeWidgetItem *gone = f.in()->topLevelItem(0)->child(0);
        const QImage plain = f.page->grab().toImage();
        QCOMPARE(tipOver(f.in(), gone), QStringLiteral("top/gone"));
        SignalMarks none; // There is no netlist.
        f.page->setMarks(&none);
        QCOMPARE(f.page->grab().toImage(), plain);
        QCOMPARE(tipOver(f.in(), gone), QStringLiteral("top/gone"));
        MarkedDesign design;
        f.page->setMarks(&design.marks);
        QVERIFY(f.page->grab().toImage() != plain);
        f.page->setMarks(nullptr);
        QCOMPARE(f.page->grab().toImage(), plain);
    }

    void tipsAddTheFinding()
    {
        Fixture f(coreOf({{net("top/gone"), net("top/clk"), busD({"top/d[3]", "top/d[0]"})}},
                         {{net("top/gone")}}));
        f.show();
        f.in()->expandAll();
        f.out()->expandAll();
        MarkedDesign design;
        f.page->setMarks(&design.marks);
        const QTreeWidgetItem *in = f.in()->topLevelItem(0);
        const QString missing = QStringLiteral("The design has no net top/gone.");
        QCOMPARE(tipOver(f.in(), in), missing);
        QCOMPARE(tipOver(f.in(), in->child(0)), QStringLiteral("top/gone\n") + missing);
        QCOMPARE(tipOver(f.in(), in->child(1)), QStringLiteral("top/clk"));
        QCOMPARE(tipOver(f.in(), in->child(2)->child(0)), QStringLiteral("top/d[3]"));
        QCOMPARE(
            tipOver(f.in(), in->child(2)->child(1)),
            QStringLiteral("top/d[0]\n"
                           "The net top/d[0] cannot be read: it has no value in the hardware."));
        QCOMPARE(tipOver(f.out(), f.out()->topLevelItem(0)->child(0)),
                 QStringLiteral("top/gone\n") + missing);
    }

    void marksFollowThePorts()
    {
        Fixture f(coreOf({{net("top/gone")}, {net("top/clk")}}, {{net("top/gone")}}));
        f.show();
        MarkedDesign design;
        f.page->setMarks(&design.marks);
        QCOMPARE(marksOf(f.in()) + marksOf(f.out()), QStringLiteral("Probe In0: red\n"
                                                                    "Probe Out0: red\n"));
        f.in()->topLevelItem(0)->setSelected(true);
        f.click("btnProbeInRemove");
        f.setSignals(0, {net("top/rst")});
        QCOMPARE(marksOf(f.in()) + marksOf(f.out()), QStringLiteral("Probe Out0: amber\n"));
    }

    void marksAreShownAnew_data()
    {
        QTest::addColumn<PageAction>("act");
        const auto row = [](const char *name, const PageAction &act) {
            QTest::newRow(name) << act;
        };
        row("other marks", [](Fixture &f) { f.page->setMarks(nullptr); });
        row("other signals", [](Fixture &f) { f.setSignals(0, {net("top/clk")}); });
        row("other signals in", [](Fixture &f) {
            f.core->getProbeIn(0)->signals = {net("top/clk")};
            f.page->updateProbeInTree();
        });
        row("other netlist", [](Fixture &f) { f.page->setNlsdata(nullptr); });
    }
    void marksAreShownAnew()
    {
        QFETCH(PageAction, act);
        Fixture f(coreOf({{net("top/gone")}}, {{net("top/gone")}}));
        MarkedDesign design;
        f.page->setMarks(&design.marks);
        f.show();
        PaintCount painted({f.in(), f.out()});
        QApplication::processEvents();
        painted.reset();
        act(f);
        QApplication::processEvents();
        QVERIFY(painted.any());
    }

    void marksReachAnOpenDialog()
    {
        Fixture f(coreOf({{net("top/gone")}}, {}));
        f.show();
        MarkedDesign design;
        f.page->setMarks(&design.marks);
        script().expectDialog("TARN::ProbeDialog", "Probe In Port", [&](QDialog *dialog) {
            QCOMPARE(marksOf(listOf(dialog)), QStringLiteral("top/gone: red\n"));
            f.page->setMarks(nullptr);
            QCOMPARE(marksOf(listOf(dialog)), QString());
            dialog->reject();
        });
        f.editFirst(false);
    }
};

TARN_TEST_MAIN(TestProbePortsOptionWidget)
#include "tst_probeportsoptionwidget.moc"
