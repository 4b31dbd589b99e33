// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "analysisorder.h"

#include "vhdldesign.h"

#include <netweir/internal/ground/depthfirstwalk.h>
#include <netweir/internal/vhdl/vhdlname.h>
#include <netweir/internal/vhdl/vhdltokens.h>

#include <QHash>
#include <QPair>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

using UnitKey = QPair<QByteArray, QByteArray>; ///< Library and folded name.

bool isPrimary(const VhdlUnit &unit)
{
    return unit.kind != VhdlUnit::Architecture && unit.kind != VhdlUnit::PackageBody;
}

/// Finds which files need which.
class FileNeeds
{
public:
    explicit FileNeeds(const VhdlDesign &design)
        : m_design(design)
    {
        for (int file = 0; file < design.size(); ++file) {
            const VhdlSource &source = design.source(file);
            for (const VhdlUnit &unit : source.file.units) {
                if (isPrimary(unit))
                    m_declared.insert({source.library, primaryNameOf(unit)}, file);
            }
        }
    }

    QVector<int> of(int file) const
    {
        QVector<int> result;
        const VhdlSource &source = m_design.source(file);
        for (const VhdlUnit &unit : source.file.units) {
            if (!isPrimary(unit))
                add({source.library, primaryNameOf(unit)}, file, &result);
        }
        addNamedIn(source, file, &result);
        std::sort(result.begin(), result.end());
        result.erase(std::unique(result.begin(), result.end()), result.end());
        return result;
    }

private:
    void add(const UnitKey &unit, int user, QVector<int> *files) const
    {
        const int file = m_declared.value(unit, user);
        if (file != user)
            files->append(file);
    }

    /// Whatever stands behind the name of a library.
    void addNamedIn(const VhdlSource &source, int file, QVector<int> *files) const
    {
        VhdlTokens tokens(source.text);
        QByteArray library;
        bool isSelected = false;
        for (VhdlToken token = tokens.next(); token.kind != VhdlToken::EndOfText;
             token = tokens.next()) {
            if (token.isName()) {
                const QByteArray name = foldedVhdlName(token.text);
                if (isSelected)
                    add({library == "work" ? source.library : library, name}, file, files);
                library = name;
                isSelected = false;
            } else {
                isSelected = token.is('.') && !library.isEmpty();
                if (!isSelected)
                    library.clear();
            }
        }
    }

    const VhdlDesign &m_design;
    QHash<UnitKey, int> m_declared;
};

} // namespace

QVector<int> analysisOrder(const VhdlDesign &design)
{
    const FileNeeds needs(design);
    QVector<int> result;
    DepthFirstWalk walk(design.size());
    for (int file = 0; file < design.size(); ++file) {
        walk.visit(
            file, [&needs](int node) { return needs.of(node); },
            [&result](int node) { result.append(node); }, [](int, int) {});
    }
    return result;
}

} // namespace NETWEIR::Internal
