// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/tarncore.h>
#include <probes/typing.h>

#include <QTabWidget>

#include <memory>

namespace NETWEIR {
class RtlNetlist;
}

namespace TARN {

class ProbePortsOptionWidget;
class SignalMarks;
struct CoreSnapshot;

/// The page of one core. It owns neither core nor netlist; both may be deleted before it.
class TarnOptionWidget final : public QTabWidget
{
    Q_OBJECT

public:
    TarnOptionWidget(TarnCore *core, NETWEIR::RtlNetlist *netlist, QWidget *parent);
    ~TarnOptionWidget() override;

    TarnCore *core() const { return m_core; }
    NETWEIR::RtlNetlist *netlist() const { return m_netlist; }

    /// Stores the page's widgets in the core.
    void save();

    /// Uses @p netlist, which may be null, from now on.
    void setNlsdata(NETWEIR::RtlNetlist *netlist);

    // As in ProbePortsOptionWidget.
    std::shared_ptr<const CoreSnapshot>
    shown(Typing typing, const std::shared_ptr<const CoreSnapshot> &former) const;
    void keepTyping();
    void restore(const CoreSnapshot &target);
    void showRow(ProbeType type, int port, int signal, int bit);
    void setMarks(const SignalMarks *marks);

Q_SIGNALS:
    /// The user changed something. (Receivers connect to the name as it is spelt.)
    void modifed();
    /// An edit by the user is complete. Comes after modifed().
    void edited();
    void typingUndone();

private:
    TarnCore *m_core;
    NETWEIR::RtlNetlist *m_netlist;
    ProbePortsOptionWidget *m_ports;
};

} // namespace TARN
