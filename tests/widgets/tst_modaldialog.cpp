// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/windowtest.h>

#include <widgets/modaldialog.h>

#include <QApplication>
#include <QPointer>
#include <QPushButton>
#include <QTest>

class TestModalDialog : public TarnTest::WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void boxShowsTheMessageAndReturnsTheButton_data()
    {
        QTest::addColumn<int>("answer");
        QTest::newRow("ok") << int(QMessageBox::Ok);
        QTest::newRow("discard") << int(QMessageBox::Discard);
        QTest::newRow("cancel") << int(QMessageBox::Cancel);
    }

    void boxShowsTheMessageAndReturnsTheButton()
    {
        QFETCH(int, answer);
        TARN::Message message;
        message.icon = QMessageBox::Question;
        message.title = "Title";
        message.text = "<b>no markup</b>";
        message.detailedText = "details";
        message.buttons = QMessageBox::Ok | QMessageBox::Discard | QMessageBox::Cancel;
        message.defaultButton = QMessageBox::Discard;
        message.escapeButton = QMessageBox::Ok;

        QWidget parent;
        script().expectBox(
            {message.icon, message.title, message.text, message.buttons, message.detailedText},
            QMessageBox::StandardButton(answer), [&](QMessageBox *box) {
                QCOMPARE(box->parentWidget(), &parent);
                QCOMPARE(box->textFormat(), Qt::PlainText);
                QVERIFY(qobject_cast<QPushButton *>(box->button(QMessageBox::Discard)) ==
                        box->defaultButton());
                QVERIFY(box->button(QMessageBox::Ok) == box->escapeButton());
            });
        QCOMPARE(int(TARN::showMessage(&parent, message)), answer);
        QVERIFY(parent.findChildren<QMessageBox *>().isEmpty());
    }

    void closedBoxIsTheEscapeButton()
    {
        TARN::Message message;
        message.title = "Title";
        message.buttons = QMessageBox::Ok | QMessageBox::Cancel;
        script().expectDialog("QMessageBox", "Title", [](QDialog *box) { box->close(); });
        QCOMPARE(TARN::showMessage(nullptr, message), QMessageBox::Cancel);
    }

    void boxDiesWithItsParent()
    {
        QPointer<QWidget> parent(new QWidget);
        TARN::Message message;
        message.title = "Title";
        script().expectDialog("QMessageBox", "Title", [&](QDialog *) { delete parent; });
        QCOMPARE(TARN::showMessage(parent, message), QMessageBox::NoButton);
        QVERIFY(!parent);
    }

    void dialogIsDeletedAfterItsResult()
    {
        QPointer<QDialog> dialog(new QDialog);
        dialog->setWindowTitle("Title");
        script().expectDialog("QDialog", "Title", [](QDialog *running) { running->accept(); });
        QCOMPARE(TARN::execAndDelete(dialog), int(QDialog::Accepted));
        QVERIFY(!dialog);
    }

    void dialogDeletedWhileOpenIsRejected()
    {
        auto *dialog = new QDialog;
        dialog->setWindowTitle("Title");
        script().expectDialog("QDialog", "Title", [](QDialog *running) { delete running; });
        QCOMPARE(TARN::execAndDelete(dialog), int(QDialog::Rejected));
    }
};

TARN_TEST_MAIN(TestModalDialog)
#include "tst_modaldialog.moc"
