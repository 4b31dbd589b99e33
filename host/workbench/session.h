// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QTimer>

class QTreeWidget;

namespace Core {
class IView;
}

namespace Workbench {

class MainWindow;
class MessageLog;

/// Uses the application like a user: opens a configuration file, adds and removes a core, checks
/// and saves, and takes screenshots of each step.
///
/// Works on a copy of the configuration file. Uses only what a user sees: menus, message boxes, the
/// list of cores and the debug stream. An unexpected message box or dialog is a failure; its title
/// and text are the reason.
class Session : public QObject
{
    Q_OBJECT

public:
    /// Neither is owned; both have to outlive the session. Screenshots go to @p folder.
    Session(MainWindow *window, MessageLog *log, const QString &folder);
    ~Session() override;

    /// Runs the session on @p tarnFile. False when a step failed, see failures().
    bool run(const QString &tarnFile);

    /// The steps done, one line each.
    QStringList report() const { return m_report; }
    /// The reasons for the failure, one line each.
    QStringList failures() const { return m_failures; }

private:
    bool copyFile(const QString &from, const QString &to);
    bool openCopy(const QString &tarnFile);
    bool addCore();
    bool removeCore();
    bool checkAndSave();
    bool takeScreenshot(const QString &name);
    void closeViews();

    bool chooseFromMenu(const QPoint &position, const QString &entry);
    void settle();
    bool fail(const QString &reason);
    bool hasFailed() const { return !m_failures.isEmpty(); }
    QTreeWidget *coreList() const;

    void onMessages(const QStringList &messages);
    void answerWindows();
    void answerMenu(QWidget *menu);
    void answerDialog(QWidget *dialog);

    MainWindow *m_window;
    MessageLog *m_log;
    QString m_folder;
    QTemporaryDir m_copies;
    QTimer m_timer;
    QString m_menuEntry;   ///< The entry to choose from the next menu.
    QString m_expectedBox; ///< Title of the question to answer with Ok.
    bool m_isClosing = false;
    bool m_netlistWasRead = false;
    QPointer<QWidget> m_answered;
    QStringList m_report;
    QStringList m_failures;
};

} // namespace Workbench
