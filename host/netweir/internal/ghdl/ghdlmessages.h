// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

namespace NETWEIR::Internal {

/// An error of GHDL. Warnings are not read: they are about style and simulation.
struct GhdlMessage
{
    QByteArray file; ///< As GHDL was called with it; empty when unknown.
    int line = 0;    ///< 0 when unknown.
    int column = 0;  ///< As GHDL counts: a tab extends to the next multiple of 8.
    QByteArray text; ///< With what GHDL says in further lines.

    bool operator==(const GhdlMessage &other) const
    {
        return file == other.file && line == other.line && column == other.column &&
               text == other.text;
    }
};

/// The errors in the error output of GHDL, without excerpts, remarks about the program itself and
/// the traces of internal errors.
QVector<GhdlMessage> parseGhdlErrors(const QByteArray &errorOutput);

/// The text of an error, with advice if the text of GHDL has none.
QString ghdlErrorText(const QByteArray &text);

/// The unit that a file uses and GHDL has not found or not analysed. Null for other errors.
QByteArray missingUnitOf(const GhdlMessage &message);

/// The library that GHDL has not found. Null for other errors.
QByteArray missingLibraryOf(const GhdlMessage &message);

} // namespace NETWEIR::Internal
