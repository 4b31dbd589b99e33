// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "netweir_global.h"

#include <QString>
#include <QVector>

#include <memory>

namespace NETWEIR {

class Hierachy;
class RtlNet;
class RtlNetBus;
class NetlistBuilder;

/// One step of a name in the source: an identifier, and the indexes or the range behind it.
struct NameStep
{
    QString identifier; ///< Without the backslash and the space of an escaped identifier.
    QString indexes;    ///< "", "[3]", "[0][7:0]"
};

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

    /// The name of a net, bus or node within its node as the source has it: "g[0].st.valid" is
    /// g[0], st and valid; the escaped identifier "\st.valid " is one step. So a step is the name
    /// of a generate block, of an instance, of a variable or net, or of a member of a structure.
    /// Steps of VHDL names are separated at each point, whatever they mean.
    ///
    /// Hardly any net needs memory for this: a net only has the number of the lengths of its
    /// identifiers if these are not clear from the name, and all nets share these lists.
    QVector<NameStep> nameStepsOf(const RtlNet *net) const;
    QVector<NameStep> nameStepsOf(const RtlNetBus *bus) const;
    QVector<NameStep> nameStepsOf(const Hierachy *node) const;

    /// The design itself instantiates the JTAG primitive "KX_JTAG".
    bool usesJtagPrimitive() const;

private:
    friend class NetlistBuilder;
    struct Private;

    explicit RtlNetlist(std::unique_ptr<Private> data);

    std::unique_ptr<Private> d;
};

} // namespace NETWEIR
