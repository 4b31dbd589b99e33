// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <audit/candidates.h>
#include <audit/designnames.h>
#include <model/tarncore.h>

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace Tool {

/// Chooses signals of a design by name, as the dialogs of the editor do.
///
/// The netlist must live longer. What takes time is made at the first need: indexes of names, and
/// the search for similar names after an error.
class SignalChoice
{
public:
    explicit SignalChoice(NETWEIR::RtlNetlist *netlist);

    const TARN::DesignNames &names() const { return m_names; }

    /// The net or bus with the full name @p name. Bits that ports of the type cannot hold have no
    /// place there: @p warning tells of them. Returns nothing and sets @p error when none is left.
    std::optional<TARN::SignalItem> findName(const QString &name, TARN::ProbeType type,
                                             QString *warning, QString *error);

    /// The buses, then the nets, whose full names match the wildcard, as far as ports of the type
    /// can hold them. Stops when those without a namesake in @p present have more than @p most
    /// bits. Returns nothing and sets @p error when there are none.
    std::optional<QList<TARN::SignalItem>> findMatches(const QString &pattern, TARN::ProbeType type,
                                                       const QList<TARN::SignalItem> &present,
                                                       int most, QString *error);

    /// Whether the name is that of a net that can be a user clock.
    bool checkClock(const QString &name, QString *error);

private:
    /// Why the design has nothing of that name that ports of the type can hold.
    QString reasonAgainst(const QString &name, TARN::ProbeType type);
    TARN::SignalItem itemOf(NETWEIR::RtlNet *net, TARN::ProbeType type) const;
    QString missingText(const QString &name, TARN::ProbeType type, bool netsOnly);
    QStringList similarNames(const QString &name, TARN::ProbeType type, bool netsOnly);

    NETWEIR::RtlNetlist *m_netlist;
    TARN::DesignNames m_names;
    std::unique_ptr<TARN::CandidateSearch> m_search;
};

} // namespace Tool
