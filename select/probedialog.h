// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/tarncore.h>

#include <QDialog>

#include <memory>

namespace NETWEIR {
class RtlNetlist;
}

namespace TARN {

namespace Ui {
class ProbeDialog;
}

class SignalMarks;

/// Edits the signal list of one probe port, most significant signal on top. Owns its form; port
/// and netlist are guests. The port is changed by accept() only.
class ProbeDialog final : public QDialog
{
    Q_OBJECT

public:
    /// @p port, a Probe Out port as well, must live until the dialog is closed or deleted.
    /// @p netlist may be null.
    ProbeDialog(ProbeIn *port, NETWEIR::RtlNetlist *netlist, ProbeType type, QWidget *parent);
    ~ProbeDialog() override;

    const ProbeIn *port() const { return m_port; }

    /// Uses @p netlist, which may be null, from now on; so does a signal select dialog that is
    /// open. Call it before the previous netlist is deleted.
    void setNetlist(NETWEIR::RtlNetlist *netlist);

    /// Marks rows by @p marks, which may be null and outlives the dialog. Call it again to show
    /// other marks.
    void setMarks(const SignalMarks *marks);

Q_SIGNALS:
    void closeOldSearchDialog();

public Q_SLOTS:
    void onAdd();
    void onRemove();
    void on_treeWidget_itemSelectionChanged();
    /// Writes the list into the port and closes the dialog; refuses more signals than a port has
    /// room for and stays open.
    void accept() override;
    /// Closes the dialog, and what is open above it, without writing to the port.
    void closeWidget();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QList<SignalItem> shownSignals() const;
    void showCount();

    std::unique_ptr<Ui::ProbeDialog> ui;
    ProbeIn *m_port;
    NETWEIR::RtlNetlist *m_netlist;
    const SignalMarks *m_marks = nullptr;
    ProbeType m_type;
};

} // namespace TARN
