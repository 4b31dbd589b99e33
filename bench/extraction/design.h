// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/rtlnetlist.h>

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <memory>

/// A VHDL file and the library of its units.
struct VhdlFile
{
    QString path;
    QString library;
};

/// The input of both the extractor and the elaborators alone.
struct Design
{
    QString top;
    QString verilogTop;        ///< That of the Verilog part, when the top is an entity.
    QStringList innerEntities; ///< That the Verilog part instantiates.
    bool hasTables = true;     ///< GHDL fails on its own tables of a case generate statement.
    QStringList models; ///< Sources in place of units of the other language, for elaborators alone.
    QString standard = QStringLiteral("1800-2017");
    QStringList files; ///< Of Verilog.
    QVector<VhdlFile> vhdlFiles;
    QStringList includePaths;
    QStringList macros;
};

/// Ends the program, because it would not measure what it is meant to measure.
[[noreturn]] void fail(const QString &reason);

/// The design of the example @p name, as its project file lists it.
Design exampleDesign(const QString &name, const QString &top);

void writeSource(const QString &path, const QByteArray &text);

/// Runs the elaborators alone, like the extractor runs them, on the unchanged sources.
void elaborateAlone(const Design &design);

/// Runs the preprocessor alone, if the design has Verilog files.
void preprocessAlone(const Design &design);

/// What the extraction wants to know.
QMap<QString, QVariant> designInfo(const Design &design);

/// Takes the road of the application, progress dialog included.
std::unique_ptr<NETWEIR::RtlNetlist> extract(const Design &design);

/// Takes the road of the command line tool.
std::unique_ptr<NETWEIR::RtlNetlist> extractWithoutWindow(const Design &design);

/// The single nets of a netlist and the members of its buses.
int bitCount(const NETWEIR::RtlNetlist &netlist);
