// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "options.h"

#include "teconstants.h"

#include <QRegularExpression>

namespace TE {

namespace {

QStringList choicesOf(const QString &name)
{
    QStringList choices;
    if (name == QLatin1String(OPT::Verilog_Standard)) {
        for (const char *standard : OPT::VerilogStandards)
            choices.append(QLatin1String(standard));
    } else if (name == QLatin1String(OPT::VHDL_Standard)) {
        for (const char *standard : OPT::VhdlStandards)
            choices.append(QLatin1String(standard));
    } else if (name == QLatin1String(OPT::SYNTHESIZE_TOOL)) {
        for (const char *tool : OPT::SynthesisTools)
            choices.append(QLatin1String(tool));
    }
    return choices;
}

bool fail(QString *error, const QString &text)
{
    if (error)
        *error = text;
    return false;
}

} // namespace

QStringList Options::names()
{
    return {QLatin1String(OPT::EXTRACTION_TIMEOUT), QLatin1String(OPT::INCLUDEPATH),
            QLatin1String(OPT::SYNTHESIZE_TOOL), QLatin1String(OPT::VHDL_Standard),
            QLatin1String(OPT::Verilog_Standard)};
}

QVariant Options::defaultValue(const QString &name)
{
    if (name == QLatin1String(OPT::TOPMODULE))
        return QString();
    if (name == QLatin1String(OPT::INCLUDEPATH))
        return QStringList();
    if (name == QLatin1String(OPT::SYNTHESIZE_TOOL))
        return QString(QLatin1String(OPT::OstraSynthesis));
    if (name == QLatin1String(OPT::Verilog_Standard))
        return QString(QLatin1String(OPT::DefaultVerilogStandard));
    if (name == QLatin1String(OPT::VHDL_Standard))
        return QString(QLatin1String(OPT::DefaultVhdlStandard));
    if (name == QLatin1String(OPT::EXTRACTION_TIMEOUT))
        return OPT::DefaultTimeout;
    return {};
}

bool Options::normalize(const QString &name, QVariant *value, QString *error)
{
    const QVariant initial = defaultValue(name);
    if (!initial.isValid())
        return fail(error, tr("is not an option"));
    if (initial.type() == QVariant::Int)
        return normalizeTimeout(value, error);
    if (initial.type() == QVariant::StringList) {
        if (value->type() != QVariant::StringList)
            return fail(error, tr("must be a list of strings"));
        return true;
    }
    return normalizeString(name, value, error);
}

bool Options::normalizeTimeout(QVariant *value, QString *error)
{
    bool isNumber = false;
    const double seconds = value->toDouble(&isNumber);
    if (!isNumber || seconds < 1 || seconds > OPT::LongestTimeout || seconds != int(seconds))
        return fail(error,
                    tr("must be a whole number of seconds from 1 to %1").arg(OPT::LongestTimeout));
    *value = int(seconds);
    return true;
}

bool Options::normalizeString(const QString &name, QVariant *value, QString *error)
{
    if (value->type() != QVariant::String)
        return fail(error, tr("must be a string"));
    if (name == QLatin1String(OPT::VHDL_Standard)) {
        const QString standard = vhdlStandardOf(value->toString());
        if (!standard.isEmpty())
            *value = standard;
    }
    const QStringList choices = choicesOf(name);
    if (!choices.isEmpty() && !choices.contains(value->toString())) {
        return fail(error, tr("must be one of %1, not \"%2\"")
                               .arg(choices.join(QLatin1String(", ")), value->toString()));
    }
    return true;
}

QString vhdlStandardOf(const QString &edition)
{
    static const QRegularExpression older(QStringLiteral("\\A(vhdl[- ]?|1076-)?(19)?(87|93)c?\\z"),
                                          QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression newer(
        QStringLiteral("\\A(vhdl[- ]?|1076-)?(20)?(00|02|08|19)\\z"),
        QRegularExpression::CaseInsensitiveOption);
    if (older.match(edition).hasMatch())
        return QLatin1String(OPT::Vhdl1993);
    return newer.match(edition).hasMatch() ? QString(QLatin1String(OPT::Vhdl2008)) : QString();
}

bool isMacroDefinition(const QString &text)
{
    static const QRegularExpression form(
        QStringLiteral("\\A[A-Za-z_][A-Za-z0-9_$]*(=[^\\r\\n]*)?\\z"));
    return form.match(text).hasMatch();
}

} // namespace TE
