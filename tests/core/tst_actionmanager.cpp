// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/testcase.h>

#include <core/actionmanager.h>
#include <core/coreconstants.h>

#include <QAction>
#include <QApplication>
#include <QPixmap>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using Core::ActionManager;

class TestActionManager : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void saveCommandHasItsId();
    void commandIsOnePerId();
    void withoutActionShowsDefaultTextDisabled();
    void showsAndFollowsTheAction();
    void onlyTheActiveContextCounts();
    void firstContextThatOffersAnActionWins();
    void triggersTheShownActionOnly();
    void laterRegistrationReplaces();
    void oneActionMayServeSeveralPairs();
    void destroyedActionLeaves();
    void defaultShortcutGivesWay();
    void nullActionIsIgnored();
    void receiversMayRegisterMore();

private:
    const QString m_context = QStringLiteral("context");
    QString m_id;
    int m_count = 0;
};

void TestActionManager::init()
{
    TestCase::init();
    m_id = QStringLiteral("id.%1").arg(++m_count);
    ActionManager::setActiveContexts({m_context});
}

void TestActionManager::saveCommandHasItsId()
{
    QCOMPARE(QString(QLatin1String(Core::Constants::A_FILE_SAVE)),
             QStringLiteral("Core.Action.Save"));
}

void TestActionManager::commandIsOnePerId()
{
    QAction *command = ActionManager::command(m_id);
    QVERIFY(command);
    QCOMPARE(ActionManager::command(m_id), command);
    QVERIFY(ActionManager::command(m_id + QLatin1Char('x')) != command);
}

void TestActionManager::withoutActionShowsDefaultTextDisabled()
{
    ActionManager::setDefaultText(m_id, QStringLiteral("&Save"));
    QAction *command = ActionManager::command(m_id);
    QCOMPARE(command->text(), QStringLiteral("&Save"));
    QVERIFY(!command->isEnabled());
    ActionManager::setDefaultText(m_id, QStringLiteral("&Keep"));
    QCOMPARE(command->text(), QStringLiteral("&Keep"));
    command->trigger();
}

void TestActionManager::showsAndFollowsTheAction()
{
    ActionManager::setDefaultText(m_id, QStringLiteral("default"));
    const QAction *command = ActionManager::command(m_id);
    QAction action(QStringLiteral("&Save \"a\""));
    action.setToolTip(QStringLiteral("Save \"a\""));
    action.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_E));
    ActionManager::registerAction(&action, m_id, m_context);
    QCOMPARE(command->text(), QStringLiteral("&Save \"a\""));
    QCOMPARE(command->toolTip(), QStringLiteral("Save \"a\""));
    QCOMPARE(command->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_E));
    QVERIFY(command->isEnabled());
    QVERIFY(command->icon().isNull());

    action.setText(QStringLiteral("b"));
    action.setToolTip(QStringLiteral("tip"));
    action.setEnabled(false);
    action.setShortcuts({QKeySequence(Qt::Key_F2), QKeySequence(Qt::Key_F3)});
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::red);
    action.setIcon(pixmap);
    QCOMPARE(command->text(), QStringLiteral("b"));
    QCOMPARE(command->toolTip(), QStringLiteral("tip"));
    QCOMPARE(command->shortcuts(), action.shortcuts());
    QVERIFY(!command->isEnabled());
    QVERIFY(!command->icon().isNull());

    ActionManager::setActiveContexts({});
    QCOMPARE(command->text(), QStringLiteral("default"));
    QCOMPARE(command->toolTip(), QStringLiteral("default"));
    QVERIFY(command->shortcuts().isEmpty());
    QVERIFY(command->icon().isNull());
}

void TestActionManager::onlyTheActiveContextCounts()
{
    QAction action(QStringLiteral("a"));
    ActionManager::registerAction(&action, m_id, QStringLiteral("other"));
    const QAction *command = ActionManager::command(m_id);
    QVERIFY(!command->isEnabled());
    ActionManager::setActiveContexts({QStringLiteral("other")});
    QVERIFY(command->isEnabled());
    QCOMPARE(command->text(), QStringLiteral("a"));
}

void TestActionManager::firstContextThatOffersAnActionWins()
{
    QAction a(QStringLiteral("a"));
    QAction b(QStringLiteral("b"));
    ActionManager::registerAction(&a, m_id, QStringLiteral("A"));
    ActionManager::registerAction(&b, m_id, QStringLiteral("B"));
    const QAction *command = ActionManager::command(m_id);
    ActionManager::setActiveContexts({"none", "B", "A"});
    QCOMPARE(command->text(), QStringLiteral("b"));
    ActionManager::setActiveContexts({"A", "B"});
    QCOMPARE(command->text(), QStringLiteral("a"));
    b.setText(QStringLiteral("b changed"));
    QCOMPARE(command->text(), QStringLiteral("a"));
}

void TestActionManager::triggersTheShownActionOnly()
{
    QAction shown(QStringLiteral("shown"));
    QAction other(QStringLiteral("other"));
    ActionManager::registerAction(&shown, m_id, m_context);
    ActionManager::registerAction(&other, m_id, QStringLiteral("other"));
    QSignalSpy shownSpy(&shown, &QAction::triggered);
    QSignalSpy otherSpy(&other, &QAction::triggered);
    ActionManager::command(m_id)->trigger();
    QCOMPARE(shownSpy.size(), 1);
    QCOMPARE(otherSpy.size(), 0);
    shown.setEnabled(false);
    ActionManager::command(m_id)->trigger();
    QCOMPARE(shownSpy.size(), 1);
}

void TestActionManager::laterRegistrationReplaces()
{
    QAction former(QStringLiteral("former"));
    QAction later(QStringLiteral("later"));
    ActionManager::registerAction(&former, m_id, m_context);
    ActionManager::registerAction(&later, m_id, m_context);
    QSignalSpy formerSpy(&former, &QAction::triggered);
    const QAction *command = ActionManager::command(m_id);
    QCOMPARE(command->text(), QStringLiteral("later"));
    former.setText(QStringLiteral("changed"));
    QCOMPARE(command->text(), QStringLiteral("later"));
    ActionManager::command(m_id)->trigger();
    QCOMPARE(formerSpy.size(), 0);
}

void TestActionManager::oneActionMayServeSeveralPairs()
{
    QAction action(QStringLiteral("a"));
    const QString otherId = m_id + QStringLiteral(".other");
    ActionManager::registerAction(&action, m_id, m_context);
    ActionManager::registerAction(&action, otherId, m_context);
    ActionManager::registerAction(&action, m_id, m_context);
    QAction replacement(QStringLiteral("r"));
    ActionManager::registerAction(&replacement, m_id, m_context);
    action.setText(QStringLiteral("b"));
    QCOMPARE(ActionManager::command(otherId)->text(), QStringLiteral("b"));
    QCOMPARE(ActionManager::command(m_id)->text(), QStringLiteral("r"));
}

void TestActionManager::destroyedActionLeaves()
{
    ActionManager::setDefaultText(m_id, QStringLiteral("default"));
    auto action = std::make_unique<QAction>(QStringLiteral("a"));
    ActionManager::registerAction(action.get(), m_id, m_context);
    const QAction *command = ActionManager::command(m_id);
    QVERIFY(command->isEnabled());
    action.reset();
    QVERIFY(!command->isEnabled());
    QCOMPARE(command->text(), QStringLiteral("default"));
    ActionManager::command(m_id)->trigger();
}

void TestActionManager::defaultShortcutGivesWay()
{
    const QAction *command = ActionManager::command(m_id);
    ActionManager::setDefaultShortcut(m_id, QKeySequence::Save);
    QCOMPARE(command->shortcut(), QKeySequence(QKeySequence::Save));
    QAction action(QStringLiteral("a"));
    ActionManager::registerAction(&action, m_id, m_context);
    QCOMPARE(command->shortcut(), QKeySequence(QKeySequence::Save));
    action.setShortcut(Qt::Key_F2);
    QCOMPARE(command->shortcuts(), QList<QKeySequence>{QKeySequence(Qt::Key_F2)});
    action.setShortcut(QKeySequence());
    QCOMPARE(command->shortcut(), QKeySequence(QKeySequence::Save));
}

void TestActionManager::nullActionIsIgnored()
{
    ActionManager::registerAction(nullptr, m_id, m_context);
    QVERIFY(!ActionManager::command(m_id)->isEnabled());
}

void TestActionManager::receiversMayRegisterMore()
{
    QAction action(QStringLiteral("a"));
    QAction more(QStringLiteral("more"));
    const auto connection = connect(ActionManager::command(m_id), &QAction::changed, [&] {
        for (int i = 0; i < 100; ++i) {
            const QString id = QStringLiteral("%1.more.%2").arg(m_id).arg(i);
            ActionManager::registerAction(&more, id, m_context);
        }
    });
    ActionManager::registerAction(&action, m_id, m_context);
    disconnect(connection);
    QCOMPARE(ActionManager::command(m_id)->text(), QStringLiteral("a"));
    QCOMPARE(ActionManager::command(m_id + QStringLiteral(".more.99"))->text(),
             QStringLiteral("more"));
}

TARN_TEST_MAIN(TestActionManager)
#include "tst_actionmanager.moc"
