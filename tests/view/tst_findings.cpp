// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "viewtest.h"

#include <support/modeltext.h>
#include <support/processortime.h>
#include <support/waiting.h>
#include <support/windowfit.h>

#include <audit/designnames.h>
#include <model/tarnconfig.h>
#include <model/tarncore.h>
#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <probes/initialvalueline.h>
#include <probes/signalsamples.h>
#include <view/edithistory.h>
#include <view/findingspane.h>
#include <view/tarnoptionwidget.h>

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTreeView>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace TARN;
using TarnTest::bus;
using TarnTest::FontSize;
using TarnTest::layoutFaults;
using TarnTest::ModalScript;
using TarnTest::modelText;
using TarnTest::namesOf;
using TarnTest::net;
using TarnTest::processorNanoseconds;
using TarnTest::runDueEvents;
using TarnTest::ShownView;

namespace {

using Fill = std::function<void(TarnCore *)>;

/// A design with these nets and buses below its top "top": "clk", "u1/state", "u1/data[3:0]". What
/// the design drives has a "!" behind it.
std::unique_ptr<NETWEIR::RtlNetlist> designOf(const QStringList &names)
{
    NETWEIR::NetlistBuilder builder("top");
    QHash<QString, NETWEIR::Hierachy *> nodes{{QString(), builder.top()}};
    for (QString name : names) {
        NETWEIR::NetMarks marks;
        marks.excludedForProbeOut = name.endsWith('!');
        name.remove('!');
        const QString path = name.section('/', 0, -2);
        if (!nodes.contains(path))
            nodes[path] = builder.addHierachy(builder.top(), path, "module");
        const QString base = baseOfBusName(name.section('/', -1)).toString();
        const QStringList range = name.section('[', -1).chopped(1).split(':');
        if (range.size() == 2)
            builder.addBus(nodes[path], base, range[0].toInt(), range[1].toInt(), {marks});
        else
            builder.addNet(nodes[path], base, marks);
    }
    return builder.take();
}

/// A bus of the configuration, "top/data[3:0]", with its members.
SignalItem range(const QString &base, int left, int right)
{
    QStringList members;
    for (int i = left; i >= right; --i)
        members.append(QStringLiteral("%1[%2]").arg(base).arg(i));
    return bus(QStringLiteral("%1[%2:%3]").arg(base).arg(left).arg(right), members);
}

/// A Probe In port with these signals.
Fill in(const QList<SignalItem> &items)
{
    return [items](TarnCore *core) {
        core->addProbeIn(core->probeIns.size());
        core->probeIns.last()->signals = items;
    };
}

Fill out(const QList<SignalItem> &items, const QString &value = {})
{
    return [items, value](TarnCore *core) {
        core->addProbeOut(core->probeOuts.size());
        core->probeOuts.last()->signals = items;
        core->probeOuts.last()->initialValue = value;
    };
}

/// Synchronises the core with a user clock.
Fill clock(const QString &name)
{
    return [name](TarnCore *core) {
        core->userClock = name;
        core->syncUserClock = true;
    };
}

void click(QWidget *widget)
{
    QTest::mouseClick(widget, Qt::LeftButton);
}

/// Clicks the entry of an open menu that begins with @p text.
std::function<void(QMenu *)> clickEntry(const QString &text)
{
    return [text](QMenu *menu) {
        for (QAction *action : menu->actions()) {
            if (action->text().startsWith(text)) {
                QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
                return;
            }
        }
        QFAIL(qPrintable("no entry " + text));
    };
}

const ModalScript::Box TooManySignals{QMessageBox::Warning, "Warning",
                                      "Support 256 signals at most.", QMessageBox::Ok, QString()};

const ModalScript::Box RemoveCore{QMessageBox::Question, "Remove TARn",
                                  "Do you want to remove TARN 0 ?",
                                  QMessageBox::Ok | QMessageBox::Cancel, QString()};

} // namespace

class TestFindings : public TarnTest::ViewTest
{
    Q_OBJECT

private:
    /// A file with a core for each entry.
    QString write(const QVector<QVector<Fill>> &cores) const
    {
        QList<TarnCore *> list;
        for (const QVector<Fill> &fills : cores) {
            list.append(new TarnCore(list.size()));
            for (const Fill &fill : fills)
                fill(list.last());
        }
        const QString file = path("findings.tarn");
        if (!writeTARNConfigToXml(list, file))
            qFatal("cannot write %s", qPrintable(file));
        qDeleteAll(list);
        return file;
    }

    ShownView show(const QStringList &design, const QVector<QVector<Fill>> &cores)
    {
        setDesign(design);
        ShownView view = ViewTest::show(write(cores));
        search();
        return view;
    }

    void setDesign(const QStringList &design)
    {
        extraction().build = [design] { return designOf(design); };
    }

    /// Reads @p design by the banner.
    void reload(const ShownView &view, const QStringList &design)
    {
        setDesign(design);
        view->designFileChanged();
        clickBanner(view.view, "btnA");
        search();
    }

    /// Lets the search for replacements end.
    static void search()
    {
        for (int i = 0; i < 20; ++i)
            runDueEvents();
    }

    static FindingsPane *paneOf(const ShownView &view) { return view->findChild<FindingsPane *>(); }

    static QTreeView *listOf(const ShownView &view)
    {
        return view->findChild<QTreeView *>("listFindings");
    }

    static QPushButton *buttonOf(const ShownView &view, const char *name)
    {
        return view->findChild<QPushButton *>(name);
    }

    static bool isShown(const ShownView &view) { return paneOf(view)->isVisible(); }

    static QStringList placesOf(const ShownView &view)
    {
        QStringList places;
        const QAbstractItemModel *model = listOf(view)->model();
        for (int i = 0; i < model->rowCount(); ++i)
            places.append(model->index(i, 1).data().toString());
        return places;
    }

    static QAction *actionOf(const ShownView &view, const QKeySequence &key)
    {
        for (QAction *action : view->actions()) {
            if (action->shortcut() == key)
                return action;
        }
        return nullptr;
    }

    /// Core and row that the view shows.
    static QString currentOf(const ShownView &view, const char *tree = "treeProbeIn")
    {
        const TarnOptionWidget *page = currentPageOf(view.view);
        const QTreeWidgetItem *row = page->findChild<QTreeWidget *>(tree)->currentItem();
        return QStringLiteral("%1 %2").arg(page->core()->index).arg(row ? row->text(0) : "-");
    }

    /// What the view shows after each of three times @p act.
    static QStringList threeTimes(const ShownView &view, const std::function<void()> &act)
    {
        QStringList shown;
        for (int i = 0; i < 3; ++i) {
            act();
            shown.append(currentOf(view, "treeProbeOut"));
        }
        return shown;
    }

    /// A line that comes after the view in the order of the Tab key.
    static QWidget *addLineBehind(const ShownView &view)
    {
        auto *line = new QLineEdit(view.container);
        view.container->layout()->addWidget(line);
        QWidget::setTabOrder(buttonOf(view, "btnReplaceAll"), line);
        view.container->activateWindow();
        runDueEvents();
        return line;
    }

    static QStringList signalsOf(const ShownView &view, int core, int port)
    {
        return namesOf(pagesOf(view.view)[core]->core()->getProbeIn(port)->signals);
    }

private Q_SLOTS:
    // Shown and hidden

    void designWithoutProblemsShowsNothing()
    {
        const ShownView view = show({"clk"}, {{in({net("top/clk")})}});
        QVERIFY(!isShown(view));
        QCOMPARE(view->layout()->count(), 3);
        QVERIFY(!actionOf(view, Qt::Key_F8)->isEnabled());
        QVERIFY(!actionOf(view, Qt::SHIFT + Qt::Key_F8)->isEnabled());
        QVERIFY(!view->isModified());
    }

    void emptyPortsAreLeftToTheSave()
    {
        QVERIFY(!isShown(show({"clk"}, {{in({})}, {}})));
        QVERIFY(!isShown(show({"clk"}, {})));
    }

    void listsWhatDoesNotFit()
    {
        const ShownView view =
            show({"clk", "data[4:0]"}, {{in({net("top/clk")})},
                                        {in({}), in({net("top/gone"), range("top/data", 3, 0)})}});
        QVERIFY(isShown(view));
        QVERIFY(!view->isModified());
        QVERIFY(actionOf(view, Qt::Key_F8)->isEnabled());
        QCOMPARE(placesOf(view),
                 QStringList({"tarn_1, Probe In1, top/gone", "tarn_1, Probe In1, top/data[3:0]"}));
        const QAbstractItemModel *model = listOf(view)->model();
        QCOMPARE(model->index(0, 0).data().toString(), QString("Error"));
        QCOMPARE(model->index(1, 0).data().toString(), QString("Warning"));
        QVERIFY(!model->index(0, 2).data().toString().isEmpty());
        QVERIFY(model->index(0, 2).data() != model->index(1, 2).data());
        // Behind the three entries that the view has always had.
        QCOMPARE(view->layout()->count(), 4);
        QCOMPARE(view->layout()->itemAt(3)->widget(), paneOf(view));
    }

    void takesAThirdAtMost()
    {
        QList<SignalItem> items;
        for (int i = 0; i < 60; ++i)
            items.append(net(QStringLiteral("top/gone%1").arg(i)));
        const ShownView view = show({"clk"}, {{in(items)}});
        QList<int> heights;
        for (const int height : {900, 440, 900}) {
            view.container->resize(700, height);
            runDueEvents();
            QCOMPARE(paneOf(view)->maximumHeight(), view->height() / 3);
            QVERIFY(paneOf(view)->height() <= view->height() / 3);
            QVERIFY(paneOf(view)->height() > 60);
            heights.append(paneOf(view)->height());
        }
        QVERIFY(heights.at(0) > heights.at(1));
        QCOMPARE(heights.at(2), heights.at(0));
    }

    void nothingIsCutOff_data() { FontSize::addSizes(); }
    void nothingIsCutOff()
    {
        QFETCH(double, points);
        const FontSize size(points);
        const ShownView view = show({"clk"}, {{in({net("top/gone")})}});
        view.container->resize(view.container->minimumSizeHint());
        QTRY_COMPARE(layoutFaults(view.container), QString());
        QVERIFY(paneOf(view)->height() <= view->height() / 3);
        QVERIFY(listOf(view)->viewport()->height() >= listOf(view)->sizeHintForRow(0));
    }

    void goesWhenAllIsWell()
    {
        const ShownView view = show({"clk"}, {{in({net("top/gone")})}});
        QVERIFY(isShown(view));
        reload(view, {"clk", "gone"});
        QVERIFY(!isShown(view));
        QCOMPARE(view->layout()->count(), 3);
        QVERIFY(!actionOf(view, Qt::Key_F8)->isEnabled());
        reload(view, {"clk"});
        QVERIFY(isShown(view));
    }

    // The way to a row

    void showsTheRow_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("double click") << false;
        QTest::newRow("return") << true;
    }
    void showsTheRow()
    {
        QFETCH(bool, byKey);
        const ShownView view =
            show({"clk"}, {{in({net("top/clk")})}, {in({net("top/clk")}), in({net("top/gone")})}});
        QCOMPARE(currentPageOf(view.view)->core()->index, 0);
        QTreeView *list = listOf(view);
        if (byKey) {
            list->setFocus();
            QTest::keyClick(list, Qt::Key_Return);
        } else {
            const QPoint row = list->visualRect(list->model()->index(0, 2)).center();
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row);
            QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, row);
        }
        QCOMPARE(currentOf(view), QString("1 top/gone"));
        QVERIFY(!view->isModified());
    }

    void keysGoFromFindingToFinding()
    {
        const ShownView view = show(
            {"clk"}, {{in({net("top/a"), net("top/clk")})}, {in({net("top/b"), net("top/c")})}});
        view.container->activateWindow();
        currentPageOf(view.view)->findChild<QTreeWidget *>("treeProbeIn")->setFocus();
        QStringList shown;
        for (int i = 0; i < 4; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_F8);
            shown.append(currentOf(view));
        }
        QCOMPARE(shown, QStringList({"0 top/a", "1 top/b", "1 top/c", "0 top/a"}));
        for (int i = 0; i < 2; ++i)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_F8, Qt::ShiftModifier);
        QCOMPARE(currentOf(view), QString("1 top/b"));
        // From a row that the user made current, without going there.
        listOf(view)->setCurrentIndex(listOf(view)->model()->index(1, 0));
        actionOf(view, Qt::Key_F8)->trigger();
        QCOMPARE(currentOf(view), QString("1 top/c"));
    }

    void everyPlaceOfSeveralDriversIsReached()
    {
        const ShownView view =
            show({"clk"}, {{out({net("top/clk")})}, {out({}), out({net("top/clk")})}});
        QCOMPARE(placesOf(view), QStringList({"tarn_0, Probe Out0, top/clk and 1 more"}));
        const QStringList cycle{"0 top/clk", "1 top/clk", "0 top/clk"};
        QCOMPARE(threeTimes(view, [&] { actionOf(view, Qt::Key_F8)->trigger(); }), cycle);
        QCOMPARE(threeTimes(view, [&] { actionOf(view, Qt::SHIFT + Qt::Key_F8)->trigger(); }),
                 QStringList({"1 top/clk", "0 top/clk", "1 top/clk"}));
        QCOMPARE(threeTimes(view, [&] { Q_EMIT listOf(view)->activated({}); }), cycle);
    }

    void tabLeadsThroughPageListAndButtons()
    {
        const ShownView view =
            show({"clk", "u/state_r", "data[4:0]", "more[4:0]"},
                 {{in({net("top/u/state_q")}), out({})},
                  {in({range("top/data", 3, 0), range("top/more", 3, 0)}), out({net("top/clk")})}});
        view.container->activateWindow();
        treeOf(view.view)->setFocus();
        QStringList names;
        for (int i = 0; i < 20 && !names.contains("treeWidget"); ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            names.append(QApplication::focusWidget()->objectName());
        }
        const QStringList last{"listFindings", "btnReplace", "btnReplaceAll", "treeWidget"};
        QCOMPARE(names.mid(names.size() - 4), last);
        QVERIFY(names.contains("treeProbeIn"));
        QVERIFY(names.contains("checkUserClock"));
    }

    void everythingHasANameForScreenReaders()
    {
        const ShownView view = show({"clk"}, {{in({net("top/gone")})}});
        for (const char *name : {"listFindings", "btnReplace", "btnReplaceAll"}) {
            QAccessibleInterface *widget =
                QAccessible::queryAccessibleInterface(view->findChild<QWidget *>(name));
            QVERIFY(!widget->text(QAccessible::Name).isEmpty());
            QVERIFY(!widget->text(QAccessible::Description).isEmpty());
        }
    }

    // Replacements

    void replacesBySelection()
    {
        const ShownView view =
            show({"clk", "u/state_r"}, {{in({net("top/clk"), net("top/u/state_q")})}});
        QVERIFY(buttonOf(view, "btnReplace")->isEnabled());
        script().expectMenu(clickEntry("top/u/state_r"));
        click(buttonOf(view, "btnReplace"));
        runDueEvents();
        QCOMPARE(signalsOf(view, 0, 0), QStringList({"top/clk", "top/u/state_r"}));
        QVERIFY(view->isModified());
        QVERIFY(!isShown(view));

        view->history()->undo();
        QCOMPARE(signalsOf(view, 0, 0), QStringList({"top/clk", "top/u/state_q"}));
        QVERIFY(isShown(view));
        QVERIFY(!view->isModified());
    }

    void nothingIsOfferedWithoutLikeness()
    {
        const ShownView view = show({"clk"}, {{in({net("top/zebra_stripes")})}});
        QVERIFY(isShown(view));
        QVERIFY(!buttonOf(view, "btnReplace")->isEnabled());
        QVERIFY(!buttonOf(view, "btnReplaceAll")->isEnabled());
    }

    void searchesForWhatAnEditAdds()
    {
        const ShownView view = show({"u/state_r", "u/value_r"}, {{in({net("top/u/state_q")})}});
        pagesOf(view.view)[0]->core()->getProbeIn(0)->signals.append(net("top/u/value_q"));
        view->history()->record();
        listOf(view)->setCurrentIndex(listOf(view)->model()->index(1, 0));
        search();
        script().expectMenu(clickEntry("top/u/value_r"));
        click(buttonOf(view, "btnReplace"));
        runDueEvents();
        QCOMPARE(signalsOf(view, 0, 0), QStringList({"top/u/state_q", "top/u/value_r"}));
    }

    void takesOverAChangedBus()
    {
        const ShownView view = show(
            {"data[4:0]"}, {{in({net("top/data[0]")})}, {out({range("top/data", 3, 0)}, "0xa")}});
        listOf(view)->setCurrentIndex(listOf(view)->model()->index(0, 0));
        QCOMPARE(placesOf(view), QStringList({"tarn_1, Probe Out0, top/data[3:0]"}));
        script().expectMenu({"top/data[4:0]"}, "top/data[4:0]");
        click(buttonOf(view, "btnReplace"));
        runDueEvents();
        const ProbeOut *port = pagesOf(view.view)[1]->core()->getProbeOut(0);
        QCOMPARE(namesOf(port->signals), QStringList({"top/data[4:0]"}));
        pagesOf(view.view)[1]->save();
        QCOMPARE(port->initialValue, QString("0x0A"));
    }

    void replacesAllAtOnce()
    {
        const QStringList moved{"clk", "u_new/a", "u_new/b", "u_new/c[3:0]"};
        const ShownView view =
            show(moved, {{in({net("top/u_old/a"), net("top/clk")})},
                         {in({net("top/u_old/b"), range("top/u_old/c", 3, 0)})}});
        QPushButton *all = buttonOf(view, "btnReplaceAll");
        QVERIFY(all->isEnabled());
        QVERIFY(!all->menu());
        for (const char *part : {"top/u_old", "top/u_new", "3"})
            QVERIFY2(all->toolTip().contains(part), qPrintable(all->toolTip()));
        click(all);
        QCOMPARE(signalsOf(view, 0, 0), QStringList({"top/u_new/a", "top/clk"}));
        QCOMPARE(signalsOf(view, 1, 0), QStringList({"top/u_new/b", "top/u_new/c[3:0]"}));
        QVERIFY(!isShown(view));
        view->history()->undo(); // One step.
        QCOMPARE(signalsOf(view, 0, 0), QStringList({"top/u_old/a", "top/clk"}));
        QCOMPARE(signalsOf(view, 1, 0), QStringList({"top/u_old/b", "top/u_old/c[3:0]"}));
    }

    void replacesAUserClock()
    {
        // A bus, which is as much alike, is not offered.
        const ShownView view = show({"clk_core", "clk_corex[1:0]", "data"},
                                    {{in({net("top/data")}), clock("top/clk_corex")}});
        QCOMPARE(placesOf(view), QStringList({"tarn_0, top/clk_corex"}));
        QTest::keyClick(listOf(view), Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget()->objectName(), QString("lineEditUserClock"));
        script().expectMenu({"top/clk_core"}, "top/clk_core");
        click(buttonOf(view, "btnReplace"));
        runDueEvents();
        QCOMPARE(view->findChild<QLineEdit *>("lineEditUserClock")->text(),
                 QString("top/clk_core"));
        QVERIFY(!isShown(view));
    }

    void keepsWhatIsTyped()
    {
        const ShownView view =
            show({"u_new/a", "u_new/b"}, {{in({net("top/u_old/a"), net("top/u_old/b")}), out({})},
                                          {in({}), out({range("top/u_new/c", 3, 0)}, "0x0")}});
        view.container->activateWindow();
        view->changeTarnWidget(1);
        auto *line = currentPageOf(view.view)->findChild<InitialValueLine *>();
        line->setFocus();
        line->setCursorPosition(2);
        QTest::keyClick(line, Qt::Key_Delete);
        QTest::keyClick(line, Qt::Key_5);
        QVERIFY(line->hasFocus()); // The text is not applied yet.
        buttonOf(view, "btnReplaceAll")->click();
        QCOMPARE(signalsOf(view, 0, 0), QStringList({"top/u_new/a", "top/u_new/b"}));
        QCOMPARE(line->displayText(), QString("0x5"));
        view->history()->undo();
        QCOMPARE(signalsOf(view, 0, 0), QStringList({"top/u_old/a", "top/u_old/b"}));
        QCOMPARE(line->displayText(), QString("0x5"));
    }

    void nothingIsReplacedAtOnceBeforeTheSearchEnds()
    {
        setDesign({"u_new/a", "u_new/b", "data[4:0]", "more[0:3]"});
        const ShownView view =
            ViewTest::show(write({{in({net("top/u_old/a"), range("top/data", 3, 0)}),
                                   in({net("top/u_old/b"), range("top/more", 3, 0)})}}));
        for (int slice = 0; slice < 100; ++slice) {
            listOf(view)->setCurrentIndex(listOf(view)->model()->index(slice % 2, 0));
            if (buttonOf(view, "btnReplaceAll")->isEnabled())
                break;
            QCoreApplication::sendPostedEvents();
        }
        QVERIFY(buttonOf(view, "btnReplaceAll")->menu());
    }

    void severalChangesMakeAMenu()
    {
        const ShownView view = show({"u_new/a", "u_new/b", "data[4:0]", "more[0:3]"},
                                    {{in({net("top/u_old/a"), range("top/data", 3, 0)}),
                                      in({net("top/u_old/b"), range("top/more", 3, 0)})}});
        script().expectMenu(clickEntry("Changed buses"));
        click(buttonOf(view, "btnReplaceAll"));
        search();
        QCOMPARE(signalsOf(view, 0, 0), QStringList({"top/u_old/a", "top/data[4:0]"}));
        QCOMPARE(signalsOf(view, 0, 1), QStringList({"top/u_old/b", "top/more[0:3]"}));
        QVERIFY(!buttonOf(view, "btnReplaceAll")->menu());
        click(buttonOf(view, "btnReplaceAll"));
        QCOMPARE(signalsOf(view, 0, 0), QStringList({"top/u_new/a", "top/data[4:0]"}));
        QCOMPARE(signalsOf(view, 0, 1), QStringList({"top/u_new/b", "top/more[0:3]"}));
    }

    void changedBusThatIsDrivenIsNotTakenOver()
    {
        const ShownView view = show({"data[4:0]!", "more[4:0]"},
                                    {{out({range("top/data", 3, 0)}), in({range("top/data", 3, 0)}),
                                      out({range("top/more", 3, 0)})}});
        QVERIFY(buttonOf(view, "btnReplaceAll")->toolTip().contains("(2)"));
        click(buttonOf(view, "btnReplaceAll"));
        QCOMPARE(signalsOf(view, 0, 0), QStringList("top/data[4:0]"));
        search();
        QVERIFY(!buttonOf(view, "btnReplaceAll")->isEnabled());
    }

    void refusesMoreBitsThanAPortHolds_data()
    {
        QTest::addColumn<bool>("all");
        QTest::newRow("replace") << false;
        QTest::newRow("replace all") << true;
    }
    void refusesMoreBitsThanAPortHolds()
    {
        QFETCH(bool, all);
        QStringList design{"data[4:0]", "more[4:0]"};
        QList<SignalItem> items{range("top/data", 3, 0), range("top/more", 3, 0)};
        for (int i = 0; i < 248; ++i) {
            design.append(QStringLiteral("n%1").arg(i));
            items.append(net("top/" + design.last()));
        }
        const ShownView view = show(design, {{in(items)}});
        if (!all)
            script().expectMenu({"top/data[4:0]"}, "top/data[4:0]");
        script().expectBox(TooManySignals);
        click(buttonOf(view, all ? "btnReplaceAll" : "btnReplace"));
        runDueEvents();
        QCOMPARE(signalsOf(view, 0, 0).first(), QString("top/data[3:0]"));
        QVERIFY(!view->isModified());
    }

    void nextFindingIsCurrentAfterReplacing()
    {
        const ShownView view =
            show({"clk", "u/state_r"},
                 {{in({net("top/gone"), net("top/u/state_q"), net("top/zebra"), net("top/xyz")})}});
        QTreeView *list = listOf(view);
        list->setCurrentIndex(list->model()->index(1, 0));
        script().expectMenu(clickEntry("top/u/state_r"));
        click(buttonOf(view, "btnReplace"));
        search();
        QCOMPARE(list->currentIndex().row(), 1);
        QCOMPARE(placesOf(view).at(1), QString("tarn_0, Probe In0, top/zebra"));
        QVERIFY(list->hasFocus());
        actionOf(view, Qt::Key_F8)->trigger(); // Shows it instead of passing over it.
        QCOMPARE(currentOf(view), QString("0 top/zebra"));
    }

    void currentFindingStaysCurrent()
    {
        const Fill driven = out({net("top/a"), net("top/b")});
        const ShownView view =
            show({"a", "b"}, {{driven}, {driven, in({net("top/gone"), net("top/lost")})}});
        QTreeView *list = listOf(view);
        QStringList places = placesOf(view);
        QCOMPARE(places.size(), 4);
        list->setCurrentIndex(list->model()->index(3, 0));
        reload(view, {"a", "b", "gone"});
        QCOMPARE(list->currentIndex().row(), 2);
        QCOMPARE(placesOf(view).at(2), places.at(3));
        reload(view, {"a", "b"});
        QCOMPARE(list->currentIndex().row(), 3);
        list->setCurrentIndex(list->model()->index(1, 0));
        reload(view, {"a", "b", "gone"});
        QCOMPARE(list->currentIndex().row(), 0);
        QCOMPARE(placesOf(view).at(0), places.at(1));
    }

    // What goes meanwhile

    void netlistMayGoDuringTheSearch()
    {
        setDesign({"u_new/a", "u_new/b"});
        const ShownView view =
            ViewTest::show(write({{in({net("top/u_old/a"), net("top/u_old/b")})}}));
        for (int i = 0; i < 4; ++i) { // At each of the first slices.
            for (int slices = 0; slices < i; ++slices)
                QCoreApplication::sendPostedEvents();
            QVERIFY(view->readRtlNetlist());
        }
        search();
        QVERIFY(buttonOf(view, "btnReplaceAll")->isEnabled());
    }

    void viewMayGoDuringTheSearch()
    {
        setDesign({"u_new/a"});
        const ShownView view = ViewTest::show(write({{in({net("top/u_old/a")})}}));
        delete view.container;
        search();
    }

    void viewMayGoBehindTheMenu()
    {
        const ShownView view = show({"u/state_r"}, {{in({net("top/u/state_q")})}});
        script().expectMenu([&view](QMenu *) { delete view.container; });
        QTest::mousePress(buttonOf(view, "btnReplace"), Qt::LeftButton); // Opens the menu.
        runDueEvents();
        QVERIFY(!view.view);
    }

    void viewMayGoBehindTheRefusal()
    {
        const ShownView view =
            show({"data[256:0]", "more[4:0]"},
                 {{in({range("top/data", 255, 0)}), in({range("top/more", 3, 0)})}});
        script().expectBox(TooManySignals, QMessageBox::Ok,
                           [&view](QMessageBox *) { delete view.container; });
        click(buttonOf(view, "btnReplaceAll"));
        QVERIFY(!view.view);
    }

    void keyLeavesALineThatRejectsItsText()
    {
        const ShownView view = show({"clk"}, {{in({net("top/gone")}), out({net("top/clk")})}});
        view.container->activateWindow();
        auto *line = currentPageOf(view.view)->findChild<InitialValueLine *>();
        line->setFocus();
        line->end(false);
        QTest::keyClick(line, Qt::Key_Backspace);
        QTest::keyClick(line, Qt::Key_9);
        script().expectBox({QMessageBox::Information, "Error",
                            "Value '9' for Probe Out0 Initial Value exceeds the effective width.",
                            QMessageBox::Ok, QString()});
        QTest::keyClick(line, Qt::Key_F8);
        QCOMPARE(currentOf(view), QString("0 top/gone"));
    }

    void designMayChangeBehindTheMenu()
    {
        const ShownView view = show({"u/state_r"}, {{in({net("top/u/state_q")})}});
        script().expectMenu([&](QMenu *menu) {
            setDesign({"u/state_q"});
            view->readRtlNetlist();
            QVERIFY(!menu->isVisible());
        });
        click(buttonOf(view, "btnReplace"));
        runDueEvents();
        QVERIFY(!isShown(view));
        QCOMPARE(signalsOf(view, 0, 0), QStringList({"top/u/state_q"}));
    }

    void coreMayGoUnderAFinding()
    {
        const ShownView view =
            show({"clk"}, {{in({net("top/a")})}, {in({net("top/b")})}, {in({net("top/clk")})}});
        listOf(view)->setCurrentIndex(listOf(view)->model()->index(0, 0));
        script().expectMenu({"Add", "Remove"}, "Remove");
        script().expectBox(RemoveCore);
        openMenu(view.view, 0);
        QCOMPARE(placesOf(view), QStringList({"tarn_0, Probe In0, top/b"}));
        QTest::keyClick(listOf(view), Qt::Key_Return);
        QCOMPARE(currentOf(view), QString("0 top/b"));
    }

    // The debug line

    void reloadSaysWhatWent()
    {
        const ShownView view = show(
            {"clk", "a", "data[3:0]"},
            {{in({net("top/gone"), net("top/a"), range("top/data", 3, 0)}), in({net("top/a")})}});
        const QString line("design reloaded: ");
        QVERIFY(debugLines().filter(line).isEmpty()); // None for the first reading.
        reload(view, {"clk", "data[4:0]"});
        reload(view, {"clk", "a", "data[3:0]", "gone"});
        QCOMPARE(debugLines().filter(line),
                 QStringList({line + "nets gone: 1, buses changed: 1, signals marked: 4",
                              line + "nets gone: 0, buses changed: 0, signals marked: 0"}));
    }

    // The keys of the view

    void focusStaysInTheView_data()
    {
        QTest::addColumn<QString>("focused");
        QTest::newRow("list") << QString("listFindings");
        QTest::newRow("replace") << QString("btnReplace");
        QTest::newRow("replace all") << QString("btnReplaceAll");
    }

    void focusStaysInTheView()
    {
        QFETCH(QString, focused);
        const QVector<Fill> fills = {
            in({net("top/u_a/state_q"), net("top/u_a/valid"), net("top/u_a/ready")})};
        const QStringList renamed = {"u_b/state_q", "u_b/valid", "u_b/ready"};
        const ShownView view = show(renamed, {{in({net("top/u_b/valid")})}, fills});
        script().expectMenu({"Add", "Remove"}, "Remove");
        ModalScript::Box question = RemoveCore;
        question.text = "Do you want to remove TARN 1 ?";
        script().expectBox(question);
        openMenu(view.view, 1);
        view->history()->undo();
        search();
        QWidget *behind = addLineBehind(view);
        auto *widget = view->findChild<QWidget *>(focused);
        widget->setFocus();
        QVERIFY(widget->hasFocus());
        view->history()->redo(); // The list goes with the core.
        QVERIFY(!isShown(view));
        QVERIFY(QApplication::focusWidget() && !behind->hasFocus());
        QVERIFY(view->isAncestorOf(QApplication::focusWidget()));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(isShown(view));
    }

    void focusStaysWhenNothingIsOffered()
    {
        const ShownView view = show({"u/state_r"}, {{in({net("top/u/state_q"), net("top/gone")})}});
        QWidget *behind = addLineBehind(view);
        buttonOf(view, "btnReplace")->setFocus();
        QVERIFY(buttonOf(view, "btnReplace")->hasFocus());
        listOf(view)->setCurrentIndex(listOf(view)->model()->index(1, 0));
        QVERIFY(!buttonOf(view, "btnReplace")->isEnabled());
        QVERIFY(!behind->hasFocus());
        QVERIFY(listOf(view)->hasFocus());
    }

    // While the design is read

    void stepsAndKeysWorkWhileTheDesignIsRead()
    {
        const ShownView view =
            show({"u/state_r"},
                 {{in({net("top/u/state_q")}), out({net("top/u/state_r"), net("top/gone")})}});
        currentPageOf(view.view)->findChild<QPushButton *>("btnProbeInAdd")->click();
        int readings = 0;
        extraction().whileBuilding = [&] {
            ++readings;
            QVERIFY(!isShown(view)); // There is no netlist.
            view->history()->undo();
            view->history()->redo();
            actionOf(view, Qt::Key_F8)->trigger();
            runDueEvents();
            view->history()->undo();
        };
        reload(view, {"u/state_r"});
        QCOMPARE(readings, 1);
        QCOMPARE(placesOf(view),
                 QStringList({"tarn_0, Probe In0, top/u/state_q", "tarn_0, Probe Out0, top/gone"}));
        QVERIFY(!view->isModified());
    }

    // Limits

    void manyFindingsScrollQuickly()
    {
        // Each bit of half the ports is driven by the other half as well.
        QVector<QVector<Fill>> cores;
        for (int core = 0; core < 16; ++core) {
            cores.append(QVector<Fill>());
            for (int port = 0; port < 64; ++port)
                cores.last().append(
                    out({range(QStringLiteral("top/b%1").arg((core / 2) * 64 + port), 255, 0)}));
        }
        const ShownView view = show({"clk"}, cores);
        QTreeView *list = listOf(view);
        QVERIFY(list->model()->rowCount() > 131072);
        const qint64 begin = processorNanoseconds();
        for (int i = 0; i < 50; ++i) {
            list->verticalScrollBar()->setValue(list->verticalScrollBar()->maximum() * i / 50);
            list->viewport()->repaint();
        }
        const qint64 perScroll = (processorNanoseconds() - begin) / 50 / 1000;
        QVERIFY2(perScroll < 10000, qPrintable(QStringLiteral("%1 us").arg(perScroll)));
    }
};

TARN_TEST_MAIN(TestFindings)
#include "tst_findings.moc"
