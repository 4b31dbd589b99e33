// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <audit/candidates.h>
#include <audit/configaudit.h>
#include <audit/designnames.h>
#include <audit/signalmarks.h>

#include <QObject>
#include <QSet>
#include <QVector>

#include <functional>
#include <memory>
#include <optional>

class QDeadlineTimer;

namespace TARN {

class EditHistory;
struct ConfigSnapshot;

/// What is wrong with the configuration of a view, and what can be put in its place.
///
/// Looks again whenever the history has a new step and whenever the netlist changes. What the
/// design has in place of what is missing is searched in slices between the events of the user; a
/// change gives the search up and starts it again. Nothing that can be found needs a netlist but is
/// there without one.
///
/// Owns all that points into the netlist. The history must live longer.
class Findings final : public QObject
{
    Q_OBJECT

public:
    /// The names that were missing or changed at one time.
    struct State
    {
        QSet<QString> missing;
        QSet<QString> changed;
    };

    explicit Findings(EditHistory *history, QObject *parent = nullptr);
    ~Findings() override;

    /// Forgets the former netlist, which must still exist, and uses @p netlist, which may be null.
    void setNetlist(NETWEIR::RtlNetlist *netlist);

    /// Marks the rows of the signals. The same object all the time.
    const SignalMarks *marks() const { return &m_marks; }

    int count() const { return m_audit.count(); }
    Finding at(int row) const { return m_audit.at(row); }
    /// "tarn_0, Probe Out3".
    QString placeText(const Place &place) const { return m_audit.placeText(place); }

    /// What may replace the name of @p finding, the best first. Empty while the search runs.
    QVector<Replacement> candidatesFor(const Finding &finding) const;
    /// Replacements that mend several findings at once. Empty while the search runs.
    QVector<Replacement> prefixChanges() const;
    /// How many findings are buses that takeOverBuses() replaces. 0 while the search runs.
    int changedBuses() const { return m_phase == Phase::Done ? m_changedBuses : 0; }

    // These are one step of the history each. False when a port would hold too many signals;
    // nothing changes then.
    bool replace(const Finding &finding, const Replacement &by);
    bool replaceAll(const Replacement &by);
    /// Replaces every changed bus by the design's bus of its name.
    bool takeOverBuses();

    State state() const;
    /// Writes to the debug stream what @p former, the state before a reload, has become.
    void reportReload(const State &former) const;

Q_SIGNALS:
    /// The findings have changed, and the marks perhaps.
    void changed();
    /// candidatesFor(), prefixChanges() and changedBuses() may have changed.
    void candidatesChanged();

private:
    /// What is done between two events of the user, in this order.
    enum class Phase { Collecting, Searching, Done };

    void update();
    void restartSearch();
    void queueSlice();
    void runSlice();
    bool collect(const QDeadlineTimer &deadline);
    void note(int row);
    std::optional<SignalItem> itemFor(const Replacement &by, ProbeType type) const;
    /// Replaces signals of the snapshot; the number of them, -1 when a port would hold too many.
    using Replace = std::function<int(ConfigSnapshot *, const DesignNames &)>;
    bool replaceSeveral(const Replace &replace, const QString &text);

    EditHistory *m_history;
    std::unique_ptr<DesignNames> m_names;
    SignalMarks m_marks;
    ConfigAudit m_audit{ConfigAudit::Notes::LeftOut};

    std::unique_ptr<CandidateSearch> m_search; ///< Null without a netlist.
    Phase m_phase = Phase::Done;
    bool m_sliceQueued = false;
    int m_collected = 0; ///< Findings that collect() has seen.
    QVector<MissingName> m_missing;
    int m_changedBuses = 0;
};

} // namespace TARN
