// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/tool/workfolder.h>

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>

namespace NETWEIR::Internal {

/// The folder in which GHDL works. The elaborations of a design use it one after another, so the
/// sources are written, noted and analysed once.
struct GhdlFolder
{
    WorkFolder files;
    /// The texts of the files in the libraries, by their names in the folder, before case generates
    /// were rewritten. Empty: the libraries have to be made.
    QHash<QString, QByteArray> noted;
    QSet<QByteArray> rewritten; ///< Files whose case generates GHDL gets in another form.
};

} // namespace NETWEIR::Internal
