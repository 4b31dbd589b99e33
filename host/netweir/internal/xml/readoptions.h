// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/parts/declaredunit.h>

#include <QHash>
#include <QSet>
#include <QString>
#include <QVector>

#include <functional>

namespace NETWEIR::Internal {

/// A target of an assignment that is missing in the input of the elaborator.
struct OmittedWrite
{
    QString name;  ///< The last component.
    QString path;  ///< The other components, joined with '.'.
    int left = -1; ///< Index or range after the name of a net, if it is known.
    int right = -1;
};

/// Behind the name of an array of instances of a foreign unit: the instance without connections
/// that has its range.
constexpr char RangeInstance[] = ".netweir_range";

/// The default of each parameter of such a stub.
constexpr char UnsetParameter[] = "netweir: not set";

/// Facts about a design that are not in the elaborated XML.
struct ReadOptions
{
    /// The top of the XML does not belong to the design: its instances are the roots.
    bool rootsAreWrapped = false;
    /// Modules without a source, given as stubs. The direction of their pins is unknown, so
    /// everything connected to them counts as driven. They are not hierarchy nodes.
    QSet<QString> unknownModules;
    /// Primitives of the device, whose pins have their real directions. They are not hierarchy
    /// nodes either.
    QSet<QString> primitiveModules;
    /// Stubs of units of the other language, by their names. They are hierarchy nodes whose content
    /// another part of the design adds.
    QHash<QString, const DeclaredUnit *> foreignUnits;
    /// Maps a place in the input of the elaborator to the user's files. Null when they are the
    /// same.
    std::function<Place(const Place &)> placeMap;
    /// Names of nets by the source name of their module. They count as driven, because
    /// bidirectional switches or aliases, which are not in the XML, connect them.
    QHash<QString, QSet<QString>> tiedNets;
    /// Omitted writes by the source name of their module. Their targets count as driven: nets,
    /// bits, or nets of interfaces and instances.
    QHash<QString, QVector<OmittedWrite>> omittedWrites;
    /// A larger definition is in memory run by run of about as many bytes.
    qint64 runSize = 512 * 1024;
};

} // namespace NETWEIR::Internal
