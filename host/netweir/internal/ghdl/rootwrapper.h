// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "unitindex.h"

#include <netweir/internal/parts/declaredunit.h>
#include <netweir/internal/parts/partroot.h>

#include <QByteArray>
#include <QStringList>

namespace NETWEIR::Internal {

class VhdlDesign;

/// The label of the instance of the root, in its wrapper.
constexpr char WrappedLabel[] = "netweir_unit";

/// Writes an entity that instantiates a root with the generics that an instance in the other
/// language gives it.
///
/// The ports of the root are signals of the wrapper, and its generics are constants, so that the
/// types of the ports mean the same as in the root. Ports without a range get the connected width.
class RootWrapper
{
public:
    /// @p unit is the root as the sources declare it: an entity or a configuration.
    RootWrapper(const VhdlDesign &design, const UnitIndex &index, const DeclaredUnit &unit,
                const PartRoot &root);

    /// The text of an entity with this name, in the library of the unit.
    QByteArray text(const QByteArray &name);

    /// Why the root cannot be elaborated like this, as messages at the place of the instance. Known
    /// after text().
    const QStringList &errors() const { return m_errors; }

private:
    void checkNames();
    QByteArray constantOf(const VhdlInterfaceItem &generic);
    QByteArray signalOf(const VhdlInterfaceItem &port);
    QByteArray map(const QVector<VhdlInterfaceItem> &items) const;
    void addError(const QString &text);

    const VhdlDesign &m_design;
    const UnitIndex &m_index;
    const DeclaredUnit &m_unit;
    const PartRoot &m_root;
    UnitAt m_entity;
    QStringList m_errors;
};

} // namespace NETWEIR::Internal
