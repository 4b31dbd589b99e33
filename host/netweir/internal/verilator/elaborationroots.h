// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/parts/partroot.h>

#include <QByteArray>
#include <QSet>
#include <QString>

#include <vector>

namespace NETWEIR::Internal {

class DesignScan;

/// The modules with which a run of the elaborator begins.
///
/// The top of the design is the top of the run. For other roots, a wrapper is the top; it
/// instantiates each root once, without connections. A top that instantiates itself needs the
/// wrapper too, because the elaborator would drop instances of its top.
class ElaborationRoots
{
public:
    /// The units of @p roots must be modules of @p scan in its spelling. Without roots the top is
    /// any module of texts that the scan does not understand, so that the elaborator says what is
    /// wrong. @p isMixed: the design has another language. Then, also without roots, the elaborator
    /// reads the texts below an empty wrapper.
    ElaborationRoots(const std::vector<PartRoot> &roots, const DesignScan &scan, bool isMixed);

    const std::vector<PartRoot> &all() const { return m_roots; }

    /// There is nothing to elaborate.
    bool isEmpty() const { return m_top.isEmpty(); }

    /// The top module of the run.
    const QString &top() const { return m_top; }

    bool areWrapped() const { return m_areWrapped; }

    /// The text of the wrapper.
    QByteArray wrapper() const;

    /// The place of the root in that line of the wrapper.
    Place placeAt(int wrapperLine) const;

    /// Names of the roots.
    QSet<QByteArray> modules() const;

private:
    const std::vector<PartRoot> m_roots;
    QString m_top;
    bool m_areWrapped = false;
};

} // namespace NETWEIR::Internal
