// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configmutant.h"
#include "configsamples.h"
#include "viewtest.h"

#include <support/files.h>
#include <support/processortime.h>
#include <support/waiting.h>

#include <model/snapshotwriter.h>
#include <model/tarnconfig.h>
#include <model/tarncore.h>
#include <probes/initialvalueline.h>
#include <probes/signalsamples.h>
#include <view/edithistory.h>
#include <view/reloadbanner.h>
#include <view/tarnoptionwidget.h>
#include <view/unsavedbanner.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QProcess>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSocketNotifier>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QUndoStack>

#include <cstdio>
#include <functional>

#include <fcntl.h>
#include <sys/stat.h>

using TARN::ConfigSnapshot;
using TARN::InitialValueLine;
using TARN::TarnView;
using TARN::UnsavedBanner;
using TarnTest::errorBox;
using TarnTest::ModalScript;
using TarnTest::readFile;
using TarnTest::runDueEvents;
using TarnTest::settle;
using TarnTest::ShownView;
using TarnTest::writeFile;

namespace {

/// The cores of a file in short: the Probe In ports and the initial values of each.
QString textOf(const QList<TARN::TarnCore *> &cores)
{
    QStringList lines;
    for (const TARN::TarnCore *core : cores) {
        QStringList values;
        for (const TARN::ProbeOut *port : core->probeOuts)
            values.append(port->initialValue);
        lines.append(QStringLiteral("%1 in %2").arg(core->probeIns.size()).arg(values.join(' ')));
    }
    return lines.join('|');
}

/// That text of the configuration at @p path, "none" when there is none.
QString contentOf(const QString &path)
{
    if (!QFileInfo::exists(path))
        return QStringLiteral("none");
    bool ok = false;
    QString error;
    const QList<TARN::TarnCore *> cores = TARN::readTARNConfigFromXml(path, &ok, &error);
    const QString text = ok ? textOf(cores) : error;
    qDeleteAll(cores);
    return text;
}

void setTime(const QString &path, const QDateTime &time)
{
    const timespec times[] = {{time.toSecsSinceEpoch(), 0}, {time.toSecsSinceEpoch(), 0}};
    ::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0);
}

QString shortTime(const QDateTime &time)
{
    return QLocale().toString(time, QLocale::ShortFormat);
}

/// An end of a view or another event that concerns its copy.
using Event = std::function<void(const ShownView &)>;

} // namespace

Q_DECLARE_METATYPE(Event)

class TestUnsavedCopy : public TarnTest::ViewTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    // The copy of an edited view
    void editIsKeptOnceControlIsBack();
    void everyEditRenewsTheCopy();
    void fileWithoutCoresHasNoCopyBeforeAnEdit();
    void savedStateNeedsNoCopy();
    void savedFormOfValuesNeedsNoCopy();
    void orderlyEndRemovesTheCopy_data();
    void orderlyEndRemovesTheCopy();
    void cancelledCloseKeepsTheCopy();
    void reloadedFileNeedsNoCopy();
    void anotherFileHasACopyOfItsOwn();

    // Before the view closes itself
    void viewThatClosesItselfLeavesACopy_data();
    void viewThatClosesItselfLeavesACopy();
    void typedTextIsLeftBehind();
    void viewWithoutChangesLeavesNothing_data();
    void viewWithoutChangesLeavesNothing();
    void viewStaysWhenItsChangesCanBeKeptNowhere();

    // The copies of earlier programs
    void copyIsOfferedAndRestored();
    void copyIsOfferedAndDiscarded();
    void olderCopyIsOffered();
    void copyEqualToTheFileGoes_data();
    void copyEqualToTheFileGoes();
    void unreadableCopyIsKept();
    void severalCopiesAreOfferedOneAfterTheOther();
    void saveRemovesTheOfferedCopy();
    void editsBesideAnOfferHaveACopyOfTheirOwn();
    void damagedCopiesLoseNothing();

    // Time
    void writingTakesATwentiethOfTheTime();
    void leavingCatchesUp_data();
    void leavingCatchesUp();
    void largeCopyIsWrittenInSlices();

    // What happens to the file meanwhile
    void copyFollowsTheFile_data();
    void copyFollowsTheFile();
    void copyIsNoChangeOfTheFile_data();
    void copyIsNoChangeOfTheFile();

    // Other programs
    void killedProgramLosesNothing();
    void killAtAnyTimeLeavesAReadableCopy();
    void programThatQuitsLeavesNothing();
    void programsWithTheSameFileSpareEachOther();

public:
    /// The other program: shows the file, edits it, says so and goes on until it is killed or its
    /// input ends.
    int editAsOtherProgram(const QString &filePath, bool forever);

private:
    QString copyPath(const QString &ending = QString()) const
    {
        return path("a.tarn.unsaved") + ending;
    }
    /// A configuration of one core with a Probe In port and a Probe Out port of 8 bits.
    QString writeSample(const QString &name = QStringLiteral("a.tarn"), int ins = 1) const;
    /// Adds a Probe In port, as the user does.
    static void edit(const TarnView *view);
    static QString bannerTextOf(const TarnView *view);
    static void clickOffer(const TarnView *view, const QString &button);
    /// A configuration that takes some milliseconds to write: 64 ports.
    QString writeLarge(int signalsPerPort = 128) const;
    /// Adds a Probe Out port, which takes no time on that page.
    static void editLarge(const TarnView *view);
    static QList<TARN::TarnCore *> coresOf(const ShownView &shown);
    /// Number of Probe Out ports, of the file and of the view.
    static int outsIn(const QString &path) { return readFile(path).count("<ProbeOut "); }
    static int outsOf(const ShownView &shown) { return coresOf(shown).first()->probeOuts.size(); }
    /// Starts this program as another one that edits the file "a.tarn", and waits for its copy.
    bool startOther(QProcess *other, const char *mode) const;
    /// Leaves no place for copies of "a.tarn".
    void blockCopies() const;
    static QAction *undoOf(const ShownView &shown) { return shown->history()->undoAction(); }
    static QAction *redoOf(const ShownView &shown) { return shown->history()->redoAction(); }
};

void TestUnsavedCopy::init()
{
    ViewTest::init();
    qputenv("XDG_STATE_HOME", QFile::encodeName(path("state")));
}

QString TestUnsavedCopy::writeSample(const QString &name, int ins) const
{
    TARN::TarnCore core(0);
    for (int i = 0; i < ins; ++i) {
        core.addProbeIn(i);
        core.getProbeIn(i)->signals.append(TarnTest::net("top/clk"));
    }
    core.addProbeOut(0);
    core.getProbeOut(0)->signals.append(TarnTest::bus("top/cfg", 8));
    core.getProbeOut(0)->initialValue = "0x1F";
    if (!TARN::writeTARNConfigToXml({&core}, path(name)))
        qFatal("cannot write %s", qPrintable(path(name)));
    return path(name);
}

void TestUnsavedCopy::edit(const TarnView *view)
{
    currentPageOf(view)->findChild<QPushButton *>("btnProbeInAdd")->click();
}

QString TestUnsavedCopy::bannerTextOf(const TarnView *view)
{
    QStringList texts;
    for (const UnsavedBanner *banner : view->findChildren<UnsavedBanner *>()) {
        texts.append(banner->findChild<QLabel *>("labelFile")->text());
        for (const auto *button : banner->findChildren<QPushButton *>())
            texts.last() += button->isHidden() ? QString() : " [" + button->text() + "]";
    }
    return texts.join('|');
}

void TestUnsavedCopy::clickOffer(const TarnView *view, const QString &button)
{
    const QList<UnsavedBanner *> banners = view->findChildren<UnsavedBanner *>();
    if (banners.size() != 1)
        qFatal("%d banners instead of one", int(banners.size()));
    for (auto *each : banners.first()->findChildren<QPushButton *>()) {
        if (each->text() == button) {
            each->click();
            return;
        }
    }
    qFatal("no button \"%s\"", qPrintable(button));
}

void TestUnsavedCopy::blockCopies() const
{
    for (int i = 1; i <= 16; ++i)
        QDir().mkpath(copyPath(i == 1 ? QString() : '.' + QString::number(i)));
    writeFile(path("state"), "no folder");
}

// The copy of an edited view

void TestUnsavedCopy::editIsKeptOnceControlIsBack()
{
    const ShownView shown = show(writeSample());
    runDueEvents();
    QCOMPARE(contentOf(copyPath()), QString("none"));
    edit(shown.view);
    QCOMPARE(contentOf(copyPath()), QString("none"));
    QTRY_COMPARE(contentOf(copyPath()), QString("2 in 0x1F"));
    QCOMPARE(contentOf(path("a.tarn")), QString("1 in 0x1F"));
    QVERIFY(shown->isModified());
    QCOMPARE(bannerTextOf(shown.view), QString());
}

void TestUnsavedCopy::everyEditRenewsTheCopy()
{
    const ShownView shown = show(writeSample());
    for (int i = 2; i < 6; ++i) {
        edit(shown.view);
        runDueEvents();
        // The pause after the last writing is short, but may not be over.
        shown.container->hide();
        shown.container->show();
        QTRY_COMPARE(contentOf(copyPath()), QString("%1 in 0x1F").arg(i));
    }
    undoOf(shown)->trigger();
    shown.container->hide();
    QTRY_COMPARE(contentOf(copyPath()), QString("4 in 0x1F"));
}

void TestUnsavedCopy::fileWithoutCoresHasNoCopyBeforeAnEdit()
{
    const ShownView shown = show(writeEmptyConfig("a.tarn"));
    QVERIFY(shown->isModified());
    shown.container->hide();
    shown.container->show();
    runDueEvents();
    QCOMPARE(contentOf(copyPath()), QString("none"));
    edit(shown.view);
    QTRY_COMPARE(contentOf(copyPath()), QString("1 in "));
    undoOf(shown)->trigger();
    runDueEvents();
    QCOMPARE(contentOf(copyPath()), QString("none"));
}

void TestUnsavedCopy::savedStateNeedsNoCopy()
{
    const ShownView shown = show(writeSample());
    edit(shown.view);
    QTRY_VERIFY(QFileInfo::exists(copyPath()));
    undoOf(shown)->trigger();
    QCOMPARE(contentOf(copyPath()), QString("none"));
    redoOf(shown)->trigger();
    shown.container->hide();
    shown.container->show();
    QTRY_COMPARE(contentOf(copyPath()), QString("2 in 0x1F"));
    QVERIFY(shown->save());
    QCOMPARE(contentOf(copyPath()), QString("none"));
    runDueEvents();
    QCOMPARE(contentOf(copyPath()), QString("none"));
    // The former content is an unsaved change now.
    undoOf(shown)->trigger();
    shown.container->hide();
    QTRY_COMPARE(contentOf(copyPath()), QString("1 in 0x1F"));
    QCOMPARE(contentOf(path("a.tarn")), QString("2 in 0x1F"));
}

/// A save writes values in their full form.
void TestUnsavedCopy::savedFormOfValuesNeedsNoCopy()
{
    const ShownView shown = show(writeSample());
    currentPageOf(shown.view)->findChild<QPushButton *>("btnProbeOutAdd")->click();
    QTRY_COMPARE(contentOf(copyPath()), QString("1 in 0x1F "));
    QVERIFY(shown->save());
    QCOMPARE(contentOf(path("a.tarn")), QString("1 in 0x1F 0x0"));
    QCOMPARE(contentOf(copyPath()), QString("none"));
    undoOf(shown)->trigger();
    redoOf(shown)->trigger();
    QVERIFY(!shown->isModified());
    shown.container->hide();
    shown.container->show();
    runDueEvents();
    QCOMPARE(contentOf(copyPath()), QString("none"));
}

void TestUnsavedCopy::orderlyEndRemovesTheCopy_data()
{
    QTest::addColumn<Event>("end");
    QTest::addColumn<int>("answer"); // To the close question, 0 for none.
    const Event close = [](const ShownView &shown) { shown->close(); };
    QTest::newRow("closed and saved") << close << int(QMessageBox::Ok);
    QTest::newRow("closed and discarded") << close << int(QMessageBox::Discard);
    QTest::newRow("closed unmodified") << Event([](const ShownView &shown) {
        shown->setModified(false);
        shown->close();
    }) << 0;
    QTest::newRow("view deleted") << Event([](const ShownView &shown) { delete shown.view; }) << 0;
    QTest::newRow("container deleted")
        << Event([](const ShownView &shown) { delete shown.container; }) << 0;
    QTest::newRow("application quits") << Event([](const ShownView &) {
        QMetaObject::invokeMethod(qApp, "aboutToQuit", Qt::DirectConnection);
    }) << 0;
}

void TestUnsavedCopy::orderlyEndRemovesTheCopy()
{
    QFETCH(Event, end);
    QFETCH(int, answer);
    const ShownView shown = show(writeSample());
    edit(shown.view);
    QTRY_COMPARE(contentOf(copyPath()), QString("2 in 0x1F"));
    if (answer != 0) {
        ModalScript::Box question;
        question.icon = QMessageBox::Question;
        question.title = "Save";
        question.text = "Save changes to \"" + path("a.tarn") + "\" ?";
        question.buttons = QMessageBox::Ok | QMessageBox::Discard | QMessageBox::Cancel;
        script().expectBox(question, QMessageBox::StandardButton(answer));
    }
    end(shown);
    QCOMPARE(contentOf(copyPath()), QString("none"));
    runDueEvents(); // Hiding the view must not bring it back.
    QCOMPARE(contentOf(copyPath()), QString("none"));
    QVERIFY(!QFileInfo::exists(path("state")));
}

void TestUnsavedCopy::cancelledCloseKeepsTheCopy()
{
    const ShownView shown = show(writeSample());
    edit(shown.view);
    QTRY_VERIFY(QFileInfo::exists(copyPath()));
    ModalScript::Box question;
    question.icon = QMessageBox::Question;
    question.title = "Save";
    question.text = "Save changes to \"" + path("a.tarn") + "\" ?";
    question.buttons = QMessageBox::Ok | QMessageBox::Discard | QMessageBox::Cancel;
    script().expectBox(question, QMessageBox::Cancel,
                       [this](QMessageBox *) { QVERIFY(QFileInfo::exists(copyPath())); });
    shown->close();
    QTRY_COMPARE(contentOf(copyPath()), QString("2 in 0x1F"));
}

void TestUnsavedCopy::reloadedFileNeedsNoCopy()
{
    const ShownView shown = show(writeSample());
    edit(shown.view);
    QTRY_VERIFY(QFileInfo::exists(copyPath()));
    writeSample("a.tarn", 5);
    QVERIFY(shown->reloadTarnFile());
    runDueEvents();
    QCOMPARE(contentOf(copyPath()), QString("none"));
    undoOf(shown)->trigger();
    shown.container->hide();
    QTRY_COMPARE(contentOf(copyPath()), QString("2 in 0x1F"));
}

void TestUnsavedCopy::anotherFileHasACopyOfItsOwn()
{
    const ShownView shown = show(writeSample());
    edit(shown.view);
    QTRY_VERIFY(QFileInfo::exists(copyPath()));
    QVERIFY(shown->open(writeSample("b.tarn", 3), QString(), nullptr));
    runDueEvents();
    QCOMPARE(contentOf(copyPath()), QString("none"));
    QCOMPARE(contentOf(path("b.tarn.unsaved")), QString("none"));
    edit(shown.view);
    shown.container->hide();
    QTRY_COMPARE(contentOf(path("b.tarn.unsaved")), QString("4 in 0x1F"));
    QCOMPARE(contentOf(copyPath()), QString("none"));
}

// Before the view closes itself

void TestUnsavedCopy::viewThatClosesItselfLeavesACopy_data()
{
    QTest::addColumn<Event>("end");
    QTest::addColumn<QString>("box");
    QTest::addColumn<bool>("synced"); // Whether events ran between edit and end.
    const Event netlist = [](const ShownView &shown) {
        TarnTest::FakeExtraction::instance().modules.clear();
        shown->designFileChanged();
        clickBanner(shown.view, "btnA");
    };
    const Event file = [](const ShownView &shown) {
        writeFile(shown->file(), "no configuration");
        shown->checkForReload();
        clickBanner(shown.view, "btnA");
    };
    const Event removed = [](const ShownView &shown) {
        QFile::remove(shown->file());
        shown->checkForReload();
        clickBanner(shown.view, "btnB");
    };
    for (const bool synced : {false, true}) {
        const QByteArray when = synced ? ", after events" : ", at once";
        QTest::newRow("netlist not read" + when) << netlist << "netlist" << synced;
        QTest::newRow("file not read" + when) << file << "file" << synced;
        QTest::newRow("file removed" + when) << removed << QString() << synced;
    }
}

void TestUnsavedCopy::viewThatClosesItselfLeavesACopy()
{
    QFETCH(Event, end);
    QFETCH(QString, box);
    QFETCH(bool, synced);
    const ShownView shown = show(writeSample());
    edit(shown.view);
    if (synced)
        runDueEvents();
    edit(shown.view);
    if (box == "netlist")
        script().expectBox(
            errorBox("Design files contain some errors", "Get no module from design."));
    else if (!box.isEmpty())
        script().expectBox(
            {QMessageBox::Warning, "Reload Tarn", "Invalid TARN file.", QMessageBox::Ok, {}});
    end(shown);
    QCOMPARE(contentOf(copyPath()), QString("3 in 0x1F"));
    QTRY_VERIFY(!shown.container);
    QCOMPARE(contentOf(copyPath()), QString("3 in 0x1F"));

    // The file is repaired and opened again.
    writeSample();
    extraction().reset();
    const ShownView again = show(path("a.tarn"));
    QVERIFY(!bannerTextOf(again.view).isEmpty());
    clickOffer(again.view, "Restore");
    QCOMPARE(pagesOf(again.view).first()->core()->probeIns.size(), 3);
}

void TestUnsavedCopy::typedTextIsLeftBehind()
{
    const ShownView shown = show(writeSample());
    auto *line = currentPageOf(shown.view)->findChild<InitialValueLine *>();
    line->setFocus();
    line->setSelection(2, 2); // Behind the prefix.
    QTest::keyClicks(line, "a5");
    QVERIFY(shown->isModified());
    QFile::remove(path("a.tarn"));
    shown->checkForReload();
    clickBanner(shown.view, "btnB");
    QTRY_VERIFY(!shown.container);
    QCOMPARE(contentOf(copyPath()), QString("1 in 0xA5"));
}

void TestUnsavedCopy::viewWithoutChangesLeavesNothing_data()
{
    QTest::addColumn<bool>("empty");
    QTest::addColumn<bool>("undone");
    QTest::newRow("unmodified") << false << false;
    QTest::newRow("undone") << false << true;
    QTest::newRow("core given to a file without") << true << false;
}

void TestUnsavedCopy::viewWithoutChangesLeavesNothing()
{
    QFETCH(bool, empty);
    QFETCH(bool, undone);
    const ShownView shown = show(empty ? writeEmptyConfig("a.tarn") : writeSample());
    if (undone) {
        edit(shown.view);
        QTRY_VERIFY(QFileInfo::exists(copyPath()));
        undoOf(shown)->trigger();
    }
    QFile::remove(path("a.tarn"));
    shown->checkForReload();
    clickBanner(shown.view, "btnB");
    QTRY_VERIFY(!shown.container);
    QCOMPARE(contentOf(copyPath()), QString("none"));
}

void TestUnsavedCopy::viewStaysWhenItsChangesCanBeKeptNowhere()
{
    const ShownView shown = show(writeSample());
    blockCopies();
    edit(shown.view);
    const QString line = "Can not keep the unsaved changes of " + path("a.tarn");
    QTRY_COMPARE(debugLines().filter(line).size(), 1);
    edit(shown.view);
    shown.container->hide();
    shown.container->show();
    runDueEvents();
    QCOMPARE(debugLines().filter(line).size(), 1); // It is said once.

    QFile::remove(path("a.tarn"));
    shown->checkForReload();
    clickBanner(shown.view, "btnB");
    runDueEvents();
    QVERIFY(shown.container);
    QVERIFY(shown->isModified());
    const QString text = bannerTextOf(shown.view);
    QVERIFY2(text.startsWith("The unsaved changes to the file '" + path("a.tarn") +
                             "' can be kept nowhere.\n" + copyPath() + ": File exists; "),
             qPrintable(text));
    QVERIFY2(text.endsWith("\nDo you still want to keep it open? [Keep It] [Close]"),
             qPrintable(text));
    clickOffer(shown.view, "Keep It");
    QCOMPARE(bannerTextOf(shown.view), QString());
    QVERIFY(shown->isModified());

    shown->checkForReload();
    clickBanner(shown.view, "btnB");
    clickOffer(shown.view, "Close");
    QTRY_VERIFY(!shown.container);
}

// The copies of earlier programs

void TestUnsavedCopy::copyIsOfferedAndRestored()
{
    writeSample("a.tarn.unsaved", 4);
    const QDateTime time = QDateTime::currentDateTime().addSecs(60);
    setTime(copyPath(), time);
    const ShownView shown = show(writeSample());
    QCOMPARE(bannerTextOf(shown.view), "There are unsaved changes to the file '" + path("a.tarn") +
                                           "' from " + shortTime(time) +
                                           ".\nDo you want to restore them? [Restore] [Discard]");
    QVERIFY(!shown->isModified());
    QCOMPARE(textOf({pagesOf(shown.view).first()->core()}), QString("1 in 0x1F"));
    QVERIFY(!undoOf(shown)->isEnabled());

    clickOffer(shown.view, "Restore");
    QCOMPARE(bannerTextOf(shown.view), QString());
    QVERIFY(shown->isModified());
    QCOMPARE(shown->windowTitle(), QString("a.tarn *"));
    QCOMPARE(textOf({pagesOf(shown.view).first()->core()}), QString("4 in 0x1F"));
    QCOMPARE(undoOf(shown)->text(), QString("&Undo Restore Unsaved Changes"));
    // The changes are as unsaved as before, and as safe.
    QCOMPARE(contentOf(copyPath()), QString("4 in 0x1F"));

    undoOf(shown)->trigger();
    QVERIFY(!shown->isModified());
    QCOMPARE(textOf({pagesOf(shown.view).first()->core()}), QString("1 in 0x1F"));
    QCOMPARE(contentOf(copyPath()), QString("none"));
    redoOf(shown)->trigger();
    shown.container->hide();
    shown.container->show();
    QTRY_COMPARE(contentOf(copyPath()), QString("4 in 0x1F"));
    QVERIFY(shown->save());
    QCOMPARE(contentOf(copyPath()), QString("none"));
    QCOMPARE(contentOf(path("a.tarn")), QString("4 in 0x1F"));
}

void TestUnsavedCopy::copyIsOfferedAndDiscarded()
{
    writeSample("a.tarn.unsaved", 4);
    const ShownView shown = show(writeSample());
    clickOffer(shown.view, "Discard");
    QCOMPARE(bannerTextOf(shown.view), QString());
    QVERIFY(!shown->isModified());
    QCOMPARE(contentOf(copyPath()), QString("none"));
    QCOMPARE(textOf({pagesOf(shown.view).first()->core()}), QString("1 in 0x1F"));
    QVERIFY(!undoOf(shown)->isEnabled());
}

void TestUnsavedCopy::olderCopyIsOffered()
{
    writeSample("a.tarn.unsaved", 4);
    const QDateTime time = QDateTime::currentDateTime().addSecs(-3600);
    setTime(copyPath(), time);
    const ShownView shown = show(writeSample());
    QCOMPARE(bannerTextOf(shown.view),
             "There are unsaved changes to the file '" + path("a.tarn") + "' from " +
                 shortTime(time) +
                 ". The file itself is newer.\nDo you want to restore them? [Restore] [Discard]");
}

void TestUnsavedCopy::copyEqualToTheFileGoes_data()
{
    QTest::addColumn<bool>("emptyFile");
    QTest::addColumn<QByteArray>("before"); // What is in the file,
    QTest::addColumn<QByteArray>("after");  // and what is there in the copy.
    QTest::addColumn<bool>("equal");
    const QByteArray end = "</TARN_CONFIG>";
    QTest::newRow("equal") << false << QByteArray(" ") << QByteArray(" ") << true;
    QTest::newRow("written otherwise") << false << QByteArray("    ") << QByteArray() << true;
    QTest::newRow("other module") << false << QByteArray("module=\"\"")
                                  << QByteArray("module=\"m\"") << true;
    QTest::newRow("other value") << false << QByteArray("0x1F") << QByteArray("0x2F") << false;
    QTest::newRow("other clock") << false << QByteArray("userClock=\"\"")
                                 << QByteArray("userClock=\"c\"") << false;
    QTest::newRow("one core more") << false << end << "<Core index=\"1\"/>" + end << false;
    QTest::newRow("both without cores") << true << QByteArray(" ") << QByteArray(" ") << true;
    QTest::newRow("the core that was given") << true << end << "<Core index=\"0\"/>" + end << true;
}

void TestUnsavedCopy::copyEqualToTheFileGoes()
{
    QFETCH(bool, emptyFile);
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    QFETCH(bool, equal);
    const QByteArray content = readFile(emptyFile ? writeEmptyConfig("a.tarn") : writeSample());
    QVERIFY(content.contains(before));
    writeFile(copyPath(), QByteArray(content).replace(before, after));
    const ShownView shown = show(path("a.tarn"));
    QCOMPARE(bannerTextOf(shown.view).isEmpty(), equal);
    QCOMPARE(QFileInfo::exists(copyPath()), !equal);
}

void TestUnsavedCopy::unreadableCopyIsKept()
{
    const QByteArray damaged = "<TARN_CONFIG><Version>1.0</Version>";
    writeFile(copyPath(), damaged);
    const ShownView shown = show(writeSample());
    QCOMPARE(bannerTextOf(shown.view),
             "There are unsaved changes to the file '" + path("a.tarn") +
                 "' that can not be read. They are kept.\nCan not read " + copyPath() +
                 ". Line 1, column 35: Not well-formed XML: Premature end of document. Correct "
                 "it, or take an earlier copy of the file. [OK]");
    QVERIFY(!shown->isModified());
    edit(shown.view);
    QTRY_COMPARE(contentOf(copyPath(".2")), QString("2 in 0x1F"));
    QVERIFY(shown->save());
    QVERIFY(!bannerTextOf(shown.view).isEmpty());
    clickOffer(shown.view, "OK");
    QCOMPARE(bannerTextOf(shown.view), QString());
    QVERIFY(!shown->isModified());
    QCOMPARE(readFile(copyPath()), damaged);
    delete shown.view;
    QCOMPARE(readFile(copyPath()), damaged);
    QVERIFY(!QFileInfo::exists(copyPath(".2")));
}

void TestUnsavedCopy::severalCopiesAreOfferedOneAfterTheOther()
{
    const QDateTime now = QDateTime::currentDateTime();
    const auto write = [&](const char *ending, int ins) {
        writeSample("a.tarn.unsaved" + QString(ending), ins);
        setTime(copyPath(ending), now.addSecs(60 * ins));
    };
    write(".2", 5);
    write(".3", 3);
    write("", 4);
    writeFile(copyPath(".7"), "damaged");
    setTime(copyPath(".7"), now.addSecs(60 * 4 + 30));
    const ShownView shown = show(writeSample());
    QVERIFY(bannerTextOf(shown.view).contains(shortTime(now.addSecs(60 * 5))));
    clickOffer(shown.view, "Restore");
    QVERIFY(bannerTextOf(shown.view).contains("can not be read"));
    clickOffer(shown.view, "OK");
    QVERIFY(bannerTextOf(shown.view).contains(shortTime(now.addSecs(60 * 4))));
    clickOffer(shown.view, "Discard");
    QVERIFY(bannerTextOf(shown.view).contains(shortTime(now.addSecs(60 * 3))));
    clickOffer(shown.view, "Restore");
    QCOMPARE(bannerTextOf(shown.view), QString());
    QCOMPARE(textOf({pagesOf(shown.view).first()->core()}), QString("3 in 0x1F"));
    QCOMPARE(contentOf(copyPath()), QString("none"));
    QCOMPARE(contentOf(copyPath(".2")), QString("none"));
    QCOMPARE(contentOf(copyPath(".3")), QString("3 in 0x1F"));
    undoOf(shown)->trigger();
    QCOMPARE(textOf({pagesOf(shown.view).first()->core()}), QString("5 in 0x1F"));
    delete shown.view;
    QCOMPARE(contentOf(copyPath(".3")), QString("none"));
    QCOMPARE(readFile(copyPath(".7")), QByteArray("damaged"));
}

void TestUnsavedCopy::saveRemovesTheOfferedCopy()
{
    writeSample("a.tarn.unsaved", 4);
    writeSample("a.tarn.unsaved.2", 5);
    setTime(copyPath(".2"), QDateTime::currentDateTime().addSecs(-60));
    const ShownView shown = show(writeSample());
    QVERIFY(shown->save());
    QCOMPARE(contentOf(copyPath()), QString("none"));
    // The user has not seen this one yet.
    QCOMPARE(contentOf(copyPath(".2")), QString("5 in 0x1F"));
    QVERIFY(!bannerTextOf(shown.view).isEmpty());
}

void TestUnsavedCopy::editsBesideAnOfferHaveACopyOfTheirOwn()
{
    writeSample("a.tarn.unsaved", 4);
    const ShownView shown = show(writeSample());
    edit(shown.view);
    QTRY_COMPARE(contentOf(copyPath(".2")), QString("2 in 0x1F"));
    QCOMPARE(contentOf(copyPath()), QString("4 in 0x1F"));
    clickOffer(shown.view, "Restore");
    runDueEvents();
    QCOMPARE(contentOf(copyPath()), QString("4 in 0x1F"));
    QCOMPARE(contentOf(copyPath(".2")), QString("none"));
    undoOf(shown)->trigger();
    shown.container->hide();
    QTRY_COMPARE(contentOf(copyPath()), QString("2 in 0x1F"));
}

QList<TARN::TarnCore *> TestUnsavedCopy::coresOf(const ShownView &shown)
{
    QList<TARN::TarnCore *> cores;
    for (const TARN::TarnOptionWidget *page : pagesOf(shown.view))
        cores.append(page->core());
    return cores;
}

void TestUnsavedCopy::damagedCopiesLoseNothing()
{
    const int rounds = qEnvironmentVariableIntValue("TARN_DAMAGED_COPIES");
    const auto seed = quint32(rounds > 0 ? QRandomGenerator::global()->bounded(1 << 30) : 1);
    qInfo("seed %u", seed);
    QRandomGenerator random(seed);
    const QByteArray original = readFile(writeSample());
    int restored = 0;
    int unreadable = 0;
    for (int i = 0; i < qMax(rounds, 40); ++i) {
        const QByteArray damaged = mutant(original, &random);
        QFile::remove(copyPath());
        writeFile(copyPath(), damaged);
        bool readable = false;
        const Cores expected(TARN::readTARNConfigFromXml(copyPath(), &readable, nullptr));
        const ShownView shown = show(path("a.tarn"));
        const QString text = bannerTextOf(shown.view);
        const QString former = coresText(coresOf(shown));
        if (text.isEmpty()) {
            QVERIFY2(readable && coresText(expected.list) == former, damaged.constData());
            QVERIFY(!QFileInfo::exists(copyPath()));
        } else if (text.contains("can not be read")) {
            QVERIFY2(!readable, damaged.constData());
            delete shown.container;
            QCOMPARE(readFile(copyPath()), damaged);
            ++unreadable;
        } else {
            QVERIFY2(readable, damaged.constData());
            clickOffer(shown.view, "Restore");
            QCOMPARE(coresText(coresOf(shown)), coresText(expected.list));
            undoOf(shown)->trigger();
            QCOMPARE(coresText(coresOf(shown)), former);
            ++restored;
        }
        delete shown.container;
    }
    QVERIFY2(restored > 5 && unreadable > 5, "one of the two is not tried");
}

// Time

QString TestUnsavedCopy::writeLarge(int signalsPerPort) const
{
    TARN::TarnCore core(0);
    for (int i = 0; i < 64; ++i) {
        core.addProbeIn(i);
        for (int bit = 0; bit < signalsPerPort; ++bit)
            core.getProbeIn(i)->signals.append(
                TarnTest::net(QString("top/u_core/u_unit_%1/state_q[%2]").arg(i).arg(bit)));
    }
    core.addProbeOut(0);
    if (!TARN::writeTARNConfigToXml({&core}, path("a.tarn")))
        qFatal("cannot write a large file");
    return path("a.tarn");
}

void TestUnsavedCopy::editLarge(const TarnView *view)
{
    currentPageOf(view)->findChild<QPushButton *>("btnProbeOutAdd")->click();
}

void TestUnsavedCopy::writingTakesATwentiethOfTheTime()
{
    const ShownView shown = show(writeLarge(256));
    const ConfigSnapshot content = shown->history()->current();
    // What a writing takes at least.
    const qint64 least = TarnTest::leastNanoseconds([&] {
        TARN::SnapshotWriter writer(content);
        writer.finish();
        QCOMPARE(writer.errorText(), QString());
    });
    editLarge(shown.view); // The others are undone, and this one stays.
    QElapsedTimer timer;
    timer.start();
    ino_t copy = 0;
    int writings = 0;
    int edits = 0;
    while (writings < 4) {
        QVERIFY2(!timer.hasExpired(30000), "a later edit does not catch up");
        if (++edits % 2)
            editLarge(shown.view);
        else
            undoOf(shown)->trigger();
        for (int i = 0; i < 20; ++i)
            QCoreApplication::processEvents();
        struct stat status = {};
        if (::stat(qPrintable(copyPath()), &status) == 0 && status.st_ino != copy) {
            copy = status.st_ino;
            ++writings;
        }
    }
    // The first writing need not wait.
    QVERIFY2(timer.nsecsElapsed() >= 3 * 20 * least,
             qPrintable(QString("%1 writings of %2 ms in %3 ms and %4 edits")
                            .arg(writings)
                            .arg(least / 1e6)
                            .arg(timer.elapsed())
                            .arg(edits)));
}

void TestUnsavedCopy::leavingCatchesUp_data()
{
    QTest::addColumn<Event>("leave");
    QTest::newRow("view hidden") << Event([](const ShownView &shown) { shown->hide(); });
    QTest::newRow("window hidden")
        << Event([](const ShownView &shown) { shown.container->hide(); });
    QTest::newRow("another window")
        << Event([](const ShownView &) { QApplication::setActiveWindow(nullptr); });
    QTest::newRow("another widget of the window") << Event([](const ShownView &shown) {
        shown.container->findChild<QLineEdit *>("other")->setFocus();
    });
}

void TestUnsavedCopy::leavingCatchesUp()
{
    QFETCH(Event, leave);
    const ShownView shown = show(writeLarge());
    auto *other = new QLineEdit(shown.container);
    other->setObjectName("other");
    other->show();
    QApplication::setActiveWindow(shown.container);
    QVERIFY(QTest::qWaitForWindowActive(shown.container));
    treeOf(shown.view)->setFocus();
    editLarge(shown.view);
    QTRY_COMPARE(contentOf(copyPath()), QString("64 in  "));
    // Reading the copy took long, but this writing begins a new pause.
    do {
        QVERIFY2(outsOf(shown) < 40, "every edit is written at once");
        editLarge(shown.view);
        for (int i = 0; i < 20; ++i)
            QCoreApplication::processEvents();
    } while (outsIn(copyPath()) == outsOf(shown));
    leave(shown);
    QTRY_COMPARE(outsIn(copyPath()), outsOf(shown));
}

void TestUnsavedCopy::largeCopyIsWrittenInSlices()
{
    const ShownView shown = show(writeLarge(256));
    editLarge(shown.view);
    QCoreApplication::processEvents();
    QVERIFY2(!QFileInfo::exists(copyPath()), "not in slices");
    // What was written before this edit does not become the copy.
    editLarge(shown.view);
    QTRY_VERIFY(QFileInfo::exists(copyPath()));
    QCOMPARE(outsIn(copyPath()), 3);
}

// What happens to the file meanwhile

void TestUnsavedCopy::copyFollowsTheFile_data()
{
    QTest::addColumn<Event>("change");
    QTest::addColumn<QString>("place"); // Of the copy after a later edit, empty: the state folder.
    QTest::newRow("file removed") << Event([](const ShownView &shown) {
        QFile::remove(shown->file());
    }) << "folder/a.tarn.unsaved";
    QTest::newRow("file renamed") << Event([](const ShownView &shown) {
        QFile::rename(shown->file(), shown->file() + ".old");
    }) << "folder/a.tarn.unsaved";
    QTest::newRow("file replaced by a link") << Event([](const ShownView &shown) {
        const QString folder = QFileInfo(shown->file()).path();
        QFile::rename(shown->file(), QFileInfo(folder).path() + "/b.tarn");
        QFile::link("../b.tarn", shown->file());
    }) << "b.tarn.unsaved";
    QTest::newRow("folder removed")
        << Event([](const ShownView &shown) { QFileInfo(shown->file()).dir().removeRecursively(); })
        << "";
    QTest::newRow("folder renamed") << Event([](const ShownView &shown) {
        const QString folder = QFileInfo(shown->file()).path();
        QFile::rename(folder, folder + ".old");
    }) << "";
}

void TestUnsavedCopy::copyFollowsTheFile()
{
    QFETCH(Event, change);
    QFETCH(QString, place);
    QDir().mkpath(path("folder"));
    const ShownView shown = show(writeSample("folder/a.tarn"));
    edit(shown.view);
    QTRY_COMPARE(contentOf(path("folder/a.tarn.unsaved")), QString("2 in 0x1F"));
    change(shown);
    edit(shown.view);
    shown.container->hide();
    shown.container->show();
    const auto copy = [&] {
        const QFileInfoList away = QDir(path("state/tarn")).entryInfoList(QDir::Files);
        if (!place.isEmpty())
            return path(place);
        return away.isEmpty() ? QString("nowhere") : away.first().filePath();
    };
    QTRY_COMPARE(contentOf(copy()), QString("3 in 0x1F"));
    QVERIFY(place.startsWith("folder") || !QFileInfo::exists(path("folder/a.tarn.unsaved")));
    // The file is put back, as a save would do.
    if (place.startsWith("folder")) {
        QVERIFY(shown->save());
        QCOMPARE(contentOf(path("folder/a.tarn")), QString("3 in 0x1F"));
    }
    const QString former = copy();
    delete shown.container;
    QCOMPARE(contentOf(former), QString("none"));
}

void TestUnsavedCopy::copyIsNoChangeOfTheFile_data()
{
    QTest::addColumn<QString>("target"); // Of a link "a.tarn", empty: "a.tarn" is the file.
    QTest::addColumn<bool>("removed");
    QTest::newRow("file") << "" << false;
    QTest::newRow("link") << "b.tarn" << false;
    QTest::newRow("link to another folder") << "folder/b.tarn" << false;
    // The folder is watched for the return of the file.
    QTest::newRow("removed file") << "" << true;
    QTest::newRow("removed target") << "b.tarn" << true;
}

void TestUnsavedCopy::copyIsNoChangeOfTheFile()
{
    QFETCH(QString, target);
    QFETCH(bool, removed);
    QDir().mkpath(path("folder"));
    const QString file = writeSample(target.isEmpty() ? QString("a.tarn") : target);
    if (!target.isEmpty())
        QVERIFY(QFile::link(target, path("a.tarn")));
    const ShownView shown = show(path("a.tarn"));
    shown->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly)->setInterval(60);
    if (removed) {
        QVERIFY(QFile::remove(file));
        QTRY_COMPARE(bannersOf(shown.view).size(), 1);
        clickBanner(shown.view, "btnA");
    }
    for (int i = 0; i < 2; ++i) {
        edit(shown.view);
        shown.container->hide();
        shown.container->show();
        QTRY_COMPARE(contentOf(file + ".unsaved"), QString("2 in 0x1F"));
        QVERIFY(settle(shown.view));
        undoOf(shown)->trigger();
        QCOMPARE(contentOf(file + ".unsaved"), QString("none"));
        QVERIFY(settle(shown.view));
    }
    QCOMPARE(bannersOf(shown.view).size(), 0);
    // The watcher is awake.
    writeSample(target.isEmpty() ? QString("a.tarn") : target, 3);
    QTRY_COMPARE(bannersOf(shown.view).size(), 1);
}

// Other programs

int TestUnsavedCopy::editAsOtherProgram(const QString &filePath, bool forever)
{
    init();
    qputenv("XDG_STATE_HOME", QFile::encodeName(QFileInfo(filePath).path() + "/state"));
    const ShownView shown = show(filePath);
    edit(shown.view);
    while (!QFileInfo::exists(filePath + ".unsaved"))
        QCoreApplication::processEvents();
    std::puts("ready");
    std::fflush(stdout);
    // Until the end of the input, which comes as a line.
    QSocketNotifier input(0, QSocketNotifier::Read);
    connect(&input, &QSocketNotifier::activated, qApp, &QCoreApplication::quit);
    QTimer edits;
    connect(&edits, &QTimer::timeout, shown.view, [&shown] {
        if (undoOf(shown)->text().contains("Port") && shown->history()->stack()->index() > 1)
            undoOf(shown)->trigger();
        else
            edit(shown.view);
    });
    if (forever)
        edits.start(0);
    const int result = QCoreApplication::exec();
    cleanup();
    return result;
}

bool TestUnsavedCopy::startOther(QProcess *other, const char *mode) const
{
    other->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    other->start(QCoreApplication::applicationFilePath(), {mode, path("a.tarn")});
    return other->waitForReadyRead(30000) && other->readAll() == "ready\n";
}

void TestUnsavedCopy::killedProgramLosesNothing()
{
    writeSample();
    QProcess other;
    QVERIFY(startOther(&other, "--edit"));
    other.kill();
    QVERIFY(other.waitForFinished());
    QCOMPARE(contentOf(copyPath()), QString("2 in 0x1F"));
    const ShownView shown = show(path("a.tarn"));
    QVERIFY(bannerTextOf(shown.view).contains("[Restore]"));
    clickOffer(shown.view, "Restore");
    QCOMPARE(textOf(coresOf(shown)), QString("2 in 0x1F"));
    QVERIFY(shown->save());
    QCOMPARE(contentOf(path("a.tarn")), QString("2 in 0x1F"));
    QCOMPARE(contentOf(copyPath()), QString("none"));
}

void TestUnsavedCopy::killAtAnyTimeLeavesAReadableCopy()
{
    QRandomGenerator random(20263);
    for (int i = 0; i < 4; ++i) {
        writeSample();
        QProcess other;
        QVERIFY(startOther(&other, "--edit-forever"));
        QVERIFY(!other.waitForFinished(int(random.bounded(1, 60))));
        other.kill();
        QVERIFY(other.waitForFinished());
        const ShownView shown = show(path("a.tarn"));
        QVERIFY2(bannerTextOf(shown.view).contains("[Restore]"),
                 qPrintable(bannerTextOf(shown.view)));
        clickOffer(shown.view, "Discard");
        QCOMPARE(bannerTextOf(shown.view), QString());
        delete shown.container;
    }
}

void TestUnsavedCopy::programThatQuitsLeavesNothing()
{
    writeSample();
    QProcess other;
    QVERIFY(startOther(&other, "--edit"));
    QCOMPARE(contentOf(copyPath()), QString("2 in 0x1F"));
    other.write("quit\n");
    QVERIFY(other.waitForFinished());
    QCOMPARE(other.exitCode(), 0);
    QCOMPARE(contentOf(copyPath()), QString("none"));
}

void TestUnsavedCopy::programsWithTheSameFileSpareEachOther()
{
    writeSample();
    QProcess other;
    QVERIFY(startOther(&other, "--edit"));
    const ShownView shown = show(path("a.tarn"));
    QCOMPARE(bannerTextOf(shown.view), QString()); // The changes of a living program.
    edit(shown.view);
    edit(shown.view);
    QTRY_COMPARE(contentOf(copyPath(".2")), QString("3 in 0x1F"));
    QVERIFY(shown->save());
    QCOMPARE(contentOf(copyPath(".2")), QString("none"));
    QCOMPARE(contentOf(copyPath()), QString("2 in 0x1F"));
    edit(shown.view);
    shown.container->hide();
    QTRY_COMPARE(contentOf(copyPath(".2")), QString("4 in 0x1F"));
    delete shown.container;
    QCOMPARE(contentOf(copyPath()), QString("2 in 0x1F"));
    other.kill();
    QVERIFY(other.waitForFinished());
    const ShownView again = show(path("a.tarn"));
    QVERIFY(bannerTextOf(again.view).contains("[Restore]"));
}

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    app.setApplicationName(QStringLiteral("tarn-test"));
    TestUnsavedCopy test;
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments.at(1).startsWith("--edit"))
        return test.editAsOtherProgram(arguments.at(2), arguments.at(1) == "--edit-forever");
    return QTest::qExec(&test, argc, argv);
}

#include "tst_unsavedcopy.moc"
