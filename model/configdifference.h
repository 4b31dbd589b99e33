// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "configsnapshot.h"

namespace TARN {

/// The cores between those that two snapshots have in common at both ends.
struct ChangedCores
{
    int first = 0;  ///< Position of the first one, in both snapshots.
    int before = 0; ///< How many there were.
    int after = 0;  ///< How many take their place.
};

/// Compares objects alone. Numbers of cores do not count.
ChangedCores changedCores(const ConfigSnapshot &before, const ConfigSnapshot &after);

/// What one edit did, as far as one word can tell, and where to look at the result.
struct ConfigDifference
{
    enum Kind {
        None,
        CoresAdded,
        CoresRemoved,
        PortsAdded,
        PortsRemoved,
        Signals, ///< The signals of one port, and its initial value with them.
        InitialValue,
        UserClock,
        Several,
    };
    Kind kind = None;
    int count = 0; ///< Cores or ports added or removed.

    // List positions in the later snapshot. -1 stands for the whole of what is above. Of what was
    // removed they name what is in its place now.
    int core = -1;
    ProbeType type = ProbeTypeIn;
    int port = -1;
    int signal = -1;
};

/// Looks at what is another object alone.
ConfigDifference difference(const ConfigSnapshot &before, const ConfigSnapshot &after);

} // namespace TARN
