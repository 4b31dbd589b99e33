// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/verilog/modulescan.h>

#include <QByteArrayList>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

namespace NETWEIR::Internal {

class PreprocessedText;

/// The modules of a design and the instantiations between them. Each question costs time linear in
/// the scan.
class DesignModules
{
public:
    /// Both arguments must outlive this object.
    DesignModules(const ModuleScan &scan, const PreprocessedText &text);

    /// Every module of the sources, in the order of the text.
    QStringList modules() const;

    /// Only @p top if the sources have such a module; otherwise the modules that no other module
    /// instantiates.
    QStringList tops(const QString &top) const;

    /// Why there is no module or no single top, and which modules could be the top. Empty when
    /// there is a single top and @p top is either empty or this module.
    QStringList topWarnings(const QString &top) const;

    /// One message for each module that the sources define twice.
    QStringList duplicateErrors() const;

    /// The circle of instantiations because of which modules exist but no top. Otherwise null.
    QString circleError(const QStringList &tops) const;

    /// A circle below @p top that no condition ends. Null when there is none.
    QString endlessError(const QString &top) const;

    /// A circle of several modules below @p top, even if a condition ends it: the only recursion
    /// that the elaborator supports is a module that instantiates itself. Null when there is none.
    QString mutualError(const QString &top) const;

    /// One message for each statement below @p top that makes an array of instances with several
    /// ranges. The elaborator would read it as one-dimensional.
    QStringList dimensionErrors(const QString &top) const;

    /// Nets that switches and aliases connect, by module.
    QHash<QString, QSet<QString>> tiedNets() const;

    bool instantiatesItself(const QString &module) const;

    /// Instantiations of modules that neither sources nor libraries define.
    QVector<Instantiation> unknownInstantiations() const;

    /// Names of undefined modules that the sources need, directly or through library modules. Some
    /// may be types of variables. Each name once, in the order of first use.
    QByteArrayList missingModules() const;

private:
    enum class Circle { Any, Endless, Mutual };

    QVector<int> reachableFrom(const QVector<int> &starts) const;
    bool isInstantiation(const Instantiation &instantiation) const;
    QSet<QByteArray> instantiatedNames() const;
    QVector<int> startAt(const QString &module) const;
    QVector<const Instantiation *> instantiationsIn(const QVector<int> &units) const;
    QVector<int> instantiatedBy(int unit, Circle kind) const;
    QString errorOfCircle(const QVector<int> &starts, Circle kind, const QString &words) const;
    QString describeCircle(const QVector<int> &circle) const;

    const ModuleScan &m_scan;
    const PreprocessedText &m_text;
    QHash<QByteArray, int> m_units; ///< Index of the unit of a name; sources win over libraries.
};

} // namespace NETWEIR::Internal
