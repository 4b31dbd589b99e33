// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designextraction.h"

#include "rtlnetlist.h"

#include <netweir/internal/extraction.h>
#include <netweir/internal/ground/messages.h>
#include <netweir/internal/tool/extractionprogress.h>

#include <new>

namespace NETWEIR {

using namespace Internal;

namespace {

/// Runs @p step of an extraction. Without enough memory returns false and adds a message, because
/// no exception may leave the library.
template <typename Step>
bool runWithinMemory(const Step &step, QStringList *messages)
{
    try {
        step();
        return true;
    } catch (const std::bad_alloc &) {
        messages->append(errorMessage(Text::tr("There is not enough memory to read the design.")));
        return false;
    }
}

QString noDesignError()
{
    return errorMessage(Text::tr("No design has been read."));
}

} // namespace

DesignExtraction::DesignExtraction() = default;

DesignExtraction::DesignExtraction(const QMap<QString, QVariant> &info)
    : m_extraction(std::make_shared<Extraction>(readDesignSources(info)))
{
}

DesignExtraction::~DesignExtraction() = default;

bool DesignExtraction::findModules(QStringList *tops, QStringList *modules, QStringList *messages,
                                   ExtractionMonitor *monitor)
{
    const std::shared_ptr<Extraction> extraction = m_extraction;
    QStringList found;
    const auto find = [&] {
        ExtractionProgress progress(monitor);
        extraction->findModules(&progress, tops, modules, &found);
    };
    if (!extraction)
        found.append(noDesignError());
    else if (!runWithinMemory(find, &found))
        m_extraction.reset();
    *messages += found;
    return !containsError(found);
}

std::unique_ptr<RtlNetlist> DesignExtraction::buildNetlist(QStringList *messages,
                                                           ExtractionMonitor *monitor)
{
    const std::shared_ptr<Extraction> extraction = m_extraction;
    std::unique_ptr<RtlNetlist> netlist;
    const auto build = [&] {
        ExtractionProgress progress(monitor);
        netlist = extraction->buildNetlist(&progress, messages);
    };
    if (!extraction)
        messages->append(noDesignError());
    else if (!runWithinMemory(build, messages))
        m_extraction.reset();
    return netlist;
}

qint64 DesignExtraction::spentMilliseconds() const
{
    return m_extraction ? m_extraction->spentMilliseconds() : 0;
}

} // namespace NETWEIR
