// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "dumppages.h"

#include "anyconfig.h"
#include "dump.h"
#include "dumpnetlist.h"
#include "emitted.h"
#include "widgettext.h"

#include <audit/finding.h>
#include <model/configsnapshot.h>
#include <model/tarnconfig.h>
#include <model/tarncore.h>
#include <netweir/rtlnetlist.h>
#include <te/designmanager.h>
#include <te/taskengine.h>
#include <view/edithistory.h>
#include <view/fakeextraction.h>
#include <view/tarnoptionwidget.h>
#include <view/tarnview.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTreeWidget>
#include <QUndoStack>

using TARN::ConfigSnapshot;
using TARN::TarnCore;
using TARN::TarnView;

namespace TarnCompare {

namespace {

void press(QWidget *widget, int key, const QString &text = {})
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QApplication::sendEvent(widget, &event);
    }
}

class ViewSession
{
public:
    ViewSession(Dump *dump, const NumberedNetlist &design, const QString &folder, Choice *choice)
        : m_dump(dump)
        , m_design(design)
        , m_path(QDir(folder).filePath(QStringLiteral("config.tarn")))
        , m_choice(choice)
    {
        writeFile();
        m_emitted.count("modified", &m_view, &TarnView::modificationStatusChanged);
        m_emitted.count("changed", m_view.history(), &TARN::EditHistory::changed);
        m_view.resize(900, 600);
        m_view.show();
    }

    void run(int steps)
    {
        QString error;
        const bool opened = m_view.open(m_path, QString(), &error);
        m_dump->line(QStringLiteral("OPENED %1 %2").arg(int(opened)).arg(quoted(error)));
        write("opened");
        if (!opened)
            return; // TARN cannot be used for the design, whose netlist is gone.
        for (int i = 0; i < steps; ++i) {
            const char *name = "program";
            if (m_choice->chance(30))
                stepOfProgram();
            else
                name = stepOfUser();
            write(name);
        }
        m_view.save();
        write("saved");
        m_dump->line(quoted(contentOfFile()));
        m_view.readRtlNetlist();
        write("without netlist");
    }

private:
    void writeFile()
    {
        const QList<TarnCore *> cores = anyCores(m_design, 4, m_choice);
        // Not every name of a random netlist can be in a file.
        if (!TARN::writeTARNConfigToXml(cores, m_path))
            TARN::writeTARNConfigToXml({}, m_path);
        qDeleteAll(cores);
    }

    QString contentOfFile() const
    {
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    TARN::TarnOptionWidget *page() const
    {
        return qobject_cast<TARN::TarnOptionWidget *>(
            m_view.findChild<QStackedWidget *>(QStringLiteral("stackedWidget"))->currentWidget());
    }

    void stepOfProgram()
    {
        TARN::EditHistory *history = m_view.history();
        switch (m_choice->below(5)) {
        case 0:
            history->undo();
            break;
        case 1:
            history->redo();
            break;
        case 2:
            writeFile();
            m_dump->line(QStringLiteral("RELOADED %1").arg(int(m_view.reloadTarnFile())));
            break;
        default:
            QList<TarnCore *> cores = TARN::newCores(history->current());
            editCores(&cores, m_design, m_choice);
            history->apply(TARN::snapshotOf(cores, history->current()), QStringLiteral("Edit"));
            qDeleteAll(cores);
        }
    }

    const char *stepOfUser()
    {
        switch (m_choice->below(7)) {
        case 0:
            click();
            return "click";
        case 1:
        case 2:
            typeValue();
            return "value";
        case 3:
            typeClock();
            return "clock";
        case 4:
            touchTree();
            return "tree";
        case 5:
            m_view.changeTarnWidget(m_choice->below(5));
            return "core";
        default:
            m_view.showPlace(anyPlace());
            return "place";
        }
    }

    TARN::Place anyPlace()
    {
        TARN::Place place;
        place.core = m_choice->below(3);
        place.type = TARN::ProbeType(m_choice->below(2));
        place.port = m_choice->below(4) - 1;
        place.signal = m_choice->below(4) - 1;
        place.bit = m_choice->below(4) - 1;
        return place;
    }

    QTreeWidget *tree(const char *name) const
    {
        return page()->findChild<QTreeWidget *>(QLatin1String(name));
    }

    void click()
    {
        const char *names[] = {"btnProbeInAdd", "btnProbeInRemove", "btnProbeOutAdd",
                               "btnProbeOutRemove", "checkUserClock"};
        page()->findChild<QAbstractButton *>(QLatin1String(names[m_choice->below(5)]))->click();
    }

    void typeInto(QLineEdit *line, const QString &text)
    {
        line->setFocus();
        line->setCursorPosition(m_choice->chance(70) ? line->text().size() : m_choice->below(8));
        for (const QChar character : text)
            press(line, character.toUpper().unicode(), QString(character));
        const int end = m_choice->below(4);
        if (end == 0)
            press(line, Qt::Key_Backspace);
        if (end == 1)
            page()->setFocus();
        if (end > 1)
            press(line, Qt::Key_Return);
    }

    void typeValue()
    {
        const auto lines = tree("treeValue")->findChildren<QLineEdit *>();
        if (!lines.isEmpty())
            typeInto(m_choice->any(lines), m_choice->any(QStringList{"1", "F0", "g", "123456789"}));
    }

    void typeClock()
    {
        auto *line = page()->findChild<QLineEdit *>(QStringLiteral("lineEditUserClock"));
        if (line->isEnabled())
            typeInto(line, QStringLiteral("clk"));
    }

    void touchTree()
    {
        const char *names[] = {"treeProbeIn", "treeProbeOut", "treeValue"};
        QTreeWidget *rows = tree(names[m_choice->below(3)]);
        QTreeWidgetItem *row = rows->topLevelItem(m_choice->below(rows->topLevelItemCount()));
        if (!row)
            return;
        switch (m_choice->below(4)) {
        case 0:
            rows->expandAll();
            break;
        case 1:
            row->setExpanded(!row->isExpanded());
            break;
        case 2:
            rows->verticalScrollBar()->setValue(rows->verticalScrollBar()->maximum());
            break;
        default:
            rows->setCurrentItem(row);
        }
    }

    void write(const char *what)
    {
        for (int i = 0; i < 4; ++i)
            QApplication::processEvents();
        m_dump->line(QStringLiteral("VIEW %1").arg(QLatin1String(what)));
        LongText text;
        writeWidget(&text, &m_view);
        text.writeTo(m_dump);
        m_dump->line(m_emitted.text());
        const QUndoStack *stack = m_view.history()->stack();
        m_dump->line(QStringLiteral("HISTORY %1 of %2 %3 clean%4")
                         .arg(stack->index())
                         .arg(stack->count())
                         .arg(quoted(stack->undoText()))
                         .arg(int(stack->isClean())));
        const QList<TarnCore *> cores = TARN::newCores(m_view.history()->current());
        m_dump->line(textOf(cores));
        qDeleteAll(cores);
    }

    Dump *m_dump;
    const NumberedNetlist &m_design;
    QString m_path;
    Choice *m_choice;
    Emitted m_emitted;
    TarnView m_view;
};

/// A project with a source, without which a view reads no design.
void openProject(const QString &folder)
{
    TE::Project project;
    project.workingDir = folder;
    project.sources.append({QDir(folder).filePath(QStringLiteral("top.v")), TE::VerilogFile, true});
    TE::TaskEngine::instance()->designManager()->setProject(project);
}

} // namespace

void dumpPages(Dump *dump, std::unique_ptr<NETWEIR::RtlNetlist> netlist,
               const NumberedNetlist &design, const QString &folder, int steps, Choice *choice)
{
    openProject(folder);
    TarnTest::FakeExtraction &extraction = TarnTest::FakeExtraction::instance();
    extraction.reset();
    extraction.build = [&netlist] { return std::move(netlist); };
    ViewSession(dump, design, folder, choice).run(steps);
}

} // namespace TarnCompare
