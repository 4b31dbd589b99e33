// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designmodules.h"

#include <netweir/internal/ground/depthfirstwalk.h>
#include <netweir/internal/ground/messages.h>
#include <netweir/internal/sources/preprocessedtext.h>

#include <algorithm>
#include <numeric>

namespace NETWEIR::Internal {

namespace {

bool isTopKind(const DesignUnit &unit)
{
    return unit.kind == DesignUnit::Module && !unit.library;
}

} // namespace

DesignModules::DesignModules(const ModuleScan &scan, const PreprocessedText &text)
    : m_scan(scan)
    , m_text(text)
{
    for (int i = 0; i < scan.units.size(); ++i) {
        const auto known = m_units.constFind(scan.units[i].name);
        if (known == m_units.constEnd() || (m_scan.units[*known].library && !scan.units[i].library))
            m_units.insert(scan.units[i].name, i);
    }
}

QStringList DesignModules::modules() const
{
    QStringList result;
    QSet<QByteArray> listed;
    for (const DesignUnit &unit : m_scan.units) {
        if (isTopKind(unit) && !listed.contains(unit.name)) {
            listed.insert(unit.name);
            result.append(QString::fromUtf8(unit.name));
        }
    }
    return result;
}

QStringList DesignModules::tops(const QString &top) const
{
    const QStringList all = modules();
    if (all.contains(top))
        return {top};
    const QSet<QByteArray> instantiated = instantiatedNames();
    QStringList result;
    for (const QString &name : all) {
        const DesignUnit &unit = m_scan.units[m_units.value(name.toUtf8())];
        if (!unit.nested && !instantiated.contains(unit.name))
            result.append(name);
    }
    return result;
}

QStringList DesignModules::topWarnings(const QString &top) const
{
    const QStringList all = modules();
    if (all.isEmpty())
        return {warningMessage({}, Text::tr("The sources define no module. Add the files that "
                                            "define the modules of the design."))};
    if (all.contains(top))
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

bool DesignModules::isInstantiation(const Instantiation &instantiation) const
{
    return !instantiation.bare || m_units.contains(instantiation.module);
}

/// Names of units that another unit instantiates.
QSet<QByteArray> DesignModules::instantiatedNames() const
{
    QSet<QByteArray> result;
    for (const DesignUnit &unit : m_scan.units) {
        for (const Instantiation &instantiation : unit.instantiations) {
            if (instantiation.module != unit.name && isInstantiation(instantiation))
                result.insert(instantiation.module);
        }
    }
    for (const Instantiation &binding : m_scan.bindings)
        result.insert(binding.module);
    return result;
}

QStringList DesignModules::duplicateErrors() const
{
    QStringList result;
    QHash<QByteArray, const DesignUnit *> first;
    for (const DesignUnit &unit : m_scan.units) {
        if (unit.nested || unit.library)
            continue;
        const DesignUnit *&known = first[unit.name];
        if (known) {
            result.append(errorMessage(
                m_text.place(unit.line),
                Text::tr("\"%1\" is defined a second time; the first definition is in %2. Rename "
                         "or remove one of them.")
                    .arg(QString::fromUtf8(unit.name), fileAndLine(m_text.place(known->line)))));
        } else {
            known = &unit;
        }
    }
    return result;
}

QString DesignModules::circleError(const QStringList &tops) const
{
    if (!tops.isEmpty())
        return {};
    QVector<int> starts;
    for (int i = 0; i < m_scan.units.size(); ++i) {
        if (isTopKind(m_scan.units[i]))
            starts.append(i);
    }
    return errorOfCircle(starts, Circle::Any,
                         Text::tr("No top module: every module is instantiated by another one "
                                  "(%1). Set the top module or break the circle."));
}

QString DesignModules::endlessError(const QString &top) const
{
    return errorOfCircle(startAt(top), Circle::Endless,
                         Text::tr("The instantiation never ends (%1). Break the circle or end it "
                                  "with a generate condition."));
}

QString DesignModules::mutualError(const QString &top) const
{
    return errorOfCircle(startAt(top), Circle::Mutual,
                         Text::tr("Recursion through several modules (%1) cannot be read. Break "
                                  "the circle or make it one module that instantiates itself."));
}

/// Indexes of the units of a name: one or none.
QVector<int> DesignModules::startAt(const QString &module) const
{
    const int unit = m_units.value(module.toUtf8(), -1);
    return unit < 0 ? QVector<int>() : QVector<int>{unit};
}

/// An error about the first circle below @p starts, or null. %1 in @p words stands for the circle.
QString DesignModules::errorOfCircle(const QVector<int> &starts, Circle kind,
                                     const QString &words) const
{
    const QVector<int> circle = DepthFirstWalk::firstCircle(
        m_scan.units.size(), starts, [this, kind](int unit) { return instantiatedBy(unit, kind); });
    if (circle.isEmpty())
        return {};
    return errorMessage(m_text.place(m_scan.units[circle.first()].line),
                        words.arg(describeCircle(circle)));
}

/// The units that may follow @p unit in a circle of a kind, in the order of instantiation.
QVector<int> DesignModules::instantiatedBy(int unit, Circle kind) const
{
    QVector<int> result;
    for (const Instantiation &instantiation : m_scan.units[unit].instantiations) {
        const int target = m_units.value(instantiation.module, -1);
        const bool mayEnd = kind == Circle::Endless && instantiation.conditional;
        const bool isItself = kind == Circle::Mutual && target == unit;
        if (target >= 0 && !mayEnd && !isItself)
            result.append(target);
    }
    return result;
}

QStringList DesignModules::dimensionErrors(const QString &top) const
{
    QStringList result;
    for (const Instantiation *instantiation : instantiationsIn(reachableFrom(startAt(top)))) {
        if (instantiation->multidimensional.line > 0 && m_units.contains(instantiation->module)) {
            result.append(errorMessage(
                m_text.place(instantiation->multidimensional),
                Text::tr("Arrays of instances of \"%1\" with several dimensions are not "
                         "supported. Use one dimension, or generate loops.")
                    .arg(QString::fromUtf8(instantiation->module))));
        }
    }
    return result;
}

/// The instantiations in @p units, and those of all bind statements.
QVector<const Instantiation *> DesignModules::instantiationsIn(const QVector<int> &units) const
{
    QVector<const Instantiation *> result;
    for (const int unit : units) {
        for (const Instantiation &instantiation : m_scan.units[unit].instantiations)
            result.append(&instantiation);
    }
    for (const Instantiation &binding : m_scan.bindings)
        result.append(&binding);
    return result;
}

/// @p starts, the bound units, and all units that these instantiate directly or indirectly.
QVector<int> DesignModules::reachableFrom(const QVector<int> &starts) const
{
    QVector<int> result;
    QSet<int> known;
    const auto add = [&result, &known](int unit) {
        if (unit >= 0 && !known.contains(unit)) {
            known.insert(unit);
            result.append(unit);
        }
    };
    for (const int start : starts)
        add(start);
    for (const Instantiation &binding : m_scan.bindings)
        add(m_units.value(binding.module, -1));
    for (int i = 0; i < result.size(); ++i) {
        for (const Instantiation &instantiation : m_scan.units[result[i]].instantiations)
            add(m_units.value(instantiation.module, -1));
    }
    return result;
}

QHash<QString, QSet<QString>> DesignModules::tiedNets() const
{
    QHash<QString, QSet<QString>> result;
    for (const DesignUnit &unit : m_scan.units) {
        for (const QByteArray &net : unit.tiedNets)
            result[QString::fromUtf8(unit.name)].insert(QString::fromUtf8(net));
    }
    return result;
}

bool DesignModules::instantiatesItself(const QString &module) const
{
    const int index = m_units.value(module.toUtf8(), -1);
    if (index < 0)
        return false;
    const DesignUnit &unit = m_scan.units[index];
    return std::any_of(
        unit.instantiations.begin(), unit.instantiations.end(),
        [&unit](const Instantiation &instantiation) { return instantiation.module == unit.name; });
}

QString DesignModules::describeCircle(const QVector<int> &circle) const
{
    constexpr int MostNames = 8;
    QStringList names;
    for (const int index : circle) {
        if (names.size() == MostNames) {
            names.append(QStringLiteral("..."));
            break;
        }
        names.append(QString::fromUtf8(m_scan.units[index].name));
    }
    names.append(QString::fromUtf8(m_scan.units[circle.first()].name));
    return names.join(QLatin1String(" -> "));
}

QVector<Instantiation> DesignModules::unknownInstantiations() const
{
    QVector<int> all(m_scan.units.size());
    std::iota(all.begin(), all.end(), 0);
    QVector<Instantiation> result;
    for (const Instantiation *instantiation : instantiationsIn(all)) {
        if (!instantiation->bare && !m_units.contains(instantiation->module))
            result.append(*instantiation);
    }
    return result;
}

QByteArrayList DesignModules::missingModules() const
{
    QVector<int> sources;
    for (int i = 0; i < m_scan.units.size(); ++i) {
        if (!m_scan.units[i].library)
            sources.append(i);
    }
    QByteArrayList result;
    QSet<QByteArray> listed;
    for (const Instantiation *instantiation : instantiationsIn(reachableFrom(sources))) {
        const QByteArray &name = instantiation->module;
        if (!m_units.contains(name) && !listed.contains(name)) {
            listed.insert(name);
            result.append(name);
        }
    }
    return result;
}

} // namespace NETWEIR::Internal
