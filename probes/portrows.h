// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/tarncore.h>

#include <QString>
#include <QVector>

#include <memory>

class QTreeWidget;
class QWidget;

namespace TARN {

struct PortSnapshot;

/// The ports of one kind and their rows on the page: a top-level row for each port, and its signals
/// below it. Owns nothing; core and widgets outlive its functions.
class PortRows
{
public:
    using Ports = QVector<std::shared_ptr<const PortSnapshot>>;

    /// The types of the rows of ports and signals.
    enum RowType { PortType = 1001, SignalType = 1002 };

    virtual ~PortRows() = default;

    virtual int portCount() const = 0;
    /// Null when there is no such port.
    virtual ProbeIn *portAt(int position) const = 0;
    /// -1 when the core does not have the port.
    int positionOf(const ProbeIn *port) const;

    /// Adds the row of the port at @p position, without signals.
    virtual void insertRow(int position) = 0;
    /// Closes the dialog that edits the port, if one is open, and deletes port and rows.
    void removePort(int position);
    /// Gives each row the number of its place.
    virtual void renumber();
    /// Rebuilds the rows of all signals.
    virtual void rebuildAll() = 0;

    /// Makes ports and rows equal to @p target. Rebuilds the rows of ports that differ; the others
    /// stay as they are.
    void restore(const Ports &target);
    /// Takes typed text as applied.
    virtual void keepTyping() {}
    /// The same, and that the core stores what is shown.
    virtual void keepStored() {}

protected:
    PortRows(ProbeType type, TarnCore *core, QTreeWidget *tree, QWidget *page);

    QString textOf(int position) const;

    // The steps of restore(). Rows are removed only after prepareRemoval() for all that go.
    virtual void insertPort(int position) = 0;
    virtual void deletePort(int position) = 0;
    virtual void deleteRow(int position) = 0;
    /// Whether port and rows are what @p content would be shown as.
    virtual bool shows(int position, const PortSnapshot &content) const = 0;
    virtual void assign(int position, const PortSnapshot &content) = 0;
    /// Shows these ports as the core has them.
    virtual void showStored(const QVector<int> &positions) = 0;
    /// Shows the value of @p content where only that differs.
    virtual void showValue(int, const PortSnapshot &) {}
    /// Called first and last when rows change, the first time with the number of ports to show.
    virtual void beginChange(int) {}
    virtual void prepareRemoval(int) {}
    virtual void endChange() {}

    const ProbeType m_type;
    TarnCore *const m_core;
    QTreeWidget *const m_tree;
    QWidget *const m_page;

private:
    bool showsAll(const Ports &target) const;
    /// Removes and adds ports and rows so that @p sources, the result of matchPorts(), come into
    /// their places.
    void arrange(const QVector<int> &sources);
    void showAll(const Ports &target);
    /// Returns whether there are as many rows as ports already.
    bool matchRowsToPorts();
};

} // namespace TARN
