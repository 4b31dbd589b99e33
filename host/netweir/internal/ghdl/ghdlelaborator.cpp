// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "ghdlelaborator.h"

#include "ghdlelaboration.h"
#include "ghdlfolder.h"
#include "ghdlprogram.h"
#include "rootinput.h"
#include "vhdlunits.h"

#include <netweir/internal/ground/messages.h>
#include <netweir/internal/parts/unitnames.h>
#include <netweir/internal/signals/vhdlpart.h>
#include <netweir/internal/sources/sourcecheck.h>
#include <netweir/internal/tool/extractionprogress.h>
#include <netweir/internal/vhdl/vhdlfacts.h>

namespace NETWEIR::Internal {

namespace {

constexpr qint64 MostText = 1024 * 1024 * 1024;

} // namespace

GhdlElaborator::GhdlElaborator(const DesignSources &design)
    : m_sources(design.inLanguage(true))
{
}

GhdlElaborator::~GhdlElaborator() = default;

void GhdlElaborator::setForeignUnits(const std::vector<DeclaredUnit> *units)
{
    m_foreign = units;
}

void GhdlElaborator::scan(ExtractionProgress *progress)
{
    if (m_sources.files.isEmpty())
        return;
    progress->setPhase(Text::tr("Reading sources"));
    m_sourceMessages = checkSources(m_sources);
    if (containsError(m_sourceMessages))
        return;
    m_design = VhdlDesign(m_sources);
    if (m_design.textSize() > MostText)
        m_sourceMessages.append(errorMessage(Text::tr("The sources are larger than 1 GB.")));
    else
        m_units = declaredVhdlUnits(m_design);
}

void GhdlElaborator::begin(const std::vector<PartRoot> &roots, ExtractionProgress * /*progress*/)
{
    m_messages = messages();
    m_elaboration.reset();
    if (m_design.isEmpty())
        return;
    QString error;
    const QString program = findGhdl(&error);
    if (program.isEmpty()) {
        m_messages.append(errorMessage(error));
        return;
    }
    static const std::vector<DeclaredUnit> none;
    RootInput input(m_design, m_units, m_foreign ? *m_foreign : none, roots, m_elaborations++);
    m_messages += input.errors();
    if (containsError(input.errors()))
        return;
    m_partInput = input.partInput();
    QVector<int> tops;
    for (const PartRoot &root : roots)
        tops.append(UnitNames(m_units).findVhdl(root.unit, root.library));
    GhdlInput ghdlInput = input.ghdlInput();
    ghdlInput.recursions = recursionErrors(m_units, tops);
    if (!m_folder)
        m_folder = std::make_unique<GhdlFolder>();
    m_elaboration = std::make_unique<GhdlElaboration>(program, m_design, ghdlInput, m_folder.get(),
                                                      m_sources.timeoutSeconds);
    m_elaboration->begin();
}

void GhdlElaborator::elaborate(ExtractionProgress *progress, int limit)
{
    if (isRunning())
        m_elaboration->elaborate(progress, limit);
}

bool GhdlElaborator::isRunning() const
{
    return m_elaboration && m_elaboration->isRunning();
}

bool GhdlElaborator::isElaborated() const
{
    return m_elaboration && m_elaboration->isElaborated();
}

std::unique_ptr<Part> GhdlElaborator::read(QString *error)
{
    if (!isElaborated())
        return nullptr;
    const VhdlFacts facts(m_design.sources());
    m_partInput.outputPath = m_elaboration->outputPath();
    m_partInput.wavePath = m_elaboration->wavePath();
    m_partInput.facts = &facts;
    return VhdlPart::read(m_partInput, error);
}

QStringList GhdlElaborator::messages() const
{
    return m_elaboration ? m_messages + m_elaboration->messages() : m_messages;
}

} // namespace NETWEIR::Internal
