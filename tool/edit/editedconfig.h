// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/configsnapshot.h>
#include <model/tarncore.h>
#include <tool/configfile.h>

#include <QString>
#include <QVector>

namespace Tool {

/// A configuration while it is edited, with the rules of the editor: what its pages would show and
/// store after the same edits.
///
/// A page shows an initial value as far as it fits the port. The stored value stays beside it until
/// an edit changes the shown one; a save then stores what is shown, for all ports.
///
/// Cores and ports are named by list positions, which the caller has checked. Operations return
/// false, set the error and change nothing where the editor refuses.
class EditedConfig
{
public:
    /// What became of a core or a port: its position in the file, -1 for a new one.
    struct Origin
    {
        int core = -1;
        QVector<int> ins;
        QVector<int> outs;
    };

    /// A file without cores gets core 0, as in the editor.
    explicit EditedConfig(OwnedCores cores);

    const OwnedCores &owned() const { return m_cores; }
    const QList<TARN::TarnCore *> &cores() const { return m_cores.list(); }

    /// Position of the core with that number; -1 when there is none.
    int positionOf(int number) const;
    int portCount(int core, TARN::ProbeType type) const;
    const TARN::ProbeIn &port(int core, TARN::ProbeType type, int position) const;

    bool addCore(QString *error);
    bool removeCore(int core, QString *error);
    bool addPort(int core, TARN::ProbeType type, QString *error);
    bool removePort(int core, TARN::ProbeType type, int position, QString *error);
    bool setSignals(int core, TARN::ProbeType type, int position,
                    const QList<TARN::SignalItem> &items, QString *error);
    /// @p value is "0x" and as many digits as the width of the port needs.
    bool setValue(int core, int position, const QString &value, QString *error);
    /// The net with which the Probe Out ports synchronise; none when empty.
    void setClock(int core, const QString &net);

    /// As the editor has it for undo and for replacements.
    TARN::ConfigSnapshot snapshot() const;
    /// Takes over what differs in @p target from @p current, the last snapshot(), from which it was
    /// made. It has the same cores and ports.
    void apply(const TARN::ConfigSnapshot &current, const TARN::ConfigSnapshot &target);

    /// Stores the values that the pages show, as before each save.
    void storeValues();
    void setModules(const QString &top);

    /// Where core and ports come from, at the position of the core.
    const Origin &origin(int core) const { return m_origins.at(core); }

private:
    /// The line of an initial value.
    struct Line
    {
        QString text;
        bool stored = true; ///< Stands for the value that is stored.
    };
    using Lines = QVector<Line>;

    static QString valueOf(const TARN::ProbeOut &port, const Lines &lines);
    static void restore(TARN::TarnCore *core, Lines *lines, const TARN::CoreSnapshot &target);
    TARN::TarnCore *core(int position) const { return cores().at(position); }

    OwnedCores m_cores;
    QVector<Lines> m_lines; ///< By positions of cores and Probe Out ports.
    QVector<Origin> m_origins;
};

} // namespace Tool
