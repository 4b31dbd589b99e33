// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// A design whose netlist is made up here and not read from sources. Linked into a test program, it
/// stands in for the extraction functions of NETWEIR.
///
/// The design has the top module "top" with the nets "clk" (driven already), "a" and "d[3:0]".
class FakeDesign
{
public:
    /// Opens a project with one source file in @p folder.
    explicit FakeDesign(const QString &folder);
    ~FakeDesign();

    /// Messages of the module finder; one that begins with "ERROR" makes reading fail.
    static QStringList messages;
    /// Called while the netlist is being built.
    static std::function<void()> whileBuilding;
};
