// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QVector>

namespace NETWEIR::Internal {

/// A target of an assignment that is missing in the input of the elaborator.
struct OmittedWrite
{
    QString name;  ///< The last component.
    QString path;  ///< The other components, joined with '.'.
    int left = -1; ///< Index or range after the name of a net, if it is known.
    int right = -1;
};

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
    /// Names of nets by the source name of their module. They count as driven, because
    /// bidirectional switches or aliases, which are not in the XML, connect them.
    QHash<QString, QSet<QString>> tiedNets;
    /// Omitted writes by the source name of their module. Their targets count as driven: nets,
    /// bits, or nets of interfaces and instances.
    QHash<QString, QVector<OmittedWrite>> omittedWrites;
};

} // namespace NETWEIR::Internal
