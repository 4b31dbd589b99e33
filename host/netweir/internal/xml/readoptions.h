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

/// A target of an assignment that the elaborator was not given.
struct OmittedWrite
{
    QString name;  ///< The last component.
    QString path;  ///< Those in front of it, joined with '.'.
    int left = -1; ///< Index or range behind a net's name, if that is known.
    int right = -1;
};

/// What the reader has to know of a design beyond the elaborated XML itself.
struct ReadOptions
{
    /// The top of the XML is no part of the design: its only instance is the top module.
    bool topIsWrapped = false;
    /// Modules without a source, written as stubs: their pins have no known direction, so that
    /// whatever they connect to counts as driven. They are no hierarchy nodes.
    QSet<QString> unknownModules;
    /// Primitives of the device, whose pins have real directions. They are no hierarchy nodes
    /// either.
    QSet<QString> primitiveModules;
    /// Names of nets by the source name of their module. They count as driven: switches of both
    /// directions or aliases, which the XML does not hold, connect them to something.
    QHash<QString, QSet<QString>> tiedNets;
    /// By the source name of the module they stand in. What they name counts as driven: the net, or
    /// the bits of it, or one of an interface or an instance.
    QHash<QString, QVector<OmittedWrite>> omittedWrites;
    /// Reading ends soon after it became true. Null when nobody can cancel.
    const std::atomic<bool> *cancelled = nullptr;
    int timeoutSeconds = 120;
    qint64 memoryLimit = ReadGuard::defaultMemoryLimit(); ///< In bytes.
};

} // namespace NETWEIR::Internal
