// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "finding.h"

namespace TARN {

QString ruleId(Rule rule)
{
    switch (rule) {
    case Rule::NetMissing:
        return QStringLiteral("net-missing");
    case Rule::BusChanged:
        return QStringLiteral("bus-changed");
    case Rule::NotUsable:
        return QStringLiteral("not-usable");
    case Rule::ClockMissing:
        return QStringLiteral("clock-missing");
    case Rule::ClockNotUsable:
        return QStringLiteral("clock-not-usable");
    case Rule::SeveralDrivers:
        return QStringLiteral("several-drivers");
    case Rule::Repeated:
        return QStringLiteral("repeated");
    case Rule::ValueWidth:
        return QStringLiteral("value-width");
    case Rule::EmptyCore:
        return QStringLiteral("empty-core");
    case Rule::EmptyPort:
        return QStringLiteral("empty-port");
    }
    return QString();
}

Severity severityOf(Rule rule)
{
    switch (rule) {
    case Rule::NetMissing:
    case Rule::ClockMissing:
    case Rule::ClockNotUsable:
    case Rule::SeveralDrivers:
        return Severity::Error;
    case Rule::EmptyCore:
    case Rule::EmptyPort:
        return Severity::Note;
    default:
        return Severity::Warning;
    }
}

} // namespace TARN
