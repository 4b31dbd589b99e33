// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "toolmessages.h"

#include <QStringList>
#include <QVector>

namespace NETWEIR::Internal {

class DesignScan;
class ElaborationRoots;
class PreprocessedText;
class Stubs;
struct DesignSources;

/// Translates messages of the elaborator for users: with places in the user's files and with causes
/// known from the scan of the design.
class FaultReport
{
public:
    /// All arguments must outlive this object.
    FaultReport(const DesignSources &sources, const PreprocessedText &text, const DesignScan &scan,
                const Stubs &stubs, const ElaborationRoots &roots);

    QStringList userMessages(const QVector<ToolMessage> &messages) const;

private:
    QVector<ToolMessage> explained(QVector<ToolMessage> messages) const;
    bool isBadUnknownPin(const ToolMessage &message) const;
    Place placeOf(const ToolMessage &message) const;

    const DesignSources &m_sources;
    const PreprocessedText &m_text;
    const DesignScan &m_scan;
    const Stubs &m_stubs;
    const ElaborationRoots &m_roots;
};

} // namespace NETWEIR::Internal
