// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "renametable.h"

#include <support/files.h>

#include <netweir/netlistbuilder.h>

#include <QRegularExpression>

using NETWEIR::Hierachy;
using NETWEIR::NetlistBuilder;
using NETWEIR::NetMarks;

namespace TarnTest {

namespace {

const QRegularExpression Range(QStringLiteral(R"(\[(\d+):(\d+)\]$)"));
const QRegularExpression NodeLine(QStringLiteral("^( *)(\\S+) : (\\S+)$"));
const QRegularExpression MissingLine(QStringLiteral("^(out )?(\\S+) -> (.+)$"));
const QRegularExpression PrefixLine(QStringLiteral("^prefix (\\S+) -> (\\S+) \\((\\d+)\\)$"));

/// Builds the netlist of one design, line by line.
class DesignText
{
public:
    /// False when the line fits nowhere.
    bool addLine(const QString &line)
    {
        const QRegularExpressionMatch node = NodeLine.match(line);
        if (node.hasMatch())
            return addNode(node.capturedLength(1) / 4, node.captured(2), node.captured(3));
        if (m_nodes.isEmpty())
            return false;
        for (const QString &net : line.split(' ', Qt::SkipEmptyParts))
            addNet(net);
        return true;
    }

    std::shared_ptr<NETWEIR::RtlNetlist> take() { return m_builder->take(); }

private:
    bool addNode(int level, const QString &name, const QString &module)
    {
        if (level > m_nodes.size() || (level == 0) != m_nodes.isEmpty())
            return false;
        if (level == 0) {
            m_builder = std::make_unique<NetlistBuilder>(name);
            m_nodes.append(m_builder->top());
            return true;
        }
        m_nodes = m_nodes.mid(0, level);
        m_nodes.append(m_builder->addHierachy(m_nodes.last(), name, module));
        return true;
    }

    void addNet(QString name)
    {
        NetMarks marks;
        marks.excludedForProbeOut = name.endsWith('!');
        marks.excludedForProbeIn = name.endsWith('?');
        if (marks.excludedForProbeOut || marks.excludedForProbeIn)
            name.chop(1);
        const QRegularExpressionMatch range = Range.match(name);
        if (range.hasMatch()) {
            m_builder->addBus(m_nodes.last(), name.left(range.capturedStart()),
                              range.captured(1).toInt(), range.captured(2).toInt(), {marks});
        } else {
            m_builder->addNet(m_nodes.last(), name, marks);
        }
    }

    std::unique_ptr<NetlistBuilder> m_builder;
    QList<Hierachy *> m_nodes; ///< From the top to the one whose nets are read.
};

bool addOutcome(Rename *rename, const QString &line)
{
    const QRegularExpressionMatch prefix = PrefixLine.match(line);
    if (prefix.hasMatch()) {
        rename->prefixes.append(
            {prefix.captured(1), prefix.captured(2), prefix.captured(3).toInt()});
        return true;
    }
    const QRegularExpressionMatch missing = MissingLine.match(line);
    if (!missing.hasMatch())
        return false;
    const bool driven = missing.capturedLength(1) > 0;
    QStringList successors;
    if (missing.captured(3) != QLatin1String("-"))
        successors = missing.captured(3).split(QStringLiteral(" | "));
    rename->missing.append(
        {missing.captured(2), driven ? TARN::ProbeTypeOut : TARN::ProbeTypeIn, successors});
    return true;
}

bool addRename(QList<Rename> *renames, const QStringList &lines)
{
    Rename rename;
    rename.title = lines.first();
    const int middle = lines.indexOf(QStringLiteral("--"));
    DesignText design;
    for (int i = 1; i < middle; ++i) {
        if (!design.addLine(lines.at(i)))
            return false;
    }
    for (int i = middle + 1; i < lines.size(); ++i) {
        if (!addOutcome(&rename, lines.at(i)))
            return false;
    }
    if (middle < 2 || rename.missing.isEmpty())
        return false;
    rename.netlist = design.take();
    renames->append(rename);
    return true;
}

} // namespace

bool isBusName(const QString &name)
{
    return Range.match(name).hasMatch();
}

QList<Rename> readRenames(const QString &path)
{
    const QString text = QString::fromUtf8(readFile(path));
    QList<Rename> renames;
    // The first piece is the head of the file.
    const QStringList pieces = text.split(QStringLiteral("\n== ")).mid(1);
    for (const QString &piece : pieces) {
        const QStringList lines = piece.split('\n', Qt::SkipEmptyParts);
        if (!addRename(&renames, lines))
            qFatal("%s: cannot be read: %s", qPrintable(path), qPrintable(lines.first()));
    }
    return renames;
}

} // namespace TarnTest
