// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designindex.h"

#include "designnames.h"

#include <sdk/netweir.h>

#include <algorithm>
#include <array>

namespace TARN {

namespace {

// Steps of advance().
constexpr int EntriesAtOnce = 128;
constexpr int WordsAtOnce = 32;

/// Instances with fewer entries, or fewer children, are searched from end to end.
constexpr int FewNames = 64;

// What the keys are made of, besides the names.
enum Salt : quint64 { EntryEnd = 1, InstanceEnd, EntryWords, ChildWords, Middle, Front, Back };

quint64 wordKey(quint64 place, quint64 salt, quint64 hash)
{
    return joinedHash(joinedHash(place, salt), hash);
}

/// The words without those that tell what kind of thing it is.
quint64 middleHash(const NameTokens &tokens)
{
    quint64 hash = 0;
    for (int i = 0; i < tokens.count(); ++i) {
        if (tokens.at(i).affix == 0)
            hash = joinedHash(hash, tokens.at(i).hash);
    }
    return hash;
}

/// Calls @p visit with the keys under which a name is found by its words.
template <typename Visit>
void forWordKeys(quint64 place, const NameTokens &tokens, Visit visit)
{
    visit(wordKey(place, Middle, middleHash(tokens)));
    for (int i = 0; i < tokens.count(); ++i) {
        if (tokens.at(i).affix == 0)
            visit(joinedHash(place, tokens.at(i).hash));
    }
}

/// Half of the letters: names with one typing error have the same half at one end.
template <typename Visit>
void forHalfKeys(quint64 place, QStringView letters, int half, Visit visit)
{
    constexpr int Shortest = 2;
    if (half < Shortest)
        return;
    visit(wordKey(place, Front, textHash(letters.left(half))));
    visit(wordKey(place, Back, textHash(letters.right(half))));
}

quint64 placeOf(int instance, Salt salt)
{
    return joinedHash(quint64(instance), salt);
}

} // namespace

DesignIndex::DesignIndex(NETWEIR::RtlNetlist *netlist)
{
    addInstance(netlist->top(), -1);
}

bool DesignIndex::advance()
{
    if (m_open == -1 || m_nextEntry >= instanceAt(m_open).entryCount) {
        if (m_open != -1 && m_nextChild < instanceAt(m_open).node->children().size())
            addNextChild();
        else if (!openInstance()) {
            if (m_preparing == -1)
                return true;
            prepareNext();
        }
        return false;
    }
    addNextEntry();
    return false;
}

void DesignIndex::addInstance(NETWEIR::Hierachy *node, int parent)
{
    Instance instance;
    instance.node = node;
    instance.parent = parent;
    instance.depth = parent == -1 ? 0 : depthOf(parent) + 1;
    instance.name = node->instName();
    instance.hash = textHash(instance.name);
    const int number = int(m_instances.size());
    m_instances.push_back(instance);
    if (parent >= 0)
        m_children.add(joinedHash(quint64(parent), instance.hash), quint32(number));
    addEnd(joinedHash(InstanceEnd, instance.hash), parent, number);
}

/// Goes on to the next instance; false when there is none.
bool DesignIndex::openInstance()
{
    if (m_open + 1 >= int(m_instances.size()))
        return false;
    ++m_open;
    m_nextChild = 0;
    m_nextEntry = 0;
    Instance &instance = m_instances[std::size_t(m_open)];
    instance.firstChild = int(m_instances.size());
    instance.childCount = instance.node->children().size();
    instance.firstEntry = int(m_entries.size());
    instance.entryCount = instance.node->nets().size() + instance.node->buses().size();
    return true;
}

void DesignIndex::addNextChild()
{
    const auto &children = instanceAt(m_open).node->children();
    const int end = std::min(m_nextChild + EntriesAtOnce, int(children.size()));
    for (; m_nextChild < end; ++m_nextChild)
        addInstance(children.at(m_nextChild), m_open);
}

void DesignIndex::addNextEntry()
{
    const Instance &instance = instanceAt(m_open);
    const auto &nets = instance.node->nets();
    const auto &buses = instance.node->buses();
    const int end = std::min(m_nextEntry + EntriesAtOnce, instance.entryCount);
    for (; m_nextEntry < end; ++m_nextEntry) {
        const int number = int(m_entries.size());
        if (m_nextEntry < nets.size())
            m_entries.push_back({nets.at(m_nextEntry), m_open, false});
        else
            m_entries.push_back({buses.at(m_nextEntry - nets.size()), m_open, true});
        addEnd(joinedHash(EntryEnd, textHash(baseOf(number))), m_open, number);
    }
}

/// Adds the number under @p key, or, where there are many already, under longer and longer ends of
/// the path.
void DesignIndex::addEnd(quint64 key, int instance, int number)
{
    constexpr int MostLevels = 16;
    for (int level = 0; level < MostLevels && !m_ends.add(key, quint32(number)); ++level) {
        if (instance == -1)
            return;
        key = joinedHash(key, instanceAt(instance).hash);
        instance = instanceAt(instance).parent;
    }
}

std::vector<QStringView> DesignIndex::levelsOf(int instance) const
{
    std::vector<QStringView> levels;
    for (int i = instance; i != -1; i = parentOf(i))
        levels.push_back(nameOf(i));
    std::reverse(levels.begin(), levels.end());
    return levels;
}

QString DesignIndex::pathOf(int instance) const
{
    const std::vector<QStringView> levels = levelsOf(instance);
    QString path;
    for (const QStringView level : levels) {
        if (!path.isEmpty())
            path += QLatin1Char('/');
        path.append(level.data(), int(level.size()));
    }
    return path;
}

int DesignIndex::childOf(int instance, QStringView name) const
{
    const auto found = m_children.find(joinedHash(quint64(instance), textHash(name)));
    const auto child = std::find_if(found.begin(), found.end(), [&](quint32 number) {
        return parentOf(int(number)) == instance && nameOf(int(number)) == name;
    });
    return child == found.end() ? -1 : int(*child);
}

NETWEIR::RtlNet *DesignIndex::netOf(int entry) const
{
    const Entry &found = entryAt(entry);
    return found.bus ? nullptr : static_cast<NETWEIR::RtlNet *>(found.object);
}

NETWEIR::RtlNetBus *DesignIndex::busOf(int entry) const
{
    const Entry &found = entryAt(entry);
    return found.bus ? static_cast<NETWEIR::RtlNetBus *>(found.object) : nullptr;
}

QString DesignIndex::baseOf(int entry) const
{
    if (NETWEIR::RtlNet *net = netOf(entry))
        return net->name();
    QString name = busOf(entry)->BusName();
    name.truncate(int(baseOfBusName(name).size()));
    return name;
}

namespace {

/// Collects what is under the key of a short end of a path and, as long as that is full, under
/// those of longer ends.
template <typename Level, typename Add>
void forEnds(const NameKeys &keys, quint64 key, Level level, const Level &end, Add add)
{
    constexpr int MostLevels = 8;
    std::array<NameKeys::Found, 2> last; // Of the longest ends, which are the most alike.
    for (std::size_t i = 0; i < MostLevels; ++i) {
        last[i % 2] = keys.find(key);
        if (!last[i % 2].isFull() || level == end)
            break;
        key = joinedHash(key, textHash(*level++));
    }
    for (const NameKeys::Found &found : last) {
        for (const quint32 number : found)
            add(int(number));
    }
}

} // namespace

void DesignIndex::findByEnd(const std::vector<QStringView> &levels, QStringView base,
                            std::vector<int> *entries) const
{
    forEnds(m_ends, joinedHash(EntryEnd, textHash(base)), levels.crbegin(), levels.crend(),
            [&](int entry) {
                if (baseOf(entry) == base)
                    entries->push_back(entry);
            });
}

int DesignIndex::countOf(QStringView base) const
{
    return m_ends.find(joinedHash(EntryEnd, textHash(base))).count;
}

void DesignIndex::findInstancesByEnd(const std::vector<QStringView> &levels,
                                     std::vector<int> *instances) const
{
    if (levels.empty())
        return;
    const auto last = levels.crbegin();
    forEnds(m_ends, joinedHash(InstanceEnd, textHash(*last)), last + 1, levels.crend(),
            [&](int instance) {
                if (nameOf(instance) == *last)
                    instances->push_back(instance);
            });
}

bool DesignIndex::isPrepared(int instance) const
{
    return (entryCountOf(instance) <= FewNames && childCountOf(instance) <= FewNames) ||
           m_prepared.count(instance) != 0;
}

void DesignIndex::prepare(int instance)
{
    m_preparing = instance;
    m_nextWord = 0;
}

void DesignIndex::prepareNext()
{
    const Instance &instance = instanceAt(m_preparing);
    const int all = instance.entryCount + instance.childCount;
    const int end = std::min(m_nextWord + WordsAtOnce, all);
    for (; m_nextWord < end; ++m_nextWord) {
        const int entry = instance.firstEntry + m_nextWord;
        const int child = instance.firstChild + m_nextWord - instance.entryCount;
        if (m_nextWord < instance.entryCount)
            addWords(placeOf(m_preparing, EntryWords), baseOf(entry), entry);
        else
            addWords(placeOf(m_preparing, ChildWords), nameOf(child), child);
    }
    if (m_nextWord < all)
        return;
    m_prepared.insert(m_preparing);
    m_preparing = -1;
}

void DesignIndex::addWords(quint64 place, QStringView name, int number)
{
    const NameTokens tokens(name);
    const auto add = [this, number](quint64 key) { m_words.add(key, quint32(number)); };
    forWordKeys(place, tokens, add);
    forHalfKeys(place, tokens.letters(), int(tokens.letters().size()) / 2, add);
}

void DesignIndex::findSimilarEntries(int instance, const NameTokens &tokens,
                                     std::vector<int> *entries) const
{
    const Instance &found = instanceAt(instance);
    if (found.entryCount > FewNames) {
        findSimilar(placeOf(instance, EntryWords), tokens, entries);
        return;
    }
    for (int i = 0; i < found.entryCount; ++i)
        entries->push_back(found.firstEntry + i);
}

void DesignIndex::findSimilarChildren(int instance, const NameTokens &tokens,
                                      std::vector<int> *children) const
{
    const Instance &found = instanceAt(instance);
    if (found.childCount > FewNames) {
        findSimilar(placeOf(instance, ChildWords), tokens, children);
        return;
    }
    for (int i = 0; i < found.childCount; ++i)
        children->push_back(found.firstChild + i);
}

/// What many names share is no use, except all of the words.
void DesignIndex::findSimilar(quint64 place, const NameTokens &tokens,
                              std::vector<int> *numbers) const
{
    const auto take = [this, numbers](quint64 key) {
        const NameKeys::Found found = m_words.find(key);
        if (!found.isFull())
            numbers->insert(numbers->end(), found.begin(), found.end());
    };
    const std::size_t before = numbers->size();
    forWordKeys(place, tokens, take);
    const int length = int(tokens.letters().size());
    // The other name may have a letter more or less.
    for (int half = (length - 1) / 2; half <= (length + 1) / 2; ++half)
        forHalfKeys(place, tokens.letters(), half, take);
    const auto added = numbers->begin() + std::ptrdiff_t(before);
    std::sort(added, numbers->end());
    numbers->erase(std::unique(added, numbers->end()), numbers->end());
}

} // namespace TARN
