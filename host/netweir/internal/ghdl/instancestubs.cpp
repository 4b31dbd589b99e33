// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "instancestubs.h"

#include "actualtypes.h"
#include "stubtext.h"
#include "unitindex.h"
#include "vhdldesign.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/parts/unitnames.h>
#include <netweir/internal/signals/vhdltext.h>
#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/vhdl/vhdlname.h>
#include <netweir/internal/vhdl/vhdltokens.h>

#include <QSet>

#include <algorithm>
#include <memory>

namespace NETWEIR::Internal {

namespace {

/// Puts the instances of one text that have to name another unit in place of the original ones.
struct Replacement
{
    TextRange range;
    QByteArray text;
};

QByteArray replaced(const QByteArray &text, const QVector<Replacement> &replacements)
{
    QByteArray result;
    int at = 0;
    for (const Replacement &replacement : replacements) {
        const TextRange &range = replacement.range;
        result += text.mid(at, range.begin - at) + replacement.text;
        result += QByteArray(textIn(text, range).count('\n'), '\n');
        at = range.end;
    }
    return result + text.mid(at);
}

/// The number of a port of the other language: the same name, otherwise the first in any case.
int findPort(const QStringList &ports, const QString &name)
{
    const int exact = ports.indexOf(name);
    if (exact >= 0)
        return exact;
    const auto found = std::find_if(ports.begin(), ports.end(), [&name](const QString &port) {
        return port.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == ports.end() ? -1 : int(found - ports.begin());
}

/// Collects the stubs of a design.
class InstanceCollector
{
public:
    InstanceCollector(const VhdlDesign &design, const UnitIndex &index,
                      const std::vector<DeclaredUnit> &foreign)
        : m_design(design)
        , m_index(index)
        , m_foreign(foreign)
        , m_foreignNames(foreign)
    {
    }

    InstanceStubs collect();

private:
    void noteLibraries(const VhdlUnit &unit, int file);
    Place placeInContext(const VhdlUnit &unit, int file, const QByteArray &library) const;
    void addInstances(const UnitAt &architecture);
    bool needsStub(const VhdlInstance &instance, const UnitAt &architecture,
                   bool usesMissing) const;
    bool usesMissingLibrary(const UnitAt &architecture) const;
    QByteArray stubFor(const VhdlInstance &instance, const UnitAt &architecture,
                       const ActualTypes &types);
    bool addItems(const QVector<VhdlAssociation> &associations, const QStringList &names,
                  const UnitAt &architecture, const ActualTypes &types, const DeclaredUnit *foreign,
                  QVector<StubItem> *items, QByteArrayList *map) const;
    bool isKnown(const QByteArray &library) const
    {
        return library == "ieee" || library == "std" || library == "work" ||
               m_design.libraries().contains(QString::fromLatin1(library));
    }

    const VhdlDesign &m_design;
    const UnitIndex &m_index;
    const std::vector<DeclaredUnit> &m_foreign;
    const UnitNames m_foreignNames;
    int m_count = 0;                                 ///< Of stubs.
    QHash<int, QVector<Replacement>> m_replacements; ///< By number of the file.
    QSet<QByteArray> m_packages;                     ///< Of missing libraries: "library.package".
    InstanceStubs m_result;
};

InstanceStubs InstanceCollector::collect()
{
    for (int file = 0; file < m_design.size(); ++file) {
        for (const VhdlUnit &unit : m_design.source(file).file.units)
            noteLibraries(unit, file);
    }
    for (int file = 0; file < m_design.size(); ++file) {
        for (const VhdlUnit &unit : m_design.source(file).file.units) {
            if (unit.kind == VhdlUnit::Architecture)
                addInstances({file, &unit});
        }
    }
    for (auto i = m_replacements.constBegin(); i != m_replacements.constEnd(); ++i)
        m_result.texts.insert(i.key(), replaced(m_design.source(i.key()).text, i.value()));
    return m_result;
}

/// An empty package in place of each one that the context names in a missing library.
void InstanceCollector::noteLibraries(const VhdlUnit &unit, int file)
{
    for (const QByteArray &name : unit.context.libraries) {
        const QByteArray library = foldedVhdlName(name);
        const QString text = QString::fromLatin1(library);
        if (isKnown(library) || m_result.libraries.contains(text))
            continue;
        m_result.libraries.append(text);
        m_result.suspicions.append(
            errorMessage(placeInContext(unit, file, library),
                         Text::tr("The library \"%1\" is missing, and something other than its "
                                  "components and entities is used. %2")
                             .arg(text, libraryAdvice(text))));
    }
    for (const QByteArrayList &use : unit.context.uses) {
        const QByteArrayList names = foldedVhdlNames(use);
        const QByteArray package = names.mid(0, 2).join('.');
        const QString library = QString::fromLatin1(names.value(0));
        if (names.size() < 2 || !m_result.libraries.contains(library) ||
            m_packages.contains(package))
            continue;
        m_packages.insert(package);
        GeneratedText text;
        text.file = QStringLiteral("package%1.vhd").arg(m_packages.size());
        text.library = library;
        text.text = "package " + names[1] + " is\nend;\n";
        text.place = {m_design.path(file), unit.line, unit.column};
        m_result.units.texts.append(text);
    }
}

/// Where the context clauses of @p unit first name @p library.
Place InstanceCollector::placeInContext(const VhdlUnit &unit, int file,
                                        const QByteArray &library) const
{
    const QByteArray &text = m_design.source(file).text;
    const TextRange &range = unit.context.range;
    const int start = lineStart(text, range.begin);
    VhdlTokens tokens(text, range, text.left(range.begin).count('\n') + 1, range.begin - start + 1);
    for (VhdlToken token = tokens.next(); token.kind != VhdlToken::EndOfText;
         token = tokens.next()) {
        if (token.isName() && foldedVhdlName(token.text) == library)
            return {m_design.path(file), token.line, token.column};
    }
    return {m_design.path(file), unit.line, unit.column};
}

bool InstanceCollector::usesMissingLibrary(const UnitAt &architecture) const
{
    QVector<QByteArrayList> uses = architecture.unit->context.uses;
    const UnitAt entity = m_index.entity(m_design.source(architecture.file).library,
                                         primaryNameOf(*architecture.unit));
    if (entity.unit)
        uses += entity.unit->context.uses;
    return std::any_of(uses.begin(), uses.end(), [this](const QByteArrayList &use) {
        return m_packages.contains(foldedVhdlNames(use).mid(0, 2).join('.'));
    });
}

bool InstanceCollector::needsStub(const VhdlInstance &instance, const UnitAt &architecture,
                                  bool usesMissing) const
{
    if (instance.unit.isEmpty() || instance.kind == VhdlInstance::Configuration)
        return false;
    const QByteArray &own = m_design.source(architecture.file).library;
    const QByteArrayList unit = foldedVhdlNames(instance.unit);
    if (instance.kind == VhdlInstance::Component) {
        const bool isOfMissing =
            unit.size() > 2 && m_result.libraries.contains(QString::fromLatin1(unit.first()));
        return (usesMissing || isOfMissing) && !instance.bare &&
               !m_index.componentOf(instance, architecture).component;
    }
    if (unit.size() < 2)
        return false;
    const QByteArray library = unit.first() == "work" ? own : unit.first();
    return !m_index.entity(library, unit.last()).unit && library != "ieee" && library != "std";
}

void InstanceCollector::addInstances(const UnitAt &architecture)
{
    const bool usesMissing = usesMissingLibrary(architecture);
    std::unique_ptr<ActualTypes> types;
    QVector<Replacement> replacements;
    for (const VhdlInstance &instance : architecture.unit->instances) {
        if (!needsStub(instance, architecture, usesMissing))
            continue;
        if (!types)
            types = std::make_unique<ActualTypes>(m_design, m_index, architecture);
        const QByteArray text = stubFor(instance, architecture, *types);
        if (!text.isEmpty())
            replacements.append({instance.range, text});
    }
    if (!replacements.isEmpty())
        m_replacements[architecture.file] += replacements;
}

/// Adds the items that @p associations connect. False when a type cannot be told.
bool InstanceCollector::addItems(const QVector<VhdlAssociation> &associations,
                                 const QStringList &names, const UnitAt &architecture,
                                 const ActualTypes &types, const DeclaredUnit *foreign,
                                 QVector<StubItem> *items, QByteArrayList *map) const
{
    const QByteArray &text = m_design.source(architecture.file).text;
    for (int i = 0; i < associations.size(); ++i) {
        const VhdlAssociation &association = associations[i];
        if (association.isOpen)
            continue;
        const bool isNamed = !association.formalNames.isEmpty();
        // A part of a formal or a conversion needs the whole type.
        if (isNamed && textIn(text, association.formal) != association.formalNames.last())
            return false;
        StubItem item;
        item.name = isNamed ? association.formalNames.last()
                            : names.value(i, QStringLiteral("p%1").arg(i)).toLatin1();
        const QByteArray actual = textIn(text, association.actual);
        const ActualType told = types.typeOf(actual);
        if (told.type.isEmpty())
            return false;
        item.type = told.type;
        item.baseType = m_index.baseType(told.type);
        item.mode = told.mode;
        if (foreign) {
            const int port = findPort(names, vhdlText(item.name));
            const PortDirection direction =
                port < 0 ? PortDirection::Unknown : itemAt(foreign->ports, port).direction;
            if (direction == PortDirection::Input)
                item.mode = "in";
            else if (direction == PortDirection::Output)
                item.mode = "out";
            else if (direction == PortDirection::Inout)
                item.mode = "inout";
        }
        items->append(item);
        map->append(item.name + " => " + actual);
    }
    return true;
}

/// The text of the instance, which names its stub. Null when there is no stub.
QByteArray InstanceCollector::stubFor(const VhdlInstance &instance, const UnitAt &architecture,
                                      const ActualTypes &types)
{
    const QString unit = vhdlText(instance.unit.last());
    const int found = m_foreignNames.find({QString(), unit}, Language::Vhdl);
    const DeclaredUnit *foreign = found < 0 ? nullptr : &itemAt(m_foreign, found);
    QStringList ports;
    if (foreign) {
        for (const DeclaredPort &port : foreign->ports)
            ports.append(port.name);
    }
    const Place place{m_design.path(architecture.file), instance.line, instance.column};
    StubEntity entity;
    entity.name = "netweir_use" + QByteArray::number(m_count);
    entity.context = m_index.contextOf(architecture);
    entity.isBorder = foreign;
    QByteArrayList genericMap;
    QByteArrayList portMap;
    if (!addItems(instance.generics, foreign ? foreign->generics : QStringList(), architecture,
                  types, nullptr, &entity.generics, &genericMap) ||
        !addItems(instance.ports, ports, architecture, types, foreign, &entity.ports, &portMap)) {
        m_result.suspicions.append(errorMessage(
            place, Text::tr("The sources define no \"%1\", and this instance does not tell the "
                            "types of its ports. Add the file that defines it, or declare a "
                            "component.")
                       .arg(unit)));
        return {};
    }
    for (StubItem &generic : entity.generics)
        generic.mode.clear();
    ++m_count;
    m_result.units.foreign.insert(entity.name, {QString(), unit, place});
    m_result.units.texts.append({QString::fromLatin1(entity.name) + QStringLiteral(".vhd"),
                                 m_design.library(architecture.file), stubText(entity), place});
    QByteArray text = instance.label + " : entity work." + entity.name;
    if (!genericMap.isEmpty())
        text += " generic map (" + genericMap.join(", ") + ')';
    if (!portMap.isEmpty())
        text += " port map (" + portMap.join(", ") + ')';
    return text.replace('\n', ' ') + ';';
}

} // namespace

InstanceStubs instanceStubs(const VhdlDesign &design, const UnitIndex &index,
                            const std::vector<DeclaredUnit> &foreign)
{
    return InstanceCollector(design, index, foreign).collect();
}

} // namespace NETWEIR::Internal
