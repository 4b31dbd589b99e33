// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "outportrows.h"

#include "initialvalueline.h"
#include "portbits.h"
#include "probeportsoptionwidget.h"
#include "signaltree.h"
#include "value2tree.h"
#include "valuetree.h"

#include <model/bitstring.h>
#include <model/configsnapshot.h>
#include <model/portlimits.h>

#include <QCoreApplication>
#include <QEvent>

#include <numeric>

namespace TARN {

/// So many ports can be shown anew without painting all that is in sight.
static constexpr int FewPorts = 4;

/// A port to rebuild.
struct OutPortRows::Port
{
    QList<SignalItem> items;
    int width;
    QString bits;
    QTreeWidgetItem *row;
    QTreeWidgetItem *valueRow;
    InitialValueLine *line;

    /// Replaces the rows of the signals in both trees, in that of the values without labels.
    void makeRows() const
    {
        qDeleteAll(row->takeChildren());
        qDeleteAll(valueRow->takeChildren());
        signals2ProbeOutTree(row, items, SignalType);
        QList<QTreeWidgetItem *> valueRows;
        for (int i = 0; i < items.size(); ++i)
            valueRows.append(new QTreeWidgetItem(SignalType));
        valueRow->addChildren(valueRows);
    }

    void fitLine() const
    {
        line->setEnabled(width != 0);
        // The mask first: the old one would cut a longer value.
        line->updateValidatorForWidth(width);
        line->setText(valueText(bits));
    }
};

OutPortRows::OutPortRows(TarnCore *core, QTreeWidget *tree, ValueTree *values,
                         ProbePortsOptionWidget *page)
    : PortRows(ProbeTypeOut, core, tree, page)
    , m_values(values)
    , m_lineOwner(page)
{
}

void OutPortRows::insertRow(int position)
{
    auto *row = new QTreeWidgetItem(PortType);
    row->setText(0, textOf(position));
    m_tree->insertTopLevelItem(position, row);
    auto *valueRow = new QTreeWidgetItem(PortType);
    m_values->insertTopLevelItem(position, valueRow);
    auto *line = new InitialValueLine(position, m_lineOwner);
    line->keepStored(); // The new port stores nothing.
    m_values->setItemWidget(valueRow, 0, line);
    QWidget *above = m_values->lineAt(position - 1);
    QWidget::setTabOrder(above ? above : m_values, line);
}

void OutPortRows::renumber()
{
    PortRows::renumber();
    for (int i = 0; i < m_values->topLevelItemCount(); ++i) {
        if (InitialValueLine *line = m_values->lineAt(i))
            line->setIndex(i);
    }
}

void OutPortRows::rebuildAll()
{
    QVector<Port> ports;
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i) {
        if (!portAt(i) || !m_values->lineAt(i))
            continue;
        Port port = portToShow(i);
        port.bits = fittedBits(stringHextoBinfor0x(port.line->displayText()), port.line->getWidth(),
                               port.width);
        ports.append(port);
    }
    beginChange(ports.size());
    rebuild(&ports);
    endChange();
}

/// The port with the bits that are stored for it.
OutPortRows::Port OutPortRows::portToShow(int position) const
{
    const ProbeOut *port = m_core->getProbeOut(position);
    const int width = widthOf(port->signals);
    return {port->signals,
            width,
            storedBits(port->initialValue, width),
            m_tree->topLevelItem(position),
            m_values->topLevelItem(position),
            m_values->lineAt(position)};
}

void OutPortRows::rebuild(QVector<Port> *ports)
{
    // Each step for all ports before the next one: the tree compares every row that comes or goes
    // with all labels that exist.
    for (const Port &port : qAsConst(*ports))
        m_values->deleteLabels(port.valueRow);
    for (const Port &port : qAsConst(*ports)) {
        port.makeRows();
        port.fitLine();
    }
    // Each new widget asks by an event to be polished, which labels do not need. Those of other
    // widgets go first.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::PolishRequest);
    for (Port &port : *ports) {
        values2Tree(m_values, port.valueRow, port.items, port.bits, port.line);
        port.line->setInert(false);
        port.line->keepText();
    }
    QCoreApplication::removePostedEvents(nullptr, QEvent::PolishRequest);
    m_tree->viewport()->update(); // The row of a collapsed port may have another mark.
}

void OutPortRows::showAllStored()
{
    QVector<int> positions(m_tree->topLevelItemCount());
    std::iota(positions.begin(), positions.end(), 0);
    beginChange(positions.size());
    showStored(positions);
    endChange();
    keepStored();
}

void OutPortRows::showStored(const QVector<int> &positions)
{
    QVector<Port> ports;
    for (const int position : positions)
        ports.append(portToShow(position));
    rebuild(&ports);
}

void OutPortRows::keepTyping()
{
    for (int i = 0; i < m_values->topLevelItemCount(); ++i) {
        if (InitialValueLine *line = m_values->lineAt(i))
            line->keepTyping();
    }
}

void OutPortRows::keepStored()
{
    for (int i = 0; i < m_values->topLevelItemCount(); ++i) {
        if (InitialValueLine *line = m_values->lineAt(i))
            line->keepStored();
    }
}

void OutPortRows::insertPort(int position)
{
    m_core->probeOuts.insert(position, new ProbeOut);
}

void OutPortRows::deleteRow(int position)
{
    m_values->deletePort(position);
    delete m_tree->topLevelItem(position);
}

bool OutPortRows::shows(int position, const PortSnapshot &content) const
{
    return showsSignals(position, content) && showsValue(position, content);
}

bool OutPortRows::showsSignals(int position, const PortSnapshot &content) const
{
    return sameSignals(portAt(position)->signals, content.signals) &&
           m_tree->topLevelItem(position)->childCount() == content.signals.size();
}

bool OutPortRows::showsValue(int position, const PortSnapshot &content) const
{
    const QString &stored = m_core->getProbeOut(position)->initialValue;
    const InitialValueLine *line = m_values->lineAt(position);
    return line->value(Typing::LeftOut, stored) == content.initialValue &&
           line->value(Typing::Included, stored) == content.initialValue &&
           line->agreesWithLabels();
}

void OutPortRows::showValue(int position, const PortSnapshot &content)
{
    if (!showsSignals(position, content) || showsValue(position, content))
        return;
    m_core->getProbeOut(position)->initialValue = content.initialValue;
    m_values->lineAt(position)->showStored(content.initialValue);
}

void OutPortRows::assign(int position, const PortSnapshot &content)
{
    ProbeOut *port = m_core->getProbeOut(position);
    port->index = content.index;
    port->signals = content.signals;
    port->initialValue = content.initialValue;
}

void OutPortRows::beginChange(int ports)
{
    m_values->suspendLayout(ports > FewPorts);
}

void OutPortRows::prepareRemoval(int position)
{
    m_values->deleteLabels(m_values->topLevelItem(position));
}

void OutPortRows::endChange()
{
    m_values->resumeLayout();
}

} // namespace TARN
