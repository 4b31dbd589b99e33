// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "joinednetlist.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/ground/messages.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnetlist.h>

#include <algorithm>
#include <utility>

namespace NETWEIR::Internal {

namespace {

class Joiner
{
public:
    Joiner(const std::vector<ReadPart> &parts, const std::vector<ReadRoot> &roots,
           const QString &topName)
        : m_parts(parts)
        , m_roots(roots)
        , m_builder(topName)
    {
    }

    std::unique_ptr<RtlNetlist> join(QString *error);

private:
    /// A root whose node is in the netlist, but without content.
    struct Pending
    {
        int root;
        int outer; ///< The number of the one that contains it, -1 for the top.
        Hierachy *node;
        DrivenPorts driven;
    };
    /// The same when it is built; what later ones have to know about it.
    struct Built
    {
        int root;
        int outer;
    };

    void build(const Pending &pending);
    void add(const BorderInstance &instance, const ReadPart &part, int outer);
    bool isInside(int root, int outer) const;
    QString endlessError(int root, int outer) const;
    QString unitName(int root) const;
    bool isJtagPrimitive(int root) const;

    const std::vector<ReadPart> &m_parts;
    const std::vector<ReadRoot> &m_roots;
    NetlistBuilder m_builder;
    std::vector<Pending> m_pending;
    std::vector<Built> m_built;
    bool m_usesJtag = false;
    QString m_error; ///< The first instantiation that never ends.
};

std::unique_ptr<RtlNetlist> Joiner::join(QString *error)
{
    for (const ReadPart &part : m_parts)
        m_usesJtag = m_usesJtag || part.part->usesJtagPrimitive();
    m_pending.push_back({0, -1, m_builder.top(), {}});
    while (!m_pending.empty() && m_error.isEmpty()) {
        const Pending next = std::move(m_pending.back());
        m_pending.pop_back();
        build(next);
    }
    *error = m_error;
    if (!m_error.isEmpty())
        return nullptr;
    m_builder.setUsesJtagPrimitive(m_usesJtag);
    return m_builder.take();
}

void Joiner::build(const Pending &pending)
{
    const int number = countOf(m_built);
    m_built.push_back({pending.root, pending.outer});
    const ReadRoot &root = itemAt(m_roots, pending.root);
    const ReadPart &part = itemAt(m_parts, root.part);
    m_builder.setVhdl(pending.node, part.language == Language::Vhdl);
    const auto border = [&](const BorderInstance &instance) { add(instance, part, number); };
    // Without others, the top is built once.
    if (m_roots.size() == 1)
        part.part->buildLast(root.index, pending.driven, pending.node, &m_builder, border);
    else
        part.part->build(root.index, pending.driven, pending.node, &m_builder, border);
}

/// Adds the node of a border. Its content comes later.
void Joiner::add(const BorderInstance &instance, const ReadPart &part, int outer)
{
    const int number = itemAt(part.foreign, instance.root);
    if (!m_error.isEmpty())
        return;
    if (isInside(number, outer)) {
        m_error = endlessError(number, outer);
        return;
    }
    m_usesJtag = m_usesJtag || isJtagPrimitive(number);
    Hierachy *node = m_builder.addHierachy(instance.parent, instance.name, unitName(number));
    if (!instance.identifiers.empty())
        m_builder.setIdentifiers(node, instance.identifiers);
    m_pending.push_back({number, outer, node, itemAt(m_roots, number).ports->driven(instance)});
}

/// Whether the root is the built one with the number @p outer, or around it. An equal root inside
/// would contain the next one, and so on. No root is twice on such a way, so it is short.
bool Joiner::isInside(int root, int outer) const
{
    for (; outer >= 0; outer = itemAt(m_built, outer).outer) {
        if (itemAt(m_built, outer).root == root)
            return true;
    }
    return false;
}

QString Joiner::endlessError(int root, int outer) const
{
    QStringList circle{unitName(root)};
    for (; itemAt(m_built, outer).root != root; outer = itemAt(m_built, outer).outer)
        circle.prepend(unitName(itemAt(m_built, outer).root));
    circle.prepend(unitName(root));
    return errorMessage(itemAt(m_roots, root).place,
                        Text::tr("The instantiation never ends (%1). Break the circle or end it "
                                 "with a generate condition.")
                            .arg(circle.join(QLatin1String(" -> "))));
}

QString Joiner::unitName(int root) const
{
    const ReadRoot &read = itemAt(m_roots, root);
    return itemAt(m_parts, read.part).part->unitName(read.index);
}

bool Joiner::isJtagPrimitive(int root) const
{
    const bool isVhdl = itemAt(m_parts, itemAt(m_roots, root).part).language == Language::Vhdl;
    return unitName(root).compare(QLatin1String(JtagPrimitive),
                                  isVhdl ? Qt::CaseInsensitive : Qt::CaseSensitive) == 0;
}

} // namespace

std::unique_ptr<RtlNetlist> joinParts(const std::vector<ReadPart> &parts,
                                      const std::vector<ReadRoot> &roots, const QString &topName,
                                      QString *error)
{
    return Joiner(parts, roots, topName).join(error);
}

} // namespace NETWEIR::Internal
