// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "portrows.h"

namespace TARN {

class InitialValueLine;
class ProbePortsOptionWidget;
class ValueTree;

/// The rows of the Probe Out ports, in the tree of the ports and in that of the initial values,
/// which are kept alike. A bus has one row.
class OutPortRows final : public PortRows
{
public:
    OutPortRows(TarnCore *core, QTreeWidget *tree, ValueTree *values, ProbePortsOptionWidget *page);

    /// Shows all ports as the core has them.
    void showAllStored();

    // PortRows
    int portCount() const override { return m_core->probeOuts.size(); }
    ProbeIn *portAt(int position) const override { return m_core->getProbeOut(position); }
    void insertRow(int position) override;
    void renumber() override;
    /// Fits each line to the signals of its port.
    void rebuildAll() override;
    void keepTyping() override;
    void keepStored() override;

private:
    struct Port;

    // PortRows
    void insertPort(int position) override;
    void deletePort(int position) override { m_core->removeProbeOut(position); }
    void deleteRow(int position) override;
    bool shows(int position, const PortSnapshot &content) const override;
    void assign(int position, const PortSnapshot &content) override;
    void showStored(const QVector<int> &positions) override;
    void showValue(int position, const PortSnapshot &content) override;
    void beginChange(int ports) override;
    void prepareRemoval(int position) override;
    void endChange() override;

    bool showsSignals(int position, const PortSnapshot &content) const;
    bool showsValue(int position, const PortSnapshot &content) const;
    Port portToShow(int position) const;
    void rebuild(QVector<Port> *ports);

    ValueTree *const m_values;
    ProbePortsOptionWidget *const m_lineOwner;
};

} // namespace TARN
