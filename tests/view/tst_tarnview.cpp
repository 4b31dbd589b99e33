// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "viewtest.h"

#include <support/files.h>
#include <support/windowfit.h>

#include <model/tarnconfig.h>
#include <model/tarncore.h>
#include <netweir/hierachy.h>
#include <netweir/rtlnetlist.h>
#include <probes/initialvalueline.h>
#include <probes/signalsamples.h>
#include <te/designmanager.h>
#include <te/taskengine.h>
#include <te/teconstants.h>
#include <view/reloadbanner.h>
#include <view/tarnoptionwidget.h>
#include <view/tarnview_p.h>

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QDockWidget>
#include <QFileSystemWatcher>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QStandardItemModel>
#include <QTest>
#include <QTreeWidget>

#include <sys/resource.h>

using TARN::InitialValueLine;
using TARN::TarnOptionWidget;
using TARN::TarnView;
using TARN::private_impl::TarnViewPrivate;
using TarnTest::errorBox;
using TarnTest::FontSize;
using TarnTest::layoutFaults;
using TarnTest::ModalScript;
using TarnTest::readFile;
using TarnTest::ShownView;
using TarnTest::writeFile;

namespace {

const QStringList FullMenu{"Add", "Remove"};

ModalScript::Box removeQuestion(int index)
{
    return {QMessageBox::Question, "Remove TARn",
            QString("Do you want to remove TARN %1 ?").arg(index),
            QMessageBox::Ok | QMessageBox::Cancel, QString()};
}

ModalScript::Box closeQuestion(const QString &filePath)
{
    return {QMessageBox::Question, "Save", "Save changes to \"" + filePath + "\" ?",
            QMessageBox::Ok | QMessageBox::Discard | QMessageBox::Cancel, QString()};
}

ModalScript::Box checkFailure(const QString &errors)
{
    ModalScript::Box box = errorBox("Error", "Your settings contain some errors.             ");
    box.detailedText = errors;
    return box;
}

const char NoPortError[] = "Tarn 0: At least one Probe In port or Probe Out port should be enabled";

void expectDefault(QMessageBox *box, QMessageBox::StandardButton button)
{
    QVERIFY(qobject_cast<QPushButton *>(box->button(button)) == box->defaultButton());
}

QList<int> range(int count)
{
    QList<int> numbers;
    for (int i = 0; i < count; ++i)
        numbers.append(i);
    return numbers;
}

} // namespace

class TestTarnView : public TarnTest::ViewTest
{
    Q_OBJECT

private:
    /// The core that list, page and title show.
    static QString agreement(const TarnView *view)
    {
        return QStringLiteral("%1 %2 %3")
            .arg(treeOf(view)->selectedItems().value(0)->text(0), dockTitleOf(view))
            .arg(currentPageOf(view)->core()->index);
    }

    static QString agreed(int core) { return QStringLiteral("tarn_%1 tarn_%1 %1").arg(core); }

    static QList<int> indexesOf(const TarnView *view)
    {
        QList<int> indexes;
        for (const TarnOptionWidget *page : pagesOf(view))
            indexes.append(page->core()->index);
        return indexes;
    }

    static QString dockTitleOf(const TarnView *view)
    {
        return view->findChild<QDockWidget *>("dockWidget_2")->windowTitle();
    }

    static void removePorts(const TarnView *view)
    {
        TARN::TarnCore *core = pagesOf(view).first()->core();
        while (!core->probeIns.isEmpty())
            core->removeProbeIn(0);
    }

    /// A view of an opened file without a container.
    std::unique_ptr<TarnView> open(const QString &filePath)
    {
        auto view = std::make_unique<TarnView>();
        if (!view->open(filePath, QString(), nullptr))
            qFatal("cannot open %s", qPrintable(filePath));
        return view;
    }

private Q_SLOTS:
    // Form

    void formHasItsObjects()
    {
        const TarnView view;
        QCOMPARE(view.size(), QSize(672, 471));
        const auto *column = qobject_cast<QVBoxLayout *>(view.layout());
        QVERIFY(column);
        QCOMPARE(column->spacing(), 0);
        QCOMPARE(column->count(), 3);
        QCOMPARE(column->itemAt(0)->widget(), view.findChild<QWidget *>("widget_3"));
        const auto *row = qobject_cast<QHBoxLayout *>(column->itemAt(2)->layout());
        QVERIFY(row);
        QCOMPARE(row->count(), 2);
        QCOMPARE(row->stretch(0), 1);
        QCOMPARE(row->stretch(1), 7);

        const auto *list = view.findChild<QDockWidget *>("dockWidget");
        QCOMPARE(row->itemAt(0)->widget(), list);
        QCOMPARE(list->windowTitle(), QStringLiteral("TARN Core"));
        const auto *tree = list->findChild<QTreeWidget *>("treeWidget");
        QVERIFY(tree);
        QCOMPARE(tree->columnCount(), 1);
        QCOMPARE(tree->contextMenuPolicy(), Qt::CustomContextMenu);

        const auto *pages = view.findChild<QDockWidget *>("dockWidget_2");
        QCOMPARE(row->itemAt(1)->widget(), pages);
        const auto *stack = pages->findChild<QStackedWidget *>("stackedWidget");
        QVERIFY(stack);
        QCOMPARE(stack->count(), 0);
    }

    void panesCanNotBeClosedAway()
    {
        const TarnView view;
        for (const auto *dock : view.findChildren<QDockWidget *>())
            QCOMPARE(dock->features(), QDockWidget::NoDockWidgetFeatures);
    }

    void titleOfTheListIsNotCutOff()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        const auto *list = shown->findChild<QDockWidget *>("dockWidget");
        QTRY_VERIFY(list->width() > list->fontMetrics().horizontalAdvance("TARN Core"));
        shown.container->resize(100, 100);
        QTRY_VERIFY(list->width() > list->fontMetrics().horizontalAdvance("TARN Core"));
    }

    void wrappedTextsOfTwoBannersAreNotCutOff()
    {
        const ShownView shown = show(writeConfig("a file with a rather long name.tarn", {0}));
        shown->checkForReload();
        shown->designFileChanged();
        for (const auto *banner : bannersOf(shown.view)) {
            const auto *text = banner->findChild<QLabel *>("labelFile");
            QTRY_VERIFY(text->height() >= text->heightForWidth(text->width()));
        }
    }

    void nothingIsCutOff_data() { FontSize::addSizes(); }
    void nothingIsCutOff()
    {
        QFETCH(double, points);
        const FontSize font(points);
        const ShownView shown = show(writeConfig("a.tarn", {0, 1}));
        shown->checkForReload();
        shown.container->resize(shown.container->minimumSizeHint());
        QTRY_COMPARE(layoutFaults(shown.container), QString());
    }

    void bannerAreaIsHiddenUntilUsed()
    {
        const TarnView view;
        const auto *area = view.findChild<QWidget *>("widget_3");
        QVERIFY(area->isHidden());
        const auto *layout = qobject_cast<QHBoxLayout *>(area->layout());
        QVERIFY(layout);
        QCOMPARE(layout->spacing(), 0);
        QCOMPARE(layout->contentsMargins(), QMargins());
    }

    void netlistNoticeIsHiddenByItsButton()
    {
        const TarnView view;
        const auto *text = view.findChild<QLabel *>("warningText");
        QCOMPARE(text->text(), QStringLiteral("Netlist File has been changed."));
        auto *button = view.findChild<QPushButton *>("okBtn");
        QCOMPARE(button->text(), QStringLiteral("OK"));
        QCOMPARE(button->maximumWidth(), 32);
        QWidget *notice = text->parentWidget();
        const auto *layout = qobject_cast<QHBoxLayout *>(notice->layout());
        QVERIFY(layout);
        QCOMPARE(layout->count(), 3);
        const auto *icon = view.findChild<QLabel *>("warningIcon");
        QCOMPARE(layout->itemAt(0)->widget(), icon);
        const QImage warning(":/fpgaprj/image/warning.png");
        QVERIFY(!warning.isNull());
        QCOMPARE(icon->pixmap(Qt::ReturnByValue).toImage().convertToFormat(warning.format()),
                 warning);
        QCOMPARE(layout->itemAt(1)->widget(), text);
        QCOMPARE(layout->itemAt(2)->widget(), button);
        QCOMPARE(view.layout()->itemAt(1)->widget(), notice);

        QVERIFY(notice->isHidden());
        notice->show();
        QVERIFY(!notice->isHidden());
        button->click();
        QVERIFY(notice->isHidden());
    }

    // Opening

    void openingWritesItsLineFirst()
    {
        const auto view = open(writeConfig("a.tarn", {0}));
        QCOMPARE(debugLines(), QStringList{" This is open file to Tarn"});
    }

    void destructionWritesTheTitle()
    {
        open(writeConfig("a.tarn", {0})).reset();
        QCOMPARE(debugLines().last(), QStringLiteral("IView: a.tarn destoryed"));
        std::make_unique<TarnView>().reset();
        QCOMPARE(debugLines().last(), QStringLiteral("IView:  destoryed"));
    }

    void fileWithCoresOpensUnmodified()
    {
        const QString file = writeConfig("a.tarn", {0, 1, 2});
        TarnView view;
        QSignalSpy status(&view, &TarnView::modificationStatusChanged);
        QString error = "former";
        QVERIFY(view.open(file, "/no/netlist", &error));
        QCOMPARE(error, QStringLiteral("former"));
        QCOMPARE(view.file(), file);
        QVERIFY(!view.isModified());
        QCOMPARE(status.count(), 0);
        QCOMPARE(view.windowTitle(), QStringLiteral("a.tarn"));
        QCOMPARE(view.shortTitle(), QStringLiteral("a.tarn"));
        QCOMPARE(treeTextOf(&view), QStringLiteral("tarn_0\ntarn_1\ntarn_2\n"));
        QCOMPARE(indexesOf(&view), (QList<int>{0, 1, 2}));
        QCOMPARE(currentPageOf(&view), pagesOf(&view).first());
        QVERIFY(treeOf(&view)->currentItem() == treeOf(&view)->topLevelItem(0));
        QCOMPARE(dockTitleOf(&view), QStringLiteral("tarn_0"));
    }

    void fileWithoutCoresOpensWithOneAndMarkedInTheShortTitleOnly()
    {
        const auto view = open(writeEmptyConfig("a.tarn"));
        QCOMPARE(indexesOf(view.get()), QList<int>{0});
        QCOMPARE(treeTextOf(view.get()), QStringLiteral("tarn_0\n"));
        QCOMPARE(dockTitleOf(view.get()), QStringLiteral("tarn_0"));
        QVERIFY(view->isModified());
        QCOMPARE(view->windowTitle(), QStringLiteral("a.tarn"));
        QCOMPARE(view->shortTitle(), QStringLiteral("a.tarn *"));
    }

    void invalidFileIsRefused_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("missing") << QByteArray();
        QTest::newRow("other root") << QByteArray("<OTHER/>");
        QTest::newRow("cut off") << QByteArray("<TARN_CONFIG><Version>1.0</Version>");
    }

    void invalidFileIsRefused()
    {
        QFETCH(QByteArray, content);
        if (!content.isNull())
            writeFile(path("a.tarn"), content);
        TarnView view;
        QString error;
        QVERIFY(!view.open(path("a.tarn"), QString(), &error));
        QCOMPARE(error, path("a.tarn") + " open file failed.");
        QCOMPARE(extraction().searches, 0);
        QVERIFY(!view.open(path("a.tarn"), QString(), nullptr));
    }

    void gapsInTheIndexesOfAFileAreKept()
    {
        const auto view = open(writeConfig("a.tarn", {2, 7}));
        QCOMPARE(treeTextOf(view.get()), QStringLiteral("tarn_2\ntarn_7\n"));
        QCOMPARE(indexesOf(view.get()), (QList<int>{2, 7}));
        QCOMPARE(dockTitleOf(view.get()), QString());
        view->changeTarnWidget(2);
        QCOMPARE(currentPageOf(view.get()), pagesOf(view.get()).at(0));
        QCOMPARE(dockTitleOf(view.get()), QStringLiteral("tarn_2"));
        view->changeTarnWidget(7);
        QCOMPARE(currentPageOf(view.get()), pagesOf(view.get()).at(1));
    }

    void moreThanSixteenCoresAreShown()
    {
        const auto view = open(writeConfig("a.tarn", range(18)));
        QCOMPARE(pagesOf(view.get()).size(), 18);
    }

    void openingAnotherFileReplacesTheFirst()
    {
        const auto view = open(writeConfig("a.tarn", {0, 1}));
        view->onModified();
        QVERIFY(view->open(writeConfig("b.tarn", {0}), QString(), nullptr));
        QCOMPARE(treeTextOf(view.get()), QStringLiteral("tarn_0\n"));
        QVERIFY(!view->isModified());
        QCOMPARE(view->windowTitle(), QStringLiteral("b.tarn"));
    }

    void deviceNameIsKept()
    {
        TarnView view;
        view.setDeviceName("KX70-FBG484-2");
        QCOMPARE(view.deviceName(), QStringLiteral("KX70-FBG484-2"));
    }

    // Pages

    void addingAPageReturnsTheirNumber()
    {
        TARN::TarnCore core(5);
        TarnView view;
        auto *page = new TarnOptionWidget(&core, nullptr, nullptr);
        QCOMPARE(view.addTarnOptionWidget(page), 1);
        QCOMPARE(treeTextOf(&view), QStringLiteral("tarn_5\n"));
        Q_EMIT page->modifed();
        QVERIFY(view.isModified());
    }

    void removedPageIsNoLongerHeard()
    {
        const auto view = open(writeConfig("a.tarn", {0, 1, 2}));
        TarnOptionWidget *page = pagesOf(view.get()).at(1);
        view->removeTarnOptionWidget(page);
        QCOMPARE(pagesOf(view.get()).size(), 2);
        QCOMPARE(treeTextOf(view.get()), QStringLiteral("tarn_0\ntarn_1\n"));
        Q_EMIT page->modifed();
        QVERIFY(!view->isModified());
    }

    void unknownIndexChangesNothing()
    {
        const auto view = open(writeConfig("a.tarn", {0, 1}));
        view->changeTarnWidget(1);
        for (int index : {-1, 2, 16})
            view->changeTarnWidget(index);
        QCOMPARE(currentPageOf(view.get()), pagesOf(view.get()).at(1));
        QCOMPARE(dockTitleOf(view.get()), QStringLiteral("tarn_1"));
    }

    void clickAndDoubleClickShowTheCore()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0, 1, 2}));
        QTreeWidget *tree = treeOf(shown.view);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier,
                          tree->visualItemRect(tree->topLevelItem(2)).center());
        QCOMPARE(dockTitleOf(shown.view), QStringLiteral("tarn_2"));
        QCOMPARE(currentPageOf(shown.view), pagesOf(shown.view).at(2));
        Q_EMIT tree->doubleClicked(tree->model()->index(1, 0));
        QCOMPARE(dockTitleOf(shown.view), QStringLiteral("tarn_1"));
        QVERIFY(tree->currentItem() == tree->topLevelItem(1));
    }

    void clickTakesRowAndColumnAsAPoint()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0, 1}));
        const int below = treeOf(shown.view)->viewport()->height() - 2;
        QStandardItemModel model(20, below + 1);
        // No item lies at the point (1, below), though core 1 exists.
        shown->on_treeWidget_clicked(model.index(1, below));
        QCOMPARE(dockTitleOf(shown.view), QStringLiteral("tarn_0"));
        // An item lies at (19, 0) and (1, 0), but only core 1 exists.
        shown->on_treeWidget_clicked(model.index(19, 0));
        QCOMPARE(dockTitleOf(shown.view), QStringLiteral("tarn_0"));
        shown->on_treeWidget_clicked(model.index(1, 0));
        QCOMPARE(dockTitleOf(shown.view), QStringLiteral("tarn_1"));
        shown->on_treeWidget_doubleClicked(model.index(0, below));
        QCOMPARE(dockTitleOf(shown.view), QStringLiteral("tarn_1"));
    }

    void keysShowTheCore_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("core");
        QTest::newRow("down") << int(Qt::Key_Down) << 2;
        QTest::newRow("up") << int(Qt::Key_Up) << 0;
        QTest::newRow("end") << int(Qt::Key_End) << 3;
        QTest::newRow("home") << int(Qt::Key_Home) << 0;
    }
    void keysShowTheCore()
    {
        QFETCH(int, key);
        QFETCH(int, core);
        const ShownView shown = show(writeConfig("a.tarn", {0, 1, 2, 3}));
        shown->changeTarnWidget(1);
        QTest::keyClick(treeOf(shown.view), Qt::Key(key));
        QCOMPARE(agreement(shown.view), agreed(core));
    }

    void rightClickShowsTheCore()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0, 1, 2}));
        QTreeWidget *tree = treeOf(shown.view);
        QTest::mouseClick(tree->viewport(), Qt::RightButton, Qt::NoModifier,
                          tree->visualItemRect(tree->topLevelItem(2)).center());
        QCOMPARE(agreement(shown.view), agreed(2));
    }

    void clickBehindABoxShowsTheCore()
    {
        TARN::TarnCore first(0);
        TARN::TarnCore second(1);
        first.addProbeOut(0);
        first.getProbeOut(0)->signals.append(TarnTest::net("top/en"));
        QVERIFY(TARN::writeTARNConfigToXml({&first, &second}, path("a.tarn")));
        const ShownView shown = show(path("a.tarn"));
        QApplication::setActiveWindow(shown.container);
        QVERIFY(QTest::qWaitForWindowActive(shown.container));
        auto *line = currentPageOf(shown.view)->findChild<InitialValueLine *>();
        line->setFocus();
        QVERIFY(line->hasFocus());
        line->setText("0xF");
        ModalScript::Box tooWide;
        tooWide.icon = QMessageBox::Information;
        tooWide.title = "Error";
        tooWide.text = "Value 'F' for Probe Out0 Initial Value exceeds the effective width.";
        script().expectBox(tooWide);
        // The box gets the release of the button.
        QTreeWidget *tree = treeOf(shown.view);
        QTest::mousePress(tree->viewport(), Qt::LeftButton, Qt::NoModifier,
                          tree->visualItemRect(tree->topLevelItem(1)).center());
        QCOMPARE(agreement(shown.view), agreed(1));
    }

    // Context menu

    void menuOnACoreOffersBoth()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        script().expectMenu(FullMenu, QString());
        openMenu(shown.view, 0);
        QCOMPARE(treeTextOf(shown.view), QStringLiteral("tarn_0\n"));
        QVERIFY(!shown->isModified());
    }

    void menuOnEmptySpaceOffersOnlyAdd()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        script().expectMenu({"Add", "-Remove"}, QString());
        openMenu(shown.view, -1);
        script().expectMenu(FullMenu, QString());
        openMenu(shown.view, 0);
    }

    void addAppendsACoreAndShowsIt()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0, 1}));
        script().expectMenu({"Add", "-Remove"}, "Add");
        openMenu(shown.view, -1);
        QCOMPARE(treeTextOf(shown.view), QStringLiteral("tarn_0\ntarn_1\ntarn_2\n"));
        QCOMPARE(indexesOf(shown.view), (QList<int>{0, 1, 2}));
        QCOMPARE(dockTitleOf(shown.view), QStringLiteral("tarn_2"));
        QCOMPARE(currentPageOf(shown.view), pagesOf(shown.view).at(2));
        QVERIFY(currentPageOf(shown.view)->netlist());
        QVERIFY(shown->isModified());
    }

    void sixteenthCoreIsTheLast()
    {
        const ShownView shown = show(writeConfig("a.tarn", range(15)));
        script().expectMenu(FullMenu, "Add");
        openMenu(shown.view, 0);
        QCOMPARE(pagesOf(shown.view).size(), 16);
        QCOMPARE(treeOf(shown.view)->topLevelItem(15)->text(0), QStringLiteral("tarn_15"));
        shown->showUnmodified();

        script().expectMenu(FullMenu, "Add");
        script().expectBox(
            {QMessageBox::Warning, "Warning", "Support 16 TARNs at most.", QMessageBox::Ok, {}},
            QMessageBox::Ok, [&](QMessageBox *box) { QVERIFY(box->parentWidget() == shown.view); });
        openMenu(shown.view, 0);
        QCOMPARE(pagesOf(shown.view).size(), 16);
        QCOMPARE(treeOf(shown.view)->topLevelItemCount(), 16);
        QVERIFY(!shown->isModified());
        QCOMPARE(dockTitleOf(shown.view), QStringLiteral("tarn_15"));
    }

    void removeAsksAndRenumbers()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0, 1, 2}));
        const QPointer<TarnOptionWidget> removed(pagesOf(shown.view).at(1));
        shown->changeTarnWidget(2);
        clearDebugLines();
        script().expectMenu(FullMenu, "Remove");
        script().expectBox(removeQuestion(1), QMessageBox::Ok, [&](QMessageBox *box) {
            QVERIFY(box->parentWidget() == shown.view);
            expectDefault(box, QMessageBox::Ok);
        });
        openMenu(shown.view, 1);
        QVERIFY(!removed);
        QCOMPARE(treeTextOf(shown.view), QStringLiteral("tarn_0\ntarn_1\n"));
        QCOMPARE(indexesOf(shown.view), (QList<int>{0, 1}));
        QCOMPARE(debugLines(),
                 (QStringList{"before changed", "0", "2", "after changed", "0", "1"}));
        QVERIFY(shown->isModified());
        // Whatever was shown, the first core is now.
        QCOMPARE(dockTitleOf(shown.view), QStringLiteral("tarn_0"));
    }

    void removeCanBeCancelled()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0, 1}));
        shown->changeTarnWidget(1);
        script().expectMenu(FullMenu, "Remove");
        script().expectBox(removeQuestion(1), QMessageBox::Cancel);
        openMenu(shown.view, 1);
        QCOMPARE(treeTextOf(shown.view), QStringLiteral("tarn_0\ntarn_1\n"));
        QVERIFY(!shown->isModified());
        QCOMPARE(dockTitleOf(shown.view), QStringLiteral("tarn_0"));
    }

    void onlyCoreStays()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        script().expectMenu(FullMenu, "Remove");
        script().expectBox({QMessageBox::Warning,
                            "Remove TARN",
                            "The only TARN can not be removed.",
                            QMessageBox::Ok,
                            {}},
                           QMessageBox::Ok,
                           [&](QMessageBox *box) { QVERIFY(box->parentWidget() == shown.view); });
        openMenu(shown.view, 0);
        QCOMPARE(treeTextOf(shown.view), QStringLiteral("tarn_0\n"));
        QVERIFY(!shown->isModified());
    }

    void fileReloadedBehindTheRemoveQuestionKeepsItsCores()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0, 1}));
        script().expectMenu(FullMenu, "Remove");
        script().expectBox(removeQuestion(1), QMessageBox::Ok, [&](QMessageBox *) {
            writeConfig("a.tarn", {0, 1, 2});
            QVERIFY(shown->reloadTarnFile());
        });
        openMenu(shown.view, 1);
        QCOMPARE(treeTextOf(shown.view), QStringLiteral("tarn_0\ntarn_1\ntarn_2\n"));
    }

    void coreThatMovedBehindTheRemoveQuestionIsStillTheOne()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0, 1, 2}));
        const TarnOptionWidget *kept = pagesOf(shown.view).at(1);
        script().expectMenu(FullMenu, "Remove");
        script().expectBox(removeQuestion(2), QMessageBox::Ok,
                           [&](QMessageBox *) { openMenu(shown.view, 0); });
        script().expectMenu(FullMenu, "Remove");
        script().expectBox(removeQuestion(0));
        openMenu(shown.view, 2);
        QCOMPARE(treeTextOf(shown.view), QStringLiteral("tarn_0\n"));
        QCOMPARE(currentPageOf(shown.view), kept);
    }

    void coreThatIsTheLastBehindTheRemoveQuestionStays()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0, 1}));
        const TarnOptionWidget *kept = pagesOf(shown.view).at(1);
        script().expectMenu(FullMenu, "Remove");
        script().expectBox(removeQuestion(1), QMessageBox::Ok,
                           [&](QMessageBox *) { openMenu(shown.view, 0); });
        script().expectMenu(FullMenu, "Remove");
        script().expectBox(removeQuestion(0));
        openMenu(shown.view, 1);
        QCOMPARE(treeTextOf(shown.view), QStringLiteral("tarn_0\n"));
        QCOMPARE(currentPageOf(shown.view), kept);
    }

    void fileReloadedBehindTheMenuKeepsItsCores()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0, 1}));
        script().expectMenu([&](QMenu *menu) {
            QVERIFY(shown->reloadTarnFile());
            menu->setActiveAction(menu->actions().last());
            QTest::keyClick(menu, Qt::Key_Return);
        });
        openMenu(shown.view, 1);
        QCOMPARE(treeTextOf(shown.view), QStringLiteral("tarn_0\ntarn_1\n"));
    }

    // The document by itself

    void removeIgnoresIndexesOutOfRange()
    {
        TarnView view;
        TarnViewPrivate document(&view);
        document.filePath = path("a.tarn");
        document.addOneTarn(0);
        document.addOneTarn(1);
        for (int index : {-1, 2, 3})
            document.removeOneTarn(index);
        QCOMPARE(document.cores.size(), 2);
        QCOMPARE(document.optionWidgets.size(), 2);
        document.clearTarns();
        QCOMPARE(pagesOf(&view).size(), 0);
        // Without cores every position is out of range; the box of the only core does not come.
        document.removeOneTarn(0);
    }

    void coresAndPagesAreFoundByTheirIndex()
    {
        TarnView view;
        TarnViewPrivate document(&view);
        document.addOneTarn(4);
        document.addOneTarn(2);
        QCOMPARE(document.getTarnByIndex(2), document.cores.at(1));
        QCOMPARE(document.getTarnByIndex(4), document.cores.at(0));
        QVERIFY(!document.getTarnByIndex(0));
        QCOMPARE(document.getTarnWidgetByIndex(2), document.optionWidgets.at(1));
        QVERIFY(!document.getTarnWidgetByIndex(1));
        QCOMPARE(document.optionWidgets.at(0)->core(), document.cores.at(0));
        document.clearTarns();
    }

    void documentCallsBackOnlyOnAChange()
    {
        TarnViewPrivate document(nullptr);
        QList<bool> calls;
        document.modificationCallback = [&](bool modified) { calls.append(modified); };
        document.setModified(false);
        QCOMPARE(calls, QList<bool>());
        document.setModified(true);
        document.setModified(true);
        document.setModified(false);
        QCOMPARE(calls, (QList<bool>{true, false}));
    }

    void actionsOfTheMenuAreNamed()
    {
        const TarnViewPrivate document(nullptr);
        QCOMPARE(document.addAction->text(), QStringLiteral("Add"));
        QCOMPARE(document.removeAction->text(), QStringLiteral("Remove"));
    }

    void documentDeletesWatcherThenActions()
    {
        QStringList deleted;
        auto document = std::make_unique<TarnViewPrivate>(nullptr);
        connect(document->watcher.get(), &QObject::destroyed, this,
                [&] { deleted.append("watcher"); });
        connect(document->addAction.get(), &QObject::destroyed, this,
                [&] { deleted.append("add"); });
        connect(document->removeAction.get(), &QObject::destroyed, this,
                [&] { deleted.append("remove"); });
        document.reset();
        QCOMPARE(deleted, (QStringList{"watcher", "add", "remove"}));
    }

    // Modified state

    void setModifiedEmitsOnEveryCall()
    {
        TarnView view;
        QSignalSpy status(&view, &TarnView::modificationStatusChanged);
        view.setModified(false);
        view.setModified(true);
        view.setModified(true);
        view.setModified(false);
        QList<bool> emitted;
        for (const auto &arguments : status)
            emitted.append(arguments.first().toBool());
        QCOMPARE(emitted, (QList<bool>{false, true, true, false}));
    }

    void editMarksBothTitlesOnce()
    {
        const auto view = open(writeConfig("a.tarn", {0}));
        QSignalSpy status(view.get(), &TarnView::modificationStatusChanged);
        QString titleWhenEmitted;
        connect(view.get(), &TarnView::modificationStatusChanged, this,
                [&] { titleWhenEmitted = view->windowTitle(); });
        Q_EMIT pagesOf(view.get()).first()->modifed();
        Q_EMIT pagesOf(view.get()).first()->modifed();
        QCOMPARE(status.count(), 1);
        QCOMPARE(status.first().first().toBool(), true);
        QVERIFY(view->isModified());
        QCOMPARE(view->windowTitle(), QStringLiteral("a.tarn *"));
        QCOMPARE(view->shortTitle(), QStringLiteral("a.tarn *"));
        // The state goes first, then the titles.
        QCOMPARE(titleWhenEmitted, QStringLiteral("a.tarn"));
    }

    // Saving

    void savingWritesModuleNamesAndTakesTheMarkAway()
    {
        const QString file = writeConfig("a.tarn", {0, 1});
        const auto view = open(file);
        view->onModified();
        clearDebugLines();
        QSignalSpy status(view.get(), &TarnView::modificationStatusChanged);
        QVERIFY(view->save());
        QCOMPARE(debugLines(), QStringList{"save lumo"});
        QVERIFY(!view->isModified());
        QCOMPARE(status.count(), 1);
        QCOMPARE(view->windowTitle(), QStringLiteral("a.tarn"));
        QCOMPARE(view->shortTitle(), QStringLiteral("a.tarn"));

        const QList<TARN::TarnCore *> cores = TARN::readTARNConfigFromXml(file, nullptr, nullptr);
        QCOMPARE(cores.size(), 2);
        for (const TARN::TarnCore *core : cores)
            QCOMPARE(core->module, QStringLiteral("top"));
        qDeleteAll(cores);
    }

    void savingWithoutANetlistKeepsTheModuleNames()
    {
        const auto view = open(writeConfig("a.tarn", {0}));
        QVERIFY(view->save());
        const QByteArray saved = readFile(view->file());
        TE::TaskEngine::instance()->designManager()->closeProject();
        script().expectBox(errorBox("Error", "Design files are not exist."));
        QVERIFY(!view->readRtlNetlist());
        QVERIFY(view->save());
        QCOMPARE(readFile(view->file()), saved);
    }

    void savingWithCheckErrorsWritesNothingAndKeepsTheMark()
    {
        const auto view = open(writeEmptyConfig("a.tarn"));
        const QByteArray content = readFile(view->file());
        ModalScript::Box box = checkFailure(NoPortError);
        QCOMPARE(box.text.size(), 47);
        script().expectBox(box, QMessageBox::Ok, [&](QMessageBox *shown) {
            expectDefault(shown, QMessageBox::Ok);
            QVERIFY(shown->escapeButton() == shown->button(QMessageBox::Ok));
            QVERIFY(shown->parentWidget() == view.get());
        });
        QVERIFY(!view->save());
        QVERIFY(view->isModified());
        QCOMPARE(view->shortTitle(), QStringLiteral("a.tarn *"));
        QCOMPARE(readFile(view->file()), content);

        TARN::TarnCore *core = pagesOf(view.get()).first()->core();
        core->addProbeIn(0);
        core->getProbeIn(0)->signals.append(TARN::SignalItem{"top/clk", {}, {}, true, true, 0});
        QVERIFY(view->save());
        QVERIFY(!view->isModified());
        QCOMPARE(view->shortTitle(), QStringLiteral("a.tarn"));
    }

    void savingFailureIsReported()
    {
        const auto view = open(writeConfig("a.tarn", {0}));
        view->onModified();
        const QByteArray content = readFile(view->file());
        // No XML can hold this.
        pagesOf(view.get()).first()->core()->getProbeIn(0)->signals.first().displayName = QChar(1);
        script().expectBox(
            errorBox("Error", "Can not save to " + QDir::toNativeSeparators(view->file())),
            QMessageBox::Ok, [&](QMessageBox *box) { QVERIFY(box->parentWidget() == view.get()); });
        QVERIFY(!view->save());
        QVERIFY(view->isModified());
        QCOMPARE(view->windowTitle(), QStringLiteral("a.tarn *"));
        QCOMPARE(readFile(view->file()), content);
    }

    void limitOfFileSizesIsAFailureOfSaving()
    {
        const auto view = open(writeConfig("a.tarn", {0}));
        view->onModified();
        const QByteArray content = readFile(view->file());
        rlimit former = {};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &former), 0);
        rlimit small = former;
        small.rlim_cur = 16;
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
        script().expectBox(
            errorBox("Error", "Can not save to " + QDir::toNativeSeparators(view->file())));
        const bool saved = view->save();
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &former), 0);
        QVERIFY(!saved);
        QVERIFY(view->isModified());
        QCOMPARE(readFile(view->file()), content);
    }

    void otherSynthesisToolForbidsSavingButNotClosing()
    {
        const auto view = open(writeConfig("a.tarn", {0}));
        view->onModified();
        TE::TaskEngine::instance()->designManager()->setOptionValue(TE::OPT::SYNTHESIZE_TOOL,
                                                                    "Synplify");
        clearDebugLines();
        script().expectBox(
            errorBox("Error",
                     "For RTL Design, TARN is only available for OstraSynthesis. Please change "
                     "Synthesis Tool to OstraSynthesis in Configurations."),
            QMessageBox::Ok, [&](QMessageBox *box) { QVERIFY(box->parentWidget() == view.get()); });
        QVERIFY(!view->save());
        QVERIFY(view->isModified());
        QCOMPARE(debugLines(), QStringList());

        script().expectBox(closeQuestion(view->file()), QMessageBox::Ok);
        QVERIFY(view->close());
        QVERIFY(!view->isModified());
    }

    void synthesisToolIsComparedCaseSensitively()
    {
        const auto view = open(writeConfig("a.tarn", {0}));
        view->onModified();
        TE::TaskEngine::instance()->designManager()->setOptionValue(TE::OPT::SYNTHESIZE_TOOL,
                                                                    "synplify");
        QVERIFY(view->save());
        QVERIFY(!view->isModified());
    }

    // Closing

    void unmodifiedViewClosesAtOnce()
    {
        const auto view = open(writeConfig("a.tarn", {0}));
        QVERIFY(view->close());
    }

    void closingAsks_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("closes");
        QTest::addColumn<bool>("saves");
        QTest::newRow("ok") << int(QMessageBox::Ok) << true << true;
        QTest::newRow("discard") << int(QMessageBox::Discard) << true << false;
        QTest::newRow("cancel") << int(QMessageBox::Cancel) << false << false;
    }

    void closingAsks()
    {
        QFETCH(int, answer);
        QFETCH(bool, saves);
        const auto view = open(writeConfig("a.tarn", {0}));
        view->onModified();
        clearDebugLines();
        script().expectBox(closeQuestion(QDir::toNativeSeparators(view->file())),
                           QMessageBox::StandardButton(answer), [&](QMessageBox *box) {
                               QVERIFY(box->parentWidget() == view.get());
                               expectDefault(box, QMessageBox::Ok);
                           });
        QCloseEvent event;
        QApplication::sendEvent(view.get(), &event);
        QTEST(event.isAccepted(), "closes");
        QCOMPARE(debugLines().contains("save lumo"), saves);
        QCOMPARE(view->isModified(), !saves);
    }

    void closingStaysOpenWhileTheCheckFails()
    {
        const auto view = open(writeConfig("a.tarn", {0}));
        view->onModified();
        removePorts(view.get());
        script().expectBox(closeQuestion(view->file()), QMessageBox::Ok);
        script().expectBox(checkFailure(NoPortError));
        QVERIFY(!view->close());
        QVERIFY(view->isModified());
    }

    void interfaceKeepsItsNames_data()
    {
        QTest::addColumn<QByteArray>("signature");
        for (const char *slot :
             {"onModified()", "onOKBtn()", "on_treeWidget_clicked(QModelIndex)",
              "on_treeWidget_doubleClicked(QModelIndex)",
              "on_treeWidget_customContextMenuRequested(QPoint)", "onFileChange()",
              "checkForReload()", "onBannerReload()", "onBannerCancel()", "onBannerKeep()",
              "onBannerClose()", "onReloadCancel()"})
            QTest::newRow(slot) << QByteArray(slot);
    }

    void interfaceKeepsItsNames()
    {
        QFETCH(QByteArray, signature);
        QVERIFY(TarnView::staticMetaObject.indexOfSlot(signature) >= 0);
    }
};

TARN_TEST_MAIN(TestTarnView)
#include "tst_tarnview.moc"
