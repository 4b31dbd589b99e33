// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/vhdl/vhdlfacts.h>

#include <QSet>
#include <QString>
#include <QStringList>
#include <QVector>

namespace NETWEIR::Internal {

struct DesignSources;

/// The VHDL sources of a design: their texts without hidden code, and the design units in them.
///
/// The text of a unit in a library file is blank if the sources declare a unit with its name.
/// Otherwise each character has the place that it has in the source.
class VhdlDesign
{
public:
    VhdlDesign() = default;

    /// Reads the VHDL files of @p sources. Files that cannot be read count as empty.
    explicit VhdlDesign(const DesignSources &sources);

    bool isEmpty() const { return m_sources.isEmpty(); }

    // Files have numbers in the order of the sources.

    int size() const { return m_sources.size(); }
    const QVector<VhdlSource> &sources() const { return m_sources; }
    const VhdlSource &source(int file) const { return m_sources.at(file); }
    const QString &path(int file) const { return m_paths.at(file); }
    bool isBackup(int file) const { return m_isBackup.at(file); }
    QString library(int file) const;

    /// There is anything but comments and blanks in a file. GHDL does not accept other files.
    bool hasText(int file) const;

    /// The libraries of the files, each once, in the order of the files. Always has "work".
    const QStringList &libraries() const { return m_libraries; }

    /// The edition of the language, as GHDL writes it.
    const QString &edition() const { return m_edition; }

    /// The total size of the texts in bytes.
    qint64 textSize() const;

private:
    void add(const QString &path, const QString &library, bool isBackup);
    void blankReplacedUnits();

    QVector<VhdlSource> m_sources;
    QStringList m_paths;
    QVector<bool> m_isBackup;
    QStringList m_libraries{QStringLiteral("work")};
    QString m_edition;
};

/// The name under which GHDL keeps a unit in its library, folded: an architecture and a package
/// body have the name of their primary unit.
QByteArray primaryNameOf(const VhdlUnit &unit);

} // namespace NETWEIR::Internal
