// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ghdlmessages.h"

#include <QStringList>
#include <QVector>

namespace NETWEIR::Internal {

class GhdlPlaces;
class VhdlDesign;

/// The errors of GHDL for users: with places in the user's files, without repetition. Errors that
/// follow from others are only counted: the use of a unit whose file has errors, all but the first
/// use of something that is missing, undeclared names in a file that uses something missing, and
/// what the parser says within a few lines of a syntax error.
QStringList ghdlReport(const VhdlDesign &design, const GhdlPlaces &places,
                       const QVector<GhdlMessage> &errors);

} // namespace NETWEIR::Internal
