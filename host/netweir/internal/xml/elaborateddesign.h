// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "definition.h"
#include "definitionreader.h"
#include "namepool.h"
#include "readoptions.h"
#include "sourcetexts.h"
#include "typetable.h"
#include "xmlelement.h"

#include <netweir/internal/parts/partroot.h>

#include <functional>
#include <memory>
#include <unordered_set>

namespace NETWEIR::Internal {

class XmlFile;

/// The parts of the XML that do not depend on the number of instances: types, definitions and the
/// routines of packages.
///
/// Owns the definitions and all names in them. Their elements are in memory one definition after
/// the other, and those of a large one run by run. Time is linear in the document; memory in its
/// declarations.
class ElaboratedDesign
{
public:
    /// Which of the elements of a definition are of interest.
    enum class Use { ComputedIndexes, All };
    /// Calls @p visit with those elements of a definition in memory: once with all of them or, for
    /// a large definition, once for each run of its members. False when the elements are not the
    /// same any more.
    using EachRun = std::function<bool(Use use, const std::function<void()> &visit)>;
    /// Receives a definition. False ends the reading.
    using Visit = std::function<bool(const Definition &definition, const EachRun &eachRun)>;

    /// Reads the design in @p file. Relative names of source files start in @p folder. False when
    /// the elements are not sound or do not have the expected form; for the latter, @p error then
    /// says why.
    ///
    /// The last definition comes first: the elaborator writes a definition before those that it
    /// instantiates. Each is passed to @p visit and afterwards its elements are forgotten. When
    /// some definitions come in another order, or call routines that come later, that is known
    /// after the reading only, see isOutdated().
    bool read(XmlFile *file, const ReadOptions &options, const QString &folder, const Visit &visit,
              QString *error);
    /// Reads @p definition once more and passes it to @p visit. False when its elements are not the
    /// same any more.
    bool readAgain(XmlFile *file, const Definition &definition, const Visit &visit);
    /// Reads the design in @p document, which must outlive this object: all elements stay.
    bool read(const pugi::xml_document &document, const ReadOptions &options, const QString &folder,
              QString *error);

    /// Lets go of the source texts, when nothing more is asked that they tell. They would be read
    /// again.
    void forgetTexts() { m_sources.forgetTexts(); }

    /// Lets go of all that definitions declare but their instances. Only they, and the names of
    /// scopes, can be asked for afterwards.
    void forgetDeclarations();

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

    /// A run of the members of a large definition.
    struct Run
    {
        XmlRun bytes;
        DefinitionReader::Counts first;
        DefinitionReader::Counts end;
        bool hasProcessWrites = false;
        bool hasComputedIndexes = false;
        bool hasUses = false; ///< Something that DefinitionMarker looks at.
    };

    bool readFrame(XmlFile *file, const ReadOptions &options, const QString &folder,
                   QString *error);
    bool isSound(XmlFile *file) const;
    bool readDefinitions(XmlFile *file, const ReadOptions &options, const Visit &visit);
    bool findDefinitions(const ReadOptions &options, QString *error);
    bool addDefinitions(XmlFile *file, const ReadOptions &options);
    bool readDefinition(XmlFile *file, const ReadOptions &options, Definition *definition);
    bool readRuns(XmlFile *file, const ReadOptions &options, Definition *definition);
    bool loadRun(XmlFile *file, Definition *definition, const Run &run);
    bool loadAgain(XmlFile *file, Definition *definition);
    EachRun eachRunOf(XmlFile *file, Definition *definition);
    DefinitionReader readerOf(Definition *definition);
    const XmlElement &elementOf(const Definition &definition, const XmlFile &file) const;
    void addPackage(const pugi::xml_node &node);
    void addRoutine(std::string_view name, const std::vector<bool> &arguments);
    QMap<QString, GenericValue> genericsOf(const Definition &definition) const;
    bool findRoots(bool areWrapped);
    bool sortBottomUp(const Definition *root, std::vector<State> *states, QString *error);

    TypeTable m_types;
    SourceTexts m_sources;
    std::function<Place(const Place &)> m_placeMap;
    NamePool m_names;
    std::vector<std::unique_ptr<Definition>> m_definitions;
    std::vector<int> m_elements; ///< Indexes in the file, by the number of the definition.
    std::unordered_map<int, std::vector<Run>> m_runs; ///< Of large definitions, by their numbers.
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
