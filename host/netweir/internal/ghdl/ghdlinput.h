// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/ground/messages.h>

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

namespace NETWEIR::Internal {

class VhdlDesign;

/// A text that GHDL gets beside the sources.
struct GeneratedText
{
    QString file; ///< Its name in the working folder.
    QString library;
    QByteArray text;
    Place place; ///< What the messages about this text belong to.
};

/// What GHDL elaborates.
struct GhdlInput
{
    QVector<GeneratedText> texts;
    QStringList libraries; ///< Beside those of the sources.
    /// Texts in place of those of the sources, by number of the file.
    QHash<int, QByteArray> replaced;
    QStringList suspicions; ///< What to say first when GHDL fails, as errors for users.
    QStringList recursions; ///< What to say when GHDL crashes or exceeds a limit, likewise.
    QString library;        ///< Of the unit.
    QString unit;           ///< An entity or a configuration. Empty: the sources are only analysed.
};

/// The name in the working folder of the file with this number in the design.
QString copyNameOf(int file);

/// The file with this name in the working folder, -1 when there is none.
int fileOfCopy(const QByteArray &name);

/// Maps places in the files of the working folder to the sources.
class GhdlPlaces
{
public:
    /// Both must outlive this object.
    GhdlPlaces(const VhdlDesign &design, const QVector<GeneratedText> &generated);

    /// @p column as GHDL counts it.
    Place place(const QByteArray &file, int line, int column) const;

private:
    const VhdlDesign &m_design;
    const QVector<GeneratedText> &m_generated;
};

} // namespace NETWEIR::Internal
