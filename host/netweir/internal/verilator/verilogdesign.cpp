// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "verilogdesign.h"

#include <netweir/internal/ground/messages.h>
#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/parts/designunits.h>
#include <netweir/internal/tool/extractionprogress.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnetlist.h>

namespace NETWEIR::Internal {

VerilogDesign::VerilogDesign(const DesignSources &design)
    : m_top(design.top)
    , m_isEmpty(design.files.isEmpty())
    , m_timeoutSeconds(design.timeoutSeconds)
    , m_part(design)
{
}

void VerilogDesign::elaborate(ExtractionProgress *progress, int limit)
{
    if (!m_hasBegun)
        begin(progress);
    m_hasBegun = true;
    m_part.elaborate(progress, limit);
}

void VerilogDesign::begin(ExtractionProgress *progress)
{
    m_part.scan(progress);
    const DesignUnits units(m_part.units());
    m_modules = units.modules();
    m_tops = units.tops(m_top);
    if (m_isEmpty || (m_part.units().empty() && containsError(m_part.sourceMessages())))
        return;
    if (!containsError(m_part.sourceMessages()))
        m_unitMessages += units.topWarnings(m_top);
    m_unitMessages += units.duplicateErrors();
    m_unitMessages += units.circleError(m_tops);
    if (m_tops.size() == 1) {
        const QString endless = units.endlessError(m_tops.first());
        m_unitMessages += endless.isEmpty() ? units.mutualError(m_tops.first()) : endless;
    }
    m_unitMessages.removeAll(QString());
    if (containsError(m_unitMessages))
        return;
    std::vector<PartRoot> roots;
    if (m_tops.size() == 1) {
        roots.emplace_back();
        roots.back().unit = m_tops.first();
        roots.back().isTop = true;
    }
    m_part.begin(roots, progress);
}

std::unique_ptr<RtlNetlist> VerilogDesign::buildNetlist(ExtractionProgress *progress)
{
    if (!m_part.isElaborated() || m_tops.size() != 1)
        return nullptr;
    progress->setPhase(Text::tr("Building netlist"));
    std::unique_ptr<RtlNetlist> netlist;
    QString error;
    const auto build = [&](QString *reason) {
        const std::unique_ptr<Part> part = m_part.read(reason);
        if (!part)
            return false;
        NetlistBuilder builder(part->unitName(0));
        builder.setUsesJtagPrimitive(part->usesJtagPrimitive());
        part->build(0, {}, builder.top(), &builder, {});
        netlist = builder.take();
        return true;
    };
    progress->runInThread([&] {
        readWithin({&progress->cancelled(), m_timeoutSeconds, ReadGuard::defaultMemoryLimit()},
                   build, &error);
    });
    if (progress->isCancelled()) {
        m_errors.append(cancelError());
        return nullptr;
    }
    if (!netlist)
        m_errors.append(
            errorMessage(Text::tr("The elaborated design cannot be read: %1").arg(error)));
    return netlist;
}

QStringList VerilogDesign::messages() const
{
    return m_part.sourceMessages() + m_unitMessages + m_part.messages() + m_errors;
}

} // namespace NETWEIR::Internal
