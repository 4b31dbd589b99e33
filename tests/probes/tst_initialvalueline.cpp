// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/windowtest.h>

#include <model/tarncore.h>
#include <probes/initialvalueline.h>
#include <probes/probeportsoptionwidget.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QLabel>
#include <QMimeData>
#include <QPointer>
#include <QRegExpValidator>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

using TARN::InitialValueLine;
using TARN::ProbePortsOptionWidget;
using TarnTest::ModalScript;

namespace {

ModalScript::Box tooWide(const QString &value, int port)
{
    return {QMessageBox::Information, QStringLiteral("Error"),
            QStringLiteral("Value '%1' for Probe Out%2 Initial Value exceeds the effective width.")
                .arg(value)
                .arg(port),
            QMessageBox::Ok, QString()};
}

/// A line of port 3 in a window with something else that can take the focus.
struct Fixture
{
    TARN::TarnCore core{0};
    ProbePortsOptionWidget page{&core, nullptr, nullptr};
    QSignalSpy modified{&page, &ProbePortsOptionWidget::modified};
    QSignalSpy edited{&page, &ProbePortsOptionWidget::edited};
    QWidget window;
    QPointer<InitialValueLine> line = new InitialValueLine(3, &page, &window);
    QLineEdit *other = new QLineEdit(&window);
    std::vector<std::unique_ptr<QLabel>> labels;

    Fixture()
    {
        auto *layout = new QVBoxLayout(&window);
        layout->addWidget(line);
        layout->addWidget(other);
    }

    void setBits(const QStringList &bits)
    {
        for (const QString &each : bits) {
            labels.push_back(std::make_unique<QLabel>(each));
            line->addBitLabel(labels.back().get());
        }
        line->updateValidator();
        line->setText("0x0");
    }

    /// Shows the window with the focus on the line, which then reads @p text.
    void focus(const QString &text)
    {
        window.show();
        QApplication::setActiveWindow(&window);
        QVERIFY(QTest::qWaitForWindowActive(&window));
        line->setFocus();
        QVERIFY(line->hasFocus());
        line->setText(text);
    }

    /// Drops @p text, offered as a move, before the character at @p position. Returns the action
    /// that the drop ends with.
    Qt::DropAction drop(const QString &text, int position) const
    {
        QPoint place(0, line->height() / 2);
        while (line->cursorPositionAt(place) < position)
            place.rx()++;
        QMimeData data;
        data.setText(text);
        QDragEnterEvent enter(place, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(line, &enter);
        QDropEvent event(place, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(line, &event);
        return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
    }

    /// One event, without those of the modifier itself.
    void press(int key, Qt::KeyboardModifiers modifiers) const
    {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QCoreApplication::sendEvent(line, &event);
    }

    QString cursorText() const
    {
        return QStringLiteral("%1 %2 \"%3\"")
            .arg(line->cursorPosition())
            .arg(line->selectionStart())
            .arg(line->selectedText());
    }

    QStringList shownBits() const
    {
        QStringList texts;
        for (const auto &label : labels)
            texts.append(label->text());
        return texts;
    }
};

} // namespace

Q_DECLARE_METATYPE(std::function<void(Fixture &)>)

class TestInitialValueLine : public TarnTest::WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void newLine()
    {
        InitialValueLine line(7, nullptr);
        QCOMPARE(line.index(), 7);
        QCOMPARE(line.displayText(), QStringLiteral("0x0"));
        QCOMPARE(line.inputMask(), QStringLiteral("NN>H;0"));
        QCOMPARE(line.getWidth(), 0);
        QCOMPARE(line.getStringValue(), QString());
        QCOMPARE(line.contextMenuPolicy(), Qt::NoContextMenu);
        QCOMPARE(line.minimumHeight(), 20);
        QCOMPARE(line.maximumHeight(), 20);
        const auto *validator = qobject_cast<const QRegExpValidator *>(line.validator());
        QVERIFY(validator);
        QCOMPARE(validator->parent(), &line);
        QCOMPARE(validator->regExp(), QRegExp("[A-F0-9]"));
        line.setIndex(2);
        QCOMPARE(line.index(), 2);
    }

    void maskFollowsTheWidth_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("mask");
        QTest::newRow("0") << 0 << "NN>H;0";
        QTest::newRow("1") << 1 << "NN>H;0";
        QTest::newRow("4") << 4 << "NN>H;0";
        QTest::newRow("5") << 5 << "NN>HH;0";
        QTest::newRow("8") << 8 << "NN>HH;0";
        QTest::newRow("9") << 9 << "NN>HHH;0";
        QTest::newRow("64") << 64 << "NN>HHHHHHHHHHHHHHHH;0";
        QTest::newRow("256") << 256 << "NN>" + QString(64, 'H') + ";0";
    }
    void maskFollowsTheWidth()
    {
        QFETCH(int, width);
        QFETCH(QString, mask);
        InitialValueLine line(0, nullptr);
        line.updateValidatorForWidth(width);
        QCOMPARE(line.inputMask(), mask);
    }

    void maskTreatsTextsInItsOwnWay_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown");
        QTest::newRow("prefix keeps its case") << "0xf0"
                                               << "0xF0";
        QTest::newRow("short is left-aligned") << "0x1"
                                               << "0x10";
        QTest::newRow("long is cut") << "0x123"
                                     << "0x12";
        QTest::newRow("empty") << ""
                               << "0000";
    }
    void maskTreatsTextsInItsOwnWay()
    {
        QFETCH(QString, text);
        QFETCH(QString, shown);
        InitialValueLine line(0, nullptr);
        line.updateValidatorForWidth(8);
        line.setText(text);
        QCOMPARE(line.displayText(), shown);
        QVERIFY(!line.hasAcceptableInput());
    }

    void textLeavesBlanksOut()
    {
        InitialValueLine line(0, nullptr);
        line.updateValidatorForWidth(8);
        line.setText("0x0A");
        QCOMPARE(line.text(), QStringLiteral("xA"));
        QCOMPARE(line.displayText(), QStringLiteral("0x0A"));
    }

    void newWidthKeepsTheText()
    {
        InitialValueLine line(0, nullptr);
        line.updateValidatorForWidth(8);
        line.setText("0xA5");
        line.updateValidatorForWidth(12);
        QCOMPARE(line.displayText(), QStringLiteral("0xA50"));
        line.updateValidatorForWidth(4);
        QCOMPARE(line.displayText(), QStringLiteral("0xA"));
    }

    void dealsTheValueOut_data()
    {
        QTest::addColumn<QStringList>("before");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("after");
        QTest::addColumn<QString>("shown");
        QTest::newRow("padded") << QStringList{"1111", "1", "111"} << "0x01"
                                << QStringList{"0000", "0", "001"} << "0x01";
        QTest::newRow("left first") << QStringList{"0000", "0", "000"} << "0xA5"
                                    << QStringList{"1010", "0", "101"} << "0xA5";
        QTest::newRow("zero") << QStringList{"11", "11"} << "0x0" << QStringList{"00", "00"}
                              << "0x0";
        QTest::newRow("partial digit")
            << QStringList{"00", "000"} << "0x1F" << QStringList{"11", "111"} << "0x1F";
        QTest::newRow("lower case")
            << QStringList{"00000000"} << "0xaf" << QStringList{"10101111"} << "0xAF";
        // Without its prefix the text is not a number.
        QTest::newRow("broken prefix")
            << QStringList{"11111111"} << "Zx12" << QStringList{"00000000"} << "0x00";
    }
    void dealsTheValueOut()
    {
        QFETCH(QStringList, before);
        QFETCH(QString, typed);
        QFETCH(QStringList, after);
        QFETCH(QString, shown);
        Fixture f;
        f.setBits(before);
        f.line->setText(typed);
        f.line->onTextChange();
        QCOMPARE(f.shownBits(), after);
        QCOMPARE(f.line->displayText(), shown);
        QCOMPARE(f.line->getStringValue(), after.join(QString()));
        QCOMPARE(f.modified.count(), 0);
    }

    void rejectsWhatIsTooWide_data()
    {
        QTest::addColumn<QString>("digits");
        QTest::newRow("one bit") << "20";
        QTest::newRow("all bits") << "FF";
    }
    void rejectsWhatIsTooWide()
    {
        QFETCH(QString, digits);
        Fixture f;
        f.setBits({"10", "001"});
        f.line->setText("0x" + digits);
        script().expectBox(tooWide(digits, 3), QMessageBox::Ok, [&](QMessageBox *) {
            QCOMPARE(f.line->displayText(), "0x" + digits);
            QCOMPARE(f.modified.count(), 0);
        });
        f.line->onTextChange();
        QCOMPARE(f.shownBits(), QStringList({"10", "001"}));
        QCOMPARE(f.line->displayText(), QStringLiteral("0x11"));
        QCOMPARE(f.modified.count(), 1);
        // What fits is taken as before.
        f.line->setText("0x1E");
        f.line->onTextChange();
        QCOMPARE(f.shownBits(), QStringList({"11", "110"}));
    }

    void withoutBitsOnlyZeroIsAccepted()
    {
        Fixture f;
        f.line->onTextChange();
        // Nothing to convert: the mask fills the line with a blank.
        QCOMPARE(f.line->displayText(), QStringLiteral("0x0"));
        f.line->setIndex(12);
        f.line->setText("0x8");
        script().expectBox(tooWide("8", 12));
        f.line->onTextChange();
        QCOMPARE(f.line->displayText(), QStringLiteral("0x0"));
    }

    void focusOutApplies()
    {
        Fixture f;
        f.setBits({"0000", "0000"});
        f.focus("0x3C");
        f.other->setFocus();
        QCOMPARE(f.shownBits(), QStringList({"0011", "1100"}));
    }

    void eventAndFilterApplyEachByItself()
    {
        Fixture f;
        f.setBits({"0000"});
        QFocusEvent out(QEvent::FocusOut);
        QFocusEvent in(QEvent::FocusIn);

        f.line->setText("0x3");
        QVERIFY(!f.line->eventFilter(f.other, &out));
        QVERIFY(!f.line->eventFilter(f.line, &in));
        QCOMPARE(f.shownBits(), QStringList("0000"));
        QVERIFY(!f.line->eventFilter(f.line, &out));
        QCOMPARE(f.shownBits(), QStringList("0011"));

        f.line->setText("0x6");
        f.line->event(&in);
        QCOMPARE(f.shownBits(), QStringList("0011"));
        f.line->event(&out);
        QCOMPARE(f.shownBits(), QStringList("0110"));
    }

    void lossOfFocusAppliesTwice()
    {
        Fixture f;
        f.setBits({"00000000"});
        f.focus("Zx12"); // The first time makes a zero of it, which changes the text.
        const auto connection = std::make_shared<QMetaObject::Connection>();
        *connection = connect(f.line, &QLineEdit::textChanged, this, [&f, connection] {
            disconnect(*connection);
            f.line->setText("0x5A");
        });
        f.other->setFocus();
        QCOMPARE(f.shownBits(), QStringList("01011010"));
    }

    void finishedEditingApplies()
    {
        Fixture f;
        f.setBits({"0000"});
        f.line->setText("0x9");
        Q_EMIT f.line->editingFinished();
        QCOMPARE(f.shownBits(), QStringList("1001"));
    }

    void shortcutsOfTheWindowGoBeforeTyping()
    {
        Fixture f;
        QKeyEvent key(QEvent::ShortcutOverride, Qt::Key_A, Qt::NoModifier, "a");
        key.ignore();
        QCoreApplication::sendEvent(f.line, &key);
        QVERIFY(!key.isAccepted());
    }

    void editingNeverFinishesByReturn()
    {
        Fixture f;
        f.setBits({"0000"});
        QSignalSpy finished(f.line, &QLineEdit::editingFinished);
        f.focus("0x7");
        QTest::keyClick(f.line, Qt::Key_Return);
        QCOMPARE(finished.count(), 0);
        QCOMPARE(f.shownBits(), QStringList({"0000"}));
    }

    void oneBoxForOneRejection()
    {
        Fixture f;
        f.setBits({"00001"});
        f.focus("0xFF");
        script().expectBox(tooWide("FF", 3));
        f.other->setFocus();
        QCOMPARE(f.shownBits(), QStringList({"00001"}));
        QCOMPARE(f.modified.count(), 1);
    }

    void hidingShowsNoBox_data()
    {
        QTest::addColumn<bool>("window");
        QTest::newRow("window") << true;
        QTest::newRow("line") << false;
    }
    void hidingShowsNoBox()
    {
        QFETCH(bool, window);
        Fixture f;
        f.setBits({"00001"});
        f.focus("0xFF");
        QWidget *hidden = window ? &f.window : f.line;
        hidden->hide();
        QVERIFY(!f.line->hasFocus());
        QCOMPARE(f.line->displayText(), QStringLiteral("0xFF"));
        // The next time it shows, the line works as ever.
        hidden->show();
        f.focus("0xFF");
        script().expectBox(tooWide("FF", 3));
        f.other->setFocus();
    }

    void minimisingTheWindowDoesNotMakeTheLineDeaf()
    {
        Fixture f;
        f.setBits({"0000"});
        f.focus("0x6");
        QHideEvent minimised;
        QSpontaneKeyEvent::setSpontaneous(&minimised);
        qApp->notify(f.line, &minimised);
        f.other->setFocus();
        QCOMPARE(f.shownBits(), QStringList("0110"));
    }

    void inertLineKeepsItsText()
    {
        Fixture f;
        f.setBits({"0001"});
        f.focus("0xF");
        f.line->setInert(true);
        f.line->setEnabled(false);
        QCOMPARE(f.line->displayText(), QStringLiteral("0xF"));
        QCOMPARE(f.shownBits(), QStringList({"0001"}));
        f.line->setInert(false);
        f.line->onTextChange();
        QCOMPARE(f.shownBits(), QStringList({"1111"}));
    }

    void deletingTheFocusedLineShowsNoBox()
    {
        Fixture f;
        f.setBits({"00001"});
        f.focus("0xFF");
        delete f.line;
    }

    void lineMayGoWhileItsBoxIsOpen_data()
    {
        using Trigger = std::function<void(Fixture &)>;
        QTest::addColumn<Trigger>("trigger");
        QTest::newRow("focus") << Trigger([](Fixture &f) { f.other->setFocus(); });
        QTest::newRow("slot") << Trigger([](Fixture &f) { f.line->onTextChange(); });
        QTest::newRow("event") << Trigger([](Fixture &f) {
            QFocusEvent out(QEvent::FocusOut);
            QVERIFY(f.line->event(&out));
        });
    }
    void lineMayGoWhileItsBoxIsOpen()
    {
        QFETCH(std::function<void(Fixture &)>, trigger);
        Fixture f;
        f.setBits({"00001"});
        f.focus("0xFF");
        script().expectBox(tooWide("FF", 3), QMessageBox::Ok,
                           [&f](QMessageBox *) { delete f.line; });
        trigger(f);
        QVERIFY(!f.line);
        QCOMPARE(f.modified.count(), 0);
    }

    void pageMayGoFirst()
    {
        TARN::TarnCore core(0);
        auto page = std::make_unique<ProbePortsOptionWidget>(&core, nullptr, nullptr);
        InitialValueLine line(0, page.get());
        page.reset();
        QTest::keyClick(&line, Qt::Key_Right);
        line.setText("0xF");
        script().expectBox(tooWide("F", 0));
        line.onTextChange();
    }

    void keysRespectThePrefix_data()
    {
        QTest::addColumn<int>("cursor");
        QTest::addColumn<int>("length"); // Of the selection, to the left when negative.
        QTest::addColumn<int>("key");
        QTest::addColumn<bool>("passes");
        QTest::addColumn<QString>("shown");
        const int backspace = Qt::Key_Backspace;
        const int left = Qt::Key_Left;
        const int right = Qt::Key_Right;
        const int digit = Qt::Key_7;
        const int remove = Qt::Key_Delete;
        const int end = Qt::Key_End;
        QTest::newRow("0 digit") << 0 << 0 << digit << false << "0xAB";
        QTest::newRow("0 left") << 0 << 0 << left << true << "0xAB";
        QTest::newRow("0 right") << 0 << 0 << right << true << "0xAB";
        QTest::newRow("0 end") << 0 << 0 << end << false << "0xAB";
        QTest::newRow("1 digit") << 1 << 0 << digit << false << "0xAB";
        QTest::newRow("1 delete") << 1 << 0 << remove << false << "0xAB";
        QTest::newRow("1 backspace") << 1 << 0 << backspace << false << "0xAB";
        QTest::newRow("1 left") << 1 << 0 << left << true << "0xAB";
        QTest::newRow("1 right") << 1 << 0 << right << true << "0xAB";
        QTest::newRow("2 digit") << 2 << 0 << digit << true << "0x7B";
        QTest::newRow("2 delete") << 2 << 0 << remove << true << "0x0B";
        QTest::newRow("2 backspace") << 2 << 0 << backspace << false << "0xAB";
        QTest::newRow("3 digit") << 3 << 0 << digit << true << "0xA7";
        QTest::newRow("3 backspace") << 3 << 0 << backspace << true << "0x0B";
        QTest::newRow("from 0 digit") << 0 << 3 << digit << false << "0xAB";
        QTest::newRow("from 0 delete") << 0 << 4 << remove << false << "0xAB";
        QTest::newRow("from 0 left") << 0 << 3 << left << true << "0xAB";
        QTest::newRow("from 1 backspace") << 1 << 2 << backspace << false << "0xAB";
        QTest::newRow("from 1 right") << 1 << 2 << right << true << "0xAB";
        QTest::newRow("from 2 backspace") << 2 << 2 << backspace << true << "0x00";
        QTest::newRow("from 2 digit") << 2 << 1 << digit << true << "0x7B";
        QTest::newRow("from 3 backspace") << 3 << 1 << backspace << true << "0xA0";
        QTest::newRow("back to 1 digit") << 3 << -2 << digit << false << "0xAB";
        QTest::newRow("back to 2 backspace") << 4 << -2 << backspace << true << "0x00";
    }
    void keysRespectThePrefix()
    {
        QFETCH(int, cursor);
        QFETCH(int, length);
        QFETCH(int, key);
        QFETCH(bool, passes);
        QFETCH(QString, shown);
        Fixture f;
        f.setBits({"00000000"});
        f.line->setText("0xAB");
        if (length != 0)
            f.line->setSelection(cursor, length);
        else
            f.line->setCursorPosition(cursor);
        const int before = f.line->cursorPosition();
        QTest::keyClick(f.line, Qt::Key(key));
        QCOMPARE(f.line->displayText(), shown);
        QCOMPARE(f.modified.count(), int(passes));
        if (!passes)
            QCOMPARE(f.line->cursorPosition(), before);
    }

    void keysThatReachIntoThePrefixAreUndone_data()
    {
        QTest::addColumn<int>("cursor");
        QTest::newRow("behind the first digit") << 3;
        QTest::newRow("at the end") << 4;
    }
    void keysThatReachIntoThePrefixAreUndone()
    {
        QFETCH(int, cursor);
        Fixture f;
        f.setBits({"00000000"});
        f.line->setText("0xAB");
        f.line->setCursorPosition(cursor);
        f.press(Qt::Key_Backspace, Qt::ControlModifier); // Deletes the word.
        QCOMPARE(f.line->displayText(), QStringLiteral("0xAB"));
        QCOMPARE(f.line->cursorPosition(), cursor);
        // The key was passed on all the same.
        QCOMPARE(f.modified.count(), 1);
    }

    void editingKeysMarkOnce_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("shown");
        QTest::newRow("paste") << int(Qt::Key_V) << "0x56";
        QTest::newRow("cut") << int(Qt::Key_X) << "0x00";
        QTest::newRow("undo") << int(Qt::Key_Z) << "0x00";
        QTest::newRow("copy") << int(Qt::Key_C) << "0xAB";
    }
    void editingKeysMarkOnce()
    {
        QFETCH(int, key);
        QFETCH(QString, shown);
        Fixture f;
        f.setBits({"00000000"});
        QApplication::clipboard()->setText("56");
        f.line->setCursorPosition(2);
        QTest::keyClicks(f.line, "ab");
        f.line->setSelection(2, 2);
        f.modified.clear();
        f.press(key, Qt::ControlModifier);
        QCOMPARE(f.line->displayText(), shown);
        QCOMPARE(f.modified.count(), 1);
    }

    void dropMarksAndPutsTheFocusOnTheLine()
    {
        Fixture f;
        f.setBits({"00000000"});
        f.focus("0x00");
        f.other->setFocus();
        QCOMPARE(f.drop("a5", 2), Qt::MoveAction);
        QCOMPARE(f.line->displayText(), QStringLiteral("0xA5"));
        QCOMPARE(f.modified.count(), 1);
        QTRY_VERIFY(f.line->hasFocus());
        f.other->setFocus();
        QCOMPARE(f.shownBits(), QStringList("10100101"));
        QCOMPARE(f.modified.count(), 1);
    }

    void dropThatTakesNothingIsRefused_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("position");
        QTest::newRow("into the prefix") << "77" << 1;
        QTest::newRow("before the prefix") << "77" << 0;
        QTest::newRow("no digits") << "zz" << 2;
        QTest::newRow("the digit that is there") << "A" << 2;
    }
    void dropThatTakesNothingIsRefused()
    {
        QFETCH(QString, text);
        QFETCH(int, position);
        Fixture f;
        f.setBits({"00000000"});
        f.focus("0xAB");
        // The source of a move would remove its text.
        QCOMPARE(f.drop(text, position), Qt::IgnoreAction);
        QCOMPARE(f.line->displayText(), QStringLiteral("0xAB"));
        QCOMPARE(f.modified.count(), 0);
    }

    void inputMethodMarks()
    {
        Fixture f;
        f.setBits({"00000000"});
        f.focus("0x00");
        f.line->setCursorPosition(2);
        QInputMethodEvent composing("b", {});
        QCoreApplication::sendEvent(f.line, &composing);
        QCOMPARE(f.modified.count(), 0);
        QInputMethodEvent committing;
        committing.setCommitString("b7");
        QCoreApplication::sendEvent(f.line, &committing);
        QCOMPARE(f.line->displayText(), QStringLiteral("0xB7"));
        QCOMPARE(f.modified.count(), 1);
    }

    void keyThatEndsACompositionMarksOnce()
    {
        Fixture f;
        f.setBits({"00000000"});
        f.focus("0x00");
        f.line->setCursorPosition(2);
        // An input method takes over what it composed when a key moves the cursor.
        bool composing = true;
        connect(f.line, &QLineEdit::cursorPositionChanged, this, [&] {
            if (!std::exchange(composing, false))
                return;
            QInputMethodEvent committing;
            committing.setCommitString("b");
            QCoreApplication::sendEvent(f.line, &committing);
        });
        f.press(Qt::Key_Right, Qt::NoModifier);
        QCOMPARE(f.line->displayText(), QStringLiteral("0x0B"));
        QCOMPARE(f.modified.count(), 1);
    }

    void inputMethodLeavesThePrefix_data()
    {
        QTest::addColumn<int>("cursor");
        QTest::addColumn<int>("length"); // Of the selection.
        QTest::addColumn<int>("from");   // Of what is replaced, relative to the cursor.
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("composed");
        QTest::addColumn<QString>("committed");
        QTest::newRow("commit at 0") << 0 << 0 << 0 << 0 << ""
                                     << "7";
        QTest::newRow("commit at 1") << 1 << 0 << 0 << 0 << ""
                                     << "7";
        QTest::newRow("commit over a selection") << 4 << -3 << 0 << 0 << ""
                                                 << "7";
        QTest::newRow("composition over a selection") << 0 << 4 << 0 << 0 << "7"
                                                      << "";
        QTest::newRow("replacement") << 3 << 0 << -2 << 2 << ""
                                     << "7";
    }
    void inputMethodLeavesThePrefix()
    {
        QFETCH(int, cursor);
        QFETCH(int, length);
        QFETCH(int, from);
        QFETCH(int, count);
        QFETCH(QString, composed);
        QFETCH(QString, committed);
        Fixture f;
        f.setBits({"00000000"});
        f.focus("0xAB");
        f.line->setSelection(cursor, length);
        const QString before = f.cursorText();
        QInputMethodEvent event(composed, {});
        event.setCommitString(committed, from, count);
        QCoreApplication::sendEvent(f.line, &event);
        QCOMPARE(f.line->displayText(), QStringLiteral("0xAB"));
        QCOMPARE(f.cursorText(), before);
        QCOMPARE(f.modified.count(), 0);
    }

    void settingTheTextMarksNothing()
    {
        Fixture f;
        f.setBits({"00000000"});
        f.line->setText("0x12");
        f.line->updateValidatorForWidth(4);
        f.line->onTextChange();
        QCOMPARE(f.modified.count(), 0);
    }

    void noTextIsDraggedOut()
    {
        InitialValueLine line(0, nullptr);
        QVERIFY(!line.dragEnabled());
    }

    void pageIsToldBeforeTheKeyActs()
    {
        Fixture f;
        f.setBits({"0000"});
        f.line->setCursorPosition(2);
        QString shown;
        connect(&f.page, &ProbePortsOptionWidget::modified, this,
                [&] { shown = f.line->displayText(); });
        QTest::keyClick(f.line, Qt::Key_7);
        QCOMPARE(shown, QStringLiteral("0x0"));
        QCOMPARE(f.line->displayText(), QStringLiteral("0x7"));
    }

    void arrowsMoveTheCursorInThePrefix()
    {
        Fixture f;
        f.line->setCursorPosition(1);
        QTest::keyClick(f.line, Qt::Key_Left);
        QCOMPARE(f.line->cursorPosition(), 0);
        QTest::keyClick(f.line, Qt::Key_Right);
        QTest::keyClick(f.line, Qt::Key_Right);
        QCOMPARE(f.line->cursorPosition(), 2);
    }

    void onlyHexadecimalDigitsAreTyped()
    {
        Fixture f;
        f.setBits({"00000000"});
        f.line->setText("0x00");
        f.line->setCursorPosition(2);
        QTest::keyClicks(f.line, "g");
        QCOMPARE(f.line->displayText(), QStringLiteral("0x00"));
        QTest::keyClicks(f.line, "bc");
        QCOMPARE(f.line->displayText(), QStringLiteral("0xBC"));
    }

    void editIsCompleteWhenAnotherValueIsApplied()
    {
        Fixture f;
        f.setBits({"0000", "0000"});
        f.focus("0x00");
        f.line->setCursorPosition(2);
        QTest::keyClicks(f.line, "7f");
        QCOMPARE(f.edited.count(), 0);
        f.other->setFocus();
        QCOMPARE(f.edited.count(), 1);
        QCOMPARE(f.modified.count(), 2);
        f.line->setFocus();
        f.line->setCursorPosition(2);
        QTest::keyClicks(f.line, "0f");
        QTest::keyClick(f.line, Qt::Key_Home);
        f.line->setText("0x7F"); // As before.
        f.other->setFocus();
        QCOMPARE(f.edited.count(), 1);
    }

    void rejectedValueIsNoEdit()
    {
        Fixture f;
        f.setBits({"00000"});
        f.line->keepText();
        f.focus("0xFF");
        script().expectBox(tooWide("FF", 3));
        f.other->setFocus();
        QCOMPARE(f.edited.count(), 0);
        QCOMPARE(f.modified.count(), 1);
    }

    void hiddenOrInertLineCompletesNoEdit_data()
    {
        QTest::addColumn<std::function<void(Fixture &)>>("leave");
        const auto row = [](const char *name, const std::function<void(Fixture &)> &leave) {
            QTest::newRow(name) << leave;
        };
        row("window hidden", [](Fixture &f) { f.window.hide(); });
        row("window closed", [](Fixture &f) { f.window.close(); });
        row("line hidden", [](Fixture &f) { f.line->hide(); });
        row("inert", [](Fixture &f) {
            f.line->setInert(true);
            f.other->setFocus();
        });
        row("deleted", [](Fixture &f) {
            f.line->setInert(true);
            delete f.line;
        });
    }
    void hiddenOrInertLineCompletesNoEdit()
    {
        QFETCH(std::function<void(Fixture &)>, leave);
        Fixture f;
        f.setBits({"00000000"});
        f.focus("0x12");
        leave(f);
        QCOMPARE(f.edited.count(), 0);
        QCOMPARE(f.shownBits(), QStringList({"00000000"}));
    }

    void keysOfUndoAreForTypingFirst()
    {
        Fixture f;
        f.setBits({"00000000"});
        f.focus("0x00");
        int undone = 0;
        QAction undo;
        undo.setShortcut(QKeySequence::Undo);
        connect(&undo, &QAction::triggered, this, [&undone] { ++undone; });
        f.window.addAction(&undo);
        f.line->setCursorPosition(2);
        QTest::keyClicks(f.line, "7");
        QCOMPARE(f.line->displayText(), QStringLiteral("0x70"));
        QTest::keyClick(f.line, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(f.line->displayText(), QStringLiteral("0x00"));
        QCOMPARE(undone, 0);
        QTest::keyClick(f.line, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(undone, 1);
        QTest::keyClicks(f.line, "7");
        f.other->setFocus(); // Applied: from now on the value is one step of the view.
        f.line->setFocus();
        QTest::keyClick(f.line, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(undone, 2);
        QCOMPARE(f.line->displayText(), QStringLiteral("0x70"));
    }

    void windowUndoesWhereTheLineIgnoresKeys_data()
    {
        QTest::addColumn<int>("cursor");
        QTest::addColumn<int>("selected");
        QTest::addColumn<bool>("ignores");
        QTest::newRow("before the prefix") << 0 << 0 << true;
        QTest::newRow("in the prefix") << 1 << 0 << true;
        QTest::newRow("all selected") << 0 << 4 << true;
        QTest::newRow("behind the prefix") << 2 << 0 << false;
        QTest::newRow("value selected") << 2 << 2 << false;
    }
    void windowUndoesWhereTheLineIgnoresKeys()
    {
        QFETCH(int, cursor);
        QFETCH(int, selected);
        QFETCH(bool, ignores);
        Fixture f;
        f.setBits({"00000000"});
        f.focus("0x00");
        QAction undo;
        undo.setShortcut(QKeySequence::Undo);
        const QSignalSpy undone(&undo, &QAction::triggered);
        f.window.addAction(&undo);
        f.line->setCursorPosition(2);
        QTest::keyClicks(f.line, "7");
        f.line->setSelection(cursor, selected);
        QTest::keyClick(f.line, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(undone.count(), ignores ? 1 : 0);
        QCOMPARE(f.line->displayText(), QString(ignores ? "0x70" : "0x00"));
    }

    void keysOfRedoAreForTypingFirst()
    {
        Fixture f;
        f.setBits({"00000000"});
        f.focus("0x00");
        int redone = 0;
        QAction redo;
        redo.setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
        connect(&redo, &QAction::triggered, this, [&redone] { ++redone; });
        f.window.addAction(&redo);
        const auto press = [&f] {
            QTest::keyClick(f.line, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        };
        press();
        QCOMPARE(redone, 1);
        f.line->setCursorPosition(2);
        QTest::keyClicks(f.line, "7");
        QTest::keyClick(f.line, Qt::Key_Z, Qt::ControlModifier);
        press();
        QCOMPARE(f.line->displayText(), QStringLiteral("0x70"));
        QCOMPARE(redone, 1);
    }
};

TARN_TEST_MAIN(TestInitialValueLine)
#include "tst_initialvalueline.moc"
