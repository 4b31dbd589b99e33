// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "extractionmonitor.h"
#include "netweir_global.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

namespace NETWEIR {

class RtlNetlist;

namespace Internal {
class Extraction;
} // namespace Internal

/// Reads a design from its sources to its netlist, without any window. Elaborates it in child
/// processes with temporary files, all of which end with this object.
///
/// Needs a QCoreApplication, and runs event loops in which the object must not be deleted. The two
/// calls may be repeated in any order. Messages are as in rtlextraction.h; none goes to the debug
/// stream.
class NETWEIR_EXPORT DesignExtraction
{
public:
    /// An extraction of no design: buildNetlist() says that none was read.
    DesignExtraction();
    /// Of the design that @p info describes (keys in te/designinfo.h). Reads no file yet.
    explicit DesignExtraction(const QMap<QString, QVariant> &info);
    DesignExtraction(const DesignExtraction &) = delete;
    DesignExtraction &operator=(const DesignExtraction &) = delete;
    ~DesignExtraction();

    /// Appends to @p tops, @p modules and @p messages as catchRtlModules() does. If there is one
    /// top, begins to elaborate it and waits a moment for errors. False when there is an error.
    bool findModules(QStringList *tops, QStringList *modules, QStringList *messages,
                     ExtractionMonitor *monitor = nullptr);

    /// Completes what findModules() began, or does all of it, and reads the netlist. Null on
    /// failure or when cancelled, with an error among @p messages. Does not repeat what
    /// findModules() said.
    std::unique_ptr<RtlNetlist> buildNetlist(QStringList *messages,
                                             ExtractionMonitor *monitor = nullptr);

    /// The time that findModules() and buildNetlist() took for the last netlist.
    qint64 spentMilliseconds() const;

private:
    /// Shared with the running calls. Null without a design, and after a call that ran out of
    /// memory.
    std::shared_ptr<Internal::Extraction> m_extraction;
};

} // namespace NETWEIR
