// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "viewtest.h"

#include <support/files.h>
#include <support/waiting.h>

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
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include <functional>

#include <fcntl.h>
#include <sys/stat.h>

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

TARN_TEST_MAIN(TestUnsavedCopy)
#include "tst_unsavedcopy.moc"
