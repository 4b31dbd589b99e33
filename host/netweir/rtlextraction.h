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

/// Finds the modules of the design that @p info describes (keys in te/designinfo.h) and remembers
/// the design for catchRtlNetsWithProgressDialog().
///
/// Appends to @p tops the candidates for the top module: the module "Top" if it is set and exists,
/// otherwise every module that no other module instantiates. Appends to @p modules every module
/// that the sources define. Appends warnings and errors to @p messages; an error has the form
/// "ERROR: file:line:col: text". If no message is an error, the messages also go to the debug
/// stream; they say why there is no module or no single top. @p info does not change. @p parent is
/// the parent of dialogs and may be null.
NETWEIR_EXPORT void catchRtlModules(QStringList &tops, QStringList &modules, QStringList &messages,
                                    QMap<QString, QVariant> &info, QWidget *parent);

/// Elaborates the design of the last catchRtlModules(), behind a modal progress dialog with a
/// Cancel button. Sets @p netlist to the result, which the caller owns, or to null after a failure
/// or Cancel. Appends to @p messages like catchRtlModules(); all messages also go to the debug
/// stream. Runs an event loop, in which the caller's objects may be deleted.
NETWEIR_EXPORT void catchRtlNetsWithProgressDialog(RtlNetlist **netlist, QStringList &messages,
                                                   QWidget *parent);

} // namespace NETWEIR
