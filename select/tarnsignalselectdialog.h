// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "netsearch.h"

#include <model/tarncore.h>

#include <QDialog>

#include <memory>

class QTreeWidgetItem;

namespace TARN {

class RtlNetlistTreeView;

namespace Ui {
class TarnSignalSelectDialog;
}

/// Searches the netlist by name and collects the nets and buses that the user wants. Owns its form
/// and the module tree; the netlist is a guest. Rows hold copies of names, never nets.
class TarnSignalSelectDialog : public QDialog
{
    Q_OBJECT

public:
    /// @p netlist may be null; @p type decides which of its nets may be chosen.
    TarnSignalSelectDialog(NETWEIR::RtlNetlist *netlist, ProbeType type, QWidget *parent);
    ~TarnSignalSelectDialog() override;

    /// Runs the dialog and returns what was chosen, nothing on Cancel. @p parent, and the dialog
    /// with it, may go away meanwhile.
    static QList<SignalItem> getNetName(NETWEIR::RtlNetlist *netlist, ProbeType type,
                                        QWidget *parent);
    /// Runs the dialog and returns the full name of the one net chosen, empty on Cancel.
    static QString getOneNetName(NETWEIR::RtlNetlist *netlist, ProbeType type, QWidget *parent);

    /// Uses @p netlist, which may be null, from now on: the module tree is rebuilt, the results of
    /// the previous netlist go, what is chosen stays. Call it before the previous netlist is
    /// deleted.
    void setNetlist(NETWEIR::RtlNetlist *netlist);

    /// The chosen signals in the order of the list.
    QList<SignalItem> getSelectedNets() const;
    /// The first chosen net, or the first usable member of the bus that comes first.
    QString getOneSelectedNetName() const;

    /// Shows the results of a flat search, buses first.
    void setTreeWidget(const QList<NETWEIR::RtlNet *> &nets,
                       const QList<NETWEIR::RtlNetBus *> &buses);
    /// Shows the results of a hierarchical search.
    void setTreeWidget(const ModuleForWidget &module);
    /// Appends a row for @p module, with everything below it, to @p parent.
    void addModuleInWidget(QTreeWidgetItem *parent, const ModuleForWidget &module);

public Q_SLOTS:
    void on_pushButtonSearch_clicked();
    void on_checkBoxAdvancedFilter_toggled(bool checked);
    void onAddSignal();
    void onAddAllSignal();
    void onDelSignal();
    void onDelAllSignal();

protected:
    /// Return searches, except on OK and Cancel. Every other key is ignored: neither Escape nor
    /// Enter ends the dialog.
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void setUpModuleTree();
    void fillModuleTree();
    void pickModule(int row);
    void keepPickedModule(const QObject *watched, const QEvent *event);
    void setUpLists();
    void setUpButtons();
    bool handleKey(QObject *watched, const QEvent *event);

    SearchOptions searchOptions() const;
    /// Shows what is found. Returns false when that is nothing.
    bool search(const SearchOptions &options);

    std::unique_ptr<Ui::TarnSignalSelectDialog> ui;
    NETWEIR::RtlNetlist *m_netlist;
    RtlNetlistTreeView *m_moduleTree;          ///< Owned by the combo box whose popup it is.
    QTreeWidgetItem *m_pickedModule = nullptr; ///< Row that the combo box shows, once picked.
    ProbeType m_type;
};

} // namespace TARN
