// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "declaredunit.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

#include <vector>

namespace NETWEIR::Internal {

/// The name as VHDL compares it: in lower case, but an extended identifier ("\Name\") as written.
QString foldedName(const QString &name);

/// Names of ports, generics or parameters, for searches across the border of the languages. Each
/// search takes constant time.
class NamesAcross
{
public:
    explicit NamesAcross(const QStringList &declared);

    /// The index of the name that @p written means: the same name, otherwise the first that differs
    /// only in case or in the marks of an extended identifier. -1 when there is none.
    int find(const QString &written) const;

private:
    QHash<QString, int> m_exact;
    QHash<QString, int> m_inAnyCase;
};

/// Says which unit a name means. There is one rule for both languages, and only Verilog is
/// case-sensitive:
///
/// - In Verilog, a name means the module with exactly this name, otherwise the entity.
/// - In VHDL, a name means the entity or configuration in the named library; without a library that
///   of the own library, otherwise that of any other. If there is none, it means the module with
///   exactly this name, otherwise the first module whose name differs only in case.
///
/// Of several units with one name, units of the sources come before those of library files, and
/// otherwise the first counts. Each search takes constant time.
class UnitNames
{
public:
    /// Indexes the units of one or more languages. @p units is not kept.
    explicit UnitNames(const std::vector<DeclaredUnit> &units);

    /// The number of the unit that @p use means in a source of language @p from. @p ownLibrary is
    /// the library of a VHDL source. -1 when there is none.
    int find(const UnitUse &use, Language from, const QString &ownLibrary = QString()) const;

    /// The same for one language only.
    int findVerilog(const QString &name) const { return m_verilog.value(name, -1); }
    int findVhdl(const QString &name, const QString &library = QString(),
                 const QString &ownLibrary = QString()) const;

private:
    struct VhdlUnit
    {
        QString library;
        int number;
    };

    int findVhdlFromVerilog(const QString &name) const;
    int findVerilogFromVhdl(const QString &name) const;

    QHash<QString, int> m_verilog;
    QHash<QString, int> m_verilogInAnyCase;
    QHash<QString, QVector<VhdlUnit>> m_vhdl; ///< By folded name, one of each library.
};

} // namespace NETWEIR::Internal
