// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "vhdlpartinput.h"

#include <netweir/internal/parts/part.h>

#include <memory>

namespace NETWEIR::Internal {

struct VhdlPartContent;

/// The entities that GHDL has elaborated.
///
/// Owns all it needs: neither files nor facts after it is read. Reading is linear in the scalars of
/// the design; the memory for it is some 40 bytes per scalar.
class VhdlPart final : public Part
{
public:
    /// Null with a message when the files are incomplete or have an unexpected form. May throw
    /// ReadingEnded.
    static std::unique_ptr<VhdlPart> read(const VhdlPartInput &input, QString *error);
    ~VhdlPart() override;

    // Part
    const std::vector<PartRoot> &foreignRoots() const override;
    QString unitName(int root) const override;
    std::vector<PartPort> ports(int root) const override;
    void build(int root, const DrivenPorts &driven, Hierachy *node, NetlistBuilder *builder,
               const BorderHandler &border) const override;
    bool usesJtagPrimitive() const override;

private:
    explicit VhdlPart(std::unique_ptr<const VhdlPartContent> content);

    const std::unique_ptr<const VhdlPartContent> m_content;
};

} // namespace NETWEIR::Internal
