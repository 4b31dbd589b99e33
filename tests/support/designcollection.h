// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

namespace TarnTest {

/// Keeps a design that a test is about to extract, for the comparison with another version
/// (scripts/compare-with): a copy of @p folder, which holds its sources, and @p info, its design
/// information. Does nothing unless TARN_COLLECT_DESIGNS is the path of a folder. The same design
/// is kept once.
void collectDesign(const QString &folder, const QMap<QString, QVariant> &info);

} // namespace TarnTest
