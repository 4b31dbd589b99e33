// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "definition.h"
#include "definitionreader.h"
#include "namepool.h"
#include "readoptions.h"
#include "sourcetexts.h"
#include "typetable.h"

#include <netweir/internal/parts/partroot.h>

#include <functional>
#include <memory>
#include <unordered_set>

namespace NETWEIR::Internal {

class XmlFile;
struct XmlElement;

/// The parts of the XML that do not depend on the number of instances: types, definitions and the
/// routines of packages.
///
/// Owns the definitions and all names in them. Their elements are in memory one after the other.
/// Time is linear in the document; memory in its declarations, and in the elements of the largest
/// definition.
class ElaboratedDesign
{
public:
    /// Receives a definition whose elements are in memory.
    using Visit = std::function<void(const Definition &definition)>;

    /// Reads the design in @p file. Relative names of source files start in @p folder. False when
    /// the elements are not sound or do not have the expected form; for the latter, @p error then
    /// says why.
    ///
    /// The last definition comes first: the elaborator writes a definition before those that it
    /// instantiates. Each is passed to @p visit; afterwards its elements are forgotten. When some
    /// definitions come in another order, or call routines that come later, that is known after
    /// the reading only, see isOutdated().
    bool read(XmlFile *file, const ReadOptions &options, const QString &folder, const Visit &visit,
              QString *error);
    /// Reads @p definition once more and passes it to @p visit. False when its elements are not the
    /// same any more.
    bool readAgain(XmlFile *file, const Definition &definition, const ReadOptions &options,
                   const Visit &visit);
    /// Reads the design in @p document, which must outlive this object: all elements stay.
    bool read(const pugi::xml_document &document, const ReadOptions &options, const QString &folder,
              QString *error);

    /// Lets go of the source texts, when nothing more is asked that they tell. They would be read
    /// again.
    void forgetTexts() { m_sources.forgetTexts(); }

    /// True when writtenArguments() was asked for a routine and another one of that name was read
    /// later.
    bool isOutdated() const { return m_isOutdated; }

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

    /// The place of an element, as ReadOptions maps it.
    Place placeOf(const pugi::xml_node &node) const;

    /// Whether the routine that @p call in @p definition calls writes each of its arguments, in
    /// order. Empty for an unknown routine.
    std::vector<bool> writtenArguments(const Definition &definition, const Occurrence &call) const;

private:
    enum State : char { New, Open, Done };

    bool readFrame(XmlFile *file, const ReadOptions &options, const QString &folder,
                   QString *error);
    bool isSound(XmlFile *file) const;
    bool readDefinitions(XmlFile *file, const ReadOptions &options,
                         const std::function<void(Definition *definition)> &visit);
    bool findDefinitions(const ReadOptions &options, QString *error);
    bool addDefinitions(XmlFile *file, const ReadOptions &options);
    void readDefinition(const pugi::xml_node &node, const ReadOptions &options,
                        Definition *definition);
    const XmlElement &elementOf(const Definition &definition, const XmlFile &file) const;
    void addPackage(const pugi::xml_node &node);
    void addRoutine(const pugi::xml_node &routine);
    QMap<QString, GenericValue> genericsOf(const Definition &definition) const;
    bool findRoots(bool areWrapped);
    bool sortBottomUp(const Definition *root, std::vector<State> *states, QString *error);

    TypeTable m_types;
    SourceTexts m_sources;
    std::function<Place(const Place &)> m_placeMap;
    NamePool m_names;
    std::vector<std::unique_ptr<Definition>> m_definitions;
    std::vector<int> m_elements; ///< Indexes in the file, by the number of the definition.
    DefinitionNames m_definitionNames;
    std::vector<const Definition *> m_bottomUp;
    std::unordered_set<std::string_view> m_packageVariables;
    /// The names of all routines, and which of its arguments each one writes.
    std::unordered_multimap<std::string_view, std::vector<bool>> m_routines;
    mutable std::unordered_set<std::string> m_askedRoutines; ///< By writtenArguments().
    bool m_isOutdated = false;
    std::vector<const Definition *> m_roots;
};

} // namespace NETWEIR::Internal
