// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "session.h"

#include "mainwindow.h"
#include "messagelog.h"

#include <core/actionmanager.h>
#include <core/coreconstants.h>
#include <core/iview.h>
#include <core/viewmanager.h>
#include <files/regularfile.h>
#include <files/temporarypath.h>
#include <te/designmanager.h>
#include <te/taskengine.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QTextEdit>
#include <QTreeWidget>

namespace Workbench {

namespace {

constexpr int PollMilliseconds = 20;
constexpr int SettleMilliseconds = 200;
constexpr qint64 LargestFile = 1024 * 1024 * 1024;

QAction *saveCommand()
{
    return Core::ActionManager::command(QLatin1String(Core::Constants::A_FILE_SAVE));
}

/// The title and all text of a dialog.
QString textOf(const QWidget *dialog)
{
    QStringList parts = {dialog->windowTitle()};
    if (const auto *box = qobject_cast<const QMessageBox *>(dialog)) {
        parts.append(box->text().trimmed());
        parts.append(box->detailedText());
    } else if (const auto *edit = dialog->findChild<QTextEdit *>()) {
        parts.append(edit->toPlainText());
    }
    parts.removeAll(QString());
    return parts.join(QLatin1String(": "));
}

} // namespace

Session::Session(MainWindow *window, MessageLog *log, const QString &folder)
    : m_window(window)
    , m_log(log)
    , m_folder(folder)
    , m_copies(Files::temporaryTemplate())
{
    connect(log, &MessageLog::messagesAdded, this, &Session::onMessages);
    connect(&m_timer, &QTimer::timeout, this, &Session::answerWindows);
    m_timer.start(PollMilliseconds);
}

Session::~Session() = default;

bool Session::run(const QString &tarnFile)
{
    if (!QDir().mkpath(m_folder))
        return fail(tr("Cannot write to the folder %1").arg(QDir::toNativeSeparators(m_folder)));
    if (!m_copies.isValid())
        return fail(
            tr("Cannot make a temporary folder in %1: %2")
                .arg(QDir::toNativeSeparators(Files::temporaryPath()), m_copies.errorString()));
    m_report.append(
        tr("design: %1").arg(TE::TaskEngine::instance()->designManager()->project().name));
    m_window->show();
    const bool done = takeScreenshot(QStringLiteral("1-start.png")) && openCopy(tarnFile) &&
                      takeScreenshot(QStringLiteral("2-editor.png")) && addCore() &&
                      takeScreenshot(QStringLiteral("3-core-added.png")) && removeCore() &&
                      checkAndSave();
    closeViews();
    return done && !hasFailed();
}

bool Session::openCopy(const QString &tarnFile)
{
    const QString copy = m_copies.filePath(QFileInfo(tarnFile).fileName());
    if (!copyFile(tarnFile, copy))
        return false;
    m_window->openTarnFile(copy);
    settle();
    if (hasFailed())
        return false;
    if (!coreList())
        return fail(tr("%1 was opened, but no editor is shown").arg(tarnFile));
    if (!m_netlistWasRead)
        return fail(tr("The netlist of the design was not read"));
    m_report.append(tr("cores: %1").arg(coreList()->topLevelItemCount()));
    return true;
}

bool Session::copyFile(const QString &from, const QString &to)
{
    QByteArray content;
    QString error;
    const Files::Access access = Files::readRegularFile(from, LargestFile, &content, &error);
    if (access != Files::Access::Granted)
        return fail(tr("Cannot read the file %1").arg(QDir::toNativeSeparators(from)));
    QFile copy(to);
    if (copy.open(QIODevice::WriteOnly) && copy.write(content) == content.size() && copy.flush())
        return true;
    return fail(
        tr("Cannot write the file %1: %2").arg(QDir::toNativeSeparators(to), copy.errorString()));
}

bool Session::addCore()
{
    const int count = coreList()->topLevelItemCount();
    const QPoint below(1, coreList()->viewport()->height() - 1);
    if (!chooseFromMenu(below, QStringLiteral("Add")))
        return false;
    if (!coreList() || coreList()->topLevelItemCount() != count + 1)
        return fail(tr("The core was not added"));
    m_report.append(tr("added a core: %1").arg(count + 1));
    return true;
}

bool Session::removeCore()
{
    const int count = coreList()->topLevelItemCount();
    const QTreeWidgetItem *last = coreList()->topLevelItem(count - 1);
    m_expectedBox = QStringLiteral("Remove TARn");
    if (!chooseFromMenu(coreList()->visualItemRect(last).center(), QStringLiteral("Remove")))
        return false;
    m_expectedBox.clear();
    if (!coreList() || coreList()->topLevelItemCount() != count - 1)
        return fail(tr("The core was not removed"));
    m_report.append(tr("removed it again: %1").arg(count - 1));
    return true;
}

/// Saves the copy, which is modified by the core that came and went. Saving checks first.
bool Session::checkAndSave()
{
    if (!saveCommand()->isEnabled())
        return fail(tr("The changed configuration cannot be saved: Save is disabled"));
    saveCommand()->trigger();
    settle();
    if (hasFailed())
        return false;
    if (saveCommand()->isEnabled())
        return fail(tr("The configuration is still modified after saving"));
    m_report.append(tr("check: passed, a copy was saved"));
    return true;
}

bool Session::takeScreenshot(const QString &name)
{
    settle();
    const QString path = QDir(m_folder).filePath(name);
    if (!m_window->grab().save(path))
        return fail(tr("Cannot write the screenshot %1").arg(QDir::toNativeSeparators(path)));
    m_report.append(tr("screenshot: %1").arg(QDir::toNativeSeparators(path)));
    return true;
}

void Session::closeViews()
{
    m_isClosing = true;
    Core::ViewManager::closeAllViews();
    settle();
    m_timer.stop();
}

bool Session::chooseFromMenu(const QPoint &position, const QString &entry)
{
    m_menuEntry = entry;
    Q_EMIT coreList()->customContextMenuRequested(position);
    settle();
    if (!m_menuEntry.isEmpty())
        fail(tr("The list of cores shows no menu"));
    return !hasFailed();
}

/// Lets the application process what is pending, including the answers to its windows.
void Session::settle()
{
    QEventLoop loop;
    QTimer::singleShot(SettleMilliseconds, &loop, &QEventLoop::quit);
    loop.exec();
    m_log->flush();
}

bool Session::fail(const QString &reason)
{
    m_failures.append(reason);
    return false;
}

QTreeWidget *Session::coreList() const
{
    const Core::IView *view = Core::ViewManager::activeView();
    return view ? view->findChild<QTreeWidget *>(QStringLiteral("treeWidget")) : nullptr;
}

void Session::onMessages(const QStringList &messages)
{
    static const QRegularExpression netlistLine(QStringLiteral(
        "^netlist read: top (.*), (\\d+) nets, (\\d+) buses, (\\d+) nodes, (.*) s$"));
    for (const QString &message : messages) {
        const QRegularExpressionMatch match = netlistLine.match(message);
        if (!match.hasMatch())
            continue;
        m_netlistWasRead = true;
        m_report.append(tr("top module: %1").arg(match.captured(1)));
        m_report.append(
            tr("nets read: %1 (%2 buses, %3 nodes, %4 s)")
                .arg(match.captured(2), match.captured(3), match.captured(4), match.captured(5)));
    }
}

void Session::answerWindows()
{
    QWidget *window = QApplication::activePopupWidget();
    if (!window)
        window = QApplication::activeModalWidget();
    // The timer may still see a window that is closing.
    if (!window || !window->isVisible() || window == m_answered)
        return;
    if (qobject_cast<QMenu *>(window))
        answerMenu(window);
    else if (!window->findChild<QProgressBar *>())
        answerDialog(window);
}

void Session::answerMenu(QWidget *menu)
{
    m_answered = menu;
    for (QAction *action : menu->actions()) {
        if (action->text() != m_menuEntry || !action->isEnabled())
            continue;
        m_menuEntry.clear();
        static_cast<QMenu *>(menu)->setActiveAction(action);
        // Posted, because a dialog opened by the action must not block this function and the timer.
        QCoreApplication::postEvent(
            menu, new QKeyEvent(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier));
        return;
    }
    fail(tr("A menu does not offer \"%1\"").arg(m_menuEntry));
    menu->close();
}

void Session::answerDialog(QWidget *dialog)
{
    m_answered = dialog;
    auto *box = qobject_cast<QMessageBox *>(dialog);
    QAbstractButton *answer = nullptr;
    if (box && m_isClosing)
        answer = box->button(QMessageBox::Discard);
    else if (box && dialog->windowTitle() == m_expectedBox)
        answer = box->button(QMessageBox::Ok);
    else
        fail(textOf(dialog));

    if (answer)
        answer->click();
    else if (auto *other = qobject_cast<QDialog *>(dialog))
        other->reject();
    else
        dialog->close();
}

} // namespace Workbench
