// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMap>
#include <QStringList>
#include <QVariant>

class QWidget;

namespace NETWEIR {

class RtlNetlist;

void catchRtlModules(QStringList &tops, QStringList &modules, QStringList &messages,
                     QMap<QString, QVariant> &info, QWidget *parent);
void catchRtlNetsWithProgressDialog(RtlNetlist **netlist, QStringList &messages, QWidget *parent);

} // namespace NETWEIR
