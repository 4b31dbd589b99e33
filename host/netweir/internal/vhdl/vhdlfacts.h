// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "vhdlfile.h"

#include <QHash>
#include <QVector>

#include <memory>

namespace NETWEIR::Internal {

/// A scanned text of a design with the library that it belongs to. The facts refer to both.
struct VhdlSource
{
    QByteArray library; ///< "work" or a name of its own.
    QByteArray text;    ///< What was scanned.
    VhdlFile file;
};

/// The result of a computed index on a signal or port.
struct VhdlComputedIndex
{
    /// The number of indexes in front of the first computed one: 0 for "mem(i)", 1 for "mem(3)(i)".
    /// A range in front, as in "mem(3 downto 0)(i)", does not count.
    int depth = 0;
};

/// What the texts tell about the scopes and instances of one architecture and its entity, and GHDL
/// does not show. Paths are labels of instances' scopes as GHDL prints them: folded, without the
/// indexes of for generates; {} is the architecture itself. Alternatives of an if or case generate
/// share a path. An empty result means that the texts do not tell.
class VhdlArchitectureFacts
{
public:
    /// The name of the entity as declared.
    QByteArray entityName() const;
    QByteArray library() const;
    /// The declared spelling of the signal, port, generic or label @p name in the scope at @p path.
    QByteArray spelling(const QByteArrayList &path, const QByteArray &name) const;
    /// The declared spelling of the field @p name below the signal or port @p signal; @p fields are
    /// the fields in between.
    QByteArray fieldSpelling(const QByteArrayList &path, const QByteArray &signal,
                             const QByteArrayList &fields, const QByteArray &name) const;
    /// Whether the instance @p label associates @p formal of @p unit, its component or entity, with
    /// something other than open.
    bool isAssociated(const QByteArrayList &path, const QByteArray &label,
                      const QByteArray &formal) const;
    /// The least depth of a computed index on the signal @p name (with fields: "rec.mem"), negative
    /// if there is none.
    int computedIndexDepth(const QByteArrayList &path, const QByteArray &name) const;
};

/// What the texts of a whole design tell.
///
/// Linear in the texts; building it costs as much as scanning them.
class VhdlFacts
{
public:
    explicit VhdlFacts(const QVector<VhdlSource> &sources);
    ~VhdlFacts();

    /// Null when no text declares it. Without @p library, or if that has none, any library's.
    const VhdlArchitectureFacts *find(const QByteArray &entity, const QByteArray &architecture,
                                      const QByteArray &library = {}) const;
};

} // namespace NETWEIR::Internal
