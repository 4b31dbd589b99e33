// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "vhdlfacts.h"

#include "vhdlindexes.h"
#include "vhdlname.h"
#include "vhdlrecords.h"
#include "vhdltokens.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/ground/readguard.h>

#include <QHash>
#include <QPair>
#include <QSet>

#include <vector>

namespace NETWEIR::Internal {

namespace {

/// A folded name in the scope with this number.
using ScopedName = QPair<int, QByteArray>;

/// A unit of one of the sources.
struct UnitOfSource
{
    const VhdlSource *source = nullptr;
    const VhdlUnit *unit = nullptr;
};

/// Joins parts of a key, which contain no line ends.
QByteArray keyOf(const QByteArray &a, const QByteArray &b)
{
    return a + '\n' + b;
}

/// The names in the uses "library.package.item".
void addPackages(const VhdlUnit *unit, QByteArrayList *packages)
{
    if (!unit)
        return;
    for (const QByteArrayList &use : unit->context.uses) {
        if (use.size() > 1)
            packages->append(foldedVhdlName(use.at(1)));
    }
}

} // namespace

/// Scopes have numbers of their own here: one for each path.
struct VhdlArchitectureFacts::Private
{
    QByteArray entityName;
    QByteArray library;
    const VhdlRecords *records = nullptr;
    QByteArrayList packages; ///< Units that may declare its types.
    int scopes = 1;
    QHash<ScopedName, int> children; ///< By the label.
    QHash<ScopedName, QByteArray> spellings;
    QHash<ScopedName, QByteArray> types;
    QHash<ScopedName, QSet<QByteArray>> associated; ///< Formals, by the label of the instance.
    QHash<ScopedName, QByteArray> libraries;        ///< Of entities, by the label of the instance.
    QHash<ScopedName, int> indexDepths;

    int scopeAt(const QByteArrayList &path) const;
    int childOf(int scope, const QByteArray &label);
    void addSpelling(int scope, const QByteArray &name);
};

int VhdlArchitectureFacts::Private::scopeAt(const QByteArrayList &path) const
{
    int scope = 0;
    for (const QByteArray &label : path) {
        scope = children.value({scope, label}, -1);
        if (scope < 0)
            break;
    }
    return scope;
}

int VhdlArchitectureFacts::Private::childOf(int scope, const QByteArray &label)
{
    int &child = children[{scope, foldedVhdlName(label)}];
    if (child == 0)
        child = scopes++;
    return child;
}

void VhdlArchitectureFacts::Private::addSpelling(int scope, const QByteArray &name)
{
    const ScopedName key(scope, foldedVhdlName(name));
    if (!spellings.contains(key))
        spellings.insert(key, name);
}

VhdlArchitectureFacts::VhdlArchitectureFacts()
    : d(std::make_unique<Private>())
{
}

VhdlArchitectureFacts::~VhdlArchitectureFacts() = default;

QByteArray VhdlArchitectureFacts::entityName() const
{
    return d->entityName;
}

QByteArray VhdlArchitectureFacts::library() const
{
    return d->library;
}

QByteArray VhdlArchitectureFacts::spelling(const QByteArrayList &path, const QByteArray &name) const
{
    return d->spellings.value({d->scopeAt(path), name});
}

QByteArray VhdlArchitectureFacts::fieldSpelling(const QByteArrayList &path,
                                                const QByteArray &signal,
                                                const QByteArrayList &fields,
                                                const QByteArray &name) const
{
    const QByteArray type = d->types.value({d->scopeAt(path), signal});
    return d->records->spelling(type, fields, name, d->packages);
}

bool VhdlArchitectureFacts::isAssociated(const QByteArrayList &path, const QByteArray &label,
                                         const QByteArray &formal) const
{
    const auto found = d->associated.constFind({d->scopeAt(path), label});
    return found != d->associated.constEnd() && found->contains(formal);
}

QByteArray VhdlArchitectureFacts::libraryOf(const QByteArrayList &path,
                                            const QByteArray &label) const
{
    return d->libraries.value({d->scopeAt(path), label}, d->library);
}

int VhdlArchitectureFacts::computedIndexDepth(const QByteArrayList &path,
                                              const QByteArray &name) const
{
    return d->indexDepths.value({d->scopeAt(path), name}, -1);
}

namespace {

/// The bindings by scope, and component and label.
using Bindings = QHash<ScopedName, const VhdlBinding *>;

Bindings bindingsOf(const VhdlUnit &unit)
{
    Bindings bindings;
    for (const VhdlBinding &binding : unit.bindings) {
        if (binding.component.isEmpty())
            continue;
        const QByteArray component = foldedVhdlName(binding.component.last());
        for (const QByteArray &label : binding.labels)
            bindings.insert({binding.scope, keyOf(component, foldedVhdlName(label))}, &binding);
    }
    return bindings;
}

/// What bindings call the instance: by its own label or together with others.
QByteArrayList labelsOf(const VhdlInstance &instance)
{
    return {foldedVhdlName(instance.label), "all", "others"};
}

/// A binding holds only for the instances directly in its scope.
const VhdlBinding *bindingOf(const VhdlInstance &instance, const Bindings &bindings)
{
    if (bindings.isEmpty() || instance.kind != VhdlInstance::Component)
        return nullptr;
    const QByteArray component = foldedVhdlName(instance.unit.last());
    for (const QByteArray &label : labelsOf(instance)) {
        if (const VhdlBinding *const found =
                bindings.value({instance.scope, keyOf(component, label)}))
            return found;
    }
    return nullptr;
}

/// The ports that a port map connects to something other than open. @p interface tells those
/// that are connected by position; null if it is not known.
QSet<QByteArray> associatedFormals(const QVector<VhdlAssociation> &portMap,
                                   const VhdlInterface *interface)
{
    QSet<QByteArray> formals;
    for (int i = 0; i < portMap.size(); ++i) {
        const VhdlAssociation &association = portMap.at(i);
        if (association.isOpen)
            continue;
        for (const QByteArray &name : association.formalNames)
            formals.insert(foldedVhdlName(name));
        if (association.formalNames.isEmpty() && interface && i < interface->ports.size())
            formals.insert(foldedVhdlName(interface->ports.at(i).name));
    }
    return formals;
}

/// The library of the unit "library.unit" or "unit" in a source of the library @p own.
QByteArray libraryIn(const QByteArrayList &unit, const QByteArray &own)
{
    const bool isOwn = unit.size() < 2 || sameVhdlName(unit.first(), "work");
    return foldedVhdlName(isOwn ? own : unit.first());
}

/// A binding and its source.
struct BindingOfSource
{
    const VhdlBinding *binding = nullptr;
    const VhdlSource *source = nullptr;
};

/// A place in the levels of a configuration.
struct ConfiguredPlace
{
    QByteArray library;
    QByteArray entity;
    QByteArrayList path; ///< The architecture, and the labels of blocks and generates within.
};

/// The bindings of configurations by the place, component and label of what they bind.
class ConfiguredBindings
{
public:
    void add(const VhdlSource &source, const VhdlUnit &configuration);
    QVector<BindingOfSource> find(const UnitOfSource &architecture,
                                  const VhdlInstance &instance) const;

private:
    static QByteArray keyOf(const ConfiguredPlace &place, const QByteArray &component,
                            const QByteArray &label);

    QHash<QByteArray, QVector<BindingOfSource>> m_bindings;
};

QByteArray ConfiguredBindings::keyOf(const ConfiguredPlace &place, const QByteArray &component,
                                     const QByteArray &label)
{
    QByteArrayList words{place.library, place.entity, component, label};
    return (words + place.path).join('\n');
}

/// A level for instances may contain levels for the architecture of the entity that they are bound
/// to.
void ConfiguredBindings::add(const VhdlSource &source, const VhdlUnit &configuration)
{
    if (configuration.of.isEmpty())
        return;
    const QByteArray library = foldedVhdlName(source.library);
    QHash<QByteArrayList, ConfiguredPlace> inner;
    for (const VhdlBinding &binding : configuration.bindings) {
        ConfiguredPlace place{library, foldedVhdlName(configuration.of.last()), {}};
        QByteArrayList levels;
        for (const QByteArray &level : binding.path) {
            ReadGuard::check(levels.size());
            levels.append(foldedVhdlName(level));
            place.path.append(levels.last());
            place = inner.value(levels, place);
        }
        const QByteArrayList labels = foldedVhdlNames(binding.labels);
        if (!binding.unit.isEmpty())
            inner.insert(
                levels + QByteArrayList{labels.join(',')},
                {libraryIn(binding.unit, library), foldedVhdlName(binding.unit.last()), {}});
        if (binding.component.isEmpty())
            continue;
        const QByteArray component = foldedVhdlName(binding.component.last());
        for (const QByteArray &label : labels)
            m_bindings[keyOf(place, component, label)].append({&binding, &source});
    }
}

/// The labels of the scopes around what is in the scope @p number, from the outside in.
QByteArrayList pathOf(const VhdlUnit &unit, int number)
{
    QByteArrayList path;
    for (; number > 0; number = unit.scopes.at(number).parent) {
        ReadGuard::check();
        path.prepend(foldedVhdlName(unit.scopes.at(number).label));
    }
    return path;
}

/// Several configurations may bind one instance.
QVector<BindingOfSource> ConfiguredBindings::find(const UnitOfSource &architecture,
                                                  const VhdlInstance &instance) const
{
    QVector<BindingOfSource> found;
    if (m_bindings.isEmpty() || instance.kind != VhdlInstance::Component)
        return found;
    const VhdlUnit &unit = *architecture.unit;
    const ConfiguredPlace place{
        foldedVhdlName(architecture.source->library), foldedVhdlName(unit.of.last()),
        QByteArrayList{foldedVhdlName(unit.name)} + pathOf(unit, instance.scope)};
    const QByteArray component = foldedVhdlName(instance.unit.last());
    for (const QByteArray &label : labelsOf(instance))
        found += m_bindings.value(keyOf(place, component, label));
    return found;
}

} // namespace

/// Collects the facts and owns them.
class VhdlFactsOfDesign
{
public:
    explicit VhdlFactsOfDesign(const QVector<VhdlSource> &sources);

    const VhdlArchitectureFacts *find(const QByteArray &entity, const QByteArray &architecture,
                                      const QByteArray &library) const;

private:
    using Private = VhdlArchitectureFacts::Private;
    using Components = QHash<QByteArray, const VhdlInterface *>; ///< By folded name.

    void addUnits();
    void addConfigurations();
    void addArchitecture(const UnitOfSource &architecture);
    UnitOfSource entityOf(const UnitOfSource &architecture) const;
    static std::vector<int> addScopes(const VhdlUnit &unit, Private *facts);
    static void addInterface(const UnitOfSource &unit, const VhdlInterface &interface, int scope,
                             Private *facts);
    static void addDeclarations(const UnitOfSource &unit, const std::vector<int> &scopes,
                                Private *facts);
    void addInstances(const UnitOfSource &architecture, const std::vector<int> &scopes,
                      Private *facts) const;
    const VhdlInterface *interfaceOf(const VhdlInstance &instance, const UnitOfSource &architecture,
                                     const Components &components) const;
    const VhdlInterface *entityInterface(const QByteArrayList &unit, const QByteArray &own) const;
    QSet<QByteArray> formalsBehind(const BindingOfSource &binding,
                                   const QSet<QByteArray> &connected,
                                   const VhdlInterface *component) const;
    QByteArray libraryOf(const VhdlInstance &instance, const UnitOfSource &architecture,
                         const Components &components,
                         const QVector<BindingOfSource> &bindings) const;
    static void addIndexes(const UnitOfSource &architecture, const UnitOfSource &entity,
                           const std::vector<int> &scopes, Private *facts);

    const QVector<VhdlSource> m_sources;
    const VhdlRecords m_records;
    QHash<QByteArray, UnitOfSource> m_entities;         ///< By library and name, and by name alone.
    Components m_components;                            ///< Of packages.
    QHash<QByteArray, QByteArray> m_componentLibraries; ///< Of their packages.
    ConfiguredBindings m_configured;
    std::vector<std::unique_ptr<VhdlArchitectureFacts>> m_facts;
    /// By entity and architecture, and by library and these.
    QHash<QByteArray, const VhdlArchitectureFacts *> m_found;
};

VhdlFactsOfDesign::VhdlFactsOfDesign(const QVector<VhdlSource> &sources)
    : m_sources(sources)
    , m_records(m_sources)
{
    addUnits();
    addConfigurations();
    for (const VhdlSource &source : m_sources) {
        for (const VhdlUnit &unit : source.file.units) {
            if (unit.kind == VhdlUnit::Architecture)
                addArchitecture({&source, &unit});
        }
    }
}

void VhdlFactsOfDesign::addUnits()
{
    for (const VhdlSource &source : m_sources) {
        const QByteArray library = foldedVhdlName(source.library);
        for (const VhdlUnit &unit : source.file.units) {
            const QByteArray name = foldedVhdlName(unit.name);
            if (unit.kind == VhdlUnit::Entity) {
                m_entities.insert(keyOf(library, name), {&source, &unit});
                m_entities.insert(name, {&source, &unit});
            } else if (unit.kind == VhdlUnit::Package) {
                for (const VhdlComponent &component : unit.components) {
                    m_components.insert(foldedVhdlName(component.name), &component.interface);
                    m_componentLibraries.insert(foldedVhdlName(component.name), library);
                }
            }
        }
    }
}

/// An instance may name a configuration of its entity.
void VhdlFactsOfDesign::addConfigurations()
{
    for (const VhdlSource &source : m_sources) {
        const QByteArray library = foldedVhdlName(source.library);
        for (const VhdlUnit &unit : source.file.units) {
            if (unit.kind != VhdlUnit::Configuration || unit.of.isEmpty())
                continue;
            m_configured.add(source, unit);
            const auto entity =
                m_entities.constFind(keyOf(library, foldedVhdlName(unit.of.last())));
            if (entity != m_entities.constEnd())
                m_entities.insert(keyOf(library, foldedVhdlName(unit.name)), *entity);
        }
    }
}

UnitOfSource VhdlFactsOfDesign::entityOf(const UnitOfSource &architecture) const
{
    if (architecture.unit->of.isEmpty())
        return {};
    const QByteArray name = foldedVhdlName(architecture.unit->of.last());
    return m_entities.value(keyOf(foldedVhdlName(architecture.source->library), name));
}

void VhdlFactsOfDesign::addArchitecture(const UnitOfSource &architecture)
{
    if (architecture.unit->of.isEmpty())
        return;
    m_facts.push_back(std::unique_ptr<VhdlArchitectureFacts>(new VhdlArchitectureFacts));
    Private *const facts = m_facts.back()->d.get();
    const UnitOfSource entity = entityOf(architecture);
    const QByteArray architectureName = foldedVhdlName(architecture.unit->name);
    const QByteArray entityName = foldedVhdlName(architecture.unit->of.last());
    facts->entityName = entity.unit ? entity.unit->name : architecture.unit->of.last();
    facts->library = architecture.source->library;
    facts->records = &m_records;
    facts->packages = {architectureName, entityName};
    addPackages(architecture.unit, &facts->packages);
    addPackages(entity.unit, &facts->packages);

    const std::vector<int> scopes = addScopes(*architecture.unit, facts);
    if (entity.unit) {
        addInterface(entity, entity.unit->interface, 0, facts);
        // Only an entity with errors has scopes.
        addDeclarations(entity, std::vector<int>(std::size_t(entity.unit->scopes.size())), facts);
    }
    addDeclarations(architecture, scopes, facts);
    addInstances(architecture, scopes, facts);
    addIndexes(architecture, entity, scopes, facts);

    const QByteArray key = keyOf(entityName, architectureName);
    const VhdlArchitectureFacts *const found = m_facts.back().get();
    m_found.insert(keyOf(foldedVhdlName(facts->library), key), found);
    if (!m_found.contains(key))
        m_found.insert(key, found);
}

/// The number here of each scope of the unit.
std::vector<int> VhdlFactsOfDesign::addScopes(const VhdlUnit &unit, Private *facts)
{
    std::vector<int> numbers{0};
    for (int i = 1; i < unit.scopes.size(); ++i) {
        const VhdlScope &scope = unit.scopes.at(i);
        const int parent = itemAt(numbers, scope.parent);
        facts->addSpelling(parent, scope.label);
        if (scope.kind == VhdlScope::Block)
            facts->associated[{parent, foldedVhdlName(scope.label)}] +=
                associatedFormals(scope.ports, &scope.interface);
        numbers.push_back(facts->childOf(parent, scope.label));
    }
    return numbers;
}

void VhdlFactsOfDesign::addInterface(const UnitOfSource &unit, const VhdlInterface &interface,
                                     int scope, Private *facts)
{
    for (const VhdlInterfaceItem &generic : interface.generics)
        facts->addSpelling(scope, generic.name);
    for (const VhdlInterfaceItem &port : interface.ports) {
        facts->addSpelling(scope, port.name);
        facts->types.insert({scope, foldedVhdlName(port.name)},
                            vhdlTypeName(unit.source->text, port.type));
    }
}

void VhdlFactsOfDesign::addDeclarations(const UnitOfSource &unit, const std::vector<int> &scopes,
                                        Private *facts)
{
    for (const VhdlDeclaration &declaration : unit.unit->declarations) {
        if (declaration.kind != VhdlDeclaration::Signal)
            continue;
        const int scope = itemAt(scopes, declaration.scope);
        facts->addSpelling(scope, declaration.name);
        facts->types.insert({scope, foldedVhdlName(declaration.name)},
                            vhdlTypeName(unit.source->text, declaration.type));
    }
    for (int i = 1; i < unit.unit->scopes.size() && i < countOf(scopes); ++i)
        addInterface(unit, unit.unit->scopes.at(i).interface, itemAt(scopes, i), facts);
}

/// The ports of what an instance instantiates, for associations by position.
const VhdlInterface *VhdlFactsOfDesign::interfaceOf(const VhdlInstance &instance,
                                                    const UnitOfSource &architecture,
                                                    const Components &components) const
{
    if (instance.kind != VhdlInstance::Component)
        return entityInterface(instance.unit, architecture.source->library);
    const QByteArray name = foldedVhdlName(instance.unit.last());
    return components.value(name, m_components.value(name));
}

/// The ports of the entity that @p unit means in a source of the library @p own.
const VhdlInterface *VhdlFactsOfDesign::entityInterface(const QByteArrayList &unit,
                                                        const QByteArray &own) const
{
    if (unit.isEmpty())
        return nullptr;
    const QByteArray name = foldedVhdlName(unit.last());
    const UnitOfSource entity =
        m_entities.value(keyOf(libraryIn(unit, own), name), m_entities.value(name));
    return entity.unit ? &entity.unit->interface : nullptr;
}

/// The ports of the entity that are connected through a binding: to a port of the component that
/// the instance connects, or to a value. Without a port map they have the names of the component's.
/// @p component is null if it is not known.
QSet<QByteArray> VhdlFactsOfDesign::formalsBehind(const BindingOfSource &binding,
                                                  const QSet<QByteArray> &connected,
                                                  const VhdlInterface *component) const
{
    QVector<VhdlAssociation> portMap = binding.binding->ports;
    if (portMap.isEmpty())
        return connected;
    QSet<QByteArray> ports;
    for (int i = 0; component && i < component->ports.size(); ++i)
        ports.insert(foldedVhdlName(component->ports.at(i).name));
    for (VhdlAssociation &association : portMap) {
        VhdlTokens actual(binding.source->text, association.actual);
        for (VhdlToken token = actual.next(); token.kind != VhdlToken::EndOfText;
             token = actual.next()) {
            const QByteArray name = foldedVhdlName(token.text);
            if (token.isName() && ports.contains(name))
                association.isOpen = !connected.contains(name);
        }
    }
    return associatedFormals(portMap,
                             entityInterface(binding.binding->unit, binding.source->library));
}

/// Without a binding, a component means the entity in the library that declares the component.
QByteArray VhdlFactsOfDesign::libraryOf(const VhdlInstance &instance,
                                        const UnitOfSource &architecture,
                                        const Components &components,
                                        const QVector<BindingOfSource> &bindings) const
{
    const QByteArray own = foldedVhdlName(architecture.source->library);
    if (!bindings.isEmpty())
        return libraryIn(bindings.last().binding->unit, bindings.last().source->library);
    if (instance.kind != VhdlInstance::Component)
        return libraryIn(instance.unit, own);
    const QByteArray name = foldedVhdlName(instance.unit.last());
    return components.contains(name) ? own : m_componentLibraries.value(name, own);
}

void VhdlFactsOfDesign::addInstances(const UnitOfSource &architecture,
                                     const std::vector<int> &scopes, Private *facts) const
{
    Components components;
    for (const VhdlComponent &component : architecture.unit->components)
        components.insert(foldedVhdlName(component.name), &component.interface);
    const Bindings bindings = bindingsOf(*architecture.unit);
    for (const VhdlInstance &instance : architecture.unit->instances) {
        const int scope = itemAt(scopes, instance.scope);
        facts->addSpelling(scope, instance.label);
        QVector<BindingOfSource> found = m_configured.find(architecture, instance);
        const VhdlBinding *const here = bindingOf(instance, bindings);
        if (here)
            found.append({here, architecture.source});
        const VhdlInterface *const interface = interfaceOf(instance, architecture, components);
        const QSet<QByteArray> connected = associatedFormals(instance.ports, interface);
        const ScopedName key(scope, foldedVhdlName(instance.label));
        QSet<QByteArray> &formals = facts->associated[key];
        if (!here) // A configuration may not be used.
            formals += connected;
        for (const BindingOfSource &each : qAsConst(found))
            formals += formalsBehind(each, connected, interface);
        facts->libraries.insert(key, libraryOf(instance, architecture, components, found));
    }
}

void VhdlFactsOfDesign::addIndexes(const UnitOfSource &architecture, const UnitOfSource &entity,
                                   const std::vector<int> &scopes, Private *facts)
{
    const QVector<VhdlComputedIndex> indexes =
        computedIndexes(architecture.source->text, *architecture.unit, entity.unit);
    for (const VhdlComputedIndex &index : indexes) {
        const ScopedName key(itemAt(scopes, index.scope), index.name);
        const int known = facts->indexDepths.value(key, index.depth);
        facts->indexDepths.insert(key, std::min(known, index.depth));
    }
}

const VhdlArchitectureFacts *VhdlFactsOfDesign::find(const QByteArray &entity,
                                                     const QByteArray &architecture,
                                                     const QByteArray &library) const
{
    const QByteArray key = keyOf(entity, architecture);
    const VhdlArchitectureFacts *const found = m_found.value(keyOf(foldedVhdlName(library), key));
    return found ? found : m_found.value(key);
}

VhdlFacts::VhdlFacts(const QVector<VhdlSource> &sources)
    : d(std::make_unique<VhdlFactsOfDesign>(sources))
{
}

VhdlFacts::~VhdlFacts() = default;

const VhdlArchitectureFacts *VhdlFacts::find(const QByteArray &entity,
                                             const QByteArray &architecture,
                                             const QByteArray &library) const
{
    return d->find(entity, architecture, library);
}

} // namespace NETWEIR::Internal
