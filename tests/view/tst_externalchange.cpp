// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "viewtest.h"

#include <support/files.h>
#include <support/waiting.h>

#include <model/tarncore.h>
#include <netweir/rtlnetlist.h>
#include <view/reloadbanner.h>
#include <view/tarnoptionwidget.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTest>
#include <QTimer>
#include <QTranslator>
#include <QTreeWidget>

#include <cstdio>
#include <functional>
#include <utility>

using TARN::ReloadBanner;
using TARN::TarnOptionWidget;
using TARN::TarnView;
using TarnTest::errorBox;
using TarnTest::ModalScript;
using TarnTest::readFile;
using TarnTest::settle;
using TarnTest::ShownView;
using TarnTest::waitForFileNotices;
using TarnTest::writeFile;

namespace {

constexpr int Delay = 500;

// Most tests need not wait that long.
constexpr int ShortDelay = 60;

// No test takes that long.
constexpr int VeryLong = 1000000;

ModalScript::Box invalidFileBox()
{
    return {QMessageBox::Warning, "Reload Tarn", "Invalid TARN file.", QMessageBox::Ok, {}};
}

/// Writes in place, as some editors do.
void overwrite(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(content);
}

/// Writes a new file and renames it, as other editors do.
void replaceByRename(const QString &path, const QByteArray &content)
{
    const QString other = path + ".new";
    writeFile(other, content);
    QVERIFY(std::rename(qPrintable(other), qPrintable(path)) == 0);
}

void replaceLink(const QString &path, const QString &target)
{
    const QString other = path + ".new";
    QVERIFY(QFile::link(target, other));
    QVERIFY(std::rename(qPrintable(other), qPrintable(path)) == 0);
}

/// Counts how often the name of a core is translated.
class NameCounter final : public QTranslator
{
public:
    NameCounter() { QCoreApplication::installTranslator(this); }
    ~NameCounter() override { QCoreApplication::removeTranslator(this); }

    QString translate(const char *, const char *text, const char *, int) const override
    {
        m_count += qstrcmp(text, "tarn_%1") == 0 ? 1 : 0;
        return QString();
    }
    int takeCount() const { return std::exchange(m_count, 0); }

private:
    mutable int m_count = 0;
};

/// A change of files below a folder.
using Change = std::function<void(const QString &)>;

} // namespace

Q_DECLARE_METATYPE(Change)

class TestExternalChange : public TarnTest::ViewTest
{
    Q_OBJECT

private:
    static QString bannerTextOf(const TarnView *view)
    {
        QStringList texts;
        for (const ReloadBanner *banner : bannersOf(view))
            texts.append(banner->findChild<QLabel *>("labelFile")->text());
        return texts.join('|');
    }

    static QString changedText(const QString &file)
    {
        return "The file '" + file + "' changed on disk.\nDo you want to reload?";
    }

    static QString removedText(const QString &file)
    {
        return "The file '" + file + "' has been removed on disk.\nDo you still want to keep it?";
    }

    static QTimer *timerOf(const TarnView *view)
    {
        return view->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    }

    /// A view that asks sooner after a change.
    ShownView showQuick(const QString &filePath)
    {
        const ShownView shown = show(filePath);
        timerOf(shown.view)->setInterval(ShortDelay);
        return shown;
    }

    /// Content of a file with that number of cores.
    QByteArray content(int cores) const
    {
        QList<int> indexes;
        for (int i = 0; i < cores; ++i)
            indexes.append(i);
        return readFile(writeConfig("content.tarn", indexes));
    }

private Q_SLOTS:
    // Noticing

    void changeRaisesABannerAfterTheDelay()
    {
        const QString file = writeConfig("a.tarn", {0});
        const ShownView shown = show(file);
        auto *area = shown->findChild<QWidget *>("widget_3");
        QVERIFY(!area->isVisible());
        QElapsedTimer timer;
        timer.start();
        overwrite(file, content(2));
        QTRY_COMPARE(bannerTextOf(shown.view), changedText(file));
        QVERIFY2(timer.elapsed() >= Delay, "too early");
        QVERIFY(area->isVisible());
        ReloadBanner *banner = bannersOf(shown.view).first();
        QVERIFY(banner->isVisible());
        QCOMPARE(area->layout()->indexOf(banner), 0);
        QCOMPARE(banner->findChild<QPushButton *>("btnA")->text(), QStringLiteral("Reload"));
        // Nothing is read before the answer.
        QCOMPARE(pagesOf(shown.view).size(), 1);
    }

    void delayBelongsToTheView()
    {
        const ShownView shown = show(writeConfig("a.tarn", {0}));
        const auto timers = shown->findChildren<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
        QCOMPARE(timers.size(), 1);
        QVERIFY(timers.first()->isSingleShot());
        QCOMPARE(timers.first()->interval(), Delay);
        QVERIFY(!timers.first()->isActive());
        shown->onFileChange();
        QVERIFY(timers.first()->isActive());
    }

    void severalWritesRaiseOneBanner()
    {
        const QString file = writeConfig("a.tarn", {0});
        const ShownView shown = showQuick(file);
        for (int i = 0; i < 4; ++i) {
            overwrite(file, content(1 + i % 2));
            QVERIFY(waitForFileNotices());
        }
        QTRY_COMPARE(bannersOf(shown.view).size(), 1);
        // Also those after the banner came.
        overwrite(file, content(3));
        QVERIFY(settle(shown.view));
        QCOMPARE(bannersOf(shown.view).size(), 1);
    }

    void removalRaisesTheOtherBanner()
    {
        const QString file = writeConfig("a.tarn", {0});
        const ShownView shown = showQuick(file);
        QVERIFY(QFile::remove(file));
        QTRY_COMPARE(bannerTextOf(shown.view), removedText(file));
        const ReloadBanner *banner = bannersOf(shown.view).first();
        QCOMPARE(banner->findChild<QPushButton *>("btnA")->text(), QStringLiteral("Keep It"));
    }

    void fileThatIsBackInTimeCountsAsChanged()
    {
        const QString file = writeConfig("a.tarn", {0});
        const ShownView shown = show(file);
        timerOf(shown.view)->setInterval(VeryLong);
        QVERIFY(QFile::remove(file));
        QTRY_VERIFY(timerOf(shown.view)->isActive());
        writeFile(file, content(2));
        timerOf(shown.view)->setInterval(ShortDelay);
        QTRY_COMPARE(bannerTextOf(shown.view), changedText(file));
    }

    void changesOfFileAndDesignHaveABannerEach()
    {
        const QString file = writeConfig("a.tarn", {0});
        const ShownView shown = showQuick(file);
        shown->designFileChanged();
        overwrite(file, content(2));
        QTRY_COMPARE(bannersOf(shown.view).size(), 2);
    }

    void pathsOfAnotherFileAreNoLongerWatched()
    {
        const QString former = writeConfig("a.tarn", {0});
        const ShownView shown = showQuick(former);
        QVERIFY(shown->open(writeConfig("b.tarn", {0}), QString(), nullptr));
        overwrite(former, content(2));
        QVERIFY(settle(shown.view));
        QVERIFY(bannersOf(shown.view).isEmpty());
    }

    // Links

    void changeBehindALinkIsNoticed_data()
    {
        QTest::addColumn<QString>("link"); // Of the file that is open, behind "a.tarn".
        QTest::addColumn<Change>("change");
        const QString other = "other/real.tarn";
        QTest::newRow("target written")
            << other
            << Change([](const QString &folder) { overwrite(folder + "/other/real.tarn", "x"); });
        QTest::newRow("target replaced") << other << Change([](const QString &folder) {
            replaceByRename(folder + "/other/real.tarn", "x");
        });
        QTest::newRow("link replaced by another") << other << Change([](const QString &folder) {
            replaceLink(folder + "/a.tarn", "other/second.tarn");
        });
        QTest::newRow("link replaced by a file")
            << other
            << Change([](const QString &folder) { replaceByRename(folder + "/a.tarn", "x"); });
        QTest::newRow("link behind the link replaced")
            << "links/middle.tarn" << Change([](const QString &folder) {
                   replaceLink(folder + "/links/middle.tarn", "../other/second.tarn");
               });
        QTest::newRow("link behind the link removed")
            << "links/middle.tarn" << Change([](const QString &folder) {
                   QVERIFY(QFile::remove(folder + "/links/middle.tarn"));
               });
        QTest::newRow("link removed")
            << other
            << Change([](const QString &folder) { QVERIFY(QFile::remove(folder + "/a.tarn")); });
    }

    void changeBehindALinkIsNoticed()
    {
        QFETCH(QString, link);
        QFETCH(Change, change);
        writeConfig("other/real.tarn", {0});
        writeConfig("other/second.tarn", {0, 1});
        QVERIFY(QDir().mkpath(path("links")));
        QVERIFY(QFile::link("../other/real.tarn", path("links/middle.tarn")));
        QVERIFY(QFile::link(link, path("a.tarn")));
        const ShownView shown = showQuick(path("a.tarn"));
        // Other files in these folders do not matter.
        for (const char *name : {"new.txt", "links/new.txt", "other/new.txt"})
            writeFile(path(name), "not the file");
        QVERIFY(settle(shown.view));
        QVERIFY(bannersOf(shown.view).isEmpty());
        change(QFileInfo(path("a.tarn")).absolutePath());
        QTRY_COMPARE(bannersOf(shown.view).size(), 1);
    }

    void returnOfTheTargetOfALinkIsAChange()
    {
        const QByteArray two = content(2);
        writeConfig("other/real.tarn", {0});
        QVERIFY(QFile::link("other/real.tarn", path("a.tarn")));
        const ShownView shown = showQuick(path("a.tarn"));
        QVERIFY(QFile::remove(path("other/real.tarn")));
        QTRY_COMPARE(bannerTextOf(shown.view), removedText(path("a.tarn")));
        clickBanner(shown.view, "btnA");
        writeFile(path("other/real.tarn"), two);
        QTRY_COMPARE(bannerTextOf(shown.view), changedText(path("a.tarn")));
        clickBanner(shown.view, "btnA");
        QCOMPARE(pagesOf(shown.view).size(), 2);
    }

    void savingThroughALinkRaisesNoBanner()
    {
        writeConfig("real.tarn", {0});
        QVERIFY(QFile::link("real.tarn", path("a.tarn")));
        const ShownView shown = showQuick(path("a.tarn"));
        QVERIFY(shown->save());
        QVERIFY(settle(shown.view));
        QVERIFY(bannersOf(shown.view).isEmpty());
        replaceByRename(path("real.tarn"), content(2));
        QTRY_COMPARE(bannersOf(shown.view).size(), 1);
    }

    // The view's own writing

    void savingRaisesNoBanner()
    {
        const QString file = writeConfig("a.tarn", {0});
        const ShownView shown = showQuick(file);
        QVERIFY(shown->save());
        QVERIFY(settle(shown.view));
        QVERIFY(bannersOf(shown.view).isEmpty());
        overwrite(file, content(2));
        QTRY_COMPARE(bannersOf(shown.view).size(), 1);
    }

    void failedSavingWatchesOn()
    {
        const QString file = writeConfig("a.tarn", {0});
        const ShownView shown = showQuick(file);
        pagesOf(shown.view).first()->core()->getProbeIn(0)->signals.first().displayName = QChar(1);
        script().expectBox(errorBox("Error", "Can not save to " + file));
        QVERIFY(!shown->save());
        overwrite(file, content(2));
        QTRY_COMPARE(bannersOf(shown.view).size(), 1);
    }

    void refusedSavingWatchesOn()
    {
        const QString file = writeConfig("a.tarn", {0});
        const ShownView shown = showQuick(file);
        pagesOf(shown.view).first()->core()->removeProbeIn(0);
        script().expectDialog("QMessageBox", "Error", [](QDialog *box) { box->accept(); });
        QVERIFY(!shown->save());
        overwrite(file, content(2));
        QTRY_COMPARE(bannersOf(shown.view).size(), 1);
    }

    // Cancel and Keep It

    void cancelKeepsContentAndState_data()
    {
        QTest::addColumn<bool>("modified");
        QTest::newRow("modified") << true;
        QTest::newRow("not modified") << false;
    }

    void cancelKeepsContentAndState()
    {
        QFETCH(bool, modified);
        const QString file = writeConfig("a.tarn", {0});
        const ShownView shown = showQuick(file);
        if (modified)
            shown->onModified();
        const QString title = shown->windowTitle();
        const QByteArray changed = content(2);
        replaceByRename(file, changed);
        QTRY_COMPARE(bannersOf(shown.view).size(), 1);
        const QPointer<ReloadBanner> banner(bannersOf(shown.view).first());
        clickBanner(shown.view, "btnB");
        QVERIFY(!banner->isVisible());
        QVERIFY(bannersOf(shown.view).isEmpty());
        QTRY_VERIFY(!banner);
        QCOMPARE(pagesOf(shown.view).size(), 1);
        QCOMPARE(shown->isModified(), modified);
        QCOMPARE(shown->windowTitle(), title);
        QCOMPARE(readFile(file), changed);
        // The renamed file is watched although the system lost the former one.
        replaceByRename(file, content(3));
        QTRY_COMPARE(bannersOf(shown.view).size(), 1);
    }

    void keepItKeepsContentAndState_data() { cancelKeepsContentAndState_data(); }

    void keepItKeepsContentAndState()
    {
        QFETCH(bool, modified);
        const QString file = writeConfig("a.tarn", {0});
        const ShownView shown = showQuick(file);
        if (modified)
            shown->onModified();
        QVERIFY(QFile::remove(file));
        QTRY_COMPARE(bannersOf(shown.view).size(), 1);
        clickBanner(shown.view, "btnA");
        QVERIFY(bannersOf(shown.view).isEmpty());
        QCOMPARE(pagesOf(shown.view).size(), 1);
        QCOMPARE(shown->isModified(), modified);
        QVERIFY(!QFile::exists(file));
    }

    void returnOfAKeptFileIsAChange()
    {
        const QString file = writeConfig("a.tarn", {0});
        const QByteArray two = content(2);
        const ShownView shown = showQuick(file);
        QVERIFY(QFile::remove(file));
        QTRY_COMPARE(bannersOf(shown.view).size(), 1);
        clickBanner(shown.view, "btnA");
        writeFile(path("other.txt"), "not the file");
        QVERIFY(settle(shown.view));
        QVERIFY(bannersOf(shown.view).isEmpty());

        writeFile(file, two);
        QTRY_COMPARE(bannerTextOf(shown.view), changedText(file));
        clickBanner(shown.view, "btnA");
        QCOMPARE(pagesOf(shown.view).size(), 2);
        // And the folder is no longer watched, but the file is.
        writeFile(path("third.txt"), "not the file");
        QVERIFY(settle(shown.view));
        QVERIFY(bannersOf(shown.view).isEmpty());
        overwrite(file, content(3));
        QTRY_COMPARE(bannersOf(shown.view).size(), 1);
    }

    void returnOfAKeptFileWithItsFolderIsAChange()
    {
        const QByteArray two = content(2);
        const QString file = writeConfig("deep/er/a.tarn", {0});
        const ShownView shown = showQuick(file);
        QVERIFY(QDir(path("deep")).removeRecursively());
        QTRY_COMPARE(bannersOf(shown.view).size(), 1);
        clickBanner(shown.view, "btnA");
        for (const char *folder : {"deep", "deep/er"}) {
            QVERIFY(QDir().mkpath(path(folder)));
            QVERIFY(waitForFileNotices());
        }
        writeFile(file, two);
        QTRY_COMPARE(bannerTextOf(shown.view), changedText(file));
    }

    void savingAKeptFileWritesItAndRaisesNoBanner()
    {
        const QString file = writeConfig("a.tarn", {0});
        const ShownView shown = showQuick(file);
        QVERIFY(QFile::remove(file));
        QTRY_COMPARE(bannersOf(shown.view).size(), 1);
        clickBanner(shown.view, "btnA");
        QVERIFY(shown->save());
        QVERIFY(QFile::exists(file));
        QVERIFY(settle(shown.view));
        QVERIFY(bannersOf(shown.view).isEmpty());
    }

    // Reload

    void reloadShowsTheNewContent()
    {
        const QString file = writeConfig("a.tarn", {0, 1});
        const ShownView shown = showQuick(file);
        shown->changeTarnWidget(1);
        const QPointer<TarnOptionWidget> former(pagesOf(shown.view).first());
        QSignalSpy status(shown.view, &TarnView::modificationStatusChanged);
        replaceByRename(file, content(3));
        QTRY_COMPARE(bannersOf(shown.view).size(), 1);
        clickBanner(shown.view, "btnA");
        QVERIFY(bannersOf(shown.view).isEmpty());
        QVERIFY(!former);
        QCOMPARE(treeTextOf(shown.view), QStringLiteral("tarn_0\ntarn_1\ntarn_2\n"));
        QCOMPARE(pagesOf(shown.view).size(), 3);
        QCOMPARE(currentPageOf(shown.view), pagesOf(shown.view).first());
        QVERIFY(pagesOf(shown.view).last()->netlist());
        QCOMPARE(status.count(), 0);
        QCOMPARE(shown->windowTitle(), QStringLiteral("a.tarn"));
        // The new pages are connected, and the new file is watched.
        Q_EMIT pagesOf(shown.view).first()->modifed();
        QVERIFY(shown->isModified());
        replaceByRename(file, content(1));
        QTRY_COMPARE(bannersOf(shown.view).size(), 1);
    }

    void writeDuringTheReloadIsAChange_data()
    {
        QTest::addColumn<bool>("rename");
        QTest::newRow("in place") << false;
        QTest::newRow("renamed") << true;
    }
    void writeDuringTheReloadIsAChange()
    {
        QFETCH(bool, rename);
        const QString file = writeConfig("a.tarn", {0});
        const QByteArray three = content(3);
        const ShownView shown = showQuick(file);
        overwrite(file, content(2));
        QTRY_COMPARE(bannersOf(shown.view).size(), 1);
        // Once the file is read, its pages replace the former ones.
        const auto *stack = shown->findChild<QStackedWidget *>("stackedWidget");
        connect(stack, &QStackedWidget::widgetRemoved, this,
                [&] { rename ? replaceByRename(file, three) : overwrite(file, three); });
        clickBanner(shown.view, "btnA");
        QCOMPARE(pagesOf(shown.view).size(), 2);
        QVERIFY(bannersOf(shown.view).isEmpty());
        disconnect(stack, &QStackedWidget::widgetRemoved, this, nullptr);
        QTRY_COMPARE(bannerTextOf(shown.view), changedText(file));
        clickBanner(shown.view, "btnA");
        QCOMPARE(pagesOf(shown.view).size(), 3);
        QVERIFY(settle(shown.view));
        QVERIFY(bannersOf(shown.view).isEmpty());
    }

    void reloadNamesEachCoreOnce()
    {
        for (int cores : {20, 40}) {
            writeFile(path("a.tarn"), content(cores));
            const ShownView shown = showQuick(path("a.tarn"));
            const NameCounter counter;
            QVERIFY(shown->reloadTarnFile());
            QCOMPARE(counter.takeCount(), cores + 2); // Those in the list, and the page on top.
        }
    }

    void reloadKeepsModifiedStateAndTitle()
    {
        const QString file = writeConfig("a.tarn", {0});
        const ShownView shown = showQuick(file);
        shown->onModified();
        writeConfig("a.tarn", {0, 1});
        QVERIFY(shown->reloadTarnFile());
        QVERIFY(shown->isModified());
        QCOMPARE(shown->windowTitle(), QStringLiteral("a.tarn *"));
    }

    void reloadOfAFileWithoutCoresAddsOne()
    {
        const ShownView shown = showQuick(writeConfig("a.tarn", {0, 1}));
        writeEmptyConfig("a.tarn");
        QVERIFY(shown->reloadTarnFile());
        QCOMPARE(treeTextOf(shown.view), QStringLiteral("tarn_0\n"));
        QCOMPARE(pagesOf(shown.view).size(), 1);
        QVERIFY(shown->isModified());
        QCOMPARE(shown->windowTitle(), QStringLiteral("a.tarn *"));
    }

    void reloadLeavesNoItemsOfGapsBehind()
    {
        const ShownView shown = showQuick(writeConfig("a.tarn", {3, 9}));
        writeConfig("a.tarn", {0, 1});
        QVERIFY(shown->reloadTarnFile());
        QCOMPARE(treeTextOf(shown.view), QStringLiteral("tarn_0\ntarn_1\n"));
    }

    void invalidFileChangesNothingByItself()
    {
        const QString file = writeConfig("a.tarn", {0, 1});
        const ShownView shown = showQuick(file);
        overwrite(file, "<TARN_CONFIG>");
        const QPointer<TarnOptionWidget> page(pagesOf(shown.view).first());
        QVERIFY(!shown->reloadTarnFile());
        QVERIFY(page);
        QCOMPARE(treeTextOf(shown.view), QStringLiteral("tarn_0\ntarn_1\n"));
    }

    void reloadOfAnInvalidFileClosesWithoutAQuestion_data()
    {
        QTest::addColumn<bool>("remove");
        QTest::newRow("invalid") << false;
        QTest::newRow("gone meanwhile") << true;
    }

    void reloadOfAnInvalidFileClosesWithoutAQuestion()
    {
        QFETCH(bool, remove);
        const QString file = writeConfig("a.tarn", {0});
        const ShownView shown = showQuick(file);
        const ShownView sibling = showQuick(writeConfig("b.tarn", {0}));
        shown->onModified();
        overwrite(file, "<TARN_CONFIG>");
        QTRY_COMPARE(bannersOf(shown.view).size(), 1);
        if (remove)
            QVERIFY(QFile::remove(file));
        QSignalSpy status(shown.view, &TarnView::modificationStatusChanged);
        script().expectBox(invalidFileBox(), QMessageBox::Ok, [&](QMessageBox *box) {
            QVERIFY(box->parentWidget() == shown.view);
            // The banner goes after the reload.
            QCOMPARE(bannersOf(shown.view).size(), 1);
        });
        clickBanner(shown.view, "btnA");
        QVERIFY(bannersOf(shown.view).isEmpty());
        QCOMPARE(status.count(), 1);
        QVERIFY(!shown->isModified());
        QVERIFY(!shown.container->isVisible());
        QTRY_VERIFY(!shown.container);
        QVERIFY(!shown.view);
        QVERIFY(sibling.view && sibling.container->isVisible());
    }

    void bannerMayGoBehindTheBoxOfAnInvalidFile()
    {
        const QString file = writeConfig("a.tarn", {0});
        const ShownView shown = show(file);
        overwrite(file, "<TARN_CONFIG>");
        shown->checkForReload();
        script().expectBox(invalidFileBox(), QMessageBox::Ok, [&](QMessageBox *) {
            clickBanner(shown.view, "btnB");
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        });
        clickBanner(shown.view, "btnA");
        QVERIFY(!shown.container->isVisible());
    }

    // Close

    void closeClosesTheContainerWithoutAQuestion()
    {
        const QString file = writeConfig("a.tarn", {0});
        const ShownView shown = showQuick(file);
        shown->onModified();
        QVERIFY(QFile::remove(file));
        QTRY_COMPARE(bannersOf(shown.view).size(), 1);
        clickBanner(shown.view, "btnB");
        QVERIFY(!shown.container->isVisible());
        QVERIFY(shown.view); // Not within the click.
        QTRY_VERIFY(!shown.container);
        QVERIFY(!shown.view);
        QVERIFY(!QFile::exists(file));
    }

    void closeWithoutAContainerClosesTheView()
    {
        TarnView view;
        QVERIFY(view.open(writeConfig("a.tarn", {0}), QString(), nullptr));
        view.show();
        view.onModified();
        view.onBannerClose();
        QVERIFY(!view.isVisible());
        QVERIFY(!view.isModified());
    }

    // Handlers by themselves

    void handlersWithoutASenderSkipOnlyTheRemoval_data()
    {
        QTest::addColumn<QByteArray>("handler");
        for (const char *handler : {"onBannerReload", "onBannerCancel", "onBannerKeep"})
            QTest::newRow(handler) << QByteArray(handler);
    }

    void handlersWithoutASenderSkipOnlyTheRemoval()
    {
        QFETCH(QByteArray, handler);
        const ShownView shown = showQuick(writeConfig("a.tarn", {0}));
        shown->onFileChange();
        QTRY_COMPARE(bannersOf(shown.view).size(), 1);
        QVERIFY(QMetaObject::invokeMethod(shown.view, handler.constData()));
        QCOMPARE(bannersOf(shown.view).size(), 1);
        // The change is answered all the same: the next one is noticed.
        shown->onFileChange();
        QTRY_COMPARE(bannersOf(shown.view).size(), 2);
    }

    void closingHandlerWithoutASenderClosesToo()
    {
        const ShownView shown = showQuick(writeConfig("a.tarn", {0}));
        shown->checkForReload();
        shown->onBannerClose();
        QTRY_VERIFY(!shown.container);
    }
};

TARN_TEST_MAIN(TestExternalChange)
#include "tst_externalchange.moc"
