// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "viewtest.h"

#include <support/files.h>

#include <model/tarncore.h>
#include <netweir/rtlnetlist.h>
#include <qutil/eventmanager.h>
#include <qutil/ievent.h>
#include <te/designmanager.h>
#include <te/taskengine.h>
#include <te/teconstants.h>
#include <view/reloadbanner.h>
#include <view/tarnoptionwidget.h>

#include <QApplication>
#include <QCloseEvent>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

using TarnTest::makeNetlist;
using TarnTest::ShownView;

/// The view is deleted while one of its windows is open. A use of it afterwards crashes here or is
/// found by the address sanitizer.
class TestLifetime : public TarnTest::ViewTest
{
    Q_OBJECT

private:
    ShownView m_shown;

    void killAtBox(const QString &title)
    {
        script().expectDialog("QDialog", title, [this](QDialog *) { delete m_shown.container; });
    }

    static TE::DesignManager *designManager()
    {
        return TE::TaskEngine::instance()->designManager();
    }

    static void chooseFrom(QMenu *menu, int entry)
    {
        menu->setActiveAction(menu->actions().at(entry));
        QTest::keyClick(menu, Qt::Key_Return);
    }

private Q_SLOTS:
    void init()
    {
        ViewTest::init();
        m_shown = show(writeConfig("a.tarn", {0, 1}));
    }

    void cleanup()
    {
        const bool gone = !m_shown.view && !m_shown.container;
        ViewTest::cleanup();
        QVERIFY(gone);
    }

    void contextMenu()
    {
        script().expectMenu([this](QMenu *) { delete m_shown.container; });
        openMenu(m_shown.view, 0);
    }

    void boxOfTheLimit()
    {
        QList<int> indexes;
        for (int i = 0; i < 16; ++i)
            indexes.append(i);
        writeConfig("a.tarn", indexes);
        QVERIFY(m_shown->reloadTarnFile());
        script().expectMenu([](QMenu *menu) { chooseFrom(menu, 0); });
        killAtBox("Warning");
        openMenu(m_shown.view, 0);
    }

    void questionBeforeRemoving()
    {
        script().expectMenu([](QMenu *menu) { chooseFrom(menu, 1); });
        killAtBox("Remove TARn");
        openMenu(m_shown.view, 0);
    }

    void boxOfTheOnlyCore()
    {
        writeConfig("a.tarn", {0});
        QVERIFY(m_shown->reloadTarnFile());
        script().expectMenu([](QMenu *menu) { chooseFrom(menu, 1); });
        killAtBox("Remove TARN");
        openMenu(m_shown.view, 0);
    }

    void boxOfTheSynthesisTool()
    {
        designManager()->setOptionValue(TE::OPT::SYNTHESIZE_TOOL, TE::OPT::Synplify_pro);
        killAtBox("Error");
        QVERIFY(!m_shown->save());
    }

    void boxOfTheCheck()
    {
        pagesOf(m_shown.view).first()->core()->removeProbeIn(0);
        killAtBox("Error");
        QVERIFY(!m_shown->save());
    }

    void boxOfTheFailedWriting()
    {
        pagesOf(m_shown.view).first()->core()->getProbeIn(0)->signals.first().displayName =
            QChar(1);
        killAtBox("Error");
        QVERIFY(!m_shown->save());
    }

    void questionBeforeClosing()
    {
        m_shown->onModified();
        killAtBox("Save");
        m_shown->close();
    }

    void boxOfTheCheckBeforeClosing()
    {
        m_shown->onModified();
        pagesOf(m_shown.view).first()->core()->removeProbeIn(0);
        script().expectDialog("QMessageBox", "Save", [](QDialog *box) {
            static_cast<QMessageBox *>(box)->button(QMessageBox::Ok)->click();
        });
        killAtBox("Error");
        QCloseEvent event;
        QApplication::sendEvent(m_shown.view, &event);
        QVERIFY(!event.isAccepted());
    }

    void boxOfTheInvalidFile()
    {
        TarnTest::writeFile(m_shown->file(), "<TARN_CONFIG>");
        m_shown->checkForReload();
        killAtBox("Reload Tarn");
        clickBanner(m_shown.view, "btnA");
    }

    void dialogOfParserErrors()
    {
        extraction().messages = QStringList{"ERROR: a"};
        killAtBox("Design files contain some errors.");
        QVERIFY(!m_shown->readRtlNetlist());
    }

    void boxesOfTheDesign_data()
    {
        QTest::addColumn<QString>("title");
        QTest::newRow("files") << "Error";
        QTest::newRow("module") << "Design files contain some errors";
        QTest::newRow("tops") << "Multiple Top Module";
        QTest::newRow("jtag") << "Error";
        QTest::newRow("build") << "Design files contain some errors";
    }

    void boxesOfTheDesign()
    {
        QFETCH(QString, title);
        const QByteArray tag = QTest::currentDataTag();
        if (tag == "files")
            setProject({});
        if (tag == "module")
            extraction().modules.clear();
        if (tag == "tops")
            extraction().tops.append("other");
        if (tag == "jtag")
            extraction().build = [] { return makeNetlist("top", true); };
        if (tag == "build")
            extraction().build = [] { return nullptr; };
        killAtBox(title);
        // As the answer to a banner, whose handler goes on afterwards.
        m_shown->designFileChanged();
        clickBanner(m_shown.view, "btnA");
    }

    void searchForModules()
    {
        extraction().whileFindingModules = [this] { delete m_shown.container; };
        QVERIFY(!m_shown->readRtlNetlist());
        QCOMPARE(extraction().builds, 1);
    }

    void progressOfTheBuild_data()
    {
        QTest::addColumn<bool>("built");
        QTest::newRow("built") << true; // The netlist is deleted without having been used.
        QTest::newRow("failed") << false;
    }

    void progressOfTheBuild()
    {
        QFETCH(bool, built);
        if (!built)
            extraction().build = [] { return nullptr; };
        extraction().whileBuilding = [this] { delete m_shown.container; };
        QVERIFY(!m_shown->readRtlNetlist());
    }

    void progressOfTheBuildAfterABanner()
    {
        m_shown->designFileChanged();
        extraction().whileBuilding = [this] { delete m_shown.container; };
        clickBanner(m_shown.view, "btnA");
    }

    void progressOfTheBuildWhileOpening()
    {
        delete m_shown.container;
        QPointer<TARN::TarnView> view(new TARN::TarnView);
        extraction().whileBuilding = [&] { delete view; };
        QString error;
        QVERIFY(!view->open(writeConfig("b.tarn", {0}), QString(), &error));
        QCOMPARE(error, QString());
        QVERIFY(!view);
    }

    void timerOfAFileChange()
    {
        m_shown->onFileChange();
        const QPointer<QTimer> timer(m_shown->findChild<QTimer *>());
        QVERIFY(timer && timer->isActive());
        delete m_shown.container;
        QVERIFY(!timer);
    }

    void eventOfTheDesignAmidst()
    {
        script().expectMenu([](QMenu *menu) {
            // This action of the view is deleted late in its destructor.
            connect(menu->actions().first(), &QObject::destroyed, [] {
                QUtil::EventManager::instance()->send(
                    QUtil::IEvent(TE::E_OPTION_CHANGE, {{TE::K_OPTION, TE::OPT::TOPMODULE}}));
            });
        });
        openMenu(m_shown.view, 0);
        delete m_shown.container;
    }

    void bannerIsShown()
    {
        m_shown->checkForReload();
        m_shown->designFileChanged();
        delete m_shown.container;
    }
};

TARN_TEST_MAIN(TestLifetime)
#include "tst_lifetime.moc"
