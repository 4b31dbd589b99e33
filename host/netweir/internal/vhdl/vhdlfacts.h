// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "vhdlsource.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QVector>

#include <memory>

namespace NETWEIR::Internal {

class VhdlFactsOfDesign;

/// What the texts tell about one architecture and its entity, and GHDL does not.
///
/// All names are as GHDL prints them, so folded. A path consists of the labels of the blocks and
/// generates around something, without the indexes of for generates; an empty path is the
/// architecture itself. The alternatives of an if or case generate share their path. All results
/// are empty, false or negative when the texts do not tell.
class VhdlArchitectureFacts
{
public:
    ~VhdlArchitectureFacts();

    /// The name of the entity as declared.
    QByteArray entityName() const;
    QByteArray library() const;

    /// The declared spelling of a signal, port, generic, or label of an instance, block or
    /// generate.
    QByteArray spelling(const QByteArrayList &path, const QByteArray &name) const;

    /// The declared spelling of the record field @p name below a signal or port. @p fields are the
    /// fields in between.
    QByteArray fieldSpelling(const QByteArrayList &path, const QByteArray &signal,
                             const QByteArrayList &fields, const QByteArray &name) const;

    /// Whether the instance or block @p label connects the port @p formal, or a part of it, to
    /// something other than "open".
    bool isAssociated(const QByteArrayList &path, const QByteArray &label,
                      const QByteArray &formal) const;

    /// The library of the entity that the instance @p label means.
    QByteArray libraryOf(const QByteArrayList &path, const QByteArray &label) const;

    /// Tells a memory: the least number of indexes between @p name and a computed index on it, 0
    /// for "mem(i)" and 1 for "mem(3)(i)". Negative when all its indexes are constant. @p name is a
    /// signal or port, or with its fields "rec.mem".
    int computedIndexDepth(const QByteArrayList &path, const QByteArray &name) const;

private:
    friend class VhdlFactsOfDesign;
    struct Private;
    VhdlArchitectureFacts();

    std::unique_ptr<Private> d;
};

/// What the texts of a design tell. Building it reads every text once more; a query costs as much
/// as its path is long.
class VhdlFacts
{
public:
    explicit VhdlFacts(const QVector<VhdlSource> &sources);
    ~VhdlFacts();
    VhdlFacts(const VhdlFacts &) = delete;
    VhdlFacts &operator=(const VhdlFacts &) = delete;

    /// The facts about the architecture of an entity in @p library, or, if that has none or is not
    /// given, in any library. Null when no text declares it. Valid as long as this object.
    const VhdlArchitectureFacts *find(const QByteArray &entity, const QByteArray &architecture,
                                      const QByteArray &library = {}) const;

private:
    std::unique_ptr<VhdlFactsOfDesign> d;
};

} // namespace NETWEIR::Internal
