// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "typeuses.h"

#include "designscopes.h"

#include <netweir/internal/sources/preprocessedtext.h>

#include <QByteArray>
#include <QHash>
#include <QPair>
#include <QSet>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

/// By name of a type: ids of the blocks that make the name known to all later texts.
using Owners = QHash<QByteArray, QVector<int>>;

Owners ownersOfTypes(const DesignScopes &scopes)
{
    Owners owners;
    for (int id = 0; id < scopes.blocks(); ++id) {
        const ScopeBlock &block = scopes.block(id);
        if (!block.package.isNull())
            continue;
        for (const QByteArray &type : block.types)
            owners[type].append(id);
        for (const auto &import : block.imports) {
            const int package = scopes.package(import.first);
            const QSet<QByteArray> types =
                package < 0 ? QSet<QByteArray>() : scopes.block(package).types;
            for (const QByteArray &type : types) {
                if (import.second.isNull() || import.second == type)
                    owners[type].append(id);
            }
        }
    }
    return owners;
}

/// Collects the uses, one text after the other.
class TypeUseFinder
{
public:
    TypeUseFinder(const DesignScopes &scopes, const Owners &owners)
        : m_scopes(scopes)
        , m_owners(owners)
        , m_result{QVector<QVector<int>>(scopes.texts()), QVector<QVector<int>>(scopes.blocks())}
    {
    }

    /// @p mentions are the mentions of types in a text, in order.
    void add(int text, const QVector<NameMention> &mentions);

    const TypeUses &result() const { return m_result; }

private:
    void addUse(int text, const QByteArray &name, int user);
    bool usesPackageOf(int text, int id) const;

    const DesignScopes &m_scopes;
    const Owners &m_owners;
    TypeUses m_result;
};

void TypeUseFinder::add(int text, const QVector<NameMention> &mentions)
{
    const QVector<int> &ids = m_scopes.blocksOf(text);
    int next = 0; // The first block that ends after the mention.
    QSet<QPair<int, QByteArray>> seen;
    for (const NameMention &mention : mentions) {
        while (next < ids.size() && m_scopes.block(ids[next]).range.end <= mention.offset)
            ++next;
        const bool inBlock =
            next < ids.size() && m_scopes.block(ids[next]).range.begin <= mention.offset;
        const int user = inBlock ? ids[next] : -1;
        if (seen.contains({user, mention.name}))
            continue;
        seen.insert({user, mention.name});
        addUse(text, mention.name, user);
    }
}

/// @p user is the block of the use, or -1. Types of the same text take precedence.
void TypeUseFinder::addUse(int text, const QByteArray &name, int user)
{
    const QVector<int> owners = m_owners.value(name);
    const auto own = std::find_if(owners.begin(), owners.end(),
                                  [&](int id) { return m_scopes.textOf(id) == text; });
    if (own == owners.end() && m_scopes.scopes(text).types.contains(name))
        return;
    const int owner = own == owners.end() ? owners.first() : *own;
    if (user >= 0 && owner != user && !m_scopes.block(user).types.contains(name))
        m_result.ofBlock[user].append(owner);
    if (own == owners.end() && !usesPackageOf(text, owner))
        m_result.ofText[text].append(owner);
}

/// Whether a text itself uses the package of an import.
bool TypeUseFinder::usesPackageOf(int text, int id) const
{
    const auto &imports = m_scopes.block(id).imports;
    return std::any_of(imports.begin(), imports.end(), [this, text](const auto &import) {
        return m_scopes.uses(text, import.first);
    });
}

} // namespace

TypeUses findTypeUses(const DesignSources &sources, const PreprocessedText &text,
                      const DesignScopes &scopes)
{
    const Owners owners = ownersOfTypes(scopes);
    TypeUseFinder finder(scopes, owners);
    const QList<QByteArray> keys = owners.keys();
    const QSet<QByteArray> names(keys.begin(), keys.end());
    for (int i = 0; i < scopes.texts() && !names.isEmpty(); ++i) {
        if (mayUseScopes(sources, text, i))
            finder.add(i, mentionsOf(names, text.texts()[i]));
    }
    return finder.result();
}

} // namespace NETWEIR::Internal
