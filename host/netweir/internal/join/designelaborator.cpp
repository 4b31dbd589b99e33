// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designelaborator.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/ground/messages.h>
#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/tool/extractionprogress.h>
#include <netweir/rtlnetlist.h>

#include <algorithm>
#include <utility>

namespace NETWEIR::Internal {

namespace {

/// The most changes of the language from the top to the deepest instance, and the most different
/// roots. Real designs need a few. With more, the design does not end.
constexpr int MostRounds = 32;
constexpr int MostRoots = 10000;

Language otherThan(Language language)
{
    return language == Language::Verilog ? Language::Vhdl : Language::Verilog;
}

} // namespace

DesignElaborator::DesignElaborator(const DesignSources &design,
                                   std::vector<LanguageElaborator> languages)
    : m_design(design)
{
    for (LanguageElaborator &language : languages)
        m_sides.push_back({language.language, std::move(language.elaborator), {}});
}

DesignElaborator::~DesignElaborator() = default;

void DesignElaborator::elaborate(ExtractionProgress *progress, int limit)
{
    if (!m_isScanned) {
        scan(progress);
        beginWithTop(progress);
    }
    const QDeadlineTimer end(limit < 0 ? QDeadlineTimer::Forever : QDeadlineTimer(limit));
    while (m_round && goOn(progress, end)) {
    }
}

/// VHDL first: what its text declares is known without a tool, and the preprocessor of Verilog
/// looks into library folders only for modules that VHDL does not declare.
void DesignElaborator::scan(ExtractionProgress *progress)
{
    m_isScanned = true;
    const auto scanThose = [this, progress](Language language) {
        tellForeignUnits();
        for (Side &side : m_sides) {
            if (side.language == language)
                side.elaborator->scan(progress);
        }
    };
    scanThose(Language::Vhdl);
    scanThose(Language::Verilog);
    tellForeignUnits();
    lookAtUnits();
}

void DesignElaborator::tellForeignUnits()
{
    for (Side &side : m_sides) {
        side.foreign.clear();
        for (const Side &other : m_sides) {
            const std::vector<DeclaredUnit> &units = other.elaborator->units();
            if (other.language != side.language)
                side.foreign.insert(side.foreign.end(), units.begin(), units.end());
        }
        side.elaborator->setForeignUnits(&side.foreign);
    }
}

/// Finds the modules and tops, and what is wrong with them. Why there is no single top is said only
/// when neither an error in the sources nor the lack of any may be the reason.
void DesignElaborator::lookAtUnits()
{
    m_units.clear();
    QStringList found;
    for (const Side &side : m_sides) {
        const std::vector<DeclaredUnit> &units = side.elaborator->units();
        m_units.insert(m_units.end(), units.begin(), units.end());
        found += side.elaborator->sourceMessages();
    }
    m_designUnits = std::make_unique<DesignUnits>(m_units);
    m_modules = m_designUnits->modules();
    m_tops = m_designUnits->tops(m_design.top);
    m_topMessages.clear();
    if (!m_design.files.isEmpty() && !containsError(found))
        m_topMessages += m_designUnits->topWarnings(m_design.top);
    m_topMessages += m_designUnits->duplicateErrors();
    m_topMessages += m_designUnits->circleError(m_tops);
    if (m_tops.size() == 1) {
        const QString endless = m_designUnits->endlessError(m_tops.first());
        m_topMessages += endless.isEmpty() ? m_designUnits->mutualError(m_tops.first()) : endless;
    }
    m_topMessages.removeAll(QString());
}

/// Elaborates the top. When something is wrong already, only looks for further errors.
void DesignElaborator::beginWithTop(ExtractionProgress *progress)
{
    if (m_tops.size() != 1 || hasErrors()) {
        beginSearchForErrors(progress);
        return;
    }
    const DeclaredUnit &unit = itemAt(m_units, m_designUnits->findTop(m_tops.first()));
    PartRoot top;
    top.unit = m_tops.first();
    top.place = unit.place;
    top.isTop = true;
    m_roots.add(unit.language, inWordsOf(unit, top, &m_errors));
    m_readRoots.resize(1);
    begin(sideOf(unit.language), {0}, progress);
}

void DesignElaborator::begin(int side, const std::vector<int> &roots, ExtractionProgress *progress)
{
    Side &chosen = itemAt(m_sides, side);
    chosen.hasBegun = true;
    m_round = Round{side, roots};
    m_rounds += roots.empty() ? 0 : 1;
    std::vector<PartRoot> named;
    named.reserve(roots.size());
    for (const int root : roots)
        named.push_back(m_roots.at(root));
    chosen.elaborator->begin(named, progress);
}

/// Lets the next language that has not begun yet look for errors in its sources, if there is one.
/// So the errors of one language do not hide those of another.
void DesignElaborator::beginSearchForErrors(ExtractionProgress *progress)
{
    m_round.reset();
    for (int side = 0; side < countOf(m_sides); ++side) {
        if (!itemAt(m_sides, side).hasBegun && !progress->isCancelled()) {
            begin(side, {}, progress);
            return;
        }
    }
}

/// Makes one step. False when there is nothing to do before the next call.
bool DesignElaborator::goOn(ExtractionProgress *progress, const QDeadlineTimer &end)
{
    PartElaborator *elaborator = itemAt(m_sides, m_round->side).elaborator.get();
    if (!m_round->isOver) {
        elaborator->elaborate(progress, end.isForever() ? -1 : int(end.remainingTime()));
        if (elaborator->isRunning())
            return false;
        m_round->isOver = true;
        if (m_sides.size() == 1)
            lookAtUnits(); // The elaborator may have read the sources in another way.
    }
    if (!isToBeRead()) {
        m_hasFailed = m_hasFailed || !m_round->roots.empty() || hasErrors();
        beginSearchForErrors(progress);
        return true;
    }
    if (m_sides.size() == 1 || end.hasExpired())
        return false;
    progress->setPhase(Text::tr("Reading the elaborated design"));
    const auto reading = [this](QString *error) { return readRound(error); };
    if (!readInThread(progress, reading)) {
        m_hasFailed = true;
        beginSearchForErrors(progress);
        return true;
    }
    beginNextRound(addRoots(&m_parts.back()), progress);
    return true;
}

/// The current round has a result.
bool DesignElaborator::isToBeRead() const
{
    return m_round && m_round->isOver && !m_round->roots.empty() &&
           itemAt(m_sides, m_round->side).elaborator->isElaborated();
}

/// False when the reading fails or is ended, with an error unless @p reading fails without one.
bool DesignElaborator::readInThread(ExtractionProgress *progress,
                                    const std::function<bool(QString *error)> &reading)
{
    ReadLimits limits;
    limits.cancelled = &progress->cancelled();
    limits.timeoutSeconds = m_design.timeoutSeconds;
    bool isRead = false;
    QString error;
    progress->runInThread([&] { isRead = readWithin(limits, reading, &error); });
    if (progress->isCancelled())
        m_errors.append(cancelError());
    else if (!isRead && !error.isEmpty())
        m_errors.append(
            errorMessage(Text::tr("The elaborated design cannot be read: %1").arg(error)));
    return isRead && !progress->isCancelled();
}

/// Reads the result of the current round.
bool DesignElaborator::readRound(QString *error)
{
    const Side &side = itemAt(m_sides, m_round->side);
    std::unique_ptr<Part> part = side.elaborator->read(error);
    if (!part)
        return false;
    for (int i = 0; i < countOf(m_round->roots); ++i) {
        ReadRoot &root = itemAt(m_readRoots, itemAt(m_round->roots, i));
        root.part = countOf(m_parts);
        root.index = i;
        root.place = m_roots.at(itemAt(m_round->roots, i)).place;
        root.ports = std::make_unique<BorderPorts>(part->unitName(i), part->ports(i));
    }
    m_parts.push_back({side.language, std::move(part), {}});
    return true;
}

void DesignElaborator::checkPorts(const std::vector<int> &roots)
{
    for (const int number : roots) {
        const PartRoot &root = m_roots.at(number);
        if (!root.isTop)
            m_errors += itemAt(m_readRoots, number)
                            .ports->messages(root, otherThan(m_roots.language(number)));
    }
}

/// Gives the foreign roots of a part their numbers. Returns the new ones.
std::vector<int> DesignElaborator::addRoots(ReadPart *part)
{
    std::vector<int> added;
    for (const PartRoot &root : part->part->foreignRoots()) {
        const int number = addRoot(root, part->language);
        part->foreign.push_back(number);
        if (number == countOf(m_readRoots)) {
            m_readRoots.emplace_back();
            added.push_back(number);
        }
    }
    return added;
}

/// The number of a root that an instance in a source of language @p from names. -1 with an error
/// when there is no such unit in another language.
int DesignElaborator::addRoot(const PartRoot &root, Language from)
{
    const int unit = m_designUnits->names().find({root.library, root.unit}, from);
    if (unit < 0 || itemAt(m_units, unit).language == from) {
        m_errors.append(errorMessage(
            root.place, Text::tr("The sources define no \"%1\". Add the file that defines it.")
                            .arg(root.unit)));
        return -1;
    }
    const DeclaredUnit &declared = itemAt(m_units, unit);
    return m_roots.add(declared.language, inWordsOf(declared, root, &m_errors));
}

/// Elaborates the roots that the last round has found, if all is well so far.
void DesignElaborator::beginNextRound(const std::vector<int> &roots, ExtractionProgress *progress)
{
    checkPorts(m_round->roots);
    if (!roots.empty() && (m_rounds == MostRounds || m_roots.size() > MostRoots)) {
        const PartRoot &root = m_roots.at(roots.front());
        m_errors.append(errorMessage(
            root.place, Text::tr("The instantiation of \"%1\" may never end: the design has more "
                                 "than %2 changes between languages, one below another, or more "
                                 "than %3 different instances at them.")
                            .arg(root.unit)
                            .arg(MostRounds)
                            .arg(MostRoots)));
    }
    m_hasFailed = m_hasFailed || hasErrors();
    if (roots.empty() || m_hasFailed)
        beginSearchForErrors(progress);
    else
        begin(sideOf(m_roots.language(roots.front())), roots, progress);
}

/// The result of a single language is read here, so that its reading and the building have one time
/// limit.
std::unique_ptr<RtlNetlist> DesignElaborator::buildNetlist(ExtractionProgress *progress)
{
    if (m_hasFailed || m_tops.size() != 1 || m_roots.size() == 0 || (m_round && !isToBeRead()))
        return nullptr;
    progress->setPhase(Text::tr("Building netlist"));
    std::unique_ptr<RtlNetlist> netlist;
    QString endless;
    const bool isBuilt = readInThread(progress, [this, &netlist, &endless](QString *error) {
        if (m_round && !readRound(error))
            return false;
        netlist = joinParts(m_parts, m_readRoots, topNodeName(), &endless);
        return bool(netlist);
    });
    if (!endless.isEmpty())
        m_errors.append(endless);
    return isBuilt ? std::move(netlist) : nullptr;
}

/// The plug-in compares it with the name that the user chose, so an entity has it as the user wrote
/// it.
QString DesignElaborator::topNodeName() const
{
    return m_roots.language(0) == Language::Vhdl ? m_tops.first()
                                                 : m_parts.front().part->unitName(0);
}

int DesignElaborator::sideOf(Language language) const
{
    const auto side = std::find_if(m_sides.begin(), m_sides.end(), [language](const Side &each) {
        return each.language == language;
    });
    return int(side - m_sides.begin());
}

bool DesignElaborator::hasErrors() const
{
    return containsError(messages());
}

QStringList DesignElaborator::messages() const
{
    QStringList result;
    for (const Side &side : m_sides)
        result += side.elaborator->sourceMessages();
    result += m_topMessages;
    for (const Side &side : m_sides)
        result += side.elaborator->messages();
    return result + m_errors;
}

} // namespace NETWEIR::Internal
