// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <audit/signalmarks.h>
#include <model/tarncore.h>
#include <widgets/rowmarks.h>

class QModelIndex;

namespace TARN {

/// @p mark for painting: red for what is not in the design, amber for the rest.
RowMark rowMarkOf(const SignalMarks::Mark &mark);

/// The mark of @p row, which shows a signal of a port of @p type or, below such a row, a member of
/// a bus. It follows from the SignalItem in the row, wherever the row was moved. No mark for other
/// rows, or when @p marks is null.
RowMark signalRowMark(const SignalMarks *marks, ProbeType type, const QModelIndex &row);

} // namespace TARN
