// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <probes/signalitem.h>

namespace TARN {

/// Calls visit(name, signal, bit) for each bit of the @p items of a port, in port order: the full
/// name of its net, the position of its signal, and its position in the members of a bus, -1 for a
/// single net.
template <typename Visit>
void forEachBit(const QList<SignalItem> &items, Visit visit)
{
    for (int signal = 0; signal < items.size(); ++signal) {
        const SignalItem &item = items.at(signal);
        if (item.members.isEmpty())
            visit(item.name, signal, -1);
        for (int bit = 0; bit < item.members.size(); ++bit)
            visit(item.members.at(bit).name, signal, bit);
    }
}

} // namespace TARN
