// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <audit/candidates.h>
#include <audit/configaudit.h>
#include <audit/finding.h>
#include <model/configcheck.h>
#include <model/configlines.h>
#include <model/configsnapshot.h>

#include <QSet>
#include <QString>
#include <QVector>

#include <vector>

namespace TARN {
class DesignNames;
}

namespace Tool {

/// A place in a configuration, for messages.
struct CheckedPlace
{
    int core = -1; ///< Position of the core, -1 for the whole file.
    int index = 0; ///< The number of the core, which users see.
    QString port;  ///< As in arguments: "in3". Empty for the core, or its user clock.
    QString text;  ///< As the editor names it: "tarn_0, Probe In3". Empty for the whole file.
    int line = 1;  ///< In the file, from 1.
};

/// One thing that is wrong with a configuration.
struct CheckResult
{
    int rule = 0; ///< Position in checkRules().
    TARN::Severity level = TARN::Severity::Error;
    QString message; ///< One sentence without the place.
    /// When the save check says the same: its message, to the letter.
    QString saveMessage;
    CheckedPlace place;
    QVector<CheckedPlace> others; ///< Of bits that occur more than once: every further place.
    QString name;                 ///< Full name of the net or bus; may be empty.
    QVector<TARN::Replacement> candidates; ///< What can take its place, the best first.
};

/// The numbers of results by their level.
struct CheckCounts
{
    int errors = 0;
    int warnings = 0;
    int notes = 0;

    CheckCounts &operator+=(const CheckCounts &other);
};

/// The results for one configuration: the findings, and the errors of the save check.
///
/// The save check refuses only what is a finding too. Both are one result then, with the rule and
/// the text of the finding, the message of the save check, and the worse of both levels. If one of
/// them is to be ignored, the other stays alone.
///
/// Results have the order of the findings. Keeps the configuration and a few bytes per result;
/// texts are made when they are asked for.
class FileCheck
{
public:
    /// @p refusal is why nothing at all can be saved; it may be empty. @p ignored holds positions
    /// in checkRules(). @p names must live longer.
    FileCheck(const QList<TARN::TarnCore *> &cores, TARN::ConfigLines lines,
              const TARN::DesignNames &names, const QString &refusal, const QSet<int> &ignored);

    int count() const { return int(m_items.size()); }
    CheckCounts counts() const;

    /// What the design does not have, for CandidateSearch::setMissing(): not more names than can be
    /// searched in about a second. Who has lost more sees why in the first hints.
    QVector<TARN::MissingName> missing() const;

    /// The result at @p i, with the candidates that @p search has found.
    CheckResult at(int i, const TARN::CandidateSearch &search) const;

private:
    /// A result: positions of a finding and of an error of the save check. One may be -1; both are
    /// for the refusal.
    struct Item
    {
        int finding = -1;
        int error = -1;
        bool isFinding = false; ///< Shown as such. Otherwise the finding only tells the place.
    };

    int ruleOf(const Item &item) const;
    TARN::Severity levelOf(const Item &item) const;
    void addItem(int finding, int error, const QSet<int> &ignored);
    CheckedPlace checkedPlace(const TARN::Place &place) const;
    void describe(const Item &item, const TARN::CandidateSearch &search, CheckResult *result) const;

    const TARN::DesignNames &m_names;
    QString m_refusal;
    TARN::ConfigLines m_lines;
    TARN::ConfigSnapshot m_config;
    TARN::ConfigAudit m_audit;
    QVector<TARN::ConfigError> m_errors;
    std::vector<Item> m_items;
};

} // namespace Tool
