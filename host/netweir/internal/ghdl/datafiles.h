// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

namespace NETWEIR::Internal {

class VhdlDesign;

/// A file that a design may read while it is elaborated, such as the first content of a memory.
struct DataFile
{
    QString name; ///< As the design names it, relative.
    QString path;
};

/// The files beside the sources that string literals name. Empty unless the design uses textio.
/// GHDL gets copies, because a design could also write to them.
QVector<DataFile> dataFiles(const VhdlDesign &design);

} // namespace NETWEIR::Internal
