// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "options.h"

#include "teconstants.h"

#include <QCoreApplication>
#include <QRegularExpression>

namespace TE {

namespace {

constexpr int LongestTimeout = 24 * 60 * 60;

class Options
{
    Q_DECLARE_TR_FUNCTIONS(TE::Options)
};

QStringList choicesOf(const QString &name)
{
    if (name == QLatin1String(OPT::Verilog_Standard)) {
        QStringList standards;
        for (const char *standard : OPT::VerilogStandards)
            standards.append(QLatin1String(standard));
        return standards;
    }
    if (name == QLatin1String(OPT::SYNTHESIZE_TOOL))
        return {QLatin1String(OPT::OstraSynthesis), QLatin1String(OPT::Synplify_pro)};
    return {};
}

bool fail(QString *error, const QString &text)
{
    if (error)
        *error = text;
    return false;
}

bool normalizeTimeout(QVariant *value, QString *error)
{
    bool isNumber = false;
    const double seconds = value->toDouble(&isNumber);
    if (!isNumber || seconds < 1 || seconds > LongestTimeout || seconds != int(seconds))
        return fail(
            error,
            Options::tr("must be a whole number of seconds from 1 to %1").arg(LongestTimeout));
    *value = int(seconds);
    return true;
}

bool normalizeText(const QString &name, QVariant *value, QString *error)
{
    if (value->type() != QVariant::String)
        return fail(error, Options::tr("must be a text"));
    const QStringList choices = choicesOf(name);
    if (!choices.isEmpty() && !choices.contains(value->toString())) {
        return fail(error, Options::tr("must be one of %1, not \"%2\"")
                               .arg(choices.join(QLatin1String(", ")), value->toString()));
    }
    return true;
}

} // namespace

QStringList optionNames()
{
    return {QLatin1String(OPT::EXTRACTION_TIMEOUT), QLatin1String(OPT::INCLUDEPATH),
            QLatin1String(OPT::SYNTHESIZE_TOOL), QLatin1String(OPT::Verilog_Standard)};
}

QVariant defaultOption(const QString &name)
{
    if (name == QLatin1String(OPT::TOPMODULE))
        return QString();
    if (name == QLatin1String(OPT::INCLUDEPATH))
        return QStringList();
    if (name == QLatin1String(OPT::SYNTHESIZE_TOOL))
        return QString(QLatin1String(OPT::OstraSynthesis));
    if (name == QLatin1String(OPT::Verilog_Standard))
        return QString(QLatin1String(OPT::DefaultVerilogStandard));
    if (name == QLatin1String(OPT::EXTRACTION_TIMEOUT))
        return 120;
    return {};
}

bool normalizeOption(const QString &name, QVariant *value, QString *error)
{
    const QVariant initial = defaultOption(name);
    if (!initial.isValid())
        return fail(error, Options::tr("is no option"));
    if (initial.type() == QVariant::Int)
        return normalizeTimeout(value, error);
    if (initial.type() == QVariant::StringList) {
        if (value->type() != QVariant::StringList)
            return fail(error, Options::tr("must be a list of texts"));
        return true;
    }
    return normalizeText(name, value, error);
}

bool isMacroDefinition(const QString &text)
{
    static const QRegularExpression form(
        QStringLiteral("\\A[A-Za-z_][A-Za-z0-9_$]*(=[^\\r\\n]*)?\\z"));
    return form.match(text).hasMatch();
}

} // namespace TE
