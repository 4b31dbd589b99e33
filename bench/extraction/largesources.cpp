// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "largesources.h"

#include <support/benchmark.h>

#include <QDir>
#include <QFile>

namespace {

constexpr int Macros = 400;
constexpr int Addresses = 16;
constexpr int Stages = 4;

QByteArray number(int value)
{
    return QByteArray::number(value);
}

void writeFile(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        TarnBench::fail("cannot write " + path.toStdString());
}

/// The macros of the whole design. Every file includes them; all but the first time they are
/// skipped.
QByteArray defines()
{
    QByteArray text(
        "`ifndef LARGE_DEFINES_VH\n`define LARGE_DEFINES_VH\n"
        "// Registers with an asynchronous reset.\n"
        "`define LARGE_REG(name, width, next) \\\n"
        "  reg [(width)-1:0] name; \\\n"
        "  always @(posedge clk or negedge rst_n) begin \\\n"
        "    if (!rst_n) name <= {(width){1'b0}}; \\\n"
        "    else if (`LARGE_ENABLE(name, width)) name <= next; \\\n"
        "  end\n"
        "`define LARGE_ENABLE(name, width) (valid_in | ~(&name[(width)-1:0]))\n"
        "`define LARGE_ROTATE(value, by, width) {value[(by)-1:0], value[(width)-1:(by)]}\n");
    for (int i = 0; i < Macros; ++i)
        text += "`define LARGE_SEED_" + number(i) + " 32'h" +
                QByteArray::number((i * 3701 + 11) % 65536, 16) + " // seed of a stage\n";
    return text + "`endif\n";
}

/// Constants that every module includes in its body.
QByteArray addresses()
{
    QByteArray text("// Register map, the same in all modules.\n");
    for (int i = 0; i < Addresses; ++i)
        text += "  localparam [7:0] ADDRESS_" + number(i) + " = 8'd" + number(i * 5 % 256) +
                "; // offset of the register\n";
    return text;
}

QByteArray commentBlock(const QByteArray &title)
{
    QByteArray text("//" + QByteArray(76, '-') + "\n// " + title + "\n//\n");
    for (int line = 0; line < 16; ++line)
        text += "// The stage takes the word of its neighbour, mixes it with its seed and holds "
                "it while stalled.\n";
    return text + "//" + QByteArray(76, '-') + "\n";
}

QByteArray stagesOf(int unit)
{
    QByteArray text;
    QByteArray previous("data_in");
    for (int stage = 0; stage < Stages; ++stage) {
        const QByteArray name = "stage_" + number(stage) + "_q";
        text += "  // Stage " + number(stage) + ": rotated and mixed.\n  `LARGE_REG(" + name +
                ", WIDTH, `LARGE_ROTATE(" + previous + ", " + number(1 + (unit + stage) % 5) +
                ", WIDTH) ^ `LARGE_SEED_" + number((unit * Stages + stage) * 3 % Macros) + ")\n";
        previous = name;
    }
    return text;
}

QByteArray decoder(int unit)
{
    QByteArray text("  // Reads the stages back.\n  reg [WIDTH-1:0] read_data;\n  always @* begin\n"
                    "    case (address)\n");
    for (int entry = 0; entry < Stages; ++entry)
        text += "      ADDRESS_" + number((entry + unit) % Addresses) + ": read_data = stage_" +
                number(entry % Stages) + "_q ^ 32'd" + number((entry * 3 + unit) % 256) + ";\n";
    return text + "      default: read_data = {WIDTH{1'b0}};\n    endcase\n  end\n";
}

/// What only a simulation reads; the preprocessor skips it.
QByteArray traceText(int unit)
{
    QByteArray text("`ifdef LARGE_TRACE\n  // Prints each word that enters or leaves a stage.\n");
    for (int line = 0; line < 8 * Stages; ++line)
        text += "  always @(posedge clk) if (stage_" + number(line % Stages) +
                "_q != `LARGE_SEED_" + number((line + unit) % Macros) +
                ")\n    $display(\"%0t unit " + number(unit) + " stage " + number(line % Stages) +
                " holds %h\", $time, stage_" + number(line % Stages) + "_q);\n";
    return text + "`endif\n";
}

QByteArray moduleText(int unit)
{
    const QByteArray name = "unit_" + number(unit);
    return commentBlock("Module " + name) + "module " + name +
           " #(\n  parameter WIDTH = 32,\n  parameter LAST = " + number(Stages - 1) +
           "\n) (\n  input  wire             clk,      // clock of all stages\n"
           "  input  wire             rst_n,    // asynchronous reset, active low\n"
           "  input  wire             valid_in,\n  input  wire [7:0]       address,\n"
           "  input  wire [WIDTH-1:0] data_in,\n  output wire [WIDTH-1:0] data_out,\n"
           "  output wire             valid_out\n);\n  `include \"large_addresses.vh\"\n"
           "  wire [WIDTH-1:0] mixed;\n  wire [WIDTH-1:0] folded;\n" +
           stagesOf(unit) + decoder(unit) + traceText(unit) +
           "  // One cell for eight bits.\n  genvar i;\n  generate\n"
           "    for (i = 0; i < WIDTH / 8; i = i + 1) begin : cell_of\n"
           "      wire [7:0] carry;\n      reg  [7:0] held;\n"
           "      assign carry = stage_0_q[8*i +: 8] & stage_1_q[8*i +: 8];\n"
           "      always @(posedge clk) held <= carry ^ stage_2_q[8*i +: 8];\n"
           "      if (i % 2 == " +
           number(unit % 2) +
           ") begin : even\n        assign mixed[8*i +: 8] = held;\n"
           "      end else begin : odd\n"
           "        assign mixed[8*i +: 8] = ~held & stage_3_q[8*i +: 8];\n"
           "      end\n    end\n  endgenerate\n"
           "  function [31:0] fold;\n    input [31:0] value;\n    integer k;\n    begin\n"
           "      fold = value;\n      for (k = 0; k < 4; k = k + 1)\n"
           "        fold = {fold[30:0], fold[31] ^ value[k]};\n    end\n  endfunction\n"
           "  assign folded = fold(mixed);\n"
           "  assign data_out = (address == ADDRESS_0) ? read_data : folded ^ stage_" +
           number(Stages - 1) + "_q;\n  assign valid_out = valid_in & ~(&folded);\nendmodule\n\n";
}

/// A module that connects some of its file in a chain.
QByteArray chainText(int file, const LargeSources &design)
{
    QByteArray text = "module chain_" + number(file) +
                      "(\n  input wire clk, input wire rst_n, input wire valid_in,\n"
                      "  input wire [7:0] address, input wire [31:0] data_in,\n"
                      "  output wire [31:0] data_out, output wire valid_out\n);\n";
    for (int i = 0; i <= design.usedPerFile; ++i)
        text += "  wire [31:0] link_" + number(i) + ";\n  wire valid_" + number(i) + ";\n";
    for (int i = 0; i < design.usedPerFile; ++i)
        text += "  unit_" + number(file * design.modulesPerFile + i) + " #(.WIDTH(32)) unit_inst_" +
                number(i) + " (\n    .clk(clk), .rst_n(rst_n), .valid_in(valid_" + number(i) +
                "),\n    .address(address), .data_in(link_" + number(i) +
                "),\n    .data_out(link_" + number(i + 1) + "), .valid_out(valid_" + number(i + 1) +
                ")\n  );\n";
    return text +
           "  assign link_0 = data_in;\n  assign valid_0 = valid_in;\n  assign data_out = link_" +
           number(design.usedPerFile) + ";\n  assign valid_out = valid_" +
           number(design.usedPerFile) + ";\nendmodule\n";
}

QByteArray topText(int files)
{
    QByteArray text("module large_top(\n  input wire clk, input wire rst_n, input wire [7:0] "
                    "address,\n  output wire done\n);\n");
    for (int i = 0; i <= files; ++i)
        text += "  wire [31:0] word_" + number(i) + ";\n  wire valid_" + number(i) + ";\n";
    for (int i = 0; i < files; ++i)
        text += "  chain_" + number(i) + " chain_inst_" + number(i) +
                " (.clk(clk), .rst_n(rst_n), .valid_in(valid_" + number(i) +
                "), .address(address),\n    .data_in(word_" + number(i) + "), .data_out(word_" +
                number(i + 1) + "), .valid_out(valid_" + number(i + 1) + "));\n";
    return text + "  assign word_0 = address;\n  assign valid_0 = rst_n;\n  assign done = valid_" +
           number(files) + " ^ word_" + number(files) + "[0];\nendmodule\n";
}

} // namespace

QStringList LargeSources::write(const QString &folder) const
{
    const QDir headers(includeFolder(folder));
    headers.mkpath(QStringLiteral("."));
    writeFile(headers.filePath(QStringLiteral("large_defines.vh")), defines());
    writeFile(headers.filePath(QStringLiteral("large_addresses.vh")), addresses());
    QStringList result;
    for (int file = 0; file < files; ++file) {
        QByteArray text("`include \"large_defines.vh\"\n`timescale 1ns / 1ps\n\n");
        for (int i = 0; i < modulesPerFile; ++i)
            text += moduleText(file * modulesPerFile + i);
        result.append(QDir(folder).filePath(QStringLiteral("chain_%1.v").arg(file)));
        writeFile(result.last(), text + chainText(file, *this));
    }
    result.append(QDir(folder).filePath(QStringLiteral("large_top.v")));
    writeFile(result.last(), topText(files));
    return result;
}

QString LargeSources::includeFolder(const QString &folder)
{
    return QDir(folder).filePath(QStringLiteral("include"));
}
