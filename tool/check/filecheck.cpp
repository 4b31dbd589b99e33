// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "filecheck.h"

#include "checkrules.h"

#include <audit/designnames.h>
#include <audit/findingcandidates.h>

#include <QHash>

#include <utility>

namespace Tool {

namespace {

/// The errors of the save check by the findings that say the same.
class ErrorsByFinding
{
public:
    explicit ErrorsByFinding(const QVector<TARN::ConfigError> &errors);

    /// The position of the error that says the same as the finding at @p i, -1 when there is none.
    /// Each error is taken once.
    int take(const TARN::ConfigAudit &audit, int i);

    /// Those that were not taken, in order.
    std::vector<int> rest() const;

private:
    int find(const TARN::ConfigAudit &audit, int i) const;

    QHash<int, int> m_emptyCores; ///< By the position of the core.
    QHash<int, int> m_userClocks;
    QHash<QString, int> m_drivenBits; ///< By the name of the bit.
    std::vector<bool> m_isTaken;
};

ErrorsByFinding::ErrorsByFinding(const QVector<TARN::ConfigError> &errors)
    : m_isTaken(std::size_t(errors.size()))
{
    for (int i = 0; i < errors.size(); ++i) {
        const TARN::ConfigError &error = errors.at(i);
        switch (error.kind) {
        case TARN::ConfigError::EmptyCore:
            m_emptyCores.insert(error.core, i);
            break;
        case TARN::ConfigError::UserClock:
            m_userClocks.insert(error.core, i);
            break;
        case TARN::ConfigError::SeveralDrivers:
            m_drivenBits.insert(error.name, i);
            break;
        }
    }
}

int ErrorsByFinding::find(const TARN::ConfigAudit &audit, int i) const
{
    switch (audit.ruleAt(i)) {
    case TARN::Rule::EmptyCore:
        return m_emptyCores.value(audit.placeAt(i).core, -1);
    case TARN::Rule::ClockMissing:
    case TARN::Rule::ClockNotUsable:
        return m_userClocks.value(audit.placeAt(i).core, -1);
    case TARN::Rule::SeveralDrivers:
        return m_drivenBits.value(audit.at(i).name, -1);
    default:
        return -1;
    }
}

int ErrorsByFinding::take(const TARN::ConfigAudit &audit, int i)
{
    const int error = find(audit, i);
    if (error != -1)
        m_isTaken[std::size_t(error)] = true;
    return error;
}

std::vector<int> ErrorsByFinding::rest() const
{
    std::vector<int> rest;
    for (std::size_t i = 0; i < m_isTaken.size(); ++i) {
        if (!m_isTaken[i])
            rest.push_back(int(i));
    }
    return rest;
}

/// The port of @p place as in arguments: "in3".
QString portName(const TARN::Place &place, const TARN::CoreSnapshot &core)
{
    if (place.port < 0)
        return QString();
    const bool isOut = place.type == TARN::ProbeTypeOut;
    const auto &ports = isOut ? core.probeOuts : core.probeIns;
    return (isOut ? QStringLiteral("out%1") : QStringLiteral("in%1"))
        .arg(ports.at(place.port)->index);
}

} // namespace

FileCheck::FileCheck(const QList<TARN::TarnCore *> &cores, TARN::ConfigLines lines,
                     const TARN::DesignNames &names, const QString &refusal,
                     const QSet<int> &ignored)
    : m_names(names)
    , m_refusal(refusal)
    , m_lines(std::move(lines))
    , m_config(TARN::snapshotOf(cores))
    , m_errors(TARN::configErrors(cores, names.netlist()))
{
    m_audit.setNames(&names);
    m_audit.update(m_config);
    if (!refusal.isEmpty() && !ignored.contains(saveCheckRule()))
        m_items.push_back({});
    ErrorsByFinding errors(m_errors);
    for (int i = 0; i < m_audit.count(); ++i)
        addItem(i, errors.take(m_audit, i), ignored);
    for (int error : errors.rest())
        addItem(-1, error, ignored);
}

void FileCheck::addItem(int finding, int error, const QSet<int> &ignored)
{
    Item item;
    item.finding = finding;
    item.error = ignored.contains(saveCheckRule()) ? -1 : error;
    item.isFinding = finding != -1 && !ignored.contains(numberOf(m_audit.ruleAt(finding)));
    if (item.isFinding || item.error != -1)
        m_items.push_back(item);
}

int FileCheck::ruleOf(const Item &item) const
{
    return item.isFinding ? numberOf(m_audit.ruleAt(item.finding)) : saveCheckRule();
}

/// What the save check refuses is an error, also where the finding is a note.
TARN::Severity FileCheck::levelOf(const Item &item) const
{
    return item.error != -1 ? TARN::Severity::Error : checkRules().at(ruleOf(item)).severity;
}

CheckCounts &CheckCounts::operator+=(const CheckCounts &other)
{
    errors += other.errors;
    warnings += other.warnings;
    notes += other.notes;
    return *this;
}

CheckCounts FileCheck::counts() const
{
    CheckCounts counts;
    for (const Item &item : m_items) {
        const TARN::Severity level = levelOf(item);
        counts.errors += level == TARN::Severity::Error ? 1 : 0;
        counts.warnings += level == TARN::Severity::Warning ? 1 : 0;
        counts.notes += level == TARN::Severity::Note ? 1 : 0;
    }
    return counts;
}

QVector<TARN::MissingName> FileCheck::missing() const
{
    constexpr int MostNames = 10000;
    QSet<TARN::MissingName> missing;
    for (const Item &item : m_items) {
        if (missing.size() == MostNames)
            break;
        if (!item.isFinding || !TARN::isMissing(m_audit.ruleAt(item.finding)))
            continue;
        const auto name = TARN::missingNameOf(m_audit.ruleAt(item.finding),
                                              m_audit.placeAt(item.finding), m_config);
        if (name)
            missing.insert(*name);
    }
    QVector<TARN::MissingName> names;
    for (const TARN::MissingName &name : qAsConst(missing))
        names.append(name);
    return names;
}

CheckResult FileCheck::at(int i, const TARN::CandidateSearch &search) const
{
    const Item &item = m_items.at(std::size_t(i));
    CheckResult result;
    result.rule = ruleOf(item);
    result.level = levelOf(item);
    if (item.finding != -1)
        describe(item, search, &result);
    if (item.error != -1) {
        const TARN::ConfigError &error = m_errors.at(item.error);
        (item.isFinding ? result.saveMessage : result.message) = error.text;
    } else if (item.finding == -1) {
        result.message = m_refusal;
    }
    return result;
}

void FileCheck::describe(const Item &item, const TARN::CandidateSearch &search,
                         CheckResult *result) const
{
    const TARN::Finding finding = m_audit.at(item.finding);
    result->place = checkedPlace(finding.place);
    for (const TARN::Place &place : finding.others)
        result->others.append(checkedPlace(place));
    result->name = finding.name;
    if (!item.isFinding)
        return;
    result->message = finding.text;
    result->candidates = TARN::candidatesOf(finding, search, m_names);
}

CheckedPlace FileCheck::checkedPlace(const TARN::Place &place) const
{
    const TARN::ConfigSnapshot::Core &core = m_config.cores.at(place.core);
    CheckedPlace checked;
    checked.core = place.core;
    checked.index = core.index;
    checked.port = portName(place, *core.content);
    checked.text = m_audit.placeText(place);
    checked.line = m_lines.lineOf(place.core, place.type, place.port, place.signal, place.bit);
    return checked;
}

} // namespace Tool
