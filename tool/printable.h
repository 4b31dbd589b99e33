// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

namespace Tool {

/// @p text, such as the name of a net, for one line of output: each control character as \xNN.
QByteArray printable(const QString &text);

} // namespace Tool
