// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/testcase.h>

#include <view/messagedlg.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QVBoxLayout>

class TestMessageDlg : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void formHasItsObjects()
    {
        const TARN::MessageDlg dialog;
        QCOMPARE(dialog.objectName(), QStringLiteral("TARN__MessageDlg"));
        QCOMPARE(dialog.size(), QSize(400, 300));
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Dialog"));
        QCOMPARE(dialog.windowModality(), Qt::NonModal);
        QVERIFY(!dialog.isModal());

        const auto *layout = qobject_cast<QVBoxLayout *>(dialog.layout());
        QVERIFY(layout);
        QCOMPARE(layout->objectName(), QStringLiteral("verticalLayout"));
        QCOMPARE(layout->count(), 2);
        QCOMPARE(layout->itemAt(0)->widget(), dialog.findChild<QTextEdit *>("textEdit"));
        QCOMPARE(layout->itemAt(1)->widget(), dialog.findChild<QDialogButtonBox *>("buttonBox"));
    }

    void textIsReadOnlyAndNotWrapped()
    {
        const TARN::MessageDlg dialog;
        const auto *text = dialog.findChild<QTextEdit *>("textEdit");
        QVERIFY(text->isReadOnly());
        QCOMPARE(text->lineWrapMode(), QTextEdit::NoWrap);
    }

    void buttonBoxHasOkOnly()
    {
        const TARN::MessageDlg dialog;
        const auto *box = dialog.findChild<QDialogButtonBox *>("buttonBox");
        QCOMPARE(box->orientation(), Qt::Horizontal);
        QCOMPARE(box->standardButtons(), QDialogButtonBox::Ok);
    }

    void messagesAreShownOneALine()
    {
        TARN::MessageDlg dialog;
        const QStringList messages{"<b>warning</b>", "ERROR: a.v:1:2: no", QString(), "last"};
        dialog.setDetailMsg(messages);
        const auto *text = dialog.findChild<QTextEdit *>("textEdit");
        QCOMPARE(text->toPlainText(), QStringLiteral("<b>warning</b>\nERROR: a.v:1:2: no\n\nlast"));
        dialog.setDetailMsg({"other"});
        QCOMPARE(text->toPlainText(), QStringLiteral("other"));
    }

    void okAccepts()
    {
        TARN::MessageDlg dialog;
        auto *box = dialog.findChild<QDialogButtonBox *>("buttonBox");
        QTimer::singleShot(0, &dialog, [box] {
            QTest::mouseClick(box->button(QDialogButtonBox::Ok), Qt::LeftButton);
        });
        QCOMPARE(dialog.exec(), int(QDialog::Accepted));
    }

    void boxAndButtonAcceptEachForItself()
    {
        TARN::MessageDlg dialog;
        auto *box = dialog.findChild<QDialogButtonBox *>("buttonBox");
        QSignalSpy accepted(&dialog, &QDialog::accepted);
        Q_EMIT box->accepted();
        QCOMPARE(accepted.count(), 1);
        // The button reaches the dialog directly and through the box.
        box->button(QDialogButtonBox::Ok)->click();
        QCOMPARE(accepted.count(), 3);
    }

    void boxRejectsAndEscapeToo()
    {
        TARN::MessageDlg dialog;
        auto *box = dialog.findChild<QDialogButtonBox *>("buttonBox");
        QSignalSpy rejected(&dialog, &QDialog::rejected);
        Q_EMIT box->rejected();
        QCOMPARE(rejected.count(), 1);
        QTimer::singleShot(0, &dialog, [&dialog] { QTest::keyClick(&dialog, Qt::Key_Escape); });
        QCOMPARE(dialog.exec(), int(QDialog::Rejected));
    }

    void eventsOfTheTextPass()
    {
        TARN::MessageDlg dialog;
        dialog.setDetailMsg({"word"});
        dialog.show();
        auto *text = dialog.findChild<QTextEdit *>("textEdit");
        QTest::mouseDClick(text->viewport(), Qt::LeftButton, Qt::NoModifier,
                           text->cursorRect().center() + QPoint(3, 0));
        QCOMPARE(text->textCursor().selectedText(), QStringLiteral("word"));
    }
};

TARN_TEST_MAIN(TestMessageDlg)
#include "tst_messagedlg.moc"
