// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "netweir_global.h"

#include <QString>

#include <memory>

namespace NETWEIR {

class Hierachy;
class RtlNet;
class NetlistBuilder;

/// The nets of an elaborated design. Owns all nodes, nets and buses in it; immutable once built.
class NETWEIR_EXPORT RtlNetlist
{
public:
    ~RtlNetlist();

    RtlNetlist(const RtlNetlist &) = delete;
    RtlNetlist &operator=(const RtlNetlist &) = delete;

    /// The top node; never null.
    Hierachy *top() const;

    /// The single net or bus bit of that full path name, null when there is none; the first one
    /// when an escaped name spells the path of another net. The name is compared as a whole and
    /// never taken apart. One hash step; the first call indexes all nets, in about 0.1 s a million.
    /// Not thread-safe for that reason.
    RtlNet *findNet(const QString &fullPathName) const;

    /// The design itself instantiates the JTAG primitive "KX_JTAG".
    bool usesJtagPrimitive() const;

private:
    friend class NetlistBuilder;
    struct Private;

    explicit RtlNetlist(std::unique_ptr<Private> data);

    std::unique_ptr<Private> d;
};

} // namespace NETWEIR
