// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLatin1String>
#include <QString>

namespace TE {

constexpr const char *RES_NETLIST = "RES.netlist";

const QLatin1String E_FILE_ADD("TE.File.Add");
const QLatin1String E_FILE_REMOVE("TE.File.Remove");
const QLatin1String E_FILE_CH_ENABLE("TE.File.Change.Enable");
const QLatin1String E_FILE_CH_TYPE("TE.File.Change.Type");
const QLatin1String E_FILE_MODIFIED("TE.File.Modified");
const QLatin1String E_OPTION_CHANGE("TE.Option.Change");
const QString E_DEVICE_CHANGE = QStringLiteral("TE.Device.Change");

const QString K_FILE = QStringLiteral("file");
const QLatin1String K_TYPE("type");
const QLatin1String K_ENABLE("enable");
const QString K_OPTION = QStringLiteral("option");
constexpr const char *K_PREVIOUS = "previous";

namespace OPT {

const QLatin1String INCLUDEPATH("IncludePath");
const QString Verilog_Standard = QStringLiteral("Verilog_Standard");
const QString SYNTHESIZE_TOOL = QStringLiteral("Synthesize_tool");
const QLatin1String TOPMODULE("TopModule");
const QLatin1String Synplify_pro("Synplify");

} // namespace OPT
} // namespace TE
