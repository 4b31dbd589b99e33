// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "definition.h"
#include "readoptions.h"
#include "sourcetexts.h"
#include "typetable.h"

#include <memory>
#include <unordered_set>

namespace NETWEIR::Internal {

/// Everything that the XML says once, whatever is instantiated how often: types, definitions and
/// the routines of packages. Refers into the document, which has to outlive it.
class ElaboratedDesign
{
public:
    /// False when @p document is not of the expected form; @p error then says why.
    bool read(const pugi::xml_document &document, const ReadOptions &options, const QString &folder,
              QString *error);

    const TypeTable &types() const { return m_types; }
    SourceTexts &sources() { return m_sources; }
    Definition *top() const { return m_top; }

    /// Definitions below the top that it reaches, each after all that it instantiates.
    const std::vector<Definition *> &bottomUp() const { return m_bottomUp; }

    /// True when a variable of a package has that name: a reference may mean it instead of one of
    /// the module.
    bool isPackageVariable(std::string_view name) const;

    /// For each argument of the routine that @p call in @p definition calls, in order, whether it
    /// is written. Empty when the routine is unknown.
    std::vector<bool> writtenArguments(const Definition &definition, const Occurrence &call) const;

private:
    void addDefinition(const pugi::xml_node &node, const ReadOptions &options);
    void addPackage(const pugi::xml_node &node);
    void linkInstances();
    bool sortBottomUp(QString *error);

    TypeTable m_types;
    SourceTexts m_sources;
    std::vector<std::unique_ptr<Definition>> m_definitions;
    std::unordered_map<std::string_view, Definition *> m_byRawName;
    std::vector<Definition *> m_bottomUp;
    std::unordered_set<std::string_view> m_packageVariables;
    std::unordered_multimap<std::string_view, pugi::xml_node> m_routines;
    Definition *m_top = nullptr;
};

} // namespace NETWEIR::Internal
