// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "portrows.h"

namespace TARN {

/// The rows of the Probe In ports. A bus has a row for each member below its own.
class InPortRows final : public PortRows
{
public:
    InPortRows(TarnCore *core, QTreeWidget *tree, QWidget *page);

    // PortRows
    int portCount() const override { return m_core->probeIns.size(); }
    ProbeIn *portAt(int position) const override { return m_core->getProbeIn(position); }
    void insertRow(int position) override;
    void rebuildAll() override;

private:
    // PortRows
    void insertPort(int position) override;
    void deletePort(int position) override { m_core->removeProbeIn(position); }
    void deleteRow(int position) override;
    bool shows(int position, const PortSnapshot &content) const override;
    void assign(int position, const PortSnapshot &content) override;
    void showStored(const QVector<int> &positions) override;

    void rebuild(int position);
};

} // namespace TARN
