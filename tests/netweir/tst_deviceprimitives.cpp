// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/modules/deviceprimitives.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

class TestDevicePrimitives : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void knowsItsPrimitives_data();
    void knowsItsPrimitives();
    void eachSourceDefinesItsModule();
};

void TestDevicePrimitives::knowsItsPrimitives_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("known");
    QTest::newRow("JTAG") << QStringLiteral("KX_JTAG") << true;
    QTest::newRow("PLL") << QStringLiteral("KX_PLL") << true;
    QTest::newRow("other case") << QStringLiteral("kx_pll") << false;
    QTest::newRow("unknown") << QStringLiteral("KX_NOTHING") << false;
    QTest::newRow("path") << QStringLiteral("../primitives/KX_PLL") << false;
    QTest::newRow("empty") << QString() << false;
}

void TestDevicePrimitives::knowsItsPrimitives()
{
    QFETCH(QString, name);
    QFETCH(bool, known);
    QCOMPARE(isDevicePrimitive(name), known);
    QCOMPARE(devicePrimitiveSource(name).isNull(), !known);
}

void TestDevicePrimitives::eachSourceDefinesItsModule()
{
    const QDir folder(QStringLiteral(":/netweir/primitives"));
    const QStringList files = folder.entryList(QDir::Files);
    QVERIFY(files.size() >= 10);
    for (const QString &file : files) {
        const QString name = file.chopped(2);
        const QString source = QString::fromLatin1(devicePrimitiveSource(name));
        const QRegularExpression header(QStringLiteral("\nmodule %1\\b").arg(name));
        QVERIFY2(header.match(source).hasMatch(), qPrintable(file));
        QVERIFY2(source.endsWith(QLatin1String("\nendmodule\n")), qPrintable(file));
    }
}

TARN_TEST_MAIN(TestDevicePrimitives)
#include "tst_deviceprimitives.moc"
