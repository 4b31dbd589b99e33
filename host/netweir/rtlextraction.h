// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "netweir_global.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

class QWidget;

namespace NETWEIR {

class RtlNetlist;

/// Finds the modules of the design described by @p info (keys in te/designinfo.h) and remembers
/// the design for catchRtlNetsWithProgressDialog().
///
/// Appends to @p tops the candidates for the top module: with "Top" set and known exactly that
/// one, otherwise every module that no other module instantiates. Appends to @p modules every
/// module that the sources define, and to @p messages what the reader has to say; an error begins
/// with "ERROR" and reads "ERROR: file:line:col: text". Messages without an error among them go to
/// the debug stream too; when there is no module or no single top, they tell why. @p info is not
/// changed. @p parent is the parent of dialogs, may be null.
NETWEIR_EXPORT void catchRtlModules(QStringList &tops, QStringList &modules, QStringList &messages,
                                    QMap<QString, QVariant> &info, QWidget *parent);

/// Elaborates the design that the last catchRtlModules() was given, behind a modal progress dialog
/// with a Cancel button, and sets @p netlist to the result, which the caller owns; null when the
/// build failed or was cancelled. Appends to @p messages like catchRtlModules(); all of them go to
/// the debug stream too. Runs an event loop: the caller's objects may go away meanwhile.
NETWEIR_EXPORT void catchRtlNetsWithProgressDialog(RtlNetlist **netlist, QStringList &messages,
                                                   QWidget *parent);

} // namespace NETWEIR
