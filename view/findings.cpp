// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "findings.h"

#include "edithistory.h"

#include <audit/findingcandidates.h>
#include <audit/replacement.h>
#include <model/configsnapshot.h>
#include <model/netsignals.h>
#include <sdk/netweir.h>

#include <QDeadlineTimer>
#include <QDebug>

#include <chrono>

namespace TARN {

namespace {

/// How long the search may keep the events of the user waiting.
constexpr std::chrono::milliseconds Slice{5};

} // namespace

Findings::Findings(EditHistory *history, QObject *parent)
    : QObject(parent)
    , m_history(history)
{
    connect(m_history, &EditHistory::changed, this, &Findings::update);
}

Findings::~Findings() = default;

void Findings::setNetlist(NETWEIR::RtlNetlist *netlist)
{
    m_search.reset();
    std::unique_ptr<DesignNames> names;
    if (netlist)
        names = std::make_unique<DesignNames>(netlist);
    m_marks.setNames(names.get());
    m_audit.setNames(names.get());
    m_names = std::move(names);
    if (m_names)
        m_search = std::make_unique<CandidateSearch>(*m_names);
    restartSearch();
    Q_EMIT changed();
}

void Findings::update()
{
    m_audit.update(m_history->current());
    restartSearch();
    Q_EMIT changed();
}

// The search

void Findings::restartSearch()
{
    m_missing.clear();
    m_changedBuses = 0;
    m_collected = 0;
    m_phase = m_search && count() > 0 ? Phase::Collecting : Phase::Done;
    if (m_phase != Phase::Done)
        queueSlice();
}

void Findings::queueSlice()
{
    if (m_sliceQueued)
        return;
    m_sliceQueued = true;
    QMetaObject::invokeMethod(this, &Findings::runSlice, Qt::QueuedConnection);
}

void Findings::runSlice()
{
    m_sliceQueued = false;
    if (m_phase == Phase::Done) // Given up meanwhile.
        return;
    if (m_phase == Phase::Collecting && collect(QDeadlineTimer(Slice))) {
        m_search->setMissing(m_missing);
        m_phase = Phase::Searching;
    } else if (m_phase == Phase::Searching && m_search->step(Slice)) {
        m_phase = Phase::Done;
        Q_EMIT candidatesChanged();
        return;
    }
    queueSlice();
}

/// Notes what is missing or has changed among the next findings. True when it has seen all.
bool Findings::collect(const QDeadlineTimer &deadline)
{
    while (m_collected < count()) {
        note(m_collected++);
        if (m_collected % 64 == 0 && deadline.hasExpired())
            return false;
    }
    return true;
}

void Findings::note(int row)
{
    const Rule rule = m_audit.ruleAt(row);
    if (!isMissing(rule) && rule != Rule::BusChanged)
        return;
    const Place place = m_audit.placeAt(row);
    if (rule == Rule::BusChanged) {
        const QString name = nameAt(m_history->current(), place);
        m_changedBuses += busInPlaceOf(name, place.type, *m_names) ? 1 : 0;
    } else if (const auto missing = missingNameOf(rule, place, m_history->current())) {
        m_missing.append(*missing);
    }
}

QVector<Replacement> Findings::candidatesFor(const Finding &finding) const
{
    if (!m_search || (isMissing(finding.rule) && m_phase != Phase::Done))
        return {};
    return candidatesOf(finding, *m_search, *m_names);
}

QVector<Replacement> Findings::prefixChanges() const
{
    if (!m_search || m_phase != Phase::Done)
        return {};
    return m_search->prefixChanges();
}

// Replacing

std::optional<SignalItem> Findings::itemFor(const Replacement &by, ProbeType type) const
{
    if (!m_names)
        return std::nullopt;
    if (by.bus) {
        NETWEIR::RtlNetBus *bus = m_names->bus(by.to);
        return bus ? std::optional<SignalItem>(signalOf(bus, type)) : std::nullopt;
    }
    NETWEIR::RtlNet *net = m_names->net(by.to);
    return net ? std::optional<SignalItem>(signalOf(net, type)) : std::nullopt;
}

bool Findings::replace(const Finding &finding, const Replacement &by)
{
    m_history->commitTyping();
    ConfigSnapshot target = m_history->current();
    const std::optional<SignalItem> item = itemFor(by, typeOf(finding.place));
    if (!item ||
        nameAt(target, finding.place) != finding.name) // Chosen for what is gone meanwhile.
        return true;
    if (!replaceSignal(&target, finding.place, *item))
        return false;
    m_history->apply(target, tr("Replace Signal"));
    return true;
}

bool Findings::replaceAll(const Replacement &by)
{
    return replaceSeveral(
        [&by](ConfigSnapshot *target, const DesignNames &names) {
            return replacePrefix(target, by.from, by.to, names);
        },
        tr("Replace Signals"));
}

bool Findings::takeOverBuses()
{
    return replaceSeveral(TARN::takeOverBuses, tr("Take Over Buses"));
}

bool Findings::replaceSeveral(const Replace &replace, const QString &text)
{
    if (!m_names)
        return true;
    m_history->commitTyping();
    ConfigSnapshot target = m_history->current();
    const int replaced = replace(&target, *m_names);
    if (replaced > 0)
        m_history->apply(target, text);
    return replaced >= 0;
}

// Reloads of the design

Findings::State Findings::state() const
{
    State state;
    for (int i = 0; i < count(); ++i) {
        const Rule rule = m_audit.ruleAt(i);
        if (isMissing(rule))
            state.missing.insert(nameAt(m_history->current(), m_audit.placeAt(i)));
        else if (rule == Rule::BusChanged)
            state.changed.insert(nameAt(m_history->current(), m_audit.placeAt(i)));
    }
    return state;
}

void Findings::reportReload(const State &former) const
{
    const State now = state();
    const int gone = (QSet<QString>(now.missing) - former.missing).size();
    const int changed = (QSet<QString>(now.changed) - former.changed).size();
    qDebug("design reloaded: nets gone: %d, buses changed: %d, signals marked: %d", gone, changed,
           m_audit.markedCount());
}

} // namespace TARN
