// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/tarncore.h>

#include <QList>
#include <QString>

#include <memory>

namespace TARN {
class TarnView;
}

namespace TarnBench {

constexpr int PortCount = 64;
constexpr int SignalCount = 256;

/// As many single nets as a port can hold, numbered from @p first.
QList<TARN::SignalItem> nets(const QString &prefix, int first);

/// A core at all limits, owned by the caller. Another @p prefix makes every signal and every value
/// another one.
TARN::TarnCore *fullCore(int index, const QString &prefix);

/// Processes everything that is pending: layout, painting, deletion.
void settle();

/// A visible view of a new file with these cores, which goes at once unless @p path is given. There
/// is no design, so the view shows a box, which is answered.
std::unique_ptr<TARN::TarnView> openedView(const QList<TARN::TarnCore *> &cores,
                                           const QString &path = QString());

} // namespace TarnBench
