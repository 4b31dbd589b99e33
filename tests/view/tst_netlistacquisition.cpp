// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "viewtest.h"

#include <netweir/hierachy.h>
#include <netweir/rtlnetlist.h>
#include <te/designmanager.h>
#include <te/taskengine.h>
#include <te/teconstants.h>
#include <view/reloadbanner.h>
#include <view/tarnoptionwidget.h>

#include <qutil/eventmanager.h>
#include <qutil/ievent.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTextEdit>
#include <QTreeWidget>

using TarnTest::errorBox;
using TarnTest::makeNetlist;
using TarnTest::ShownView;

namespace {

TE::DesignManager *designManager()
{
    return TE::TaskEngine::instance()->designManager();
}

using Values = QMap<QString, QVariant>;

void send(const QString &name, const Values &values)
{
    QUtil::EventManager::instance()->send(QUtil::IEvent(name, values));
}

} // namespace

class TestNetlistAcquisition : public TarnTest::ViewTest
{
    Q_OBJECT

private:
    /// What the pages of @p view hold, one name per page; "-" for a page without a netlist.
    static QStringList topsOf(const TARN::TarnView *view)
    {
        QStringList tops;
        for (const TARN::TarnOptionWidget *page : pagesOf(view))
            tops.append(page->netlist() ? page->netlist()->top()->instName() : "-");
        return tops;
    }

    static QString bannerTextOf(const TARN::TarnView *view)
    {
        QStringList texts;
        for (const TARN::ReloadBanner *banner : bannersOf(view))
            texts.append(banner->findChild<QLabel *>("labelFile")->text());
        return texts.join('|');
    }

    void expectParserErrors()
    {
        script().expectDialog(
            "TARN::MessageDlg", "Design files contain some errors.", [this](QDialog *dialog) {
                m_detail = dialog->findChild<QTextEdit *>()->toPlainText();
                m_dialogParent = dialog->parentWidget();
                dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
            });
    }

    QString m_detail;
    QWidget *m_dialogParent = nullptr;

private Q_SLOTS:
    void readingInstallsTheNetlistInEveryPage()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0, 1, 2}));
        QCOMPARE(topsOf(shown.view), (QStringList{"top", "top", "top"}));
        QCOMPARE(extraction().searches, 1);
        QCOMPARE(extraction().builds, 1);
    }

    void hostFunctionsGetTheDesignMapAndNothingElse()
    {
        setProject({"b.v", "a.sv"}, "top");
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        QCOMPARE(extraction().info, designManager()->getSourceFileInfo());
        QCOMPARE(extraction().info.value("Files").toList().size(), 2);
        QVERIFY(extraction().listsWereEmpty);
        QVERIFY(extraction().netlistWasNull);
        QCOMPARE(extraction().parents, (QList<QWidget *>{nullptr, nullptr}));
    }

    void updateReturnsTheNetlistAndKeepsThePages()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        extraction().build = [] { return makeNetlist("other"); };
        const std::unique_ptr<NETWEIR::RtlNetlist> netlist(shown->updateRtlNetlist());
        QCOMPARE(netlist->top()->instName(), QStringLiteral("other"));
        QCOMPARE(topsOf(shown.view), QStringList{"top"});
    }

    void modulesAreForwarded()
    {
        extraction().tops = QStringList{"t"};
        extraction().modules = QStringList{"m", "t"};
        extraction().messages = QStringList{"w"};
        TARN::TarnView view;
        Values info{{"Top", "x"}};
        QStringList tops;
        QStringList modules;
        QStringList messages;
        view.getRtlModules(info, tops, modules, messages);
        QCOMPARE(tops, QStringList{"t"});
        QCOMPARE(modules, (QStringList{"m", "t"}));
        QCOMPARE(messages, QStringList{"w"});
        QCOMPARE(extraction().info, (Values{{"Top", "x"}}));
        QCOMPARE(extraction().parents, QList<QWidget *>{nullptr});
    }

    // Failures

    void noDesignFiles()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0, 1}));
        setProject({"readme.txt"});
        script().expectBox(errorBox("Error", "Design files are not exist."), QMessageBox::Ok,
                           [&](QMessageBox *box) {
                               QVERIFY(box->parentWidget() == shown.view);
                               // The former netlist is gone before the message.
                               QCOMPARE(topsOf(shown.view), (QStringList{"-", "-"}));
                           });
        QVERIFY(!shown->readRtlNetlist());
        QCOMPARE(topsOf(shown.view), (QStringList{"-", "-"}));
        QCOMPARE(extraction().searches, 1);
    }

    void noProject()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        designManager()->closeProject();
        script().expectBox(errorBox("Error", "Design files are not exist."));
        QVERIFY(!shown->readRtlNetlist());
    }

    void parserErrorsAreShownWithAllMessages()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        extraction().messages = QStringList{"warning: a", "ERRORbeginning", "note", "ERROR: b"};
        expectParserErrors();
        QVERIFY(!shown->readRtlNetlist());
        QCOMPARE(m_detail, QStringLiteral("warning: a\nERRORbeginning\nnote\nERROR: b"));
        QVERIFY(m_dialogParent == shown.view);
        QCOMPARE(extraction().builds, 1);
        QCOMPARE(topsOf(shown.view), QStringList{"-"});
    }

    void parserErrorsComeBeforeTheLackOfModules()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        extraction().messages = QStringList{"ERROR: b"};
        extraction().modules.clear();
        expectParserErrors();
        QVERIFY(!shown->readRtlNetlist());
    }

    void onlyMessagesThatBeginWithErrorAreErrors()
    {
        extraction().messages = QStringList{"error: a", "Error: b", " ERROR: c", "no ERROR"};
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        QCOMPARE(topsOf(shown.view), QStringList{"top"});
    }

    void failureBeforeTheBuild_data()
    {
        QTest::addColumn<QString>("top");
        QTest::addColumn<QStringList>("modules");
        QTest::addColumn<QStringList>("tops");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text");
        const QStringList none;
        const QString design = "Design files contain some errors";
        const QString noModule = "Get no module from design.";
        const QString invalid = "Invalid Top Module";
        const QString multiple = "Multiple Top Module";
        const QString setTop = "Multiple top, please set top module.";
        QTest::newRow("no module, no top") << "" << none << none << design << noModule;
        QTest::newRow("no module, but a candidate")
            << "" << none << QStringList{"a"} << design << noModule;
        QTest::newRow("no module, top set") << "%1 x" << none << none << invalid
                                            << "No module named \"%1 x\", please reset top module.";
        QTest::newRow("no candidate, no top")
            << "" << QStringList{"a"} << none << multiple << setTop;
        QTest::newRow("two candidates, no top")
            << "" << QStringList{"a", "b"} << QStringList{"a", "b"} << multiple << setTop;
        QTest::newRow("no candidate, top set")
            << "a" << QStringList{"a"} << none << design << noModule;
        QTest::newRow("two candidates, top set")
            << "c" << QStringList{"a", "b"} << QStringList{"a", "b"} << design << noModule;
    }

    void failureBeforeTheBuild()
    {
        QFETCH(QString, top);
        QFETCH(QStringList, modules);
        QFETCH(QStringList, tops);
        QFETCH(QString, title);
        QFETCH(QString, text);
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        setProject({"top.v"}, top);
        extraction().modules = modules;
        extraction().tops = tops;
        script().expectBox(errorBox(title, text), QMessageBox::Ok,
                           [&](QMessageBox *box) { QVERIFY(box->parentWidget() == shown.view); });
        QVERIFY(!shown->readRtlNetlist());
        QCOMPARE(extraction().builds, 1);
        QCOMPARE(topsOf(shown.view), QStringList{"-"});
    }

    void failedOrCancelledBuild()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        setProject({"top.v"}, "top");
        extraction().build = [] { return nullptr; };
        script().expectBox(
            errorBox("Design files contain some errors", "Get no module from design."));
        QVERIFY(!shown->readRtlNetlist());
        QCOMPARE(topsOf(shown.view), QStringList{"-"});
    }

    void netlistOfAnotherTopIsRejected()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        setProject({"top.v"}, "%2");
        extraction().build = [] { return makeNetlist("other", true); };
        script().expectBox(
            errorBox("Error", "Get module \"%2\" failed, just received default module \"other\"."));
        QVERIFY(!shown->readRtlNetlist());
        QCOMPARE(topsOf(shown.view), QStringList{"-"});
    }

    void jtagPrimitiveIsRejected()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        extraction().build = [] { return makeNetlist("top", true); };
        script().expectBox(errorBox("Error", "KX_JTAG used in design conflicts with TARN."));
        QVERIFY(!shown->readRtlNetlist());
        QCOMPARE(topsOf(shown.view), QStringList{"-"});
    }

    void openFailsWithTheDesignAndWithoutErrorText()
    {
        extraction().build = [] { return makeNetlist("top", true); };
        script().expectBox(errorBox("Error", "KX_JTAG used in design conflicts with TARN."));
        TARN::TarnView view;
        QString error;
        QVERIFY(!view.open(writeConfig("a.tarn", {0}), QString(), &error));
        QCOMPARE(error, QString());
        // The netlist is the last step: the file itself is there.
        QCOMPARE(view.windowTitle(), QStringLiteral("a.tarn"));
        QCOMPARE(pagesOf(&view).size(), 1);
    }

    void topThatIsFoundIsAccepted()
    {
        setProject({"top.v"}, "top");
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        QCOMPARE(topsOf(shown.view), QStringList{"top"});
    }

    // What happens meanwhile

    void fileReloadedWhileBuilding()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        extraction().whileBuilding = [&] {
            writeConfig("a.tarn", {0, 1});
            QVERIFY(shown->reloadTarnFile());
            QCOMPARE(topsOf(shown.view), (QStringList{"-", "-"}));
        };
        QVERIFY(shown->readRtlNetlist());
        QCOMPARE(topsOf(shown.view), (QStringList{"top", "top"}));
    }

    void netlistReplacedWhileBuilding()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        extraction().whileBuilding = [&] {
            extraction().build = [] { return makeNetlist("inner"); };
            QVERIFY(shown->readRtlNetlist());
            QCOMPARE(topsOf(shown.view), QStringList{"inner"});
            extraction().build = [] { return makeNetlist("outer"); };
        };
        QVERIFY(shown->readRtlNetlist());
        QCOMPARE(topsOf(shown.view), QStringList{"outer"});
    }

    // Include folders

    void includePathsAreMadeAbsolute()
    {
        setProject({"top.v"});
        designManager()->setOptionValue(TE::OPT::INCLUDEPATH,
                                        QStringList{"inc", "/abs/../kept", "../up/./x", "."});
        const QString folder = designManager()->workingDir();
        const TARN::TarnView view;
        QCOMPARE(view.includePaths(), (QStringList{folder + "/inc", "/abs/../kept",
                                                   QDir::cleanPath(folder + "/../up/x"), folder}));
    }

    void noIncludePaths()
    {
        const TARN::TarnView view;
        QCOMPARE(view.includePaths(), QStringList());
    }

    // Events

    void designEventRaisesABanner_data()
    {
        QTest::addColumn<QString>("event");
        QTest::addColumn<Values>("values");
        QTest::addColumn<QString>("text");
        const QString files = "Design files changed. Do you want to reload?";
        const QString top = "Top module changed. Do you want to reload?";

        // source.v, source.sv, source.vhd are enabled sources, off.v is disabled, note.txt is none.
        for (const QString &event : {QString("TE.File.Add"), QString("TE.File.Modified")}) {
            const auto row = [&](const QString &file, const QString &text) {
                QTest::newRow(qPrintable(event + ' ' + file))
                    << event << Values{{"file", file}} << text;
            };
            row("source.v", files);
            row("source.sv", files);
            row("source.vhd", files);
            row("off.v", QString());
            row("note.txt", QString());
            row("unknown.v", QString());
        }
        for (int type = 0; type <= 5; ++type) {
            const QString text = type >= 2 && type <= 4 ? files : QString();
            const auto row = [&](const char *event, const Values &values, const QString &expected) {
                QString name = QString(event) + " type " + QString::number(type);
                for (auto it = values.cbegin(); it != values.cend(); ++it)
                    name += ' ' + it.key() + ' ' + it->toString();
                QTest::newRow(qPrintable(name)) << QString(event) << values << expected;
            };
            row("TE.File.Remove", {{"type", type}}, text);
            row("TE.File.Change.Enable", {{"type", type}, {"enable", true}}, text);
            row("TE.File.Change.Enable", {{"type", type}, {"enable", false}}, QString());
            row("TE.File.Change.Type", {{"type", type}, {"previous", 0}}, text);
            row("TE.File.Change.Type", {{"type", 1}, {"previous", type}}, text);
        }
        const auto option = [&](const char *name, const QString &text) {
            QTest::newRow(name) << "TE.Option.Change" << Values{{"option", name}} << text;
        };
        option("IncludePath", files);
        option("Verilog_Standard", files);
        option("TopModule", top);
        option("Synthesize_tool", QString());
        option("includepath", QString());
        QTest::newRow("device") << "TE.Device.Change" << Values() << QString();
    }

    void designEventRaisesABanner()
    {
        QFETCH(QString, event);
        QFETCH(Values, values);
        setProject({"source.v", "source.sv", "source.vhd", "off.v", "note.txt"});
        designManager()->setFileEnabled(path("off.v"), false);
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        send(event, values);
        QTEST(bannerTextOf(shown.view), "text");
    }

    void otherEventNamesAreIgnored()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        const QUtil::IEvent other("TE.File.Other", {{"type", 2}, {"option", "TopModule"}});
        shown->handleIEvent(&other);
        QVERIFY(bannersOf(shown.view).isEmpty());
    }

    void unsubscribedViewHearsNothing()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        shown->unsubscribeEvent();
        for (const char *event : {"TE.File.Remove", "TE.File.Change.Type"})
            send(event, {{"type", 2}});
        send("TE.File.Change.Enable", {{"type", 2}, {"enable", true}});
        for (const char *event : {"TE.File.Add", "TE.File.Modified"})
            send(event, {{"file", "top.v"}});
        send("TE.Option.Change", {{"option", "TopModule"}});
        QVERIFY(bannersOf(shown.view).isEmpty());
        shown->subscribeEvent();
        send("TE.Option.Change", {{"option", "TopModule"}});
        QCOMPARE(bannersOf(shown.view).size(), 1);
    }

    void designBannerHasItsPlaceTextAndButtons()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        auto *area = shown->findChild<QWidget *>("widget_3");
        QVERIFY(!area->isVisible());
        shown->topModuleChanged();
        QVERIFY(area->isVisible());
        QCOMPARE(bannersOf(shown.view).size(), 1);
        TARN::ReloadBanner *banner = bannersOf(shown.view).first();
        QVERIFY(banner->isVisible());
        QCOMPARE(area->layout()->indexOf(banner), 0);
        QCOMPARE(banner->findChild<QPushButton *>("btnA")->text(), QStringLiteral("Reload"));
        QCOMPARE(banner->findChild<QPushButton *>("btnB")->text(), QStringLiteral("Cancel"));
    }

    void secondChangeAddsNoSecondBanner()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        designManager()->removeFile(path("top.v"));
        designManager()->setOptionValue(TE::OPT::TOPMODULE, "other");
        QCOMPARE(bannerTextOf(shown.view),
                 QStringLiteral("Design files changed. Do you want to reload?"));
    }

    void cancelTakesTheBannerAwayAndReadsNothing()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        shown->designFileChanged();
        const QPointer<TARN::ReloadBanner> banner(bannersOf(shown.view).first());
        clickBanner(shown.view, "btnB");
        QVERIFY(bannersOf(shown.view).isEmpty());
        QVERIFY(!banner->isVisible());
        QTRY_VERIFY(!banner);
        QCOMPARE(extraction().builds, 1);
        // The area stays; an empty layout takes no room.
        auto *area = shown->findChild<QWidget *>("widget_3");
        QVERIFY(area->isVisible());
        QCOMPARE(area->layout()->count(), 0);
        QTRY_COMPARE(area->height(), 0);
        // Ready for the next change.
        designManager()->setOptionValue(TE::OPT::TOPMODULE, "other");
        QCOMPARE(bannersOf(shown.view).size(), 1);
    }

    void reloadReadsAndIsReadyForTheNextChange()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        shown->designFileChanged();
        extraction().build = [&] {
            // The banner goes before the reading starts.
            [&] { QVERIFY(bannersOf(shown.view).isEmpty()); }();
            return makeNetlist("again");
        };
        clickBanner(shown.view, "btnA");
        QCOMPARE(extraction().builds, 2);
        QCOMPARE(topsOf(shown.view), QStringList{"again"});
        designManager()->setOptionValue(TE::OPT::TOPMODULE, "other");
        QCOMPARE(bannersOf(shown.view).size(), 1);
    }

    void eventsDuringTheReloadAreIgnored()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        shown->designFileChanged();
        extraction().whileBuilding = [] { send("TE.Option.Change", {{"option", "TopModule"}}); };
        clickBanner(shown.view, "btnA");
        QCOMPARE(extraction().builds, 2);
        QVERIFY(bannersOf(shown.view).isEmpty());
    }

    void failedReloadClosesTheEditorWithoutAQuestion()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        const ShownView sibling = show(writeConfig("b.tarn", {0}));
        shown->onModified();
        QSignalSpy status(shown.view, &TARN::TarnView::modificationStatusChanged);
        shown->designFileChanged();
        extraction().build = [] { return nullptr; };
        script().expectBox(
            errorBox("Design files contain some errors", "Get no module from design."));
        clickBanner(shown.view, "btnA");
        QCOMPARE(status.count(), 1);
        QCOMPARE(status.first().first().toBool(), false);
        QVERIFY(!shown.container->isVisible());
        // The change stays unanswered.
        send("TE.Option.Change", {{"option", "TopModule"}});
        QVERIFY(bannersOf(shown.view).isEmpty());
        QTRY_VERIFY(!shown.container);
        QVERIFY(!shown.view);
        QVERIFY(sibling.view && sibling.container->isVisible());
    }

    void reloadWithoutASenderReadsToo()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        shown->designFileChanged();
        shown->onRtlReload();
        QCOMPARE(extraction().builds, 2);
        QCOMPARE(bannersOf(shown.view).size(), 1);
        shown->onReloadCancel();
        QCOMPARE(bannersOf(shown.view).size(), 1);
    }

    void failedReloadWithoutAContainerClosesTheView()
    {
        TARN::TarnView view;
        QVERIFY(view.open(writeConfig("a.tarn", {0}), QString(), nullptr));
        view.show();
        extraction().build = [] { return nullptr; };
        script().expectBox(
            errorBox("Design files contain some errors", "Get no module from design."));
        view.onRtlReload();
        QVERIFY(!view.isVisible());
    }

    void operationsAreSlots_data()
    {
        QTest::addColumn<QByteArray>("signature");
        for (const char *signature :
             {"readRtlNetlist()", "updateRtlNetlist()", "includePaths()", "subscribeEvent()",
              "unsubscribeEvent()", "designFileChanged()", "topModuleChanged()", "onRtlReload()",
              "getRtlModules(QMap<QString,QVariant>&,QStringList&,QStringList&,QStringList&)",
              "handleIEvent(const QUtil::IEvent*)"})
            QTest::newRow(signature) << QByteArray(signature);
    }

    void operationsAreSlots()
    {
        QFETCH(QByteArray, signature);
        const QMetaObject &meta = TARN::TarnView::staticMetaObject;
        const QByteArray normal = QMetaObject::normalizedSignature(signature);
        QVERIFY(meta.indexOfSlot(normal) >= 0);
    }
};

TARN_TEST_MAIN(TestNetlistAcquisition)
#include "tst_netlistacquisition.moc"
