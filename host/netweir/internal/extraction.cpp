// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "extraction.h"

#include <netweir/internal/ghdl/ghdlelaborator.h>
#include <netweir/internal/ground/messages.h>
#include <netweir/internal/join/designelaborator.h>
#include <netweir/internal/verilator/verilatorelaborator.h>
#include <netweir/rtlnetlist.h>

#include <QElapsedTimer>
#include <QSet>

#include <algorithm>
#include <iterator>
#include <utility>

namespace NETWEIR::Internal {

namespace {

/// The time in milliseconds that findModules() waits for the elaborator: long enough for the errors
/// of all but huge designs, short enough for a call that only promises the modules.
constexpr int ErrorWait = 2000;

/// The messages that are not in @p said, without repetition.
QStringList newMessages(const QStringList &messages, const QStringList &said)
{
    const QSet<QString> known(said.begin(), said.end());
    QStringList result;
    std::copy_if(messages.begin(), messages.end(), std::back_inserter(result),
                 [&known](const QString &message) { return !known.contains(message); });
    result.removeDuplicates();
    return result;
}

/// Adds the time of its life to a sum.
class Stopwatch
{
public:
    explicit Stopwatch(qint64 *sum)
        : m_sum(sum)
    {
        m_timer.start();
    }
    ~Stopwatch() { *m_sum += m_timer.elapsed(); }
    Stopwatch(const Stopwatch &) = delete;
    Stopwatch &operator=(const Stopwatch &) = delete;

private:
    qint64 *m_sum;
    QElapsedTimer m_timer;
};

} // namespace

/// The language of the first source comes first, and so do its messages. Without any source, it is
/// Verilog that says so. Library folders may contain modules for VHDL sources.
std::unique_ptr<Elaborator> createElaborator(const DesignSources &sources)
{
    const DesignSources verilog = sources.inLanguage(false);
    const DesignSources vhdl = sources.inLanguage(true);
    std::vector<LanguageElaborator> languages;
    if (vhdl.files.isEmpty() || !verilog.files.isEmpty() || !verilog.libraryFolders.isEmpty())
        languages.push_back({Language::Verilog, std::make_unique<VerilatorElaborator>(verilog)});
    if (!vhdl.files.isEmpty())
        languages.push_back({Language::Vhdl, std::make_unique<GhdlElaborator>(vhdl)});
    if (languages.size() > 1 && sources.files.first().vhdl)
        std::swap(languages.front(), languages.back());
    return std::make_unique<DesignElaborator>(sources, std::move(languages));
}

Extraction::Extraction(const DesignSources &sources, const ElaboratorFactory &create)
    : m_design(sources)
    , m_create(create)
{
}

void Extraction::findModules(ExtractionProgress *progress, QStringList *tops, QStringList *modules,
                             QStringList *messages)
{
    m_spent = 0;
    const Stopwatch stopwatch(&m_spent);
    std::unique_ptr<Elaborator> elaborator = m_create(m_design);
    elaborator->elaborate(progress, ErrorWait);
    *tops += elaborator->tops();
    *modules += elaborator->modules();
    const QStringList found = newMessages(elaborator->messages(), {});
    *messages += found;
    if (containsError(found) || elaborator->tops().size() != 1)
        return;
    m_elaborator = std::move(elaborator);
    m_said = found;
}

/// Takes over the elaborator, so a call from the event loop starts again.
std::unique_ptr<RtlNetlist> Extraction::buildNetlist(ExtractionProgress *progress,
                                                     QStringList *messages)
{
    std::unique_ptr<Elaborator> elaborator = std::move(m_elaborator);
    const QStringList said = std::exchange(m_said, {});
    if (!elaborator) {
        m_spent = 0;
        elaborator = m_create(m_design);
    }
    const Stopwatch stopwatch(&m_spent);
    elaborator->elaborate(progress, -1);
    std::unique_ptr<RtlNetlist> netlist = elaborator->buildNetlist(progress);
    QStringList found = newMessages(elaborator->messages(), said);
    if (!netlist && !containsError(found))
        found.append(errorMessage(Text::tr("The design has no single top module. Set the top "
                                           "module.")));
    *messages += found;
    return netlist;
}

} // namespace NETWEIR::Internal
