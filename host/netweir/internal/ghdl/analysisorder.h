// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QVector>

namespace NETWEIR::Internal {

class VhdlDesign;

/// The numbers of the files of @p design, each after the files that declare what it names. Files in
/// a circle, and those that need nothing of each other, keep the order of the sources. Linear in
/// the texts.
QVector<int> analysisOrder(const VhdlDesign &design);

} // namespace NETWEIR::Internal
