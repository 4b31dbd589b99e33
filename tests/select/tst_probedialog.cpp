// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "dialogsupport.h"
#include "samplenetlist.h"

#include <support/modeltext.h>
#include <support/windowfit.h>
#include <support/windowtest.h>

#include <probes/markedrows.h>
#include <probes/signalsamples.h>
#include <probes/signaltree.h>
#include <select/probedialog.h>
#include <select/signaltreewidget.h>
#include <select/tarnsignalselectdialog.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <functional>

using namespace TARN;
using namespace TarnTest;

namespace {

signalTreeWidget *listOf(const QDialog &dialog)
{
    return dialog.findChild<signalTreeWidget *>("treeWidget");
}

QAbstractButton *buttonOf(const QDialog &dialog, const char *name)
{
    return dialog.findChild<QAbstractButton *>(name);
}

QString rowsOf(const QDialog &dialog)
{
    return modelText(listOf(dialog)->model());
}

/// Chooses all results of a search for @p pattern and accepts.
void chooseAll(QDialog *dialog, const QString &pattern)
{
    dialog->findChild<QLineEdit *>("lineEditName")->setText(pattern);
    buttonOf(*dialog, "pushButtonSearch")->click();
    dialog->findChild<QTreeWidget *>("treeWidget")->selectAll();
    buttonOf(*dialog, "btnAdd")->click();
    dialog->accept();
}

} // namespace

class TestProbeDialog : public TarnTest::WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void formHasItsTextsSizesAndIcons();
    void textsAreTranslatedInTheContextOfTheClass();
    void widgetsAreInOrder();
    void slotsKeepTheirNames();
    void nothingIsCutOff_data();
    void nothingIsCutOff();
    void listIsSetUpForReordering();
    void titleNamesTheKind_data();
    void titleNamesTheKind();
    void opensWithTheSignalsOfThePort();
    void opensEmptyForAPortWithoutSignals();

    void removeIsEnabledForTopLevelRowsOnly_data();
    void removeIsEnabledForTopLevelRowsOnly();
    void removeDeletesTheSelectedRows();
    void removeCopesWithRowsBelowSelectedOnes();
    void removeOfManyRowsKeepsTheOrder();

    void addAppendsBusesThenSingles();
    void addLeavesOutWhatIsThere();
    void addUsesTheKindOfThePort();
    void addOfNothingChangesNothing();
    void addedRowsAreInSight();
    void deleteKeyRemovesWhatTheButtonRemoves_data();
    void deleteKeyRemovesWhatTheButtonRemoves();

    void countFollowsTheList();
    void countTurnsRedAboveTheLimit_data();
    void countTurnsRedAboveTheLimit();

    void acceptWritesTheListInOrder();
    void acceptTakesDefaultItemsOfForeignRows();
    void acceptRefusesMoreSignalsThanFit_data();
    void acceptRefusesMoreSignalsThanFit();
    void refusedDialogMayDieWithItsParent();
    void cancelLeavesThePortAlone();
    void closeWidgetClosesWithoutWriting();
    void closeWidgetClosesTheSearchToo();
    void closeWidgetClosesTheWarningToo();
    void newNetlistReachesTheSearch();
    void newNetlistIsUsedFromThenOn();
    void dialogMayDieWhileItSearches();
    void sizeOfTheUserIsRemembered();

    void rowsAreMarkedByPainting();
    void marksFollowRowsThatAreNewOrMoved();
    void marksFollowTheNetlist();

private:
    std::unique_ptr<NETWEIR::RtlNetlist> m_netlist;
};

void TestProbeDialog::initTestCase()
{
    loadHostIcons();
    m_netlist = sampleNetlist();
}

void TestProbeDialog::formHasItsTextsSizesAndIcons()
{
    ProbeIn port;
    const ProbeDialog dialog(&port, nullptr, ProbeTypeIn, nullptr);
    QCOMPARE(dialog.objectName(), QString("TARN__ProbeDialog"));
    QCOMPARE(dialog.size(), QSize(410, 461));
    QCOMPARE(dialog.findChild<QLabel *>("label_6")->text(), QString("MSB"));
    QCOMPARE(dialog.findChild<QLabel *>("label_7")->text(), QString("LSB"));
    const QSize size(22, 22);
    const struct
    {
        const char *name;
        QString text;
        QString icon;
    } buttons[] = {{"btnAdd", "Add Signals", ":/lumoins/image/add.png"},
                   {"btnRemove", "Remove", ":/lumoins/image/delete.png"}};
    for (const auto &expected : buttons) {
        const QAbstractButton *button = buttonOf(dialog, expected.name);
        QCOMPARE(button->text(), expected.text);
        QCOMPARE(button->toolTip(), expected.text);
        QCOMPARE(button->iconSize(), size);
        QCOMPARE(button->icon().pixmap(size).toImage(),
                 QIcon(expected.icon).pixmap(size).toImage());
        QVERIFY(!button->icon().pixmap(size).isNull());
    }
    const auto *box = dialog.findChild<QDialogButtonBox *>("buttonBox");
    QCOMPARE(box->orientation(), Qt::Horizontal);
    QCOMPARE(box->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
}

void TestProbeDialog::textsAreTranslatedInTheContextOfTheClass()
{
    ContextTranslator translator;
    QVERIFY(QApplication::installTranslator(&translator));
    ProbeIn port;
    const ProbeDialog dialog(&port, nullptr, ProbeTypeIn, nullptr);
    QApplication::removeTranslator(&translator);
    const QString context = "TARN::ProbeDialog|";
    QCOMPARE(dialog.windowTitle(), context + "Probe In Port");
    QCOMPARE(dialog.findChild<QLabel *>("label_6")->text(), context + "MSB");
}

void TestProbeDialog::widgetsAreInOrder()
{
    ProbeIn port;
    ProbeDialog dialog(&port, nullptr, ProbeTypeIn, nullptr);
    dialog.show();
    int y = -1;
    for (const char *name : {"label_6", "treeWidget", "btnAdd", "label_7", "buttonBox"}) {
        const auto *widget = dialog.findChild<QWidget *>(name);
        QVERIFY2(widget->y() > y, name);
        y = widget->y();
    }
    QCOMPARE(buttonOf(dialog, "btnRemove")->y(), buttonOf(dialog, "btnAdd")->y());
    QVERIFY(buttonOf(dialog, "btnRemove")->x() > buttonOf(dialog, "btnAdd")->x());
}

void TestProbeDialog::slotsKeepTheirNames()
{
    const QMetaObject &dialog = ProbeDialog::staticMetaObject;
    for (const char *slot : {"onAdd()", "onRemove()", "on_treeWidget_itemSelectionChanged()",
                             "accept()", "closeWidget()"})
        QVERIFY2(dialog.indexOfSlot(slot) != -1, slot);
    QVERIFY(dialog.indexOfSignal("closeOldSearchDialog()") != -1);
    QVERIFY(signalTreeWidget::staticMetaObject.indexOfSignal("itemDragged()") != -1);
}

void TestProbeDialog::nothingIsCutOff_data()
{
    TarnTest::FontSize::addSizes();
}

void TestProbeDialog::nothingIsCutOff()
{
    QFETCH(double, points);
    const TarnTest::FontSize font(points);
    ProbeIn port;
    ProbeDialog dialog(&port, nullptr, ProbeTypeIn, nullptr);
    dialog.show();
    QCOMPARE(TarnTest::layoutFaults(&dialog), QString());
}

void TestProbeDialog::listIsSetUpForReordering()
{
    ProbeIn port;
    port.signals = {net("a"), bus("b", 2)};
    ProbeDialog dialog(&port, nullptr, ProbeTypeIn, nullptr);
    dialog.show();
    const signalTreeWidget *list = listOf(dialog);
    QCOMPARE(list->dragDropMode(), QAbstractItemView::InternalMove);
    QCOMPARE(list->selectionMode(), QAbstractItemView::ExtendedSelection);
    QCOMPARE(list->textElideMode(), Qt::ElideMiddle);
    QCOMPARE(list->styleSheet(), QString("QTreeWidget::item { height: 20px;}"));
    QCOMPARE(list->columnCount(), 1);
    QVERIFY(list->isHeaderHidden());
    for (int i = 0; i < 2; ++i)
        QCOMPARE(list->visualItemRect(list->topLevelItem(i)).height(), 20);
}

void TestProbeDialog::titleNamesTheKind_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("title");
    QTest::newRow("in") << 0 << "Probe In Port";
    QTest::newRow("out") << 1 << "Probe Out Port";
    QTest::newRow("other") << 2 << "";
}

void TestProbeDialog::titleNamesTheKind()
{
    QFETCH(int, type);
    ProbeIn port;
    const ProbeDialog dialog(&port, nullptr, ProbeType(type), nullptr);
    QTEST(dialog.windowTitle(), "title");
}

void TestProbeDialog::opensWithTheSignalsOfThePort()
{
    ProbeOut port;
    port.signals = {net("x"), bus("d", 2), net("a")};
    const ProbeDialog dialog(&port, nullptr, ProbeTypeOut, nullptr);
    QCOMPARE(rowsOf(dialog), QString("x\nd\n    d[1]\n    d[0]\na\n"));
    QCOMPARE(listOf(dialog)->topLevelItem(1)->type(), 0);
    QCOMPARE(signalOfRow(listOf(dialog)->topLevelItem(1)).members.size(), 2);
    QVERIFY(!buttonOf(dialog, "btnRemove")->isEnabled());
}

void TestProbeDialog::opensEmptyForAPortWithoutSignals()
{
    ProbeIn port;
    const ProbeDialog dialog(&port, nullptr, ProbeTypeIn, nullptr);
    QCOMPARE(rowsOf(dialog), QString());
    QVERIFY(!buttonOf(dialog, "btnRemove")->isEnabled());
    QVERIFY(buttonOf(dialog, "btnAdd")->isEnabled());
}

void TestProbeDialog::removeIsEnabledForTopLevelRowsOnly_data()
{
    QTest::addColumn<QStringList>("rows");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("none") << QStringList() << false;
    QTest::newRow("single") << QStringList{"x"} << true;
    QTest::newRow("bus and single") << QStringList{"d", "x"} << true;
    QTest::newRow("member") << QStringList{"d[0]"} << false;
    QTest::newRow("member and single") << QStringList{"x", "d[0]"} << false;
    QTest::newRow("member and its bus") << QStringList{"d", "d[0]"} << false;
}

void TestProbeDialog::removeIsEnabledForTopLevelRowsOnly()
{
    QFETCH(QStringList, rows);
    ProbeIn port;
    port.signals = {net("x"), bus("d", 2)};
    const ProbeDialog dialog(&port, nullptr, ProbeTypeIn, nullptr);
    select(listOf(dialog), {"x"});
    select(listOf(dialog), rows);
    QTEST(buttonOf(dialog, "btnRemove")->isEnabled(), "enabled");
}

void TestProbeDialog::removeDeletesTheSelectedRows()
{
    ProbeIn port;
    port.signals = {net("x"), bus("d", 2), net("y"), bus("e", 1)};
    const ProbeDialog dialog(&port, nullptr, ProbeTypeIn, nullptr);
    select(listOf(dialog), {"x", "d"});
    buttonOf(dialog, "btnRemove")->click();
    QCOMPARE(rowsOf(dialog), QString("y\ne\n    e[0]\n"));
    QCOMPARE(port.signals.size(), 4);
}

void TestProbeDialog::removeCopesWithRowsBelowSelectedOnes()
{
    ProbeIn port;
    port.signals = {bus("d", 2), net("y"), bus("e", 2)};
    ProbeDialog dialog(&port, nullptr, ProbeTypeIn, nullptr);
    select(listOf(dialog), {"d[0]", "d", "d[1]", "e[1]"});
    dialog.onRemove();
    QCOMPARE(rowsOf(dialog), QString("y\ne\n    e[0]\n"));
    dialog.onRemove();
    QCOMPARE(rowsOf(dialog), QString("y\ne\n    e[0]\n"));
}

void TestProbeDialog::removeOfManyRowsKeepsTheOrder()
{
    ProbeIn port;
    QStringList kept;
    for (int i = 0; i < 200; ++i)
        port.signals.append(net(QString("n%1").arg(i)));
    const ProbeDialog dialog(&port, nullptr, ProbeTypeIn, nullptr);
    for (int i = 0; i < 200; ++i) {
        if (i % 2)
            listOf(dialog)->topLevelItem(i)->setSelected(true);
        else
            kept.append(QString("n%1\n").arg(i));
    }
    buttonOf(dialog, "btnRemove")->click();
    QCOMPARE(rowsOf(dialog), kept.join(QString()));
    QVERIFY(!buttonOf(dialog, "btnRemove")->isEnabled());
}

void TestProbeDialog::addAppendsBusesThenSingles()
{
    ProbeIn port;
    port.signals = {net("x")};
    const ProbeDialog dialog(&port, m_netlist.get(), ProbeTypeIn, nullptr);
    script().expectDialog("TARN::TarnSignalSelectDialog", "Search Nets", [&](QDialog *search) {
        QCOMPARE(search->parentWidget(), &dialog);
        // The chosen list itself holds the single first.
        signals2Tree(search->findChild<QTreeWidget *>("treeWidgetAddSignal"),
                     {net("z"), bus("d", 2), net("y")}, 0);
        search->accept();
    });
    buttonOf(dialog, "btnAdd")->click();
    QCOMPARE(rowsOf(dialog), QString("x\nd\n    d[1]\n    d[0]\nz\ny\n"));
    QCOMPARE(rowOf(listOf(dialog), "d")->type(), 0);
    QCOMPARE(namesOf(port.signals), QStringList{"x"});
}

void TestProbeDialog::addLeavesOutWhatIsThere()
{
    ProbeIn port;
    port.signals = {net("top/clk"), bus("top/u0/cnt[1:0]", 2)};
    const ProbeDialog dialog(&port, m_netlist.get(), ProbeTypeIn, nullptr);
    script().expectDialog("TARN::TarnSignalSelectDialog", "Search Nets",
                          [](QDialog *search) { chooseAll(search, "c"); });
    buttonOf(dialog, "btnAdd")->click();
    QCOMPARE(rowsOf(dialog), QString("top/clk\ntop/u0/cnt[1:0]\n    top/u0/cnt[1:0][1]\n"
                                     "    top/u0/cnt[1:0][0]\ntop/u0/clk\n"));
}

void TestProbeDialog::addUsesTheKindOfThePort()
{
    ProbeOut port;
    const ProbeDialog dialog(&port, m_netlist.get(), ProbeTypeOut, nullptr);
    script().expectDialog("TARN::TarnSignalSelectDialog", "Search Nets",
                          [](QDialog *search) { chooseAll(search, "t"); });
    buttonOf(dialog, "btnAdd")->click();
    // Without rst and cnt, which Probe Out ports cannot drive.
    QCOMPARE(rowsOf(dialog), QString("top/data[1:0]\n    top/data[1]\n    top/data[0]\n"
                                     "top/clk\ntop/u0/clk\ntop/u0/gated\ntop/u0/deep/flag\n"));
}

void TestProbeDialog::addOfNothingChangesNothing()
{
    ProbeIn port;
    port.signals = {net("x")};
    const ProbeDialog dialog(&port, m_netlist.get(), ProbeTypeIn, nullptr);
    script().expectDialog("TARN::TarnSignalSelectDialog", "Search Nets", [](QDialog *search) {
        signals2Tree(search->findChild<QTreeWidget *>("treeWidgetAddSignal"), {net("y")}, 0);
        search->reject();
    });
    buttonOf(dialog, "btnAdd")->click();
    QCOMPARE(rowsOf(dialog), QString("x\n"));
}

void TestProbeDialog::addedRowsAreInSight()
{
    ProbeIn port;
    for (int i = 0; i < 100; ++i)
        port.signals.append(net(QString("n%1").arg(i)));
    ProbeDialog dialog(&port, m_netlist.get(), ProbeTypeIn, nullptr);
    dialog.show();
    const auto isInSight = [&dialog](const QString &text) {
        const signalTreeWidget *list = listOf(dialog);
        return list->viewport()->rect().contains(list->visualItemRect(rowOf(list, text)));
    };
    QVERIFY(isInSight("n0"));
    for (const char *pattern : {"clk", "clk"}) {
        script().expectDialog("TARN::TarnSignalSelectDialog", "Search Nets",
                              [=](QDialog *search) { chooseAll(search, pattern); });
    }
    buttonOf(dialog, "btnAdd")->click();
    QVERIFY(isInSight("top/clk"));
    QVERIFY(isInSight("top/u0/clk"));
    // Nothing new, nothing to show.
    listOf(dialog)->scrollToTop();
    buttonOf(dialog, "btnAdd")->click();
    QVERIFY(isInSight("n0"));
}

void TestProbeDialog::deleteKeyRemovesWhatTheButtonRemoves_data()
{
    QTest::addColumn<QStringList>("selected");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("rows");
    const QString all = "x\nd\n    d[1]\n    d[0]\ny\n";
    QTest::newRow("single") << QStringList{"x"} << int(Qt::NoModifier)
                            << "d\n    d[1]\n    d[0]\ny\n";
    QTest::newRow("several") << QStringList{"x", "d"} << int(Qt::NoModifier) << "y\n";
    QTest::newRow("key of the number pad")
        << QStringList{"x", "d"} << int(Qt::KeypadModifier) << "y\n";
    QTest::newRow("nothing") << QStringList() << int(Qt::NoModifier) << all;
    // The button is disabled for these.
    QTest::newRow("member") << QStringList{"d[1]"} << int(Qt::NoModifier) << all;
    QTest::newRow("member and single") << QStringList{"d[1]", "x"} << int(Qt::NoModifier) << all;
}

void TestProbeDialog::deleteKeyRemovesWhatTheButtonRemoves()
{
    QFETCH(QStringList, selected);
    QFETCH(int, modifiers);
    ProbeIn port;
    port.signals = {net("x"), bus("d", 2), net("y")};
    ProbeDialog dialog(&port, nullptr, ProbeTypeIn, nullptr);
    dialog.show();
    select(listOf(dialog), selected);
    QTest::keyClick(listOf(dialog), Qt::Key_Delete, Qt::KeyboardModifiers(modifiers));
    QTEST(rowsOf(dialog), "rows");
    QVERIFY(dialog.isVisible());
}

void TestProbeDialog::countFollowsTheList()
{
    ProbeIn port;
    port.signals = {net("x"), bus("d", 8)};
    const ProbeDialog dialog(&port, m_netlist.get(), ProbeTypeIn, nullptr);
    const auto *count = dialog.findChild<QLabel *>("labelCount");
    QCOMPARE(count->text(), QString("9 of 256"));
    script().expectDialog("TARN::TarnSignalSelectDialog", "Search Nets",
                          [](QDialog *search) { chooseAll(search, "cnt"); });
    buttonOf(dialog, "btnAdd")->click();
    QCOMPARE(count->text(), QString("11 of 256"));
    select(listOf(dialog), {"x", "d"});
    buttonOf(dialog, "btnRemove")->click();
    QCOMPARE(count->text(), QString("2 of 256"));
    select(listOf(dialog), {"top/u0/cnt[1:0]"});
    buttonOf(dialog, "btnRemove")->click();
    QCOMPARE(count->text(), QString("0 of 256"));
}

void TestProbeDialog::countTurnsRedAboveTheLimit_data()
{
    QTest::addColumn<int>("singles");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("red");
    QTest::newRow("256") << 56 << "256 of 256" << false;
    QTest::newRow("257") << 57 << "257 of 256" << true;
}

void TestProbeDialog::countTurnsRedAboveTheLimit()
{
    QFETCH(int, singles);
    QFETCH(bool, red);
    ProbeIn port;
    port.signals = {bus("d", 200)};
    for (int i = 0; i < singles; ++i)
        port.signals.append(net(QString("n%1").arg(i)));
    ProbeDialog dialog(&port, nullptr, ProbeTypeIn, nullptr);
    dialog.show();
    const auto *count = dialog.findChild<QLabel *>("labelCount");
    const auto isRed = [count] {
        return count->palette().color(QPalette::WindowText) == QColor(Qt::red);
    };
    QTEST(count->text(), "text");
    QCOMPARE(isRed(), red);
    QCOMPARE(layoutFaults(&dialog), QString());
    select(listOf(dialog), {"n0"});
    buttonOf(dialog, "btnRemove")->click();
    QVERIFY(!isRed());
}

void TestProbeDialog::acceptWritesTheListInOrder()
{
    ProbeIn port;
    port.index = 3;
    port.signals = {net("x"), bus("d", 2), net("y")};
    ProbeDialog dialog(&port, nullptr, ProbeTypeIn, nullptr);
    dialog.show();
    listOf(dialog)->insertTopLevelItem(0, listOf(dialog)->takeTopLevelItem(2));
    select(listOf(dialog), {"x"});
    buttonOf(dialog, "btnRemove")->click();
    dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QVERIFY(!dialog.isVisible());
    QCOMPARE(namesOf(port.signals), (QStringList{"y", "d"}));
    QCOMPARE(port.signals.last().members.size(), 2);
    QCOMPARE(port.signals.last().kind, 1);
    QCOMPARE(port.index, 3);
}

void TestProbeDialog::acceptTakesDefaultItemsOfForeignRows()
{
    ProbeIn port;
    ProbeDialog dialog(&port, nullptr, ProbeTypeIn, nullptr);
    new QTreeWidgetItem(listOf(dialog), {"foreign"});
    dialog.accept();
    QCOMPARE(port.signals.size(), 1);
    QCOMPARE(port.signals.first().name, QString());
    QCOMPARE(port.signals.first().kind, -1);
    QVERIFY(port.signals.first().enabled);
    QVERIFY(port.signals.first().usable);
    QVERIFY(port.signals.first().members.isEmpty());
}

void TestProbeDialog::acceptRefusesMoreSignalsThanFit_data()
{
    QTest::addColumn<int>("singles");
    QTest::addColumn<bool>("fits");
    QTest::newRow("256") << 56 << true;
    QTest::newRow("257") << 57 << false;
}

void TestProbeDialog::acceptRefusesMoreSignalsThanFit()
{
    QFETCH(int, singles);
    QFETCH(bool, fits);
    ProbeIn port;
    ProbeDialog dialog(&port, nullptr, ProbeTypeIn, nullptr);
    QList<SignalItem> items{bus("d", 200)};
    for (int i = 0; i < singles; ++i)
        items.append(net(QString("n%1").arg(i)));
    signals2Tree(listOf(dialog), items, 0);
    dialog.show();
    if (!fits) {
        script().expectBox({QMessageBox::Warning, "Warning", "Support 256 signals at most.",
                            QMessageBox::Ok, QString()},
                           QMessageBox::Ok,
                           [&](QMessageBox *box) { QCOMPARE(box->parentWidget(), &dialog); });
    }
    dialog.accept();
    QCOMPARE(dialog.isVisible(), !fits);
    QCOMPARE(dialog.result() == QDialog::Accepted, fits);
    QCOMPARE(port.signals.size(), fits ? items.size() : 0);
    QCOMPARE(listOf(dialog)->topLevelItemCount(), items.size());
}

void TestProbeDialog::refusedDialogMayDieWithItsParent()
{
    ProbeIn port;
    port.signals = {bus("d", 257)};
    QPointer<QWidget> page(new QWidget);
    auto *dialog = new ProbeDialog(&port, nullptr, ProbeTypeIn, page);
    script().expectDialog("QMessageBox", "Warning", [&](QDialog *) { delete page; });
    dialog->accept();
    QVERIFY(!page);
}

void TestProbeDialog::cancelLeavesThePortAlone()
{
    ProbeIn port;
    port.signals = {net("x"), net("y"), net("w")};
    ProbeDialog dialog(&port, nullptr, ProbeTypeIn, nullptr);
    dialog.show();
    select(listOf(dialog), {"x"});
    buttonOf(dialog, "btnRemove")->click();
    listOf(dialog)->insertTopLevelItem(0, listOf(dialog)->takeTopLevelItem(1));
    signals2Tree(listOf(dialog), {net("z")}, 0);
    dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Cancel)->click();
    QVERIFY(!dialog.isVisible());
    QCOMPARE(namesOf(port.signals), (QStringList{"x", "y", "w"}));
}

void TestProbeDialog::closeWidgetClosesWithoutWriting()
{
    ProbeOut port;
    port.signals = {net("x")};
    ProbeDialog dialog(&port, nullptr, ProbeTypeOut, nullptr);
    listOf(dialog)->clear();
    QVector<bool> visibleWhenTold;
    connect(&dialog, &ProbeDialog::closeOldSearchDialog, &dialog,
            [&] { visibleWhenTold.append(dialog.isVisible()); });
    QTimer::singleShot(0, &dialog, &ProbeDialog::closeWidget);
    QCOMPARE(dialog.exec(), int(QDialog::Rejected));
    QCOMPARE(visibleWhenTold, QVector<bool>{true});
    QCOMPARE(namesOf(port.signals), QStringList{"x"});
}

void TestProbeDialog::closeWidgetClosesTheSearchToo()
{
    ProbeOut port;
    ProbeDialog dialog(&port, m_netlist.get(), ProbeTypeOut, nullptr);
    script().expectDialog("TARN::TarnSignalSelectDialog", "Search Nets", [&](QDialog *search) {
        signals2Tree(search->findChild<QTreeWidget *>("treeWidgetAddSignal"), {net("y")}, 0);
        dialog.closeWidget();
    });
    QTimer::singleShot(0, &dialog, &ProbeDialog::onAdd);
    QCOMPARE(dialog.exec(), int(QDialog::Rejected));
    QCOMPARE(rowsOf(dialog), QString());
    QVERIFY(port.signals.isEmpty());
}

void TestProbeDialog::closeWidgetClosesTheWarningToo()
{
    ProbeOut port;
    ProbeDialog dialog(&port, nullptr, ProbeTypeOut, nullptr);
    signals2Tree(listOf(dialog), {bus("d", 257)}, 0);
    script().expectDialog("QMessageBox", "Warning", [&](QDialog *warning) {
        dialog.closeWidget();
        QVERIFY(!warning->isVisible());
    });
    QTimer::singleShot(0, &dialog, &ProbeDialog::accept);
    QCOMPARE(dialog.exec(), int(QDialog::Rejected));
    QVERIFY(port.signals.isEmpty());
}

void TestProbeDialog::newNetlistReachesTheSearch()
{
    auto first = sampleNetlist();
    NETWEIR::NetlistBuilder builder("other");
    builder.addNet(builder.top(), "net");
    const auto second = builder.take();
    ProbeIn port;
    ProbeDialog dialog(&port, first.get(), ProbeTypeIn, nullptr);
    script().expectDialog("TARN::TarnSignalSelectDialog", "Search Nets", [&](QDialog *search) {
        buttonOf(*search, "pushButtonSearch")->click();
        dialog.setNetlist(second.get());
        first.reset();
        chooseAll(search, QString());
    });
    dialog.onAdd();
    QCOMPARE(rowsOf(dialog), QString("other/net\n"));
}

void TestProbeDialog::newNetlistIsUsedFromThenOn()
{
    auto first = sampleNetlist();
    ProbeIn port;
    ProbeDialog dialog(&port, first.get(), ProbeTypeIn, nullptr);
    dialog.setNetlist(nullptr);
    first.reset();
    script().expectDialog("TARN::TarnSignalSelectDialog", "Search Nets",
                          [](QDialog *search) { chooseAll(search, QString()); });
    dialog.onAdd();
    QCOMPARE(rowsOf(dialog), QString());
}

void TestProbeDialog::dialogMayDieWhileItSearches()
{
    ProbeIn port;
    QPointer<QWidget> page(new QWidget);
    auto *dialog = new ProbeDialog(&port, m_netlist.get(), ProbeTypeIn, page);
    script().expectDialog("TARN::TarnSignalSelectDialog", "Search Nets",
                          [&](QDialog *) { delete page; });
    dialog->onAdd();
    QVERIFY(!page);
    QVERIFY(port.signals.isEmpty());
}

void TestProbeDialog::sizeOfTheUserIsRemembered()
{
    ProbeIn port;
    const auto sizeOnOpening = [&port] {
        ProbeDialog dialog(&port, nullptr, ProbeTypeIn, nullptr);
        dialog.show();
        return dialog.size();
    };
    const auto leaveAfter = [&port](const std::function<void(QDialog *)> &action) {
        ProbeDialog dialog(&port, nullptr, ProbeTypeIn, nullptr);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        action(&dialog);
        QCoreApplication::processEvents();
        dialog.reject();
    };
    // A size that the program sets is not remembered.
    leaveAfter([](QDialog *dialog) { dialog->resize(600, 500); });
    QCOMPARE(sizeOnOpening(), QSize(410, 461));
    leaveAfter([](QDialog *dialog) {
        dialog->showMaximized();
        QTRY_VERIFY(dialog->width() > 600);
    });
    QCOMPARE(sizeOnOpening(), QSize(410, 461));
    leaveAfter([](QDialog *dialog) { dialog->windowHandle()->resize(600, 500); });
    QCOMPARE(sizeOnOpening(), QSize(600, 500));
    leaveAfter([](QDialog *dialog) { dialog->windowHandle()->resize(500, 400); });
    QCOMPARE(sizeOnOpening(), QSize(500, 400));
    leaveAfter([](QDialog *dialog) { dialog->resize(450, 450); });
    QCOMPARE(sizeOnOpening(), QSize(500, 400));
}

void TestProbeDialog::rowsAreMarkedByPainting()
{
    const SignalItem changed = bus("top/d[3:0]", {"top/d[3]", "top/x"});
    ProbeIn port;
    port.signals = {net("top/gone"), net("top/clk"), changed, net("top/rst")};
    MarkedDesign design;
    const auto shown = [&](ProbeType type, const SignalMarks *marks) {
        ProbeDialog dialog(&port, nullptr, type, nullptr);
        dialog.setMarks(marks);
        dialog.show();
        listOf(dialog)->expandAll();
        const QString before = rowsOf(dialog);
        QString text = marksOf(listOf(dialog));
        if (!text.isEmpty())
            text += tipOver(listOf(dialog), rowOf(listOf(dialog), "top/gone"));
        const QRect row = listOf(dialog)->visualItemRect(listOf(dialog)->topLevelItem(0));
        return rowsOf(dialog) == before && row.height() == 20 ? text : QString("rows differ");
    };
    const QString both = "top/gone: red\n"
                         "top/d[3:0]: amber\n"
                         "top/x: red\n";
    const QString tip = "top/gone\nThe design has no net top/gone.";
    QCOMPARE(shown(ProbeTypeIn, &design.marks), both + tip);
    QCOMPARE(shown(ProbeTypeOut, &design.marks), both + "top/rst: amber\n" + tip);
    QCOMPARE(shown(ProbeTypeIn, nullptr), QString());
}

void TestProbeDialog::marksFollowRowsThatAreNewOrMoved()
{
    ProbeIn port;
    port.signals = {net("top/gone"), net("top/clk")};
    MarkedDesign design;
    ProbeDialog dialog(&port, nullptr, ProbeTypeIn, nullptr);
    dialog.setMarks(&design.marks);
    dialog.show();
    signals2Tree(listOf(dialog), {net("top/new")}, 0);
    listOf(dialog)->setCurrentItem(listOf(dialog)->topLevelItem(0));
    QTest::keyClick(listOf(dialog), Qt::Key_Down, Qt::AltModifier);
    listOf(dialog)->insertTopLevelItem(0, listOf(dialog)->topLevelItem(2)->clone());
    listOf(dialog)->setCurrentItem(nullptr);
    QCOMPARE(rowsOf(dialog), QString("top/new\ntop/clk\ntop/gone\ntop/new\n"));
    QCOMPARE(marksOf(listOf(dialog)), QString("top/new: red\ntop/gone: red\ntop/new: red\n"));
}

void TestProbeDialog::marksFollowTheNetlist()
{
    ProbeIn port;
    port.signals = {net("top/gone")};
    MarkedDesign design;
    ProbeDialog dialog(&port, nullptr, ProbeTypeIn, nullptr);
    dialog.setMarks(&design.marks);
    dialog.show();
    QCOMPARE(marksOf(listOf(dialog)), QString("top/gone: red\n"));
    NETWEIR::NetlistBuilder builder("top");
    builder.addNet(builder.top(), "gone");
    const auto netlist = builder.take();
    const DesignNames names(netlist.get());
    design.marks.setNames(&names);
    dialog.setNetlist(netlist.get());
    QCOMPARE(marksOf(listOf(dialog)), QString());
    design.marks.setNames(nullptr);
    dialog.setNetlist(nullptr);
    QCOMPARE(marksOf(listOf(dialog)), QString());
}

TARN_TEST_MAIN(TestProbeDialog)

#include "tst_probedialog.moc"
