// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designscopes.h"

#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/sources/preprocessedtext.h>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

QVector<PackageUse> usesIn(const TextScopes &scopes)
{
    QVector<PackageUse> result = scopes.uses;
    for (const ScopeBlock &block : scopes.blocks)
        result += block.uses;
    std::sort(result.begin(), result.end(),
              [](const PackageUse &a, const PackageUse &b) { return a.offset < b.offset; });
    return result;
}

QSet<QByteArray> packagesOf(const QVector<PackageUse> &uses)
{
    QSet<QByteArray> result;
    for (const PackageUse &use : uses)
        result.insert(use.package);
    return result;
}

} // namespace

DesignScopes::DesignScopes(const DesignSources &sources, const PreprocessedText &text)
{
    for (int i = 0; i < sources.files.size(); ++i) {
        m_scopes.append(mayUseScopes(sources, text, i)
                            ? scanScopes(text.texts()[i], isSystemVerilog(sources, i))
                            : TextScopes());
        m_isLibrary.append(sources.files[i].library);
        m_uses.append(usesIn(m_scopes.last()));
        m_usedPackages.append(packagesOf(m_uses.last()));
        m_types.unite(m_scopes.last().types);
    }
    numberBlocks();
}

void DesignScopes::numberBlocks()
{
    m_blocksOf.resize(texts());
    for (const bool library : {false, true}) {
        for (int i = 0; i < texts(); ++i) {
            for (int k = 0; k < m_scopes[i].blocks.size(); ++k) {
                const QByteArray &name = m_scopes[i].blocks[k].package;
                if (m_isLibrary[i] != library || m_packages.contains(name))
                    continue;
                if (!name.isNull())
                    m_packages.insert(name, m_blocks.size());
                m_blocksOf[i].append(m_blocks.size());
                m_blocks.append({i, k});
            }
        }
    }
}

const ScopeBlock &DesignScopes::block(int id) const
{
    return m_scopes[m_blocks[id].text].blocks[m_blocks[id].index];
}

QVector<int> DesignScopes::packagesNeededBy(int id) const
{
    QVector<int> result;
    for (const PackageUse &use : block(id).uses) {
        const int needed = package(use.package);
        if (needed >= 0 && needed != id)
            result.append(needed);
    }
    return result;
}

bool mayUseScopes(const DesignSources &sources, const PreprocessedText &text, int index)
{
    return isSystemVerilog(sources, index) || text.texts()[index].contains("`begin_keywords");
}

} // namespace NETWEIR::Internal
