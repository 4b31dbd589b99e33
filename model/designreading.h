// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>

namespace NETWEIR {
class RtlNetlist;
}

namespace TARN {

/// Why a design has no netlist for TARN, as users read it.
struct DesignFault
{
    QString title;
    QString text; ///< Empty when the messages say it all.
    /// Of errors in the sources: all messages about them, warnings included. Otherwise empty.
    QStringList messages;
};

/// The extractor, with or without windows.
struct ExtractorCalls
{
    /// Appends to the candidates for the top module, to all modules, and to the messages, in which
    /// an error begins with "ERROR".
    std::function<void(QMap<QString, QVariant> &info, QStringList &tops, QStringList &modules,
                       QStringList &messages)>
        findModules;
    /// The netlist of the design in which findModules() found one top. The caller owns it. Null
    /// after a failure or cancellation.
    std::function<NETWEIR::RtlNetlist *()> buildNetlist;
};

/// Reads the netlist of the design that @p info describes, the host's design information map, with
/// these calls. Returns null and sets @p fault when TARN cannot be used for the design.
std::unique_ptr<NETWEIR::RtlNetlist> readDesign(QMap<QString, QVariant> info,
                                                const ExtractorCalls &calls, DesignFault *fault);

/// Why a configuration cannot be saved while @p synthesisTool, the value of
/// TE::OPT::SYNTHESIZE_TOOL, synthesises its design; null when it can.
QString saveRefusal(const QString &synthesisTool);

} // namespace TARN
