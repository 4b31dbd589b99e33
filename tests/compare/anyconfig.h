// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <probes/signalitem.h>

#include <QList>
#include <QString>

namespace TARN {
class TarnCore;
}

namespace TarnCompare {

class Choice;
class NumberedNetlist;

/// Signals of the design, and some that it does not have.
QList<TARN::SignalItem> anySignals(const NumberedNetlist &design, Choice *choice);

QString anyValue(Choice *choice);

/// Cores with such signals, at most @p most, owned by the caller.
QList<TARN::TarnCore *> anyCores(const NumberedNetlist &design, int most, Choice *choice);

/// Changes something in @p cores, as a user or a program does.
void editCores(QList<TARN::TarnCore *> *cores, const NumberedNetlist &design, Choice *choice);

/// The cores and all that is in them, for a line of a dump.
QString textOf(const QList<TARN::TarnCore *> &cores);

} // namespace TarnCompare
