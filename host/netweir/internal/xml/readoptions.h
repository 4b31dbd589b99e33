// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/ground/readguard.h>

#include <QHash>
#include <QSet>
#include <QString>
#include <QVector>

#include <atomic>

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
    /// The top of the XML does not belong to the design: its only instance is the top module.
    bool topIsWrapped = false;
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
    /// Reading ends soon after it becomes true. Null when there is no way to cancel.
    const std::atomic<bool> *cancelled = nullptr;
    int timeoutSeconds = 120;
    qint64 memoryLimit = ReadGuard::defaultMemoryLimit(); ///< In bytes.
};

} // namespace NETWEIR::Internal
