// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "namekeys.h"
#include "namelikeness.h"

#include <QString>

#include <deque>
#include <unordered_set>
#include <vector>

namespace NETWEIR {
class Hierachy;
class RtlNet;
class RtlNetBus;
class RtlNetlist;
} // namespace NETWEIR

namespace TARN {

/// The instances, nets and buses of a design, to be found by names that are not quite theirs.
///
/// Instances and entries, that is single nets and buses, have numbers from 0. Made in slices by
/// advance(). Owns no part of the netlist, which must live longer. Takes about 40 bytes for each
/// entry, and 100 more for each that is in an instance with many names in which was searched.
class DesignIndex
{
public:
    explicit DesignIndex(NETWEIR::RtlNetlist *netlist);

    /// Does a small part of the work, less than 0.1 ms. True when there is nothing left to do.
    bool advance();

    // Instances. Number 0 is the top.
    int parentOf(int instance) const { return instanceAt(instance).parent; }
    int depthOf(int instance) const { return instanceAt(instance).depth; }
    /// The name of the instance, valid as long as this object.
    QStringView nameOf(int instance) const { return instanceAt(instance).name; }
    /// The names from the top to the instance.
    std::vector<QStringView> levelsOf(int instance) const;
    /// Full name, without a slash at the end. Takes time in proportion to its length.
    QString pathOf(int instance) const;
    int firstChildOf(int instance) const { return instanceAt(instance).firstChild; }
    int childCountOf(int instance) const { return instanceAt(instance).childCount; }
    /// The child with that name, -1 when there is none.
    int childOf(int instance, QStringView name) const;

    // Entries.
    int entryCountOf(int instance) const { return instanceAt(instance).entryCount; }
    int instanceOf(int entry) const { return entryAt(entry).instance; }
    NETWEIR::RtlNet *netOf(int entry) const;    ///< Null for a bus.
    NETWEIR::RtlNetBus *busOf(int entry) const; ///< Null for a single net.
    /// The name within the instance, of a bus without its range.
    QString baseOf(int entry) const;

    /// Adds to @p entries those with that base and, as far as there are many, with the same names
    /// of instances above as @p levels has at its end. A few for each level.
    void findByEnd(const std::vector<QStringView> &levels, QStringView base,
                   std::vector<int> *entries) const;
    /// The same for instances with the last name of @p levels.
    void findInstancesByEnd(const std::vector<QStringView> &levels,
                            std::vector<int> *instances) const;
    /// The number of entries with that base; Capacity of NameKeys stands for as many or more.
    int countOf(QStringView base) const;

    // Similar names within one instance. When there are many, they have to be prepared first, which
    // advance() does. Then at most a few dozens are found, by the words that they share.
    bool isPrepared(int instance) const;
    void prepare(int instance);
    /// Adds what may be similar.
    void findSimilarEntries(int instance, const NameTokens &tokens,
                            std::vector<int> *entries) const;
    void findSimilarChildren(int instance, const NameTokens &tokens,
                             std::vector<int> *children) const;

private:
    struct Instance
    {
        NETWEIR::Hierachy *node = nullptr;
        QString name;
        quint64 hash = 0; ///< Of its name.
        int parent = -1;
        int depth = 0; ///< Number of its levels above.
        int firstChild = 0;
        int childCount = 0;
        int firstEntry = 0;
        int entryCount = 0;
    };
    struct Entry
    {
        void *object = nullptr;
        int instance = 0;
        bool bus = false;
    };

    const Instance &instanceAt(int i) const { return m_instances[std::size_t(i)]; }
    const Entry &entryAt(int i) const { return m_entries[std::size_t(i)]; }

    void addInstance(NETWEIR::Hierachy *node, int parent);
    bool openInstance();
    void addNextChild();
    void addNextEntry();
    void addEnd(quint64 key, int instance, int number);
    void prepareNext();
    void addWords(quint64 place, QStringView name, int number);
    void findSimilar(quint64 place, const NameTokens &tokens, std::vector<int> *numbers) const;

    std::deque<Instance> m_instances; ///< Each after its parent; the children of one in a row.
    std::deque<Entry> m_entries;
    NameKeys m_ends;     ///< Entries and instances by the ends of their names.
    NameKeys m_children; ///< Instances by parent and name.
    NameKeys m_words;    ///< In prepared instances, by instance and words.

    int m_open = -1;     ///< The instance that is being read.
    int m_nextChild = 0; ///< Position in it.
    int m_nextEntry = 0;

    std::unordered_set<int> m_prepared;
    int m_preparing = -1;
    int m_nextWord = 0; ///< Position in the entries and then the children.
};

} // namespace TARN
