// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "signaltypes.h"

#include <QByteArrayList>
#include <QString>

#include <vector>

namespace NETWEIR::Internal {

class VhdlArchitectureFacts;

/// A net or bus that a signal, or a part of it, shows as.
struct SignalNet
{
    enum Kind {
        Single,
        Bus,     ///< Each bit is a scalar.
        Number,  ///< A bus whose bits are one scalar.
        Excluded ///< No hardware, a memory, or without any bit.
    };

    Kind kind = Single;
    QString name; ///< Within its scope: "rec.mem[3]".
    int left = 0;
    int right = 0;
    qint64 scalar = 0; ///< The first one, counted in the signal.

    qint64 width() const { return kind == Single ? 1 : qAbs(qint64(left) - right) + 1; }
};

/// A signal or port where it is declared.
struct SignalDeclaration
{
    const VhdlArchitectureFacts *facts = nullptr; ///< Null when the texts do not tell.
    QByteArrayList path; ///< The labels of the scopes between the architecture and the signal.
    QByteArray name;     ///< As GHDL shows it.
    QString spelling;    ///< As declared.
};

/// The nets and buses of a signal with @p type, in the order of the source.
///
/// An array of anything but nets that is reached by a computed index, or holds more than 4096 bits,
/// is a memory and excluded. Linear in the nets.
std::vector<SignalNet> netsOf(const SignalDeclaration &signal, int type, const SignalTypes &types,
                              const WaveStrings &strings);

} // namespace NETWEIR::Internal
