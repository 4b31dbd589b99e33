// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/tarncore.h>

#include <QHash>
#include <QString>
#include <QVector>

#include <chrono>
#include <memory>

namespace TARN {

class DesignNames;

/// What can take the place of something that is missing in the design.
struct Replacement
{
    enum Kind {
        Signal, ///< One net or bus for one other.
        Prefix, ///< An instance for another: all that is missing below the one is below the other.
    };

    Kind kind = Signal;
    QString from;     ///< Full name of what is missing, or of the instance in which it was.
    QString to;       ///< Full name of what the design has, or of the instance that has it.
    bool bus = false; ///< For Signal: to is a bus. A user clock cannot be one.
    int explains = 1; ///< How many of the missing entries it finds a place for.
};

/// A net or bus that a configuration names and the design does not have.
struct MissingName
{
    QString name;
    bool bus = false;             ///< Of a user clock and of a bit of a bus: false.
    ProbeType type = ProbeTypeIn; ///< Where it is used; of a user clock: ProbeTypeIn.
};

inline bool operator==(const MissingName &a, const MissingName &b)
{
    return a.type == b.type && a.bus == b.bus && a.name == b.name;
}

inline uint qHash(const MissingName &missing, uint seed = 0)
{
    return ::qHash(missing.name, seed) + uint(missing.type) * 2 + (missing.bus ? 1 : 0);
}

/// Finds what the design has in place of what is missing.
///
/// Works in slices, so that it never blocks the user. The index of the design is made at the first
/// need and kept, and so are the results for names that stay missing. They take about 40 bytes per
/// net and 1 kB per name. A name costs about 0.1 ms at most, whatever the design looks like. Owns
/// neither names nor netlist, which must live longer.
///
/// The same names have the same results, in whatever order and slices they were searched. Only the
/// prefix changes of former searches are remembered: when all that one explains was replaced, the
/// other names below that instance keep their candidates.
///
/// Only what ports of the kind can hold is offered; whether a port has room or holds it already is
/// not looked at. Nothing is offered when nothing is alike.
class CandidateSearch
{
public:
    explicit CandidateSearch(const DesignNames &names);
    ~CandidateSearch();
    Q_DISABLE_COPY(CandidateSearch)

    /// What is missing now. The same name may occur more than once. Returns at once; the search for
    /// what is new begins with the next step().
    void setMissing(const QVector<MissingName> &missing);

    /// Searches for about that time. True when all is found.
    bool step(std::chrono::microseconds budget);

    /// What can take the place of a missing name, the best first, at most nine. Prefix changes that
    /// explain it come first. Empty before it is found.
    QVector<Replacement> candidates(const QString &name, ProbeType type) const;

    /// The prefix changes that are the best explanation of at least one name, those that explain
    /// most first. Each explains at least two names. Empty before all is found.
    QVector<Replacement> prefixChanges() const;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace TARN
