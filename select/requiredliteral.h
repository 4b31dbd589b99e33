// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QRegExp>
#include <QString>

namespace TARN {

/// The longest text that every match of the QRegExp @p pattern provably contains, empty when none
/// is found. When case is ignored, that holds for names of ASCII characters: beyond them QRegExp
/// and the substring search fold some letters differently.
QString requiredLiteral(const QString &pattern, QRegExp::PatternSyntax syntax);

} // namespace TARN
