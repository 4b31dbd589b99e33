// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "candidates.h"

#include "counterpart.h"
#include "designindex.h"
#include "designnames.h"
#include "missingtree.h"
#include "namesearch.h"
#include "prefixsearch.h"

#include <QHash>

#include <algorithm>

namespace TARN {

class CandidateSearch::Private
{
public:
    explicit Private(const DesignNames &designNames)
        : names(designNames)
    {
    }

    void setMissing(const QVector<MissingName> &missing);
    bool advance();
    QVector<Replacement> candidates(const QString &name, ProbeType type) const;
    QVector<Replacement> prefixChanges() const;

private:
    struct Entry
    {
        MissingName missing;
        NameResult result;
        bool searched = false;
        QVector<RatedName> moved; ///< In the instance to which its own seems to have moved.
        int count = 0;            ///< How often it is missing.
    };

    void searchNext();
    void startPrefixes();
    void rememberMoves();
    void searchMovedNext();
    QString movedNameOf(const Entry &entry) const;
    QVector<RatedName> candidatesOf(const Entry &entry) const;
    Replacement replacementOf(const PrefixSearch::Change &change) const;
    int positionOf(const QString &name, ProbeType type) const;

    const DesignNames &names;
    std::unique_ptr<DesignIndex> index;
    std::unique_ptr<MissingTree> tree;
    std::unique_ptr<NameSearch> search;
    std::unique_ptr<PrefixSearch> prefixes; ///< Null until all names are searched.

    QVector<MissingName> given;
    std::vector<std::unique_ptr<Entry>> entries; ///< Each name once, in the order given.
    QHash<MissingName, int> positions;
    std::size_t next = 0;
    std::size_t nextMoved = 0;
    QHash<QString, QString> moves; ///< The best prefix changes of this search and of former ones.
    bool done = true;
};

/// Takes over what is known of names that stay.
void CandidateSearch::Private::setMissing(const QVector<MissingName> &missing)
{
    if (given == missing)
        return;
    given = missing;
    std::vector<std::unique_ptr<Entry>> former;
    former.swap(entries);
    const QHash<MissingName, int> formerPositions = positions;
    prefixes.reset();
    positions.clear();
    next = 0;
    nextMoved = 0;
    for (const MissingName &each : missing) {
        const auto known = positions.constFind(each);
        if (known != positions.cend()) {
            ++entries[std::size_t(*known)]->count;
            continue;
        }
        positions.insert(each, int(entries.size()));
        const int position = formerPositions.value(each, -1);
        if (position == -1)
            entries.push_back(std::make_unique<Entry>(Entry{each, {}, false, {}, 0}));
        else
            entries.push_back(std::move(former[std::size_t(position)]));
        entries.back()->count = 1;
        entries.back()->moved.clear();
    }
    done = entries.empty();
}

/// Does a small part of the work. True when there is nothing left to do.
bool CandidateSearch::Private::advance()
{
    if (done)
        return true;
    if (!index) {
        index = std::make_unique<DesignIndex>(names.netlist());
        tree = std::make_unique<MissingTree>(*index);
        search = std::make_unique<NameSearch>(names, *index, tree.get());
    }
    if (!index->advance())
        return false;
    if (next < entries.size())
        searchNext();
    else if (!prefixes)
        startPrefixes();
    else if (prefixes->advance())
        searchMovedNext();
    return done;
}

void CandidateSearch::Private::searchNext()
{
    Entry &entry = *entries[next];
    if (!entry.searched) {
        NameResult result;
        const int unprepared = search->search(MissingPath(entry.missing), &result);
        if (unprepared != -1) {
            index->prepare(unprepared);
            return;
        }
        entry.result = result;
        entry.searched = true;
    }
    ++next;
}

void CandidateSearch::Private::startPrefixes()
{
    std::vector<PrefixSearch::Name> missing;
    missing.reserve(entries.size());
    for (const std::unique_ptr<Entry> &entry : entries)
        missing.push_back({&entry->missing, &entry->result, entry->count});
    prefixes = std::make_unique<PrefixSearch>(names, *index, tree.get(), std::move(missing));
}

/// What the name would be if its instance had moved with those of other names.
QString CandidateSearch::Private::movedNameOf(const Entry &entry) const
{
    for (int path = entry.result.path; path != -1; path = tree->parentOf(path)) {
        const auto move = moves.constFind(tree->pathOf(path));
        if (move != moves.cend())
            return movedName(entry.missing.name, move.key(), move.value());
    }
    return QString();
}

/// Also for later: a name that stays missing does not lose what was found for it because the others
/// that moved with it were replaced.
void CandidateSearch::Private::rememberMoves()
{
    const std::vector<int> &best = prefixes->bestChanges();
    // The best last, so that it counts.
    for (auto change = best.crbegin(); change != best.crend(); ++change)
        moves.insert(prefixes->changeAt(*change).from, prefixes->changeAt(*change).to);
}

/// Names that no prefix change explains may have got another name in an instance that moved.
void CandidateSearch::Private::searchMovedNext()
{
    if (nextMoved == 0)
        rememberMoves();
    if (nextMoved == entries.size() || moves.isEmpty()) {
        done = true;
        return;
    }
    Entry &entry = *entries[nextMoved];
    const QString name =
        prefixes->changesOf(int(nextMoved)).empty() ? movedNameOf(entry) : QString();
    if (!name.isEmpty()) {
        NameResult result;
        const int unprepared =
            search->search(MissingPath({name, entry.missing.bus, entry.missing.type}), &result);
        if (unprepared != -1) {
            index->prepare(unprepared);
            return;
        }
        constexpr float ByMove = 0.95F;
        for (RatedName &candidate : result.candidates) {
            candidate.likeness *= ByMove;
            if (candidate.sameInstance)
                entry.moved.append(candidate);
        }
    }
    ++nextMoved;
}

/// All that was found for the name alone, the best first.
QVector<RatedName> CandidateSearch::Private::candidatesOf(const Entry &entry) const
{
    QVector<RatedName> all = entry.result.candidates;
    for (const RatedName &moved : entry.moved) {
        const auto known = std::find_if(all.begin(), all.end(), [&moved](const RatedName &other) {
            return other.name == moved.name;
        });
        if (known == all.end())
            all.append(moved);
        else
            known->likeness = std::max(known->likeness, moved.likeness);
    }
    std::sort(all.begin(), all.end(), isMoreAlike);
    return all;
}

Replacement CandidateSearch::Private::replacementOf(const PrefixSearch::Change &change) const
{
    Replacement replacement;
    replacement.kind = Replacement::Prefix;
    replacement.from = change.from;
    replacement.to = change.to;
    replacement.explains = change.explains;
    return replacement;
}

int CandidateSearch::Private::positionOf(const QString &name, ProbeType type) const
{
    const int single = positions.value({name, false, type}, -1);
    return single == -1 ? positions.value({name, true, type}, -1) : single;
}

QVector<Replacement> CandidateSearch::Private::candidates(const QString &name, ProbeType type) const
{
    const int position = positionOf(name, type);
    if (position == -1)
        return {};
    const Entry &entry = *entries[std::size_t(position)];
    QVector<Replacement> found;
    QStringList moved;
    if (prefixes && done) {
        for (const int change : prefixes->changesOf(position)) {
            found.append(replacementOf(prefixes->changeAt(change)));
            moved.append(movedName(name, found.last().from, found.last().to));
        }
    }
    // What a prefix change leads to can also be chosen for this name alone.
    for (const QString &each : qAsConst(moved))
        found.append({Replacement::Signal, name, each, entry.missing.bus, 1});
    const QVector<RatedName> own = candidatesOf(entry);
    for (const RatedName &candidate : own) {
        if (!moved.contains(candidate.name))
            found.append({Replacement::Signal, name, candidate.name, candidate.bus, 1});
    }
    constexpr int Most = 9;
    return found.mid(0, Most);
}

QVector<Replacement> CandidateSearch::Private::prefixChanges() const
{
    QVector<Replacement> found;
    if (!prefixes || !done)
        return found;
    for (const int change : prefixes->bestChanges())
        found.append(replacementOf(prefixes->changeAt(change)));
    return found;
}

CandidateSearch::CandidateSearch(const DesignNames &names)
    : d(std::make_unique<Private>(names))
{
}

CandidateSearch::~CandidateSearch() = default;

void CandidateSearch::setMissing(const QVector<MissingName> &missing)
{
    d->setMissing(missing);
}

bool CandidateSearch::step(std::chrono::microseconds budget)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + budget;
    while (!d->advance()) {
        if (Clock::now() >= end)
            return false;
    }
    return true;
}

QVector<Replacement> CandidateSearch::candidates(const QString &name, ProbeType type) const
{
    return d->candidates(name, type);
}

QVector<Replacement> CandidateSearch::prefixChanges() const
{
    return d->prefixChanges();
}

} // namespace TARN
