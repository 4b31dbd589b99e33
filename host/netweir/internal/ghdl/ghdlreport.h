// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ghdlmessages.h"

#include <QStringList>
#include <QVector>

namespace NETWEIR::Internal {

class GhdlPlaces;
class VhdlDesign;

/// The errors of GHDL for users: with places in the user's files, without repetition, behind the
/// errors @p suspicions. Errors that follow from others are only counted: all but the first use of
/// something that is missing, everything in a file whose context clauses name something missing,
/// and what the parser says within a few lines of a syntax error. That a unit is not found does not
/// count if a file declares it, as long as there is any other error.
QStringList ghdlReport(const VhdlDesign &design, const GhdlPlaces &places,
                       const QVector<GhdlMessage> &errors, const QStringList &suspicions = {});

} // namespace NETWEIR::Internal
