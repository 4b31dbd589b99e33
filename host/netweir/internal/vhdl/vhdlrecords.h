// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "vhdlsource.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <QVector>

namespace NETWEIR::Internal {

/// The name of the type in a subtype: "rec_t" in "resolved work.p.rec_t(3 downto 0)". For an array
/// type it is that of the elements. Folded; empty when there is none.
QByteArray vhdlTypeName(const QByteArray &text, const TextRange &subtype);

/// The fields of all record types of a design.
class VhdlRecords
{
public:
    explicit VhdlRecords(const QVector<VhdlSource> &sources);

    /// The declared spelling of a field; all names are folded. @p type is the type of the object,
    /// and @p fields the fields in between. @p packages are the names of the units that may declare
    /// the type, in order of preference. A type that is not found, or is ambiguous, counts as one
    /// with all fields of the design. Empty when the spelling is not known.
    QByteArray spelling(const QByteArray &type, const QByteArrayList &fields,
                        const QByteArray &name, const QByteArrayList &packages) const;

private:
    struct Field
    {
        QByteArray spelling;
        QByteArray type; ///< Folded.
    };

    /// A record type, or another name for a type or an array of it.
    struct Type
    {
        QByteArray unit; ///< That declares it; folded.
        QByteArray base; ///< Folded; empty for a record.
        QHash<QByteArray, Field> fields;
    };

    void addTypes(const VhdlSource &source, const VhdlUnit &unit);
    const Type *find(const QByteArray &name, const QByteArrayList &units) const;
    const Type *findRecord(QByteArray name, const QByteArrayList &units) const;

    QHash<QByteArray, QVector<Type>> m_types; ///< By folded name.
    /// The spelling of each field; empty if two records spell it in different ways.
    QHash<QByteArray, QByteArray> m_spellings;
};

} // namespace NETWEIR::Internal
