// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "finding.h"

#include <memory>

namespace NETWEIR {
class RtlNetlist;
}

namespace TARN {

class DesignNames;
struct ConfigSnapshot;

/// All findings of a configuration, kept up to date while it is edited.
///
/// Findings are in the order of the cores: first those of the core itself and its user clock, then
/// those of its Probe In ports and of its Probe Out ports. Within a port, those of the whole port
/// come first, then signal by signal, those of one signal in the order of Rule. The bits with
/// several drivers follow all cores, sorted by name.
///
/// Keeps the snapshot alive, which shares nearly all with its successor, and a few bytes per bit
/// and finding. Texts are made when they are asked for. Owns neither names nor netlist.
class ConfigAudit
{
public:
    /// Notes say that something is not finished yet, as a new file always is.
    enum class Notes { Included, LeftOut };

    explicit ConfigAudit(Notes notes = Notes::Included);
    ~ConfigAudit();
    Q_DISABLE_COPY(ConfigAudit)

    /// The names of the current design; null, as at first, for no finding that needs one. Looks at
    /// every signal again. The names must live until they are replaced.
    void setNames(const DesignNames *names);

    /// Takes over the configuration. Looks only at ports that are not the same objects as last
    /// time, and at the bits that they share with other ports.
    void update(const ConfigSnapshot &snapshot);

    // The findings. An index must be below count(). Rule and place need no text and little time.
    int count() const;
    Finding at(int i) const;
    Rule ruleAt(int i) const;
    Place placeAt(int i) const;

    /// The place as the rows show it: "tarn_0, Probe Out3". Empty for a place that does not exist.
    QString placeText(const Place &place) const;

    /// Number of signals in ports that are missing, changed or not usable.
    int markedCount() const;

private:
    class Private;
    std::unique_ptr<Private> d;
};

/// All findings at once, for tools. @p netlist may be null.
QVector<Finding> auditConfig(const QList<TarnCore *> &cores, NETWEIR::RtlNetlist *netlist);

} // namespace TARN
