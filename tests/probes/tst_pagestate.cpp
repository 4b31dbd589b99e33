// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "signalsamples.h"

#include <support/setting.h>
#include <support/windowtest.h>

#include <model/configsnapshot.h>
#include <probes/initialvalueline.h>
#include <probes/portmatch.h>
#include <probes/probeportsoptionwidget.h>
#include <probes/userclockline.h>
#include <select/probedialog.h>

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>

#include <memory>

using namespace TARN;
using TarnTest::bus;
using TarnTest::net;

namespace {

using Signals = QList<SignalItem>;
using Content = std::shared_ptr<const CoreSnapshot>;
using Port = std::shared_ptr<const PortSnapshot>;

Port port(int index, const Signals &items, const QString &value = QString())
{
    return std::make_shared<const PortSnapshot>(PortSnapshot{index, items, value});
}

/// A core with these ports.
CoreSnapshot contentOf(const QList<Signals> &ins, const QList<Signals> &outs,
                       const QStringList &values = {})
{
    CoreSnapshot content;
    for (int i = 0; i < ins.size(); ++i)
        content.probeIns.append(port(i, ins.at(i)));
    for (int i = 0; i < outs.size(); ++i)
        content.probeOuts.append(port(i, outs.at(i), values.value(i)));
    return content;
}

/// A page with its core.
struct Page
{
    std::unique_ptr<TarnCore> core;
    ProbePortsOptionWidget widget;
    QSignalSpy modified{&widget, &ProbePortsOptionWidget::modified};
    QSignalSpy edited{&widget, &ProbePortsOptionWidget::edited};

    explicit Page(const CoreSnapshot &content)
        : core(newCore(0, content))
        , widget(core.get(), nullptr, nullptr)
    {
    }

    template <typename Widget>
    Widget *find(const char *name) const
    {
        return widget.findChild<Widget *>(QLatin1String(name));
    }
    QTreeWidget *in() const { return find<QTreeWidget>("treeProbeIn"); }
    QTreeWidget *out() const { return find<QTreeWidget>("treeProbeOut"); }
    QTreeWidget *values() const { return find<QTreeWidget>("treeValue"); }
    UserClockLine *clock() const { return find<UserClockLine>("lineEditUserClock"); }
    InitialValueLine *line(int i) const
    {
        return qobject_cast<InitialValueLine *>(values()->itemWidget(values()->topLevelItem(i), 0));
    }
    void apply(int i, const QString &value) const
    {
        line(i)->setText(value);
        line(i)->onTextChange();
    }
    /// Only the clock line, which tells typing from the rest by itself, needs real keys.
    void typeClock(const QString &text) const { QTest::keyClicks(clock(), text); }
    Content shown(Typing typing, const Content &former = {}) const
    {
        return widget.shown(typing, former);
    }
    QString value(int i, Typing typing = Typing::LeftOut) const
    {
        return shown(typing)->probeOuts.at(i)->initialValue;
    }
    void show()
    {
        widget.resize(900, 500);
        widget.show();
        QApplication::setActiveWindow(&widget);
        QVERIFY(QTest::qWaitForWindowActive(&widget));
    }
};

QString rowText(const QTreeWidgetItem *row)
{
    const auto item = row->data(0, Qt::UserRole).value<SignalItem>();
    return QStringLiteral("%1 type %2 flags %3 tip '%4' color %5 holds %6+%7")
        .arg(row->text(0))
        .arg(row->type())
        .arg(int(row->flags()))
        .arg(row->toolTip(0), row->foreground(0).color().name(), item.name)
        .arg(item.members.size());
}

QString widgetText(const QWidget *widget)
{
    if (const auto *line = qobject_cast<const InitialValueLine *>(widget)) {
        return QStringLiteral(" line %1 '%2' mask %3 width %4 bits %5 %6 %7 %8")
            .arg(line->index())
            .arg(line->displayText(), line->inputMask())
            .arg(line->getWidth())
            .arg(line->getStringValue())
            .arg(line->isEnabled())
            .arg(line->value(Typing::LeftOut, QStringLiteral("stored")),
                 line->value(Typing::Included, QStringLiteral("stored")));
    }
    if (const auto *label = qobject_cast<const QLabel *>(widget))
        return QStringLiteral(" label %1 tip '%2'").arg(label->text(), label->toolTip());
    return QString();
}

/// The lines in the order of the Tab key.
QString tabOrder(QWidget *first)
{
    QStringList lines;
    for (QWidget *next = first->nextInFocusChain(); next != first;
         next = next->nextInFocusChain()) {
        if (const auto *line = qobject_cast<InitialValueLine *>(next))
            lines.append(QString::number(line->index()));
        else if (next->objectName() == QLatin1String("btnProbeOutAdd"))
            lines.append(QStringLiteral("add"));
    }
    return QStringLiteral("tab %1\n").arg(lines.join(QLatin1Char(' ')));
}

/// All that a page shows, apart from expansion, selection and scrolling.
QString pageText(const Page &page)
{
    QString text;
    for (QTreeWidget *tree : {page.in(), page.out(), page.values()}) {
        text += tree->objectName() + QLatin1Char('\n');
        for (QTreeWidgetItemIterator row(tree); *row; ++row) {
            for (QTreeWidgetItem *above = (*row)->parent(); above; above = above->parent())
                text += QLatin1String("    ");
            text += rowText(*row) + widgetText(tree->itemWidget(*row, 0)) + QLatin1Char('\n');
        }
    }
    text += tabOrder(page.values());
    const UserClockLine *clock = page.clock();
    text += QStringLiteral("clock '%1' '%2' %3 %4 %5\n")
                .arg(clock->text(), clock->text(Typing::LeftOut))
                .arg(clock->isEnabled())
                .arg(page.find<QPushButton>("btnUserClock")->isEnabled())
                .arg(page.find<QCheckBox>("checkUserClock")->isChecked());
    return text;
}

/// The first line in which the texts differ.
QString difference(const QString &left, const QString &right)
{
    const QStringList a = left.split(QLatin1Char('\n'));
    const QStringList b = right.split(QLatin1Char('\n'));
    for (int i = 0; i < qMax(a.size(), b.size()); ++i) {
        if (a.value(i) != b.value(i))
            return QStringLiteral("\n  %1\n  %2").arg(a.value(i), b.value(i));
    }
    return QString();
}

/// Rows and widgets of the Probe Out ports lie side by side.
QString misplacedRow(const Page &page)
{
    QTreeWidgetItemIterator value(page.values());
    for (QTreeWidgetItemIterator row(page.out()); *row; ++row, ++value) {
        const QTreeWidgetItem *port = (*row)->parent();
        if (port && (port->isExpanded() != (*value)->parent()->isExpanded()))
            return QStringLiteral("%1: only one is expanded").arg(port->text(0));
        if (port && !port->isExpanded())
            continue;
        const QRect place = page.values()->visualItemRect(*value);
        const QWidget *widget = page.values()->itemWidget(*value, 0);
        if (place.top() != page.out()->visualItemRect(*row).top() || place.height() != 20)
            return QStringLiteral("%1: not aligned").arg((*row)->text(0));
        if (page.values()->viewport()->rect().intersects(place) &&
            (!widget->isVisible() || widget->geometry() != place))
            return QStringLiteral("%1: widget not in its row").arg((*row)->text(0));
    }
    return QString();
}

/// Contents, and edits of pages, by chance.
class Chance
{
public:
    explicit Chance(quint32 seed)
        : m_random(seed)
    {
    }

    int below(int bound) { return int(m_random.bounded(quint32(bound))); }
    bool once(int in) { return below(in) == 0; }

    CoreSnapshot content()
    {
        CoreSnapshot content;
        content.module = QStringLiteral("top");
        for (int i = below(5); i > 0; --i)
            content.probeIns.append(port(0, items()));
        for (int i = below(5); i > 0; --i)
            content.probeOuts.append(port(0, items(), value()));
        clock(&content);
        number(&content);
        return content;
    }

    /// @p content after a few changes.
    CoreSnapshot changed(CoreSnapshot content)
    {
        for (int i = below(4); i > 0; --i) {
            const bool out = once(2);
            auto &ports = out ? content.probeOuts : content.probeIns;
            const int place = below(ports.size() + 1);
            switch (below(4)) {
            case 0:
                ports.insert(place, port(0, items(), out ? value() : QString()));
                break;
            case 1:
                if (place < ports.size())
                    ports.remove(place);
                break;
            case 2:
                if (place < ports.size())
                    ports[place] = port(0, items(), ports.at(place)->initialValue);
                break;
            default:
                if (out && place < ports.size())
                    ports[place] = port(0, ports.at(place)->signals, value());
            }
        }
        if (once(4))
            clock(&content);
        number(&content);
        return content;
    }

    void edit(Page *page)
    {
        const int ports = page->core->probeOuts.size();
        const int any = ports ? below(ports) : 0;
        switch (below(9)) {
        case 0:
            page->typeClock(QStringLiteral("c"));
            break;
        case 1:
            page->clock()->setText(QStringLiteral("top/clk%1").arg(below(3)));
            break;
        case 2:
            if (ports)
                page->line(any)->setText(value()); // Typed, not applied.
            break;
        case 3:
            if (ports && page->line(any)->getWidth() > 0)
                page->apply(any, QString::number(below(2)).prepend(QLatin1String("0x")));
            break;
        case 4:
            page->widget.save();
            break;
        case 5:
            page->core->probeOuts.size() < 6 ? page->widget.onAddProbeOut()
                                             : page->widget.onAddProbeIn();
            break;
        case 6:
            page->widget.keepTyping();
            break;
        case 7:
            if (ports && page->core->probeOuts.at(any)->signals.size() < 9) {
                page->core->probeOuts.at(any)->signals += items();
                page->widget.updateProbeOutTree();
            }
            break;
        default:
            // Only the rows of signals go.
            if (QTreeWidgetItem *first = page->in()->topLevelItem(0))
                qDeleteAll(first->takeChildren());
        }
    }

private:
    Signals items()
    {
        Signals items;
        for (int i = below(4); i > 0; --i) {
            const QString name = QStringLiteral("top/s%1").arg(below(6));
            items.append(once(3) ? bus(name, 2 + below(6)) : net(name));
            items.last().enabled = !once(8);
            items.last().usable = !once(8);
        }
        return items;
    }
    QString value()
    {
        static const char *const values[] = {"",     "0x",   "0x0",   "0x1", "0xF",   "0x5A",
                                             "0xff", "0xzz", "0x123", "FF",  "0xABCD"};
        return QLatin1String(values[below(int(std::size(values)))]);
    }
    void clock(CoreSnapshot *content)
    {
        content->syncUserClock = once(2);
        content->userClock = once(2) ? QString() : QStringLiteral("top/clk%1").arg(below(3));
    }
    static void number(CoreSnapshot *content)
    {
        for (auto *ports : {&content->probeIns, &content->probeOuts}) {
            for (int i = 0; i < ports->size(); ++i) {
                const PortSnapshot &former = *ports->at(i);
                if (former.index != i)
                    (*ports)[i] = port(i, former.signals, former.initialValue);
            }
        }
    }

    QRandomGenerator m_random;
};

} // namespace

/// The state of the ports page as a value: reading it and restoring it. TARN_RESTORE_SEED and
/// TARN_RESTORE_COUNT choose other states by chance, and more of them.
class TestPageState : public TarnTest::WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void portsAreMatched_data();
    void portsAreMatched();

    void showsTheCore();
    void sharesWhatIsEqual();
    void valueNobodyTouchedIsTheStoredOne_data();
    void valueNobodyTouchedIsTheStoredOne();
    void newWidthCountsAsTouched();
    void typedTextCountsWhenAsked();
    void savedTextIsApplied();
    void keptTypingIsApplied();
    void keptTypingIsNoLongerTheStoredValue();
    void rejectedTextIsTakenBack();

    void restoredPageIsLikeANewOne();
    void rowsThatStayAreLeftAlone();
    void valueAloneTouchesNoRow();
    void restoredPortKeepsItsExpansion();
    void typedTextGivesWayToTheTarget();
    void restoredLineKeepsTheFocus();
    void removedLineAppliesNothing();
    void dialogsOfPortsThatGoAreClosed();
    void dialogOfAPortThatMovesWritesToIt();
    void restoresAfterTheCoreWasChangedByOthers();
};

void TestPageState::portsAreMatched_data()
{
    QTest::addColumn<QString>("former");
    QTest::addColumn<QString>("now");
    QTest::addColumn<QString>("sources");
    QTest::newRow("nothing") << ""
                             << ""
                             << "";
    QTest::newRow("equal") << "abc"
                           << "abc"
                           << "0 1 2";
    QTest::newRow("all come") << ""
                              << "ab"
                              << "-1 -1";
    QTest::newRow("all go") << "ab"
                            << ""
                            << "";
    QTest::newRow("changed") << "abc"
                             << "axc"
                             << "0 1 2";
    QTest::newRow("all changed") << "abc"
                                 << "xyz"
                                 << "0 1 2";
    QTest::newRow("added") << "ab"
                           << "abc"
                           << "0 1 -1";
    QTest::newRow("inserted") << "ab"
                              << "axb"
                              << "0 -1 1";
    QTest::newRow("removed") << "abc"
                             << "ac"
                             << "0 2";
    QTest::newRow("two removed") << "abcdef"
                                 << "acdf"
                                 << "0 2 3 5";
    QTest::newRow("two inserted") << "acdf"
                                  << "abcdef"
                                  << "0 -1 1 2 -1 3";
    QTest::newRow("changed and removed") << "abcd"
                                         << "axd"
                                         << "0 1 3";
    QTest::newRow("changed and inserted") << "abd"
                                          << "axyd"
                                          << "0 1 -1 2";
    QTest::newRow("removed in front of a change") << "abcde"
                                                  << "acxe"
                                                  << "0 2 3 4";
    QTest::newRow("equal ports") << "aaa"
                                 << "aa"
                                 << "0 1";
    QTest::newRow("swapped") << "abcd"
                             << "acbd"
                             << "0 -1 1 3";
}

void TestPageState::portsAreMatched()
{
    QFETCH(QString, former);
    QFETCH(QString, now);
    const auto same = [&](int i, int k) { return former.at(i) == now.at(k); };
    QStringList sources;
    for (const int source : matchPorts(former.size(), now.size(), same))
        sources.append(QString::number(source));
    QTEST(sources.join(' '), "sources");
}

void TestPageState::showsTheCore()
{
    CoreSnapshot content = contentOf({{net("a")}, {}}, {{bus("d", 8)}, {}}, {"0x5A", ""});
    content.module = "top";
    content.userClock = "top/clk";
    content.syncUserClock = true;
    const Page page(content);
    const Content shown = page.shown(Typing::LeftOut);
    QCOMPARE(shown->module, content.module);
    QCOMPARE(shown->userClock, content.userClock);
    QCOMPARE(shown->syncUserClock, true);
    const Content stored = std::make_shared<const CoreSnapshot>(content);
    QCOMPARE(page.shown(Typing::LeftOut, stored), stored);
    QCOMPARE(page.shown(Typing::Included, stored), stored);
    QVERIFY(page.shown(Typing::Included) != stored);
}

void TestPageState::sharesWhatIsEqual()
{
    const Page page(contentOf({{net("a")}, {net("b")}}, {{net("c")}, {net("d")}}, {"0x0", "0x0"}));
    const Content before = page.shown(Typing::LeftOut);
    page.apply(1, "0x1");
    const Content after = page.shown(Typing::LeftOut, before);
    QVERIFY(after != before);
    QCOMPARE(after->probeIns, before->probeIns);
    QCOMPARE(after->probeOuts.at(0), before->probeOuts.at(0));
    QCOMPARE(after->probeOuts.at(1)->initialValue, QString("0x1"));
    QVERIFY(after->probeOuts.at(1)->signals.isSharedWith(page.core->getProbeOut(1)->signals));
    page.core->getProbeIn(0)->signals = {net("x")};
    QCOMPARE(page.shown(Typing::LeftOut, after)->probeIns.at(0)->signals.at(0).name, QString("x"));
    QCOMPARE(page.shown(Typing::LeftOut, after)->probeIns.at(1), before->probeIns.at(1));
}

void TestPageState::valueNobodyTouchedIsTheStoredOne_data()
{
    QTest::addColumn<QString>("stored");
    QTest::newRow("none") << "";
    QTest::newRow("fits") << "0x5";
    QTest::newRow("too wide") << "0xFF5";
    QTest::newRow("lower case") << "0xf";
    QTest::newRow("odd") << "zz";
}

void TestPageState::valueNobodyTouchedIsTheStoredOne()
{
    QFETCH(QString, stored);
    Page page(contentOf({}, {{bus("d", 4)}, {net("e")}}, {stored, "0x0"}));
    const QString displayed = page.line(0)->displayText();
    page.line(0)->onTextChange();
    page.widget.updateProbeOutTree();
    page.apply(1, "0x1");
    for (const Typing typing : {Typing::LeftOut, Typing::Included})
        QCOMPARE(page.value(0, typing), stored);
    page.apply(0, displayed == "0xA" ? "0xB" : "0xA");
    QCOMPARE(page.value(0), page.line(0)->displayText());
    page.apply(0, displayed); // From now on this is what the user wants.
    QCOMPARE(page.value(0), displayed);
    page.widget.save();
    QCOMPARE(page.value(0), displayed);
    QCOMPARE(page.edited.count(), 3);
}

void TestPageState::newWidthCountsAsTouched()
{
    Page page(contentOf({}, {{bus("d", 6)}}, {"0x40"}));
    QCOMPARE(page.line(0)->displayText(), QString("0x00"));
    QCOMPARE(page.value(0), QString("0x40"));
    page.core->getProbeOut(0)->signals = {bus("d", 7)};
    page.widget.updateProbeOutTree();
    QCOMPARE(page.value(0), QString("0x00"));
}

void TestPageState::typedTextCountsWhenAsked()
{
    CoreSnapshot content = contentOf({}, {{bus("d", 8)}}, {"0x01"});
    content.userClock = "top/clk";
    content.syncUserClock = true;
    const Page page(content);
    page.apply(0, "0x02");
    page.line(0)->setText("0x03");
    page.typeClock("2");
    QCOMPARE(page.value(0, Typing::LeftOut), QString("0x02"));
    QCOMPARE(page.value(0, Typing::Included), QString("0x03"));
    QCOMPARE(page.shown(Typing::LeftOut)->userClock, QString("top/clk"));
    QCOMPARE(page.shown(Typing::Included)->userClock, QString("top/clk2"));
    page.line(0)->onTextChange();
    QTest::keyClick(page.clock(), Qt::Key_Return);
    QCOMPARE(page.value(0, Typing::LeftOut), QString("0x03"));
    QCOMPARE(page.shown(Typing::LeftOut)->userClock, QString("top/clk2"));
}

void TestPageState::savedTextIsApplied()
{
    CoreSnapshot content = contentOf({}, {{bus("d", 8)}, {bus("e", 8)}}, {"0x01", "0x01"});
    content.syncUserClock = true;
    Page page(content);
    page.apply(0, "0x02");
    page.line(0)->setText("0x03");
    page.line(1)->setText("0x03");
    page.typeClock("clk");
    page.widget.save();
    const Content saved = snapshotOf(*page.core);
    QCOMPARE(saved->probeOuts.at(0)->initialValue, QString("0x03"));
    QCOMPARE(saved->userClock, QString("clk"));
    QCOMPARE(page.shown(Typing::LeftOut, saved), saved);
    QCOMPARE(page.shown(Typing::Included, saved), saved);
    page.edited.clear();
    page.line(0)->onTextChange();
    page.line(1)->onTextChange();
    QTest::keyClick(page.clock(), Qt::Key_Return);
    QCOMPARE(page.edited.count(), 0);
    QCOMPARE(page.shown(Typing::LeftOut, saved), saved);
    page.clock()->selectAll();
    page.widget.save();
    QCOMPARE(page.clock()->selectedText(), QString("clk"));
}

void TestPageState::keptTypingIsApplied()
{
    Page page(contentOf({}, {{bus("d", 8)}}, {"0x01"}));
    page.line(0)->setText("0x03");
    page.clock()->setEnabled(true);
    page.typeClock("clk");
    page.modified.clear();
    page.widget.keepTyping();
    QCOMPARE(page.value(0, Typing::LeftOut), QString("0x03"));
    QCOMPARE(page.shown(Typing::LeftOut)->userClock, QString("clk"));
    QCOMPARE(page.core->getProbeOut(0)->initialValue, QString("0x01"));
    QCOMPARE(page.line(0)->getStringValue(), QString("00000001"));
    QVERIFY(!page.clock()->isUndoAvailable());
    QCOMPARE(page.modified.count() + page.edited.count(), 0);
    page.line(0)->onTextChange();
    QCOMPARE(page.edited.count(), 0);
}

void TestPageState::keptTypingIsNoLongerTheStoredValue()
{
    const Page page(contentOf({}, {{bus("d", 4)}}, {"0xFF5"}));
    const QString displayed = page.line(0)->displayText();
    page.line(0)->setText(displayed == "0xA" ? "0xB" : "0xA");
    page.line(0)->keepTyping();
    page.line(0)->setText(displayed);
    QCOMPARE(page.value(0, Typing::Included), displayed);
}

void TestPageState::rejectedTextIsTakenBack()
{
    TarnTest::ModalScript::Box box;
    box.icon = QMessageBox::Information;
    box.title = "Error";
    box.text = "Value 'FF' for Probe Out0 Initial Value exceeds the effective width.";
    script().expectBox(box);
    Page page(contentOf({}, {{bus("d", 5)}}, {"0x01"}));
    page.line(0)->setText("0xFF");
    page.widget.keepTyping();
    QCOMPARE(page.value(0), QString("0xFF"));
    page.line(0)->onTextChange();
    QCOMPARE(page.value(0), QString("0x01"));
    QCOMPARE(page.edited.count(), 1); // What was kept is gone.
}

void TestPageState::restoredPageIsLikeANewOne()
{
    const quint32 seed = TarnTest::setting("TARN_RESTORE_SEED", 1);
    const quint32 count = TarnTest::setting("TARN_RESTORE_COUNT", 150);
    Chance chance(seed);
    Page page(chance.content());
    page.show();
    for (quint32 round = 0; round < count; ++round) {
        for (int i = chance.below(4); i > 0; --i)
            chance.edit(&page);
        for (QTreeWidgetItemIterator row(page.out()); *row; ++row)
            (*row)->setExpanded(chance.once(2));
        QApplication::processEvents(); // Users scroll what is laid out.
        page.out()->verticalScrollBar()->setValue(chance.below(10));
        const Content former = page.shown(chance.once(2) ? Typing::LeftOut : Typing::Included);
        const Content target = std::make_shared<const CoreSnapshot>(
            chance.once(5) ? chance.content() : chance.changed(*former));
        page.modified.clear();
        page.edited.clear();
        page.widget.restore(*target);

        const QString where = QStringLiteral("seed %1, round %2: ").arg(seed).arg(round);
        const QString other = difference(pageText(page), pageText(Page(*target)));
        QVERIFY2(other.isEmpty(), qPrintable(where + other));
        QCOMPARE(page.modified.count() + page.edited.count(), 0);
        QVERIFY2(snapshotOf(*page.core, target) == target, qPrintable(where));
        QVERIFY2(page.shown(Typing::LeftOut, target) == target, qPrintable(where));
        QVERIFY2(page.shown(Typing::Included, target) == target, qPrintable(where));
        QApplication::processEvents();
        const QString misplaced = misplacedRow(page);
        QVERIFY2(misplaced.isEmpty(), qPrintable(where + misplaced));
    }
}

void TestPageState::rowsThatStayAreLeftAlone()
{
    const QList<Signals> ports = {{net("a")}, {bus("b", 2)}, {net("c")}, {net("d")}};
    const CoreSnapshot all = contentOf(ports, ports, {"0x0", "0x1", "0x0", "0x1"});
    CoreSnapshot fewer = all;
    fewer.probeIns = {all.probeIns.at(0), port(1, ports.at(2)), port(2, {net("x")})};
    fewer.probeOuts = {all.probeOuts.at(0), port(1, ports.at(2), "0x0"),
                       port(2, ports.at(3), "0x0")};
    Page page(all);
    for (QTreeWidget *tree : {page.in(), page.out()})
        tree->topLevelItem(2)->setExpanded(true);
    struct Rows
    {
        QTreeWidgetItem *port;
        QTreeWidgetItem *signal;
    };
    QVector<Rows> before;
    for (QTreeWidget *tree : {page.in(), page.out(), page.values()}) {
        before.append(Rows{tree->topLevelItem(0), tree->topLevelItem(0)->child(0)});
        before.append(Rows{tree->topLevelItem(2), tree->topLevelItem(2)->child(0)});
        before.append(Rows{tree->topLevelItem(3), nullptr});
    }
    const InitialValueLine *line = page.line(2);
    const InitialValueLine *changedLine = page.line(3);

    page.widget.restore(fewer);
    int next = 0;
    for (QTreeWidget *tree : {page.in(), page.out(), page.values()}) {
        QCOMPARE(tree->topLevelItemCount(), 3);
        for (int i = 0; i < 3; ++i, ++next) {
            QCOMPARE(tree->topLevelItem(i), before.at(next).port);
            if (i < 2)
                QCOMPARE(tree->topLevelItem(i)->child(0), before.at(next).signal);
            QCOMPARE(tree->topLevelItem(i)->isExpanded(), i == 1);
        }
    }
    QCOMPARE(page.line(1), line);
    QCOMPARE(page.line(2), changedLine);

    page.widget.restore(all);
    QCOMPARE(page.line(2), line);
    QCOMPARE(page.out()->topLevelItem(2), before.at(4).port);
    QVERIFY(page.out()->topLevelItem(2)->isExpanded());
    QVERIFY(page.values()->topLevelItem(2)->isExpanded());
    QVERIFY(!page.out()->topLevelItem(1)->isExpanded());
}

void TestPageState::valueAloneTouchesNoRow()
{
    const CoreSnapshot before = contentOf({}, {{bus("d", 4), net("e")}}, {"0x01"});
    const CoreSnapshot after = contentOf({}, {{bus("d", 4), net("e")}}, {"0x1C"});
    Page page(before);
    page.show();
    page.out()->topLevelItem(0)->child(1)->setSelected(true);
    const QTreeWidgetItem *row = page.values()->topLevelItem(0)->child(1);
    const QWidget *label = page.values()->itemWidget(page.values()->topLevelItem(0)->child(1), 0);
    page.widget.restore(after);
    QCOMPARE(page.values()->topLevelItem(0)->child(1), row);
    QCOMPARE(page.values()->itemWidget(page.values()->topLevelItem(0)->child(1), 0), label);
    QVERIFY(page.out()->topLevelItem(0)->child(1)->isSelected());
    QCOMPARE(difference(pageText(page), pageText(Page(after))), QString());
}

void TestPageState::restoredPortKeepsItsExpansion()
{
    const CoreSnapshot before = contentOf({{net("a")}}, {{net("a")}}, {"0x0"});
    Page page(before);
    page.show();
    page.in()->expandAll();
    page.out()->expandAll();
    page.widget.restore(contentOf({{net("b"), net("c")}}, {{net("b"), net("c")}}, {"0x3"}));
    for (const QTreeWidget *tree : {page.in(), page.out(), page.values()})
        QVERIFY(tree->topLevelItem(0)->isExpanded());
    QApplication::processEvents();
    QCOMPARE(misplacedRow(page), QString());
}

void TestPageState::typedTextGivesWayToTheTarget()
{
    const CoreSnapshot before = contentOf({}, {{bus("d", 8)}, {bus("e", 8)}}, {"0x01", "0x01"});
    CoreSnapshot target = before;
    target.probeIns = {port(0, {net("a")})};
    Page page(before);
    page.line(0)->setText("0x22");
    target.probeOuts[1] = port(1, {bus("f", 8)}, "0x44");
    target.probeOuts[0] = port(0, {bus("d", 8)}, "0x22");
    page.widget.restore(target);
    // What was typed is what is restored, so it is also dealt out.
    QCOMPARE(page.line(0)->getStringValue(), QString("00100010"));
    page.line(0)->setText("0x33");
    page.widget.restore(before);
    QCOMPARE(page.line(0)->displayText(), QString("0x01"));
}

void TestPageState::restoredLineKeepsTheFocus()
{
    const CoreSnapshot before = contentOf({}, {{bus("d", 8)}, {bus("e", 8)}}, {"0x01", "0x01"});
    CoreSnapshot target = before;
    target.probeOuts[0] = port(0, {bus("d", 4)}, "0x2");
    Page page(before);
    page.show();
    page.line(0)->setFocus();
    page.line(0)->setText("0x77");
    page.widget.restore(target);
    QVERIFY(page.line(0)->hasFocus());
    QCOMPARE(page.line(0)->displayText(), QString("0x2"));
    QTest::keyClick(page.line(0), Qt::Key_End);
    QTest::keyClick(page.line(0), Qt::Key_Backspace);
    QTest::keyClick(page.line(0), Qt::Key_5);
    page.line(1)->setFocus();
    QCOMPARE(page.value(0), QString("0x5"));
}

void TestPageState::removedLineAppliesNothing()
{
    const CoreSnapshot before = contentOf({}, {{bus("d", 5)}, {bus("e", 5)}}, {"0x01", "0x01"});
    CoreSnapshot fewer = before;
    fewer.probeOuts.removeFirst();
    CoreSnapshot empty = before;
    empty.probeOuts[0] = port(0, {}, "0x0");
    for (const CoreSnapshot &target : {fewer, empty}) {
        Page page(before);
        page.show();
        page.line(0)->setFocus();
        page.line(0)->setText("0xFF"); // Too wide: a box would be unexpected.
        page.widget.restore(target);
        QApplication::processEvents();
        QCOMPARE(page.modified.count() + page.edited.count(), 0);
        QCOMPARE(difference(pageText(page), pageText(Page(target))), QString());
    }
}

void TestPageState::dialogsOfPortsThatGoAreClosed()
{
    const CoreSnapshot before = contentOf({{net("a")}, {net("b")}}, {{net("c")}}, {"0x0"});
    CoreSnapshot target = before;
    target.probeIns = {port(0, {net("b")})};
    Page page(before);
    script().expectDialog("TARN::ProbeDialog", "Probe In Port", [&](QDialog *dialog) {
        page.widget.restore(target);
        QVERIFY(!dialog->isVisible());
    });
    page.widget.editProbeIn(page.in()->topLevelItem(0), 0);
    QCOMPARE(page.modified.count() + page.edited.count(), 0);
    QCOMPARE(difference(pageText(page), pageText(Page(target))), QString());
}

void TestPageState::dialogOfAPortThatMovesWritesToIt()
{
    const CoreSnapshot before = contentOf({{net("a")}, {net("b")}, {net("c")}}, {});
    CoreSnapshot target = before;
    target.probeIns = {port(0, {net("b")}), port(1, {net("c")})};
    Page page(before);
    script().expectDialog("TARN::ProbeDialog", "Probe In Port", [&](QDialog *dialog) {
        page.widget.restore(target);
        auto *list = dialog->findChild<QTreeWidget *>("treeWidget");
        delete list->topLevelItem(0);
        dialog->accept();
    });
    page.widget.editProbeIn(page.in()->topLevelItem(1), 0);
    QCOMPARE(page.in()->currentItem(), page.in()->topLevelItem(0));
    QCOMPARE(page.in()->topLevelItem(0)->childCount(), 0);
    QCOMPARE(page.in()->topLevelItem(1)->childCount(), 1);
    QCOMPARE(page.edited.count(), 1);
}

void TestPageState::restoresAfterTheCoreWasChangedByOthers()
{
    const CoreSnapshot target = contentOf({{net("a")}, {net("b")}}, {{net("c")}, {net("d")}});
    for (const int change : {-1, 1}) {
        Page page(target);
        if (change < 0) {
            page.core->removeProbeIn(0);
            page.core->removeProbeOut(0);
        } else {
            page.core->addProbeIn(7);
            page.core->addProbeOut(7);
        }
        page.widget.restore(target);
        QCOMPARE(difference(pageText(page), pageText(Page(target))), QString());
    }
}

TARN_TEST_MAIN(TestPageState)

#include "tst_pagestate.moc"
