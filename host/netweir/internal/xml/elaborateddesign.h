// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "definition.h"
#include "readoptions.h"
#include "sourcetexts.h"
#include "typetable.h"

#include <netweir/internal/parts/partroot.h>

#include <functional>
#include <memory>
#include <unordered_set>

namespace NETWEIR::Internal {

/// The parts of the XML that do not depend on the number of instances: types, definitions and the
/// routines of packages.
///
/// Owns the definitions, which do not change after read(). Refers to the document, which must
/// outlive this object. Time and memory are linear in the document.
class ElaboratedDesign
{
public:
    /// False when @p document does not have the expected form; @p error then says why. Relative
    /// names of source files start in @p folder.
    bool read(const pugi::xml_document &document, const ReadOptions &options, const QString &folder,
              QString *error);

    const TypeTable &types() const { return m_types; }
    /// The top of the file, or what its wrapper instantiates.
    const std::vector<const Definition *> &roots() const { return m_roots; }
    const Definition &top() const { return *m_roots.front(); }

    /// One default value per definition, indexed by the number of the definition.
    template <typename T>
    std::vector<T> listByDefinition() const
    {
        return std::vector<T>(m_definitions.size());
    }

    /// The roots and all definitions below them, each after the definitions that it instantiates.
    const std::vector<const Definition *> &bottomUp() const { return m_bottomUp; }

    /// True when @p reference, made in a module, names a variable of a package.
    bool isToPackage(const Reference &reference) const;

    /// The bits of an expression on a pin of a foreign unit, 0 when they are not known.
    qint64 connectedWidth(const pugi::xml_node &expression) const;

    /// The parameters of foreign units that the instances of @p definition set, by their declared
    /// names.
    QMap<QString, GenericValue> setParametersOf(const Definition &definition) const;

    /// The place of an element, as ReadOptions maps it.
    Place placeOf(const pugi::xml_node &node) const;

    /// Whether the routine that @p call in @p definition calls writes each of its arguments, in
    /// order. Empty for an unknown routine.
    std::vector<bool> writtenArguments(const Definition &definition, const Occurrence &call) const;

private:
    enum State : char { New, Open, Done };

    void addDefinition(const pugi::xml_node &node, const ReadOptions &options);
    void addPackage(const pugi::xml_node &node);
    void readDefinitions(const ReadOptions &options);
    bool findRoots(bool areWrapped);
    bool sortBottomUp(const Definition *root, std::vector<State> *states, QString *error);

    TypeTable m_types;
    SourceTexts m_sources;
    std::function<Place(const Place &)> m_placeMap;
    std::vector<std::unique_ptr<Definition>> m_definitions;
    std::vector<const Definition *> m_bottomUp;
    std::unordered_set<std::string_view> m_packageVariables;
    std::unordered_multimap<std::string_view, pugi::xml_node> m_routines;
    std::vector<const Definition *> m_roots;
};

} // namespace NETWEIR::Internal
