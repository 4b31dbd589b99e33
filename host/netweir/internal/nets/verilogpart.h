// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "instancetree.h"
#include "interfacebindings.h"
#include "markeddefinition.h"
#include "memories.h"

#include <netweir/internal/parts/part.h>
#include <netweir/internal/xml/elaborateddesign.h>

#include <QString>

#include <memory>
#include <vector>

namespace NETWEIR::Internal {

class InstanceMarker;
class XmlFile;

/// The part of a design in Verilog and SystemVerilog, read from the XML file of the elaborator.
///
/// Owns, per definition, its places and marks, which all builds share. Keeps the instances below
/// each root, but not their marks; and nothing of the document, which is in memory only piece by
/// piece.
class VerilogPart final : public Part
{
public:
    /// Null when the file at @p xmlPath is incomplete, has an unexpected form, or contains too much
    /// for a netlist; @p error then says why and where. @p roots are the roots of the file.
    static std::unique_ptr<VerilogPart> read(const QString &xmlPath,
                                             const std::vector<PartRoot> &roots,
                                             const ReadOptions &options, QString *error);
    ~VerilogPart() override;

    // Part
    const std::vector<PartRoot> &foreignRoots() const override { return m_foreignRoots; }
    QString unitName(int root) const override;
    std::vector<PartPort> ports(int root) const override;
    void build(int root, const DrivenPorts &driven, Hierachy *node, NetlistBuilder *builder,
               const BorderHandler &border) const override;
    void buildLast(int root, const DrivenPorts &driven, Hierachy *node, NetlistBuilder *builder,
                   const BorderHandler &border) override;
    bool usesJtagPrimitive() const override;

private:
    /// A root and all instances below it.
    struct Root
    {
        bool isTop = false;
        InstanceTree tree;
        InterfaceBindings bindings;
    };

    struct MarkedInstances;

    VerilogPart();
    bool read(XmlFile *file, const QString &folder, const std::vector<PartRoot> &roots,
              const ReadOptions &options, QString *error);
    bool markIfPossible(const Definition &definition, const ElaboratedDesign::EachRun &eachRun);
    bool place(const Definition &definition);
    bool mark(const Definition &definition, const ElaboratedDesign::EachRun &eachRun);
    bool isMarked(const Definition &definition) const;
    bool readRoots(const std::vector<PartRoot> &roots);
    bool markRest(XmlFile *file);
    bool fits() const;
    void findForeignRoots();
    PartRoot foreignRootAt(const Definition &definition, const Border &border) const;
    BorderInstance borderAt(const InstanceTree &tree, int instance,
                            const InstanceMarker &marker) const;
    const Definition &definitionOf(int root) const;
    void forgetAllButNames();

    ElaboratedDesign m_design;
    std::vector<Root> m_roots;
    Memories m_memories;
    bool m_hasAllMemories = true; ///< Those that were known when the definitions were marked.
    std::vector<PlacedDefinition> m_placed; ///< By the number of the definition.
    std::vector<MarkedDefinition> m_marked; ///< By the number of the definition.
    std::vector<PartRoot> m_foreignRoots;
    /// Indexes of the foreign roots, by the number of the definition and of the border in it.
    std::vector<std::vector<int>> m_borderRoots;
};

} // namespace NETWEIR::Internal
