// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

namespace NETWEIR::Internal {

/// Whether a comment hides the text after it ("synopsys translate_off") or shows it again.
enum class HidingMark { None, Off, On };

/// The meaning of @p comment, which includes its slashes or hyphens. Any single word precedes the
/// mark. Text may follow the mark only if that word is reserved by synthesis tools; otherwise "see
/// translate_off below" would be a mark.
HidingMark hidingMarkOf(const QByteArray &comment);

/// Whether the words of a mark occur in @p text, in a comment or anywhere else.
bool mentionsHidingMark(const QByteArray &text);

} // namespace NETWEIR::Internal
