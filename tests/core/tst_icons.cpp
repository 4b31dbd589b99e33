// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/testcase.h>

#include <core/projectmanager.h>

#include <QApplication>
#include <QImage>
#include <QTest>

/// The icons that plug-ins find under fixed paths as soon as the library is loaded.
class TestIcons : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void iconIsThereInBothSizes_data();
    void iconIsThereInBothSizes();
};

void TestIcons::initTestCase()
{
    // The linker drops libraries that are not used.
    QVERIFY(!Core::ProjectManager::currentProject());
}

void TestIcons::iconIsThereInBothSizes_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow(":/fpgaprj/image/warning.png") << 24;
    QTest::newRow(":/lumoins/image/add.png") << 22;
    QTest::newRow(":/lumoins/image/delete.png") << 22;
    QTest::newRow(":/lumoins/image/module.png") << 16;
    QTest::newRow(":/netlist/image/magnifier.png") << 16;
    QTest::newRow(":/netlist/image/module.png") << 16;
    QTest::newRow(":/utils/image/attention.png") << 24;
}

void TestIcons::iconIsThereInBothSizes()
{
    QFETCH(int, size);
    const QString path = QString::fromLatin1(QTest::currentDataTag());
    const QImage image(path);
    QCOMPARE(image.size(), QSize(size, size));
    QVERIFY(image.hasAlphaChannel());
    QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
    QString doubled = path;
    doubled.replace(QStringLiteral(".png"), QStringLiteral("@2x.png"));
    QCOMPARE(QImage(doubled).size(), QSize(2 * size, 2 * size));
}

TARN_TEST_MAIN(TestIcons)
#include "tst_icons.moc"
