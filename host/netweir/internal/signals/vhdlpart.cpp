// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "vhdlpart.h"

#include "drivenbits.h"
#include "vhdlpartcontent.h"
#include "vhdlstamp.h"

#include <netweir/internal/ground/itemat.h>

#include <utility>

namespace NETWEIR::Internal {

VhdlPart::VhdlPart(std::unique_ptr<const VhdlPartContent> content)
    : m_content(std::move(content))
{
}

VhdlPart::~VhdlPart() = default;

std::unique_ptr<VhdlPart> VhdlPart::read(const VhdlPartInput &input, QString *error)
{
    std::unique_ptr<const VhdlPartContent> content = readVhdlPartContent(input, error);
    return content ? std::unique_ptr<VhdlPart>(new VhdlPart(std::move(content))) : nullptr;
}

const std::vector<PartRoot> &VhdlPart::foreignRoots() const
{
    return m_content->foreignRoots;
}

QString VhdlPart::unitName(int root) const
{
    return itemAt(m_content->scopes, itemAt(m_content->roots, root).scope).unit;
}

std::vector<PartPort> VhdlPart::ports(int root) const
{
    return m_content->portsOf(itemAt(m_content->roots, root).scope);
}

void VhdlPart::build(int root, const DrivenPorts &driven, Hierachy *node, NetlistBuilder *builder,
                     const BorderHandler &border) const
{
    const DrivenBits bits(*m_content, root, driven);
    stampVhdl(*m_content, root, bits, node, builder, border);
}

bool VhdlPart::usesJtagPrimitive() const
{
    return m_content->usesJtagPrimitive;
}

} // namespace NETWEIR::Internal
