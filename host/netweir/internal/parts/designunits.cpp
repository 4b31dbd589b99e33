// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designunits.h"

#include <netweir/internal/ground/depthfirstwalk.h>
#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/ground/messages.h>

#include <QHash>
#include <QSet>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

const char WorkLibrary[] = "work";

bool isTopKind(const DeclaredUnit &unit)
{
    return unit.kind == DeclaredUnit::Module && !unit.backup;
}

/// The unit does not belong to a library of others.
bool isOwn(const DeclaredUnit &unit)
{
    return unit.language == Language::Verilog || unit.library == QLatin1String(WorkLibrary);
}

/// What no other unit of the language may share.
QString identityOf(const DeclaredUnit &unit)
{
    return unit.language == Language::Verilog
               ? unit.name
               : unit.library + QLatin1Char(' ') + foldedName(unit.name);
}

} // namespace

DesignUnits::DesignUnits(const std::vector<DeclaredUnit> &units)
    : m_units(units)
    , m_names(units)
{
}

/// The number of the unit that a statement in the unit @p user means, -1 when there is none.
int DesignUnits::find(const UnitUse &use, int user) const
{
    const DeclaredUnit &unit = itemAt(m_units, user);
    return m_names.find(use, unit.language, unit.library);
}

/// The unit that counts among those with the name of @p unit.
int DesignUnits::firstOfItsName(int unit) const
{
    const DeclaredUnit &declared = itemAt(m_units, unit);
    return declared.language == Language::Verilog
               ? m_names.findVerilog(declared.name)
               : m_names.findVhdl(declared.name, declared.library);
}

/// The modules of the sources, in their order, of several with one name only the first.
QVector<int> DesignUnits::modulesOnce() const
{
    QVector<int> result;
    QSet<int> listed;
    for (int i = 0; i < countOf(m_units); ++i) {
        const int first = firstOfItsName(i);
        if (isTopKind(itemAt(m_units, i)) && !listed.contains(first)) {
            listed.insert(first);
            result.append(first);
        }
    }
    return result;
}

QStringList DesignUnits::modules() const
{
    QStringList result;
    const QVector<int> modules = modulesOnce();
    for (const int module : modules)
        result.append(itemAt(m_units, module).name);
    result.removeDuplicates(); // A module and an entity, or entities of several libraries.
    return result;
}

int DesignUnits::findTop(const QString &top) const
{
    const int module = m_names.findVerilog(top);
    if (module >= 0 && isTopKind(itemAt(m_units, module)))
        return module;
    const int entity = m_names.findVhdl(top, QString(), QLatin1String(WorkLibrary));
    if (entity < 0)
        return -1;
    const DeclaredUnit &unit = itemAt(m_units, entity);
    const bool isConfiguration = unit.kind == DeclaredUnit::Configuration && !unit.backup;
    return isTopKind(unit) || isConfiguration ? entity : -1;
}

QStringList DesignUnits::tops(const QString &top) const
{
    if (findTop(top) >= 0)
        return {top};
    const QVector<bool> isInstantiated = instantiated();
    QStringList own;
    QStringList others;
    const QVector<int> modules = modulesOnce();
    for (const int module : modules) {
        const DeclaredUnit &unit = itemAt(m_units, module);
        if (!unit.nested && !isInstantiated[module])
            (isOwn(unit) ? own : others).append(unit.name);
    }
    return own.isEmpty() ? others : own;
}

/// Which units another unit instantiates or binds.
QVector<bool> DesignUnits::instantiated() const
{
    QVector<bool> result(countOf(m_units), false);
    for (int i = 0; i < countOf(m_units); ++i) {
        const bool isUnit = itemAt(m_units, i).kind != DeclaredUnit::Outside;
        const int self = isUnit ? firstOfItsName(i) : -1;
        for (const UnitUse &use : itemAt(m_units, i).uses) {
            const int target = find(use, i);
            if (target >= 0 && target != self)
                result[target] = true;
        }
    }
    return result;
}

QStringList DesignUnits::topWarnings(const QString &top) const
{
    if (modules().isEmpty())
        return {warningMessage({}, Text::tr("The sources define no module. Add the files that "
                                            "define the modules of the design."))};
    if (findTop(top) >= 0)
        return {};
    const QStringList candidates = tops(QString());
    const QString names = candidates.join(QLatin1String(", "));
    QStringList result;
    if (!top.isEmpty() && !candidates.isEmpty())
        result.append(warningMessage({}, Text::tr("The design has no module \"%1\". Candidates for "
                                                  "the top module: %2.")
                                             .arg(top, names)));
    else if (!top.isEmpty())
        result.append(warningMessage({}, Text::tr("The design has no module \"%1\".").arg(top)));
    else if (candidates.size() > 1)
        result.append(warningMessage(
            {}, Text::tr("The design has several candidates for the top module: %1.").arg(names)));
    if (candidates.isEmpty() && circleError(candidates).isEmpty())
        result.append(warningMessage({}, Text::tr("No top module: every module is instantiated or "
                                                  "bound. Set the top module.")));
    return result;
}

QStringList DesignUnits::duplicateErrors() const
{
    QStringList result;
    QHash<QString, const DeclaredUnit *> first;
    for (const DeclaredUnit &unit : m_units) {
        if (unit.nested || unit.backup || unit.kind == DeclaredUnit::Outside)
            continue;
        const DeclaredUnit *&known = first[identityOf(unit)];
        if (known) {
            result.append(errorMessage(
                unit.place,
                Text::tr("\"%1\" is defined a second time; the first definition is in %2. Rename "
                         "or remove one of them.")
                    .arg(unit.name, fileAndLine(known->place))));
        } else {
            known = &unit;
        }
    }
    return result;
}

QString DesignUnits::circleError(const QStringList &tops) const
{
    if (!tops.isEmpty())
        return {};
    QVector<int> starts;
    for (int i = 0; i < countOf(m_units); ++i) {
        if (isTopKind(itemAt(m_units, i)))
            starts.append(i);
    }
    return errorOfCircle(starts, Circle::Any,
                         Text::tr("No top module: every module is instantiated by another one "
                                  "(%1). Set the top module or break the circle."));
}

QString DesignUnits::endlessError(const QString &top) const
{
    const int start = findTop(top);
    return errorOfCircle(start < 0 ? QVector<int>() : QVector<int>{start}, Circle::Endless,
                         Text::tr("The instantiation never ends (%1). Break the circle or end it "
                                  "with a generate condition."));
}

QString DesignUnits::mutualError(const QString &top) const
{
    return errorOfCircle(reachableFrom(findTop(top)), Circle::MutualVerilog,
                         Text::tr("Recursion through several modules (%1) cannot be read. Break "
                                  "the circle or make it one module that instantiates itself."));
}

/// @p start and all units that it instantiates directly or indirectly. None for -1.
QVector<int> DesignUnits::reachableFrom(int start) const
{
    QVector<int> result;
    if (start >= 0) {
        DepthFirstWalk(countOf(m_units))
            .visit(
                start, [this](int unit) { return instantiatedBy(unit, Circle::Any); },
                [&result](int unit) { result.append(unit); }, [](int, int) {});
    }
    std::reverse(result.begin(), result.end()); // The walk leaves the start last.
    return result;
}

/// An error about the first circle below @p starts, or null. %1 in @p words stands for the circle.
QString DesignUnits::errorOfCircle(const QVector<int> &starts, Circle kind,
                                   const QString &words) const
{
    const QVector<int> circle = DepthFirstWalk::firstCircle(
        countOf(m_units), starts, [this, kind](int unit) { return instantiatedBy(unit, kind); });
    if (circle.isEmpty())
        return {};
    return errorMessage(itemAt(m_units, circle.first()).place, words.arg(describeCircle(circle)));
}

/// The units that may follow @p unit in a circle of a kind, in the order of instantiation.
QVector<int> DesignUnits::instantiatedBy(int unit, Circle kind) const
{
    QVector<int> result;
    for (const UnitUse &use : itemAt(m_units, unit).uses) {
        const int target = find(use, unit);
        if (target < 0 || (kind == Circle::Endless && use.conditional))
            continue;
        const bool isVerilog = itemAt(m_units, unit).language == Language::Verilog &&
                               itemAt(m_units, target).language == Language::Verilog;
        if (kind != Circle::MutualVerilog || (isVerilog && target != unit))
            result.append(target);
    }
    return result;
}

QString DesignUnits::describeCircle(const QVector<int> &circle) const
{
    constexpr int MostNames = 8;
    QStringList names;
    for (const int index : circle) {
        if (names.size() == MostNames) {
            names.append(QStringLiteral("..."));
            break;
        }
        names.append(itemAt(m_units, index).name);
    }
    names.append(itemAt(m_units, circle.first()).name);
    return names.join(QLatin1String(" -> "));
}

} // namespace NETWEIR::Internal
