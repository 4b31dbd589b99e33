// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "windowtest.h"

#include <QApplication>
#include <QTest>

class TestWindowTest : public TarnTest::WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void onlyAnnouncedBoxesPass_data();
    void onlyAnnouncedBoxesPass();

private:
    bool m_mayPass = true;
};

void TestWindowTest::cleanup()
{
    if (!m_mayPass)
        QEXPECT_FAIL("", "the boxes differ from the announced ones", Continue);
    WindowTest::cleanup();
}

void TestWindowTest::onlyAnnouncedBoxesPass_data()
{
    QTest::addColumn<bool>("isAnnounced");
    QTest::addColumn<bool>("appears");
    QTest::newRow("announced") << true << true;
    QTest::newRow("not announced") << false << true;
    QTest::newRow("missing") << true << false;
    QTest::newRow("none") << false << false;
}

void TestWindowTest::onlyAnnouncedBoxesPass()
{
    QFETCH(bool, isAnnounced);
    QFETCH(bool, appears);
    m_mayPass = isAnnounced == appears;
    if (isAnnounced)
        script().expectBox({QMessageBox::Information, "Title", "Text", QMessageBox::Ok, {}});
    if (appears)
        QMessageBox::information(nullptr, "Title", "Text");
}

TARN_TEST_MAIN(TestWindowTest)
#include "tst_windowtest.moc"
