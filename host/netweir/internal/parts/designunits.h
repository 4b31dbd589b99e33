// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "declaredunit.h"
#include "unitnames.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <vector>

namespace NETWEIR::Internal {

/// The units of a design in all its languages, and the instantiations between them: the list of
/// modules, candidates for the top, and circles. Each question costs time linear in the units and
/// their uses.
class DesignUnits
{
public:
    /// @p units must outlive this object.
    explicit DesignUnits(const std::vector<DeclaredUnit> &units);

    /// Names of all modules and entities of the sources, each once, in the order of the sources.
    QStringList modules() const;

    /// Only @p top if the sources have such a module, entity or configuration. Otherwise the
    /// modules that no other one instantiates. An entity of a library other than work is a
    /// candidate only when there is no other candidate.
    QStringList tops(const QString &top) const;

    /// The number of the unit that @p top names, -1 when there is none. Only for an entity or a
    /// configuration may the case differ.
    int findTop(const QString &top) const;

    /// The unit that @p name means in a source of language @p from.
    const UnitNames &names() const { return m_names; }

    /// Why there is no module or no single top, and which modules could be the top. Empty when
    /// there is a single top and @p top is either empty or this module.
    QStringList topWarnings(const QString &top) const;

    /// One message for each unit that the sources declare twice.
    QStringList duplicateErrors() const;

    /// The circle of instantiations because of which modules exist but no top. Otherwise null.
    QString circleError(const QStringList &tops) const;

    /// A circle below @p top that no condition ends. Null when there is none.
    QString endlessError(const QString &top) const;

    /// A circle of several Verilog modules below @p top, even if a condition ends it: the only
    /// recursion that the elaborator of Verilog supports is a module that instantiates itself. Null
    /// when there is none.
    QString mutualError(const QString &top) const;

private:
    enum class Circle { Any, Endless, MutualVerilog };

    int find(const UnitUse &use, int user) const;
    int firstOfItsName(int unit) const;
    QVector<bool> instantiated() const;
    QVector<int> modulesOnce() const;
    QVector<int> reachableFrom(int start) const;
    QVector<int> instantiatedBy(int unit, Circle kind) const;
    QString errorOfCircle(const QVector<int> &starts, Circle kind, const QString &words) const;
    QString describeCircle(const QVector<int> &circle) const;

    const std::vector<DeclaredUnit> &m_units;
    const UnitNames m_names;
};

} // namespace NETWEIR::Internal
