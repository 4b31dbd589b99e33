// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "dialogsupport.h"
#include "samplenetlist.h"

#include <support/modalscript.h>
#include <support/modeltext.h>
#include <support/testcase.h>
#include <support/windowfit.h>

#include <probes/signalsamples.h>
#include <probes/signaltree.h>
#include <select/resulttreewidget.h>
#include <select/rtlnetlisttreeview.h>
#include <select/tarnsignalselectdialog.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QScopeGuard>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QWindow>

#include <functional>

using namespace TARN;
using namespace TarnTest;

namespace {

/// The dialog with access to the widgets that the user touches.
struct Dialog : TarnSignalSelectDialog
{
    Dialog(NETWEIR::RtlNetlist *netlist, ProbeType type = ProbeTypeIn)
        : TarnSignalSelectDialog(netlist, type, nullptr)
    {
    }

    template <typename Widget>
    Widget *widget(const char *name) const
    {
        auto *found = findChild<Widget *>(name);
        if (!found)
            qFatal("no %s", name);
        return found;
    }

    QTreeWidget *results() const { return widget<QTreeWidget>("treeWidget"); }
    void setNotice(const QString &notice) const
    {
        widget<ResultTreeWidget>("treeWidget")->setNotice(notice);
    }
    QString notice() const { return widget<ResultTreeWidget>("treeWidget")->notice(); }
    QTreeWidget *chosen() const { return widget<QTreeWidget>("treeWidgetAddSignal"); }
    QComboBox *searchIn() const { return widget<QComboBox>("comboBoxSearchIn"); }
    auto *modules() const { return qobject_cast<RtlNetlistTreeView *>(searchIn()->view()); }
    void check(const char *name, bool on = true) const
    {
        widget<QAbstractButton>(name)->setChecked(on);
    }
    void click(const char *name) const { widget<QAbstractButton>(name)->click(); }

    /// Opens the popup of modules and moves the mouse to the row of it that shows @p text.
    void hoverModule(const QString &text) const
    {
        searchIn()->showPopup();
        QTreeWidgetItem *row = rowOf(modules(), text);
        const QRect rect = modules()->visualItemRect(row);
        // The mouse may have been left there before.
        QTest::mouseMove(modules()->viewport(), rect.topLeft());
        QTest::mouseMove(modules()->viewport(), rect.center());
        QTRY_COMPARE(modules()->currentItem(), row);
    }
    void closeModules(Qt::Key key) const
    {
        QTest::keyClick(modules(), key);
        QTRY_VERIFY(!modules()->isVisible());
        QCoreApplication::processEvents();
    }

    /// A double click with the mouse on the row of the results that shows @p text.
    void doubleClick(const QString &text, Qt::MouseButton button = Qt::LeftButton) const
    {
        QTreeWidgetItem *row = rowOf(results(), text);
        results()->scrollToItem(row);
        const QPoint place = results()->visualItemRect(row).center();
        QTest::mouseClick(results()->viewport(), button, Qt::NoModifier, place);
        QTest::mouseDClick(results()->viewport(), button, Qt::NoModifier, place);
    }

    bool isInSight(const QTreeWidgetItem *row) const
    {
        return row->treeWidget()->viewport()->rect().contains(
            row->treeWidget()->visualItemRect(row));
    }

    /// The widget of that name or the button of the button box with that text.
    QWidget *focusable(const QString &name) const
    {
        const QList<QAbstractButton *> buttons = widget<QDialogButtonBox>("buttonBox")->buttons();
        for (QAbstractButton *button : buttons) {
            if (button->text().remove('&') == name)
                return button;
        }
        return widget<QWidget>(qPrintable(name));
    }

    QString search(const QString &pattern)
    {
        widget<QLineEdit>("lineEditName")->setText(pattern);
        click("pushButtonSearch");
        return modelText(results()->model());
    }
};

/// The fields of an item on one line, its members in brackets.
QString textOf(const SignalItem &item)
{
    QString text = QString("%1 '%2' %3%4 %5")
                       .arg(item.name, item.displayName)
                       .arg(item.enabled ? "E" : "-")
                       .arg(item.usable ? "U" : "-")
                       .arg(item.kind);
    for (const SignalItem &member : item.members)
        text += " (" + textOf(member) + ")";
    return text;
}

QStringList textsOf(const QList<SignalItem> &items)
{
    QStringList texts;
    for (const SignalItem &item : items)
        texts.append(textOf(item));
    return texts;
}

/// The bus of two bits "d", its members enabled or not.
SignalItem busWithMembers(bool first, bool second)
{
    SignalItem item = bus("d", 2);
    item.members[0].enabled = first;
    item.members[1].enabled = second;
    return item;
}

const char wholeDesign[] = "top/data[1:0]\n"
                           "    top/data[1]\n"
                           "    top/data[0]\n"
                           "top/u0/cnt[1:0]\n"
                           "    top/u0/cnt[1]\n"
                           "    top/u0/cnt[0]\n"
                           "top/clk\n"
                           "top/rst\n"
                           "top/u0/clk\n"
                           "top/u0/gated\n"
                           "top/u0/deep/flag\n";

const char wholeHierarchy[] = "top\n"
                              "    data[1:0]\n"
                              "        data[1]\n"
                              "        data[0]\n"
                              "    clk\n"
                              "    rst\n"
                              "    core:u0\n"
                              "        cnt[1:0]\n"
                              "            cnt[1]\n"
                              "            cnt[0]\n"
                              "        clk\n"
                              "        gated\n"
                              "        leaf:deep\n"
                              "            flag\n";

} // namespace

class TestTarnSignalSelectDialog : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void formShowsItsTexts_data();
    void formShowsItsTexts();
    void textsAreTranslatedInTheContextOfTheClass();
    void formHasItsSizesAndIcons();
    void widgetsAreInOrder();
    void slotsKeepTheirNames();
    void nothingIsCutOff_data();
    void nothingIsCutOff();
    void buttonBoxAcceptsAndRejects();
    void opensWithoutResultsAndPanel();
    void searchFieldHasTheFocusOnOpening();
    void panelFollowsTheAdvancedFilter();
    void listsElideInTheMiddleAndExtendSelection();
    void searchInBoxShowsTheHierarchy();
    void popupClosedWithoutAPickChangesNothing();
    void boxAndModuleTreeAgreeAfterKeys();
    void longModuleNamesAreElidedInTheMiddle();
    void popupIsAsWideAsItsRows_data();
    void popupIsAsWideAsItsRows();
    void searchInBoxTellsTheFullPath();
    void indentationLeavesRoomForNames();
    void sizeOfTheUserIsRemembered();
    void tabGoesThroughTheDialogInReadingOrder();
    void chosenListKeepsItsPlace();

    void searchesTheWholeDesign_data();
    void searchesTheWholeDesign();
    void caseMattersWhenAsked();
    void searchReplacesTheResults();
    void hiddenPanelHasNoEffect();
    void searchesInTheCurrentModule_data();
    void searchesInTheCurrentModule();
    void moduleThatIsPickedIsSearched();
    void foreignRowInTheModuleTreeStandsForTheTop();
    void flatSearchWritesItsTime();
    void hierarchyViewShowsModules();
    void moduleRowsAreExpandedAtTheTopAndNeverChosen();
    void modulesAreAppendedBelowARow();
    void nullNetlistYieldsNothing();
    void searchShowsThatItIsBusy();

    void emptyListTellsWhy_data();
    void emptyListTellsWhy();
    void noticeIsPaintedAlone();
    void noticeGoesWithTheSearch();

    void resultsCarrySignals_data();
    void resultsCarrySignals();
    void excludedResultsCannotBeSelected();

    void addTakesTheSelectionInTreeOrder();
    void addTakesAMemberRowByItsText();
    void addTakesMemberOfTheHierarchyAsBus();
    void addDropsMembersThatAreExcluded();
    void addTwiceKeepsOneCopy();
    void singleStaysWhenItsBusIsAdded();
    void addAllTakesGreyAndMemberRows();
    void addAllTakesModuleRows();
    void removeTakesSelectedTopLevelRowsOnly();
    void removeAllClearsTheChosenList();

    void doubleClickAddsTheSignal_data();
    void doubleClickAddsTheSignal();
    void doubleClickOpensModules();
    void doubleClickOnAGreyRowAddsNothing_data();
    void doubleClickOnAGreyRowAddsNothing();
    void doubleClickOfOtherButtonsAddsNothing();
    void doubleClickAddsOnce();
    void addedRowsAreInSight();
    void deleteKeyRemovesChosenRows();

    void chosenRowsWithoutSignalAreLeftOut();
    void oneNameIsThatOfTheFirstChoice_data();
    void oneNameIsThatOfTheFirstChoice();

    void returnSearchesOnce_data();
    void returnSearchesOnce();
    void returnPressesTheFocusedEnding_data();
    void returnPressesTheFocusedEnding();
    void otherKeysDoNothing_data();
    void otherKeysDoNothing();

    void getNetNameReturnsTheChoice();
    void getNetNameReturnsNothingOnCancel();
    void getOneNetNameReturnsTheName();
    void dialogMayDieWithItsParent();
    void newNetlistDropsTreeAndResults();

private:
    std::unique_ptr<NETWEIR::RtlNetlist> m_netlist;
};

void TestTarnSignalSelectDialog::initTestCase()
{
    loadHostIcons();
    m_netlist = sampleNetlist();
}

void TestTarnSignalSelectDialog::formShowsItsTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("toolTip");
    QTest::newRow("pushButtonSearch") << "Search"
                                      << "";
    QTest::newRow("radioButtonNormal") << "Normal"
                                       << "";
    QTest::newRow("radioButtonWildcard")
        << "Wildcard"
        << "The wildcard must match the whole path: *clk finds top/u_core/clk, clk does not.";
    QTest::newRow("radioButtonRegularExpression")
        << "Regular Expression"
        << "The expression must match the whole path: .*clk finds top/u_core/clk, clk does not.";
    QTest::newRow("checkBoxCaseSensitive") << "Case Sensitive"
                                           << "";
    QTest::newRow("checkBoxAdvancedFilter") << "Advanced Filter"
                                            << "";
    QTest::newRow("checkBoxIncludeSubentries") << "Include Subentries"
                                               << "";
    QTest::newRow("checkBoxHierarchyView") << "Hierarchy View"
                                           << "";
    QTest::newRow("btnAdd") << ">"
                            << "Add";
    QTest::newRow("btnAddAll") << ">>"
                               << "Add all";
    QTest::newRow("btnDel") << "<"
                            << "Remove";
    QTest::newRow("btnDelAll") << "<<"
                               << "Remove all";
}

void TestTarnSignalSelectDialog::formShowsItsTexts()
{
    const Dialog dialog(m_netlist.get());
    const auto *button = dialog.widget<QAbstractButton>(QTest::currentDataTag());
    QTEST(button->text(), "text");
    QTEST(button->toolTip(), "toolTip");
    QCOMPARE(dialog.windowTitle(), QString("Search Nets"));
    QCOMPARE(dialog.objectName(), QString("TARN__TarnSignalSelectDialog"));
    QCOMPARE(dialog.widget<QLabel>("label_4")->text(), QString("Search In"));
    QStringList labels;
    for (const QLabel *label : dialog.findChildren<QLabel *>())
        labels.append(label->text());
    QCOMPARE(labels, (QStringList{"Name:", "Search In"}));
}

void TestTarnSignalSelectDialog::textsAreTranslatedInTheContextOfTheClass()
{
    ContextTranslator translator;
    QVERIFY(QApplication::installTranslator(&translator));
    const Dialog dialog(m_netlist.get());
    QApplication::removeTranslator(&translator);
    const QString context = "TARN::TarnSignalSelectDialog|";
    QCOMPARE(dialog.windowTitle(), context + "Search Nets");
    QCOMPARE(dialog.widget<QAbstractButton>("btnAddAll")->toolTip(), context + "Add all");
}

void TestTarnSignalSelectDialog::formHasItsSizesAndIcons()
{
    const Dialog dialog(m_netlist.get());
    QCOMPARE(dialog.size(), QSize(517, 500));
    for (const char *name : {"btnAdd", "btnAddAll", "btnDel", "btnDelAll"})
        QCOMPARE(dialog.widget<QPushButton>(name)->maximumWidth(), 40);
    QCOMPARE(dialog.widget<QWidget>("line")->minimumWidth(), 15);
    QVERIFY(dialog.widget<QWidget>("line_2"));
    QVERIFY(qobject_cast<QGridLayout *>(dialog.widget<QWidget>("widget_4")->layout()));
    const QSize size(16, 16);
    QCOMPARE(dialog.widget<QPushButton>("pushButtonSearch")->icon().pixmap(size).toImage(),
             QIcon(":/netlist/image/magnifier.png").pixmap(size).toImage());
}

void TestTarnSignalSelectDialog::widgetsAreInOrder()
{
    Dialog dialog(m_netlist.get());
    dialog.check("checkBoxAdvancedFilter");
    dialog.show();
    const QVector<QVector<const char *>> rows{{"lineEditName", "pushButtonSearch"},
                                              {"radioButtonNormal", "radioButtonWildcard",
                                               "radioButtonRegularExpression",
                                               "checkBoxCaseSensitive"},
                                              {"line", "checkBoxAdvancedFilter", "line_2"},
                                              {"checkBoxIncludeSubentries", "label_4"},
                                              {"checkBoxHierarchyView"},
                                              {"treeWidget", "btnAdd", "treeWidgetAddSignal"},
                                              {"buttonBox"}};
    const auto placeOf = [&dialog](const char *name) {
        auto *widget = dialog.widget<QWidget>(name);
        return QRect(widget->mapTo(&dialog, QPoint()), widget->size());
    };
    int bottom = -1;
    for (const auto &row : rows) {
        int right = -1;
        for (const char *name : row) {
            QVERIFY2(placeOf(name).top() > bottom, name);
            QVERIFY2(placeOf(name).left() > right, name);
            right = placeOf(name).right();
        }
        bottom = placeOf(row.first()).bottom();
    }
    bottom = -1;
    for (const char *name : {"btnAdd", "btnAddAll", "btnDel", "btnDelAll"}) {
        QCOMPARE(placeOf(name).left(), placeOf("btnAdd").left());
        QVERIFY2(placeOf(name).top() > bottom, name);
        bottom = placeOf(name).bottom();
    }
}

void TestTarnSignalSelectDialog::slotsKeepTheirNames()
{
    for (const char *slot :
         {"on_pushButtonSearch_clicked()", "on_checkBoxAdvancedFilter_toggled(bool)",
          "onAddSignal()", "onAddAllSignal()", "onDelSignal()", "onDelAllSignal()"})
        QVERIFY2(TarnSignalSelectDialog::staticMetaObject.indexOfSlot(slot) != -1, slot);
}

void TestTarnSignalSelectDialog::nothingIsCutOff_data()
{
    TarnTest::FontSize::addSizes();
}

void TestTarnSignalSelectDialog::nothingIsCutOff()
{
    QFETCH(double, points);
    const TarnTest::FontSize font(points);
    Dialog dialog(m_netlist.get());
    dialog.show();
    QCOMPARE(TarnTest::layoutFaults(&dialog), QString());
    dialog.check("checkBoxAdvancedFilter");
    QCoreApplication::processEvents(); // The layout makes room for the panel.
    QCOMPARE(TarnTest::layoutFaults(&dialog), QString());
}

void TestTarnSignalSelectDialog::buttonBoxAcceptsAndRejects()
{
    Dialog dialog(m_netlist.get());
    auto *box = dialog.widget<QDialogButtonBox>("buttonBox");
    QCOMPARE(box->orientation(), Qt::Horizontal);
    QCOMPARE(box->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    box->button(QDialogButtonBox::Ok)->click();
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    box->button(QDialogButtonBox::Cancel)->click();
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
}

void TestTarnSignalSelectDialog::opensWithoutResultsAndPanel()
{
    Dialog dialog(m_netlist.get());
    dialog.show();
    QVERIFY(dialog.widget<QRadioButton>("radioButtonNormal")->isChecked());
    QVERIFY(!dialog.widget<QCheckBox>("checkBoxCaseSensitive")->isChecked());
    QVERIFY(!dialog.widget<QCheckBox>("checkBoxAdvancedFilter")->isChecked());
    QVERIFY(dialog.widget<QCheckBox>("checkBoxIncludeSubentries")->isChecked());
    QVERIFY(!dialog.widget<QCheckBox>("checkBoxHierarchyView")->isChecked());
    QVERIFY(!dialog.widget<QWidget>("widget_4")->isVisible());
    QCOMPARE(dialog.results()->topLevelItemCount(), 0);
    QCOMPARE(dialog.chosen()->topLevelItemCount(), 0);
}

void TestTarnSignalSelectDialog::searchFieldHasTheFocusOnOpening()
{
    Dialog dialog(m_netlist.get());
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QCOMPARE(QApplication::focusWidget(), dialog.widget<QWidget>("lineEditName"));
}

void TestTarnSignalSelectDialog::panelFollowsTheAdvancedFilter()
{
    Dialog dialog(m_netlist.get());
    dialog.show();
    dialog.click("checkBoxAdvancedFilter");
    QVERIFY(dialog.widget<QWidget>("widget_4")->isVisible());
    dialog.click("checkBoxAdvancedFilter");
    QVERIFY(!dialog.widget<QWidget>("widget_4")->isVisible());
}

void TestTarnSignalSelectDialog::listsElideInTheMiddleAndExtendSelection()
{
    const Dialog dialog(m_netlist.get());
    for (const QTreeWidget *list : {dialog.results(), dialog.chosen()}) {
        QVERIFY(list->isHeaderHidden());
        QCOMPARE(list->textElideMode(), Qt::ElideMiddle);
        QCOMPARE(list->selectionMode(), QAbstractItemView::ExtendedSelection);
        QCOMPARE(list->columnCount(), 1);
    }
}

void TestTarnSignalSelectDialog::searchInBoxShowsTheHierarchy()
{
    const Dialog dialog(m_netlist.get());
    QVERIFY(dialog.modules());
    QCOMPARE(dialog.searchIn()->model(), dialog.modules()->model());
    QCOMPARE(dialog.searchIn()->currentText(), QString("top"));
    QVERIFY(!dialog.modules()->currentItem());
    QVERIFY(!dialog.modules()->itemsExpandable());
    QCOMPARE(modelText(dialog.modules()->model()), QString("top\n"
                                                           "    u0[core]\n"
                                                           "        deep[leaf]\n"
                                                           "    u1[none]\n"));
    for (QTreeWidgetItemIterator row(dialog.modules(), QTreeWidgetItemIterator::HasChildren); *row;
         ++row)
        QVERIFY((*row)->isExpanded());
}

void TestTarnSignalSelectDialog::popupClosedWithoutAPickChangesNothing()
{
    Dialog dialog(m_netlist.get());
    dialog.check("checkBoxAdvancedFilter");
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));

    dialog.hoverModule("deep[leaf]");
    dialog.closeModules(Qt::Key_Escape);
    QVERIFY(!dialog.modules()->currentItem());
    QCOMPARE(dialog.search(""), QString(wholeDesign));

    dialog.hoverModule("u0[core]");
    dialog.closeModules(Qt::Key_Return);
    QCOMPARE(dialog.searchIn()->currentText(), QString("u0[core]"));
    QCOMPARE(dialog.modules()->currentItem(), rowOf(dialog.modules(), "u0[core]"));

    dialog.hoverModule("deep[leaf]");
    dialog.closeModules(Qt::Key_Escape);
    QCOMPARE(dialog.searchIn()->currentText(), QString("u0[core]"));
    QCOMPARE(dialog.modules()->currentItem(), rowOf(dialog.modules(), "u0[core]"));
    QCOMPARE(dialog.search("flag"), QString("top/u0/deep/flag\n"));

    // Opened by a key, the popup starts at the pick.
    QTest::keyClick(dialog.searchIn(), Qt::Key_F4);
    QTRY_VERIFY(dialog.modules()->isVisible());
    QCoreApplication::processEvents();
    QCOMPARE(dialog.modules()->currentItem(), rowOf(dialog.modules(), "u0[core]"));
    dialog.closeModules(Qt::Key_Escape);

    // A new netlist takes the pick with it.
    dialog.setNetlist(m_netlist.get());
    dialog.hoverModule("deep[leaf]");
    dialog.closeModules(Qt::Key_Escape);
    QVERIFY(!dialog.modules()->currentItem());
}

void TestTarnSignalSelectDialog::boxAndModuleTreeAgreeAfterKeys()
{
    Dialog dialog(m_netlist.get());
    dialog.check("checkBoxAdvancedFilter");
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    dialog.searchIn()->showPopup();
    dialog.modules()->setCurrentItem(rowOf(dialog.modules(), "u1[none]"));
    QTest::keyClick(dialog.modules(), Qt::Key_Return);
    QCOMPARE(dialog.searchIn()->currentText(), QString("u1[none]"));

    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_U, Qt::Key_T, Qt::Key_End}) {
        QTest::keyClick(dialog.searchIn(), key);
        QCoreApplication::processEvents();
        QCOMPARE(dialog.modules()->currentItem()->text(0), dialog.searchIn()->currentText());
    }
}

void TestTarnSignalSelectDialog::longModuleNamesAreElidedInTheMiddle()
{
    const Dialog dialog(m_netlist.get());
    QCOMPARE(dialog.modules()->textElideMode(), Qt::ElideMiddle);
    QCOMPARE(rowOf(dialog.modules(), "deep[leaf]")->toolTip(0), QString("deep[leaf]"));
}

void TestTarnSignalSelectDialog::popupIsAsWideAsItsRows_data()
{
    QTest::addColumn<int>("letters");
    QTest::addColumn<bool>("fits");
    QTest::newRow("wider than the box") << 60 << true;
    QTest::newRow("wider than the screen") << 600 << false;
}

void TestTarnSignalSelectDialog::popupIsAsWideAsItsRows()
{
    QFETCH(int, letters);
    QFETCH(bool, fits);
    NETWEIR::NetlistBuilder builder("top");
    const QString name(letters, 'n');
    NETWEIR::Hierachy *node = builder.addHierachy(builder.top(), "u0", "core");
    builder.addHierachy(builder.addHierachy(node, "u1", "core"), name, "leaf");
    const auto netlist = builder.take();
    Dialog dialog(netlist.get());
    dialog.check("checkBoxAdvancedFilter");
    dialog.show();
    const QSize size = dialog.size();
    dialog.searchIn()->showPopup();
    const QWidget *popup = dialog.modules()->window();
    const int screen = dialog.screen()->availableSize().width();
    QVERIFY(popup->width() > dialog.searchIn()->width());
    QVERIFY2(popup->width() <= screen, qPrintable(QString::number(popup->width())));
    // A row reaches to the right edge; its text starts behind the indentation.
    const QTreeWidgetItem *row = rowOf(dialog.modules(), name + "[leaf]");
    const int room = dialog.modules()->visualItemRect(row).width();
    const int needed = dialog.modules()->fontMetrics().horizontalAdvance(row->text(0));
    QCOMPARE(room > needed, fits);
    QCOMPARE(dialog.size(), size);
    dialog.searchIn()->hidePopup();
}

void TestTarnSignalSelectDialog::searchInBoxTellsTheFullPath()
{
    Dialog dialog(m_netlist.get());
    dialog.check("checkBoxAdvancedFilter");
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QCOMPARE(dialog.searchIn()->toolTip(), QString("top"));
    for (const auto &[row, path] :
         {std::pair("deep[leaf]", "top/u0/deep"), std::pair("u1[none]", "top/u1")}) {
        dialog.searchIn()->showPopup();
        dialog.modules()->setCurrentItem(rowOf(dialog.modules(), row));
        QTest::keyClick(dialog.modules(), Qt::Key_Return);
        QCOMPARE(dialog.searchIn()->toolTip(), QString(path));
    }
    QTest::keyClick(dialog.searchIn(), Qt::Key_Up);
    QCOMPARE(dialog.searchIn()->currentText(), QString("top"));
    QCOMPARE(dialog.searchIn()->toolTip(), QString("top"));
    dialog.setNetlist(nullptr);
    QCOMPARE(dialog.searchIn()->toolTip(), QString());
}

void TestTarnSignalSelectDialog::indentationLeavesRoomForNames()
{
    const Dialog dialog(m_netlist.get());
    const QTreeWidget usual;
    for (const QTreeWidget *list :
         {dialog.results(), dialog.chosen(), static_cast<QTreeWidget *>(dialog.modules())})
        QVERIFY(list->indentation() < usual.indentation());
}

void TestTarnSignalSelectDialog::sizeOfTheUserIsRemembered()
{
    const auto leaveAfter = [this](const std::function<void(Dialog *)> &action) {
        Dialog dialog(m_netlist.get());
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        action(&dialog);
        QCoreApplication::processEvents();
        dialog.reject();
    };
    // Sizes that the program sets or the panel needs are not remembered.
    leaveAfter([](Dialog *dialog) {
        dialog->resize(517, dialog->minimumSizeHint().height());
        dialog->check("checkBoxAdvancedFilter");
    });
    QCOMPARE(Dialog(m_netlist.get()).size(), QSize(517, 500));
    leaveAfter([](Dialog *dialog) { dialog->windowHandle()->resize(640, 560); });
    QCOMPARE(Dialog(m_netlist.get()).size(), QSize(640, 560));

    // All else is as on every opening.
    leaveAfter([](Dialog *dialog) {
        dialog->check("radioButtonWildcard");
        dialog->check("checkBoxAdvancedFilter");
    });
    Dialog dialog(m_netlist.get());
    dialog.show();
    QCOMPARE(dialog.size(), QSize(640, 560));
    QVERIFY(dialog.widget<QRadioButton>("radioButtonNormal")->isChecked());
    QVERIFY(!dialog.widget<QWidget>("widget_4")->isVisible());
    dialog.windowHandle()->resize(517, 500);
    QCoreApplication::processEvents();
}

void TestTarnSignalSelectDialog::tabGoesThroughTheDialogInReadingOrder()
{
    Dialog dialog(m_netlist.get());
    dialog.check("checkBoxAdvancedFilter");
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QStringList names;
    for (int i = 0; i < 14; ++i) {
        names.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(names, QStringList({"lineEditName", "pushButtonSearch", "radioButtonNormal",
                                 "checkBoxCaseSensitive", "checkBoxAdvancedFilter",
                                 "checkBoxIncludeSubentries", "comboBoxSearchIn",
                                 "checkBoxHierarchyView", "treeWidget", "btnAdd", "btnAddAll",
                                 "btnDel", "btnDelAll", "treeWidgetAddSignal"}));
}

void TestTarnSignalSelectDialog::chosenListKeepsItsPlace()
{
    const auto netlist = longNetlist();
    Dialog dialog(netlist.get());
    dialog.show();
    dialog.search("n");
    dialog.results()->scrollToItem(dialog.results()->topLevelItem(120));
    dialog.results()->topLevelItem(120)->setSelected(true);
    const int place = dialog.results()->verticalScrollBar()->value();
    QVERIFY(place > 0);
    dialog.click("btnAddAll");
    QCOMPARE(dialog.results()->verticalScrollBar()->value(), place);

    QScrollBar *chosen = dialog.chosen()->verticalScrollBar();
    dialog.chosen()->scrollToItem(dialog.chosen()->topLevelItem(100));
    const int chosenPlace = chosen->value();
    QVERIFY(chosenPlace > 0);
    for (const int count : {1, 50}) {
        for (int i = 0; i < count; ++i)
            dialog.chosen()
                ->topLevelItem(dialog.chosen()->topLevelItemCount() - 1 - i)
                ->setSelected(true);
        dialog.click("btnDel");
        QCoreApplication::processEvents();
        QCOMPARE(chosen->value(), chosenPlace);
    }
    // Nothing is new below the rows that are there.
    select(dialog.results(), {"top/n0"});
    dialog.click("btnAdd");
    QCoreApplication::processEvents();
    QCOMPARE(chosen->value(), chosenPlace);
    dialog.click("btnAddAll");
    QCoreApplication::processEvents();
    QCOMPARE(dialog.chosen()->topLevelItemCount(), 200);
    QVERIFY(dialog.isInSight(rowOf(dialog.chosen(), "top/n149")));
}

void TestTarnSignalSelectDialog::searchesTheWholeDesign_data()
{
    QTest::addColumn<QByteArray>("mode");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("rows");
    QTest::newRow("all, buses first") << QByteArray("radioButtonNormal") << "" << wholeDesign;
    QTest::newRow("normal")
        << QByteArray("radioButtonNormal") << "U0/C"
        << "top/u0/cnt[1:0]\n    top/u0/cnt[1]\n    top/u0/cnt[0]\ntop/u0/clk\n";
    QTest::newRow("blanks count") << QByteArray("radioButtonNormal") << " clk"
                                  << "";
    QTest::newRow("wildcard") << QByteArray("radioButtonWildcard") << "*/clk"
                              << "top/clk\ntop/u0/clk\n";
    QTest::newRow("wildcard, escaped brackets")
        << QByteArray("radioButtonWildcard") << "*data\\[1:0\\]"
        << "top/data[1:0]\n    top/data[1]\n    top/data[0]\n";
    QTest::newRow("wildcard covers the name") << QByteArray("radioButtonWildcard") << "clk"
                                              << "";
    QTest::newRow("expression") << QByteArray("radioButtonRegularExpression") << "top/[a-z]+"
                                << "top/clk\ntop/rst\n";
    QTest::newRow("invalid") << QByteArray("radioButtonRegularExpression") << "(clk"
                             << "";
}

void TestTarnSignalSelectDialog::searchesTheWholeDesign()
{
    QFETCH(QByteArray, mode);
    QFETCH(QString, pattern);
    Dialog dialog(m_netlist.get());
    dialog.check(mode);
    QTEST(dialog.search(pattern), "rows");
}

void TestTarnSignalSelectDialog::caseMattersWhenAsked()
{
    Dialog dialog(m_netlist.get());
    dialog.check("checkBoxCaseSensitive");
    QCOMPARE(dialog.search("FLAG"), QString());
    QCOMPARE(dialog.search("flag"), QString("top/u0/deep/flag\n"));
}

void TestTarnSignalSelectDialog::searchReplacesTheResults()
{
    Dialog dialog(m_netlist.get());
    dialog.search("clk");
    QCOMPARE(dialog.search("rst"), QString("top/rst\n"));
}

void TestTarnSignalSelectDialog::hiddenPanelHasNoEffect()
{
    Dialog dialog(m_netlist.get());
    dialog.check("checkBoxHierarchyView");
    dialog.check("checkBoxIncludeSubentries", false);
    dialog.modules()->setCurrentItem(rowOf(dialog.modules(), "deep[leaf]"));
    QCOMPARE(dialog.search(""), QString(wholeDesign));
}

void TestTarnSignalSelectDialog::searchesInTheCurrentModule_data()
{
    QTest::addColumn<QString>("module");
    QTest::addColumn<bool>("subentries");
    QTest::addColumn<QString>("flat");
    QTest::addColumn<QString>("hierarchy");
    QTest::newRow("none, all") << QString() << true << wholeDesign << wholeHierarchy;
    QTest::newRow("none, own") << QString() << false
                               << "top/data[1:0]\n    top/data[1]\n    top/data[0]\n"
                                  "top/clk\ntop/rst\n"
                               << "top\n    data[1:0]\n        data[1]\n        data[0]\n"
                                  "    clk\n    rst\n";
    QTest::newRow("deep") << "deep[leaf]" << true << "top/u0/deep/flag\n"
                          << "leaf:deep\n    flag\n";
    QTest::newRow("u0, own") << "u0[core]" << false
                             << "top/u0/cnt[1:0]\n    top/u0/cnt[1]\n    top/u0/cnt[0]\n"
                                "top/u0/clk\ntop/u0/gated\n"
                             << "core:u0\n    cnt[1:0]\n        cnt[1]\n        cnt[0]\n"
                                "    clk\n    gated\n";
    QTest::newRow("without nets") << "u1[none]" << true << ""
                                  << "none:u1\n";
}

void TestTarnSignalSelectDialog::searchesInTheCurrentModule()
{
    QFETCH(QString, module);
    QFETCH(bool, subentries);
    Dialog dialog(m_netlist.get());
    dialog.check("checkBoxAdvancedFilter");
    dialog.check("checkBoxIncludeSubentries", subentries);
    if (!module.isEmpty())
        dialog.modules()->setCurrentItem(rowOf(dialog.modules(), module));
    QTEST(dialog.search(""), "flat");
    dialog.check("checkBoxHierarchyView");
    QTEST(dialog.search(""), "hierarchy");
}

void TestTarnSignalSelectDialog::moduleThatIsPickedIsSearched()
{
    Dialog dialog(m_netlist.get());
    dialog.check("checkBoxAdvancedFilter");
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    // A click right away would count as the second one of a double click on the box.
    const int usual = QApplication::doubleClickInterval();
    const auto restore = qScopeGuard([usual] { QApplication::setDoubleClickInterval(usual); });
    QApplication::setDoubleClickInterval(0);
    dialog.searchIn()->showPopup();
    const QPoint place =
        dialog.modules()->visualItemRect(rowOf(dialog.modules(), "u0[core]")).center();
    QTest::mouseMove(dialog.modules()->viewport(), place);
    QTest::mouseClick(dialog.modules()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTRY_VERIFY(!dialog.modules()->isVisible());
    QCOMPARE(dialog.searchIn()->currentText(), QString("u0[core]"));
    QCOMPARE(dialog.search("clk"), QString("top/u0/clk\n"));
}

void TestTarnSignalSelectDialog::foreignRowInTheModuleTreeStandsForTheTop()
{
    Dialog dialog(m_netlist.get());
    dialog.check("checkBoxAdvancedFilter");
    auto *foreign = new QTreeWidgetItem({"foreign"}, 1003);
    dialog.modules()->addTopLevelItem(foreign);
    dialog.modules()->setCurrentItem(foreign);
    QCOMPARE(dialog.search("rst"), QString("top/rst\n"));
}

void TestTarnSignalSelectDialog::flatSearchWritesItsTime()
{
    Dialog dialog(m_netlist.get());
    connect(dialog.results()->model(), &QAbstractItemModel::rowsInserted, &dialog,
            [] { QTest::qSleep(12); });
    QElapsedTimer whole;
    whole.start();
    dialog.search("");
    QCOMPARE(debugLines().size(), 1);
    const QRegularExpression line("^([0-9]+(\\.[0-9]{1,3})?)s$");
    const QRegularExpressionMatch match = line.match(debugLines().first());
    QVERIFY2(match.hasMatch(), qPrintable(debugLines().first()));
    const double seconds = match.captured(1).toDouble();
    QVERIFY(seconds >= 0.012);
    QVERIFY(seconds <= whole.elapsed() / 1000.0);
}

void TestTarnSignalSelectDialog::hierarchyViewShowsModules()
{
    Dialog dialog(m_netlist.get());
    dialog.check("checkBoxAdvancedFilter");
    dialog.check("checkBoxHierarchyView");
    QCOMPARE(dialog.search(""), QString(wholeHierarchy));
    QCOMPARE(debugLines(), QStringList{"checked Hierarchy View"});
    QCOMPARE(dialog.search("flag"),
             QString("top\n    core:u0\n        leaf:deep\n            flag\n"));
    QCOMPARE(dialog.search("nothing"), QString("top\n"));
}

void TestTarnSignalSelectDialog::moduleRowsAreExpandedAtTheTopAndNeverChosen()
{
    Dialog dialog(m_netlist.get());
    dialog.check("checkBoxAdvancedFilter");
    dialog.check("checkBoxHierarchyView");
    dialog.search("");
    const QSize size(16, 16);
    const QImage icon = QIcon(":/lumoins/image/module.png").pixmap(size).toImage();
    for (const char *text : {"top", "core:u0", "leaf:deep"}) {
        const QTreeWidgetItem *row = rowOf(dialog.results(), text);
        QCOMPARE(row->icon(0).pixmap(size).toImage(), icon);
        QCOMPARE(row->type(), 0);
        QCOMPARE(row->flags(), QTreeWidgetItem().flags() & ~Qt::ItemIsSelectable);
        QVERIFY(!row->data(0, Qt::UserRole).isValid());
        QCOMPARE(row->isExpanded(), QString(text) == "top");
    }
    QVERIFY(rowOf(dialog.results(), "clk")->icon(0).isNull());
}

void TestTarnSignalSelectDialog::modulesAreAppendedBelowARow()
{
    Dialog dialog(m_netlist.get());
    ModuleForWidget module;
    module.name = "core:u0";
    module.nets = m_netlist->top()->nets();
    auto *row = new QTreeWidgetItem(dialog.results(), {"parent"});
    new QTreeWidgetItem(row, {"first"});
    dialog.addModuleInWidget(row, module);
    QCOMPARE(modelText(dialog.results()->model()),
             QString("parent\n    first\n    core:u0\n        clk\n        rst\n"));
}

void TestTarnSignalSelectDialog::nullNetlistYieldsNothing()
{
    Dialog dialog(nullptr);
    QCOMPARE(dialog.modules()->topLevelItemCount(), 0);
    QCOMPARE(dialog.search(""), QString());
    dialog.check("checkBoxAdvancedFilter");
    QCOMPARE(dialog.search(""), QString());
    dialog.check("checkBoxHierarchyView");
    QCOMPARE(dialog.search(""), QString());
    QVERIFY(!QApplication::overrideCursor());
    QVERIFY(dialog.widget<QPushButton>("pushButtonSearch")->isEnabled());

    dialog.setTreeWidget(m_netlist->top()->nets(), m_netlist->top()->buses());
    QCOMPARE(modelText(dialog.results()->model()), QString("top/clk\ntop/rst\n"));
}

void TestTarnSignalSelectDialog::searchShowsThatItIsBusy()
{
    Dialog dialog(m_netlist.get());
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto *button = dialog.widget<QPushButton>("pushButtonSearch");
    button->setFocus();
    int shown = 0;
    connect(dialog.results()->model(), &QAbstractItemModel::rowsInserted, &dialog, [&] {
        ++shown;
        QVERIFY(!button->isEnabled());
        QVERIFY(QApplication::overrideCursor());
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    });
    dialog.search("");
    QVERIFY(shown > 0);
    QVERIFY(button->isEnabled());
    QCOMPARE(dialog.focusWidget(), button);
    QVERIFY(!QApplication::overrideCursor());
}

void TestTarnSignalSelectDialog::emptyListTellsWhy_data()
{
    QTest::addColumn<QByteArray>("mode");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("hierarchy");
    QTest::addColumn<QString>("notice");
    const QByteArray normal = "radioButtonNormal";
    const QByteArray wildcard = "radioButtonWildcard";
    const QByteArray expression = "radioButtonRegularExpression";
    const QString nothing = "Nothing found.";
    QTest::newRow("found") << normal << "clk" << false << "";
    QTest::newRow("everything") << expression << "" << false << "";
    QTest::newRow("only grey rows") << normal << "gated" << false << "";
    QTest::newRow("nothing") << normal << "none" << false << nothing;
    QTest::newRow("no expression") << normal << "(clk" << false << nothing;
    QTest::newRow("wildcard for nothing") << wildcard << "clk" << false << nothing;
    QTest::newRow("invalid wildcard") << wildcard << "[clk" << false << "The wildcard is invalid.";
    QTest::newRow("expression for nothing") << expression << "clk" << false << nothing;
    QTest::newRow("invalid expression")
        << expression << "(clk" << false << "The expression is invalid.";
    QTest::newRow("found by module") << normal << "flag" << true << "";
    QTest::newRow("nothing by module") << normal << "none" << true << nothing;
    QTest::newRow("invalid by module") << expression << "*" << true << "The expression is invalid.";
}

void TestTarnSignalSelectDialog::emptyListTellsWhy()
{
    QFETCH(QByteArray, mode);
    QFETCH(QString, pattern);
    QFETCH(bool, hierarchy);
    Dialog dialog(m_netlist.get());
    QCOMPARE(dialog.notice(), QString());
    dialog.check(mode);
    dialog.check("checkBoxAdvancedFilter", hierarchy);
    dialog.check("checkBoxHierarchyView", hierarchy);
    dialog.search(pattern);
    QTEST(dialog.notice(), "notice");
}

void TestTarnSignalSelectDialog::noticeIsPaintedAlone()
{
    Dialog dialog(m_netlist.get());
    dialog.show();
    const auto painted = [&dialog] { return dialog.results()->viewport()->grab().toImage(); };
    const QImage before = painted();
    QCOMPARE(dialog.search("none"), QString());
    QVERIFY(painted() != before);
    dialog.search("clk");
    const QImage found = painted();
    QVERIFY(found != before);
    dialog.setNotice("None.");
    QVERIFY(painted() != found);
    dialog.setNotice(QString());
    QCOMPARE(painted(), found);

    // The row of the topmost module stays readable.
    dialog.check("checkBoxAdvancedFilter");
    dialog.check("checkBoxHierarchyView");
    QCOMPARE(dialog.search("none"), QString("top\n"));
    const QRect row = dialog.results()->visualItemRect(dialog.results()->topLevelItem(0));
    const QImage whole = painted();
    dialog.setNotice(QString());
    QCOMPARE(painted().copy(row), whole.copy(row));
    QVERIFY(painted() != whole);
}

void TestTarnSignalSelectDialog::noticeGoesWithTheSearch()
{
    Dialog dialog(m_netlist.get());
    dialog.search("none");
    QVERIFY(!dialog.notice().isEmpty());
    dialog.search("clk");
    QCOMPARE(dialog.notice(), QString());
    dialog.search("none");
    dialog.setNetlist(m_netlist.get());
    QCOMPARE(dialog.notice(), QString());
}

void TestTarnSignalSelectDialog::resultsCarrySignals_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("signal");
    QTest::newRow("bus in") << 0 << "data[1:0]"
                            << "top/data[1:0] '' -U 1 (top/data[1] '' -U 1) (top/data[0] '' EU 1)";
    QTest::newRow("bus out") << 1 << "data[1:0]"
                             << "top/data[1:0] '' EU 1 (top/data[1] '' EU 1) (top/data[0] '' EU 1)";
    QTest::newRow("other bus out")
        << 1 << "u0/cnt[1:0]"
        << "top/u0/cnt[1:0] '' -U 1 (top/u0/cnt[1] '' -U 1) (top/u0/cnt[0] '' -U 1)";
    QTest::newRow("net in") << 0 << "rst"
                            << "top/rst '' EU 0";
    QTest::newRow("net out") << 1 << "rst"
                             << "top/rst '' -U 0";
    QTest::newRow("other net in") << 0 << "u0/gated"
                                  << "top/u0/gated '' -U 0";
    QTest::newRow("other net out") << 1 << "u0/gated"
                                   << "top/u0/gated '' EU 0";
}

void TestTarnSignalSelectDialog::resultsCarrySignals()
{
    QFETCH(int, type);
    QFETCH(QString, row);
    Dialog dialog(m_netlist.get(), ProbeType(type));
    dialog.search("");
    const QTreeWidgetItem *flat = rowOf(dialog.results(), "top/" + row);
    QTEST(textOf(signalOfRow(flat)), "signal");
    QCOMPARE(flat->type(), 0);
    dialog.check("checkBoxAdvancedFilter");
    dialog.check("checkBoxHierarchyView");
    dialog.search("");
    const QTreeWidgetItem *deep = rowOf(dialog.results(), row.section('/', -1));
    QTEST(textOf(signalOfRow(deep)), "signal");
    QCOMPARE(deep->type(), 0);
}

void TestTarnSignalSelectDialog::excludedResultsCannotBeSelected()
{
    Dialog dialog(m_netlist.get());
    dialog.search("");
    const QTreeWidgetItem *gated = rowOf(dialog.results(), "top/u0/gated");
    QVERIFY(!(gated->flags() & Qt::ItemIsSelectable));
    QCOMPARE(gated->foreground(0).color(), QColor(Qt::gray));
    dialog.results()->selectAll();
    dialog.click("btnAdd");
    QVERIFY(dialog.chosen()->findItems("top/u0/gated", Qt::MatchExactly).isEmpty());
}

void TestTarnSignalSelectDialog::addTakesTheSelectionInTreeOrder()
{
    Dialog dialog(m_netlist.get());
    dialog.search("");
    select(dialog.results(), {"top/u0/clk", "top/clk", "top/u0/cnt[1:0]"});
    dialog.click("btnAdd");
    QCOMPARE(
        modelText(dialog.chosen()->model()),
        QString("top/u0/cnt[1:0]\n    top/u0/cnt[1]\n    top/u0/cnt[0]\ntop/clk\ntop/u0/clk\n"));
    QCOMPARE(modelText(dialog.results()->model()), QString(wholeDesign));

    select(dialog.results(), {"top/rst"});
    dialog.click("btnAdd");
    QCOMPARE(textsOf(dialog.getSelectedNets()),
             (QStringList{"top/u0/cnt[1:0] '' EU 1 (top/u0/cnt[1] '' EU 1) (top/u0/cnt[0] '' EU 1)",
                          "top/clk '' EU 0", "top/u0/clk '' EU 0", "top/rst '' EU 0"}));
    QCOMPARE(dialog.chosen()->topLevelItem(0)->type(), 0);
}

void TestTarnSignalSelectDialog::addTakesAMemberRowByItsText()
{
    Dialog dialog(m_netlist.get());
    dialog.search("");
    select(dialog.results(), {"top/clk", "top/u0/cnt[0]"});
    dialog.click("btnAdd");
    QCOMPARE(textsOf(dialog.getSelectedNets()),
             (QStringList{"top/u0/cnt[0] '' EU 1", "top/clk '' EU 0"}));
}

void TestTarnSignalSelectDialog::addTakesMemberOfTheHierarchyAsBus()
{
    Dialog dialog(m_netlist.get());
    dialog.check("checkBoxAdvancedFilter");
    dialog.check("checkBoxHierarchyView");
    dialog.search("");
    select(dialog.results(), {"rst", "cnt[0]"});
    dialog.click("btnAdd");
    QCOMPARE(textsOf(dialog.getSelectedNets()),
             (QStringList{"top/u0/cnt[0] '' EU 1", "top/rst '' EU 0"}));
    QCOMPARE(modelText(dialog.chosen()->model()), QString("top/u0/cnt[0]\ntop/rst\n"));
}

void TestTarnSignalSelectDialog::addDropsMembersThatAreExcluded()
{
    Dialog dialog(m_netlist.get());
    dialog.search("data");
    dialog.click("btnAddAll");
    QCOMPARE(textsOf(dialog.getSelectedNets()).first(),
             QString("top/data[1:0] '' -U 1 (top/data[0] '' EU 1)"));
}

void TestTarnSignalSelectDialog::addTwiceKeepsOneCopy()
{
    Dialog dialog(m_netlist.get());
    dialog.search("");
    for (int i = 0; i < 2; ++i) {
        select(dialog.results(), {"top/u0/cnt[1:0]", "top/clk"});
        dialog.click("btnAdd");
    }
    QCOMPARE(modelText(dialog.chosen()->model()),
             QString("top/u0/cnt[1:0]\n    top/u0/cnt[1]\n    top/u0/cnt[0]\ntop/clk\n"));
}

void TestTarnSignalSelectDialog::singleStaysWhenItsBusIsAdded()
{
    Dialog dialog(m_netlist.get());
    // A single net stays, a member of a bus gives way.
    signals2Tree(dialog.chosen(), {net("top/u0/cnt[1]")}, 0);
    dialog.search("cnt");
    select(dialog.results(), {"top/u0/cnt[0]"});
    dialog.click("btnAdd");
    QCOMPARE(modelText(dialog.chosen()->model()), QString("top/u0/cnt[1]\ntop/u0/cnt[0]\n"));
    select(dialog.results(), {"top/u0/cnt[1:0]"});
    dialog.click("btnAdd");
    QCOMPARE(modelText(dialog.chosen()->model()),
             QString("top/u0/cnt[1]\ntop/u0/cnt[1:0]\n    top/u0/cnt[1]\n    top/u0/cnt[0]\n"));
}

void TestTarnSignalSelectDialog::addAllTakesGreyAndMemberRows()
{
    Dialog dialog(m_netlist.get());
    dialog.check("radioButtonRegularExpression");
    dialog.search(".*(data|gated).*");
    dialog.click("btnAddAll");
    QCOMPARE(textsOf(dialog.getSelectedNets()),
             (QStringList{"top/data[1:0] '' -U 1 (top/data[0] '' EU 1)", "top/data[1] '' EU 1",
                          "top/data[0] '' EU 1", "top/u0/gated '' -U 0"}));
}

void TestTarnSignalSelectDialog::addAllTakesModuleRows()
{
    Dialog dialog(m_netlist.get());
    dialog.check("checkBoxAdvancedFilter");
    dialog.check("checkBoxHierarchyView");
    dialog.search("flag");
    dialog.click("btnAddAll");
    QCOMPARE(textsOf(dialog.getSelectedNets()),
             (QStringList{"top '' EU 1", "core:u0 '' EU 1", "leaf:deep '' EU 1",
                          "top/u0/deep/flag '' EU 0"}));
}

void TestTarnSignalSelectDialog::removeTakesSelectedTopLevelRowsOnly()
{
    Dialog dialog(m_netlist.get());
    signals2Tree(dialog.chosen(), {bus("d", 2), net("x"), net("y"), bus("e", 1)}, 0);
    select(dialog.chosen(), {"d[0]"});
    dialog.click("btnDel");
    QCOMPARE(modelText(dialog.chosen()->model()),
             QString("d\n    d[1]\n    d[0]\nx\ny\ne\n    e[0]\n"));
    select(dialog.chosen(), {"d", "d[1]", "y", "e[0]"});
    dialog.click("btnDel");
    QCOMPARE(modelText(dialog.chosen()->model()), QString("x\ne\n    e[0]\n"));
    dialog.chosen()->clearSelection();
    dialog.click("btnDel");
    QCOMPARE(dialog.chosen()->topLevelItemCount(), 2);
}

void TestTarnSignalSelectDialog::removeAllClearsTheChosenList()
{
    Dialog dialog(m_netlist.get());
    dialog.search("");
    signals2Tree(dialog.chosen(), {bus("d", 2), net("x")}, 0);
    dialog.click("btnDelAll");
    QCOMPARE(dialog.chosen()->topLevelItemCount(), 0);
    QCOMPARE(modelText(dialog.results()->model()), QString(wholeDesign));
}

void TestTarnSignalSelectDialog::doubleClickAddsTheSignal_data()
{
    QTest::addColumn<bool>("hierarchy");
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("signal");
    const QString cnt = "top/u0/cnt[1:0] '' EU 1 (top/u0/cnt[1] '' EU 1) (top/u0/cnt[0] '' EU 1)";
    QTest::newRow("net") << false << "top/u0/clk"
                         << "top/u0/clk '' EU 0";
    QTest::newRow("bus") << false << "top/u0/cnt[1:0]" << cnt;
    QTest::newRow("member") << false << "top/u0/cnt[0]"
                            << "top/u0/cnt[0] '' EU 1";
    QTest::newRow("net by module") << true << "rst"
                                   << "top/rst '' EU 0";
    QTest::newRow("bus by module") << true << "cnt[1:0]" << cnt;
    QTest::newRow("member by module") << true << "cnt[0]"
                                      << "top/u0/cnt[0] '' EU 1";
}

void TestTarnSignalSelectDialog::doubleClickAddsTheSignal()
{
    QFETCH(bool, hierarchy);
    QFETCH(QString, row);
    Dialog dialog(m_netlist.get());
    dialog.check("checkBoxAdvancedFilter", hierarchy);
    dialog.check("checkBoxHierarchyView", hierarchy);
    dialog.show();
    const QString before = dialog.search("");
    dialog.results()->expandAll();
    for (const bool expanded : {true, false}) {
        rowOf(dialog.results(), row)->setExpanded(expanded);
        dialog.chosen()->clear();
        clearDebugLines();
        dialog.doubleClick(row);
        QTEST(textsOf(dialog.getSelectedNets()).join('\n'), "signal");
        QCOMPARE(dialog.chosen()->topLevelItemCount(), 1);
        if (rowOf(dialog.results(), row)->childCount() > 0)
            QCOMPARE(rowOf(dialog.results(), row)->isExpanded(), expanded);
    }
    QCOMPARE(modelText(dialog.results()->model()), before);
    QCOMPARE(debugLines(), QStringList());
    QVERIFY(dialog.isVisible());
}

void TestTarnSignalSelectDialog::doubleClickOpensModules()
{
    Dialog dialog(m_netlist.get());
    dialog.check("checkBoxAdvancedFilter");
    dialog.check("checkBoxHierarchyView");
    dialog.show();
    dialog.search("");
    QTreeWidgetItem *module = rowOf(dialog.results(), "core:u0");
    for (const bool expanded : {true, false}) {
        dialog.doubleClick("core:u0");
        QCOMPARE(module->isExpanded(), expanded);
        dialog.doubleClick("clk"); // Does not change what the next one does.
    }
    QCOMPARE(modelText(dialog.chosen()->model()), QString("top/clk\n"));
}

void TestTarnSignalSelectDialog::doubleClickOnAGreyRowAddsNothing_data()
{
    QTest::addColumn<QString>("row");
    QTest::newRow("net") << "top/u0/gated";
    QTest::newRow("bus") << "top/data[1:0]";
    QTest::newRow("member") << "top/data[1]";
}

void TestTarnSignalSelectDialog::doubleClickOnAGreyRowAddsNothing()
{
    QFETCH(QString, row);
    Dialog dialog(m_netlist.get());
    dialog.show();
    dialog.search("");
    dialog.results()->expandAll();
    dialog.doubleClick(row);
    QCOMPARE(dialog.chosen()->topLevelItemCount(), 0);
}

void TestTarnSignalSelectDialog::doubleClickOfOtherButtonsAddsNothing()
{
    Dialog dialog(m_netlist.get());
    dialog.show();
    dialog.search("");
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        dialog.doubleClick("top/clk", button);
        dialog.doubleClick("top/u0/cnt[1:0]", button);
    }
    QCOMPARE(dialog.chosen()->topLevelItemCount(), 0);
}

void TestTarnSignalSelectDialog::doubleClickAddsOnce()
{
    Dialog dialog(m_netlist.get());
    dialog.show();
    dialog.search("");
    dialog.doubleClick("top/clk");
    dialog.doubleClick("top/u0/cnt[1:0]");
    dialog.doubleClick("top/clk");
    QCOMPARE(modelText(dialog.chosen()->model()),
             QString("top/clk\ntop/u0/cnt[1:0]\n    top/u0/cnt[1]\n    top/u0/cnt[0]\n"));
}

void TestTarnSignalSelectDialog::addedRowsAreInSight()
{
    const auto netlist = longNetlist();
    Dialog dialog(netlist.get());
    dialog.show();
    dialog.search("");
    dialog.results()->selectAll();
    dialog.results()->topLevelItem(7)->setSelected(false);
    dialog.results()->topLevelItem(8)->setSelected(false);
    dialog.click("btnAdd");
    QVERIFY(dialog.isInSight(rowOf(dialog.chosen(), "top/n0")));
    select(dialog.results(), {"top/n7", "top/n8"});
    dialog.click("btnAdd");
    QVERIFY(dialog.isInSight(rowOf(dialog.chosen(), "top/n7")));
    QVERIFY(dialog.isInSight(rowOf(dialog.chosen(), "top/n8")));
}

void TestTarnSignalSelectDialog::deleteKeyRemovesChosenRows()
{
    Dialog dialog(m_netlist.get());
    dialog.show();
    dialog.search("clk");
    signals2Tree(dialog.chosen(), {bus("d", 2), net("x"), net("y"), bus("e", 1)}, 0);
    select(dialog.results(), {"top/clk"});
    QTest::keyClick(dialog.results(), Qt::Key_Delete);
    select(dialog.chosen(), {"d[0]"});
    QTest::keyClick(dialog.chosen(), Qt::Key_Delete);
    QCOMPARE(modelText(dialog.results()->model()), QString("top/clk\ntop/u0/clk\n"));
    QCOMPARE(dialog.chosen()->topLevelItemCount(), 4);
    select(dialog.chosen(), {"d", "y", "e[0]"});
    QTest::keyClick(dialog.chosen(), Qt::Key_Delete);
    QCOMPARE(modelText(dialog.chosen()->model()), QString("x\ne\n    e[0]\n"));
}

void TestTarnSignalSelectDialog::chosenRowsWithoutSignalAreLeftOut()
{
    Dialog dialog(m_netlist.get());
    new QTreeWidgetItem(dialog.chosen(), {"plain"});
    signals2Tree(dialog.chosen(), {bus("d", 2), net("x")}, 0);
    QCOMPARE(textsOf(dialog.getSelectedNets()),
             (QStringList{"d '' EU 1 (d[1] '' EU 1) (d[0] '' EU 1)", "x '' EU 0"}));
}

void TestTarnSignalSelectDialog::oneNameIsThatOfTheFirstChoice_data()
{
    QTest::addColumn<QList<SignalItem>>("chosen");
    QTest::addColumn<QString>("name");
    QTest::newRow("none") << QList<SignalItem>() << "";
    QTest::newRow("single") << QList<SignalItem>{net("x"), net("y")} << "x";
    QTest::newRow("bus") << QList<SignalItem>{bus("d", 2), net("y")} << "d[1]";
    QTest::newRow("member added alone") << QList<SignalItem>{bus("d[1]", 0)} << "d[1]";
    QTest::newRow("bus, first usable") << QList<SignalItem>{busWithMembers(false, true)} << "d[0]";
    QTest::newRow("bus without usable member")
        << QList<SignalItem>{busWithMembers(false, false), net("y")} << "";
}

void TestTarnSignalSelectDialog::oneNameIsThatOfTheFirstChoice()
{
    QFETCH(QList<SignalItem>, chosen);
    Dialog dialog(m_netlist.get());
    signals2Tree(dialog.chosen(), chosen, 0);
    QTEST(dialog.getOneSelectedNetName(), "name");
}

void TestTarnSignalSelectDialog::returnSearchesOnce_data()
{
    QTest::addColumn<QString>("widget");
    for (const char *name :
         {"lineEditName", "treeWidget", "treeWidgetAddSignal", "radioButtonNormal",
          "checkBoxCaseSensitive", "comboBoxSearchIn", "pushButtonSearch", "btnAdd", "btnDelAll"})
        QTest::newRow(name) << name;
}

void TestTarnSignalSelectDialog::returnSearchesOnce()
{
    QFETCH(QString, widget);
    Dialog dialog(m_netlist.get());
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    dialog.check("checkBoxAdvancedFilter");
    dialog.search("");
    signals2Tree(dialog.chosen(), {net("x")}, 0);
    dialog.results()->setCurrentItem(dialog.results()->topLevelItem(0));
    dialog.chosen()->setCurrentItem(dialog.chosen()->topLevelItem(0));
    clearDebugLines();
    QWidget *focused = dialog.focusable(widget);
    focused->setFocus();
    QTest::keyClick(focused, Qt::Key_Return);
    QCOMPARE(debugLines().size(), 1);
    QVERIFY(dialog.isVisible());
    QCOMPARE(modelText(dialog.results()->model()), QString(wholeDesign));
    QCOMPARE(modelText(dialog.chosen()->model()), QString("x\n"));
    QVERIFY(!QApplication::overrideCursor());
    QCOMPARE(dialog.focusWidget(), focused);
}

void TestTarnSignalSelectDialog::returnPressesTheFocusedEnding_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("result");
    QTest::newRow("OK") << "OK" << int(QDialog::Accepted);
    QTest::newRow("Cancel") << "Cancel" << int(QDialog::Rejected);
}

void TestTarnSignalSelectDialog::returnPressesTheFocusedEnding()
{
    QFETCH(QString, button);
    Dialog dialog(m_netlist.get());
    dialog.setResult(-1);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QWidget *focused = dialog.focusable(button);
    focused->setFocus();
    QTest::keyClick(focused, Qt::Key_Return);
    QVERIFY(!dialog.isVisible());
    QTEST(dialog.result(), "result");
    QCOMPARE(debugLines(), QStringList());
}

void TestTarnSignalSelectDialog::otherKeysDoNothing_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<int>("key");
    for (const char *name :
         {"lineEditName", "treeWidget", "treeWidgetAddSignal", "comboBoxSearchIn",
          "checkBoxCaseSensitive", "pushButtonSearch", "btnAddAll", "OK", "Cancel"}) {
        QTest::addRow("%s Enter", name) << name << int(Qt::Key_Enter);
        QTest::addRow("%s Escape", name) << name << int(Qt::Key_Escape);
    }
}

void TestTarnSignalSelectDialog::otherKeysDoNothing()
{
    QFETCH(QString, widget);
    QFETCH(int, key);
    Dialog dialog(m_netlist.get());
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    dialog.check("checkBoxAdvancedFilter");
    dialog.search("");
    dialog.results()->setCurrentItem(dialog.results()->topLevelItem(0));
    clearDebugLines();
    QWidget *focused = dialog.focusable(widget);
    focused->setFocus();
    QTest::keyClick(focused, Qt::Key(key));
    QVERIFY(dialog.isVisible());
    QCOMPARE(debugLines(), QStringList());
    QCOMPARE(dialog.chosen()->topLevelItemCount(), 0);
}

void TestTarnSignalSelectDialog::getNetNameReturnsTheChoice()
{
    QWidget parent;
    ModalScript script;
    script.expectDialog("TARN::TarnSignalSelectDialog", "Search Nets", [&](QDialog *dialog) {
        QCOMPARE(dialog->parentWidget(), &parent);
        dialog->findChild<QAbstractButton *>("pushButtonSearch")->click();
        select(dialog->findChild<QTreeWidget *>("treeWidget"), {"top/clk", "top/u0/gated"});
        dialog->findChild<QAbstractButton *>("btnAdd")->click();
        dialog->accept();
    });
    const QList<SignalItem> chosen =
        TarnSignalSelectDialog::getNetName(m_netlist.get(), ProbeTypeOut, &parent);
    QCOMPARE(script.problems(), QString());
    QCOMPARE(textsOf(chosen), (QStringList{"top/clk '' EU 0", "top/u0/gated '' EU 0"}));
    QVERIFY(parent.findChildren<QDialog *>().isEmpty());
}

void TestTarnSignalSelectDialog::getNetNameReturnsNothingOnCancel()
{
    ModalScript script;
    for (int i = 0; i < 2; ++i) {
        script.expectDialog("TARN::TarnSignalSelectDialog", "Search Nets", [](QDialog *dialog) {
            signals2Tree(dialog->findChild<QTreeWidget *>("treeWidgetAddSignal"), {net("x")}, 0);
            dialog->reject();
        });
    }
    QVERIFY(TarnSignalSelectDialog::getNetName(m_netlist.get(), ProbeTypeIn, nullptr).isEmpty());
    QCOMPARE(TarnSignalSelectDialog::getOneNetName(m_netlist.get(), ProbeTypeIn, nullptr),
             QString());
    QCOMPARE(script.problems(), QString());
}

void TestTarnSignalSelectDialog::getOneNetNameReturnsTheName()
{
    ModalScript script;
    script.expectDialog("TARN::TarnSignalSelectDialog", "Search Nets", [](QDialog *dialog) {
        signals2Tree(dialog->findChild<QTreeWidget *>("treeWidgetAddSignal"),
                     {busWithMembers(false, true), net("x")}, 0);
        dialog->accept();
    });
    QCOMPARE(TarnSignalSelectDialog::getOneNetName(m_netlist.get(), ProbeTypeIn, nullptr),
             QString("d[0]"));
    QCOMPARE(script.problems(), QString());
}

void TestTarnSignalSelectDialog::dialogMayDieWithItsParent()
{
    ModalScript script;
    QPointer<QWidget> parent;
    for (int i = 0; i < 2; ++i) {
        script.expectDialog("TARN::TarnSignalSelectDialog", "Search Nets",
                            [&](QDialog *) { delete parent; });
    }
    parent = new QWidget;
    QVERIFY(TarnSignalSelectDialog::getNetName(m_netlist.get(), ProbeTypeIn, parent).isEmpty());
    parent = new QWidget;
    QCOMPARE(TarnSignalSelectDialog::getOneNetName(m_netlist.get(), ProbeTypeIn, parent),
             QString());
    QCOMPARE(script.problems(), QString());
}

void TestTarnSignalSelectDialog::newNetlistDropsTreeAndResults()
{
    auto first = sampleNetlist();
    Dialog dialog(first.get());
    dialog.show();
    dialog.check("checkBoxAdvancedFilter");
    dialog.modules()->setCurrentItem(rowOf(dialog.modules(), "deep[leaf]"));
    dialog.search("");
    dialog.click("btnAddAll");

    NETWEIR::NetlistBuilder builder("other");
    builder.addNet(builder.addHierachy(builder.top(), "u9", "core"), "net");
    const auto second = builder.take();
    dialog.setNetlist(second.get());
    first.reset();
    QCOMPARE(dialog.results()->topLevelItemCount(), 0);
    QCOMPARE(modelText(dialog.chosen()->model()), QString("top/u0/deep/flag\n"));
    QCOMPARE(modelText(dialog.modules()->model()), QString("other\n    u9[core]\n"));
    QVERIFY(dialog.modules()->topLevelItem(0)->isExpanded());
    QCOMPARE(dialog.searchIn()->currentText(), QString("other"));
    QCOMPARE(dialog.search(""), QString("other/u9/net\n"));

    dialog.setNetlist(nullptr);
    QCOMPARE(dialog.results()->topLevelItemCount(), 0);
    QCOMPARE(dialog.searchIn()->count(), 0);
    QCOMPARE(dialog.search(""), QString());
}

TARN_TEST_MAIN(TestTarnSignalSelectDialog)

#include "tst_tarnsignalselectdialog.moc"
