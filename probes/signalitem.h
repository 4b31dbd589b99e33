// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QMetaType>
#include <QString>

#include <algorithm>

namespace TARN {

/// A chosen single net or bus. A value: copies share their members until one of them changes.
struct SignalItem
{
    /// The values of kind.
    enum Kind { Unset = -1, Net = 0, Bus = 1 };

    QString name;              ///< Full name of the net or bus; the identity in every comparison.
    QString displayName;       ///< Shown, in italics, instead of the name when not empty.
    QList<SignalItem> members; ///< Of a bus: one item per bit; empty for a single net.
    bool enabled = true;       ///< False: drawn grey, neither selectable nor enabled.
    bool usable = true;        ///< False, with enabled true: drawn red, still selectable.
    int kind = Unset;          ///< A Kind.

    /// Number of bits: the number of members, or 1 when there are none.
    int width() const { return members.isEmpty() ? 1 : members.size(); }
};

/// Removes the members that are not enabled: a port never gets them.
inline void removeDisabledMembers(SignalItem *item)
{
    const auto disabled = [](const SignalItem &member) { return !member.enabled; };
    QList<SignalItem> &members = item->members;
    if (std::any_of(members.cbegin(), members.cend(), disabled))
        members.erase(std::remove_if(members.begin(), members.end(), disabled), members.end());
}

} // namespace TARN

Q_DECLARE_METATYPE(TARN::SignalItem)
