// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "finding.h"

#include <optional>

namespace TARN {

class DesignNames;

/// Tells whether a single signal still fits the design, for the row that shows it.
///
/// A pure function of the signal, the kind of its port and the design, without memory of its own.
/// It takes about 0.2 us per bit, so it can be asked for each row that is painted. Owns nothing.
class SignalMarks
{
public:
    /// NetMissing, BusChanged or NotUsable, or no rule and no text when all is well.
    struct Mark
    {
        std::optional<Rule> rule;
        QString text; ///< The text of the finding, one sentence.
    };

    /// The names of the current design; null, as at first, marks nothing.
    void setNames(const DesignNames *names) { m_names = names; }

    /// The worst that is wrong with @p item in ports of @p type.
    Mark of(const SignalItem &item, ProbeType type) const;

    /// What is wrong with the net of one member of a bus. No mark when there is no such member.
    Mark ofBit(const SignalItem &item, int bit, ProbeType type) const;

    /// The worst mark of the signals of a port, the first of several; for the row of the port.
    Mark ofPort(const QList<SignalItem> &items, ProbeType type) const;

private:
    const DesignNames *m_names = nullptr;
};

} // namespace TARN
