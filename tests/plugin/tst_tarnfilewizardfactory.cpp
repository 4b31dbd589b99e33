// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <plugin/tarnconstants.h>
#include <plugin/tarnfilewizardfactory.h>
#include <support/windowtest.h>

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QTest>

using TARN::TarnFileWizardFactory;
using namespace TarnTest;

class TestTarnFileWizardFactory : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void answersTheGallery();
    void runsTheDialogModally();
    void survivesDeathOfParent();
};

void TestTarnFileWizardFactory::answersTheGallery()
{
    const TarnFileWizardFactory factory;
    QCOMPARE(TARN::ID_TARN_WIZARD, "MB.Wizard.TARN");
    QCOMPARE(factory.id(), QStringLiteral("MB.Wizard.TARN"));
    QCOMPARE(factory.displayName(), QStringLiteral("TARN Config File"));
    QCOMPARE(factory.description(), QStringLiteral("Create a TARN Config File."));
}

void TestTarnFileWizardFactory::runsTheDialogModally()
{
    TarnFileWizardFactory factory;
    QWidget parent;
    QPointer<QDialog> seen;
    script().expectDialog("TARN::NewFileDialog", "New TARN Config File", [&](QDialog *dialog) {
        seen = dialog;
        QCOMPARE(dialog->parentWidget(), &parent);
        QCOMPARE(dialog->findChild<QLineEdit *>("editCreateIn")->text(), QStringLiteral("/some/x"));
        dialog->reject();
    });
    factory.runWizard(&parent, "/some/x");
    QVERIFY(!seen);
}

void TestTarnFileWizardFactory::survivesDeathOfParent()
{
    TarnFileWizardFactory factory;
    auto *parent = new QWidget;
    script().expectDialog("TARN::NewFileDialog", "New TARN Config File",
                          [&](QDialog *) { delete parent; });
    factory.runWizard(parent, QString());
}

TARN_TEST_MAIN(TestTarnFileWizardFactory)
#include "tst_tarnfilewizardfactory.moc"
