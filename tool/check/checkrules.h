// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <audit/finding.h>

#include <QString>
#include <QVector>

namespace Tool {

/// A rule of "tarn check": one of the findings, or the save check. docs/rules.md says more.
struct CheckRule
{
    QString id;              ///< For --ignore and for other programs.
    TARN::Severity severity; ///< Of results of this rule alone.
    QString meaning;         ///< One sentence.
    QString cause;           ///< What leads to it and what follows from it.
    QString advice;          ///< What to do.
};

/// All rules: those of the findings in the order of TARN::Rule, then the save check.
const QVector<CheckRule> &checkRules();

/// Position of @p rule in checkRules().
constexpr int numberOf(TARN::Rule rule)
{
    return int(rule);
}

/// Position of the save check in checkRules().
int saveCheckRule();

/// Position of the rule with that id, -1 when there is none.
int ruleWithId(const QString &id);

/// "error", "warning" or "note", also in files.
QString levelName(TARN::Severity severity);

} // namespace Tool
