// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "editstep.h"

#include <QRegularExpression>

#include <algorithm>

namespace Tool {

namespace {

/// How a kind of step is written.
struct Form
{
    /// What the first word behind the name means.
    enum Target { None, Core, Port, CoreOrPort };

    EditStep::Kind kind;
    const char *name;
    const char *words; ///< Behind the name, for messages.
    Target target;
    int least; ///< Words behind name and target.
    int most;  ///< -1: all up to the next step.
};

constexpr Form Forms[] = {
    {EditStep::AddCore, "add-core", "", Form::None, 0, 0},
    {EditStep::AddIn, "add-in", " CORE", Form::Core, 0, 0},
    {EditStep::AddOut, "add-out", " CORE", Form::Core, 0, 0},
    {EditStep::Signals, "signals", " CORE.PORT [--wildcard] NAME...", Form::Port, 1, -1},
    {EditStep::Value, "value", " CORE.PORT VALUE", Form::Port, 1, 1},
    {EditStep::Clock, "clock", " CORE NAME|none", Form::Core, 1, 1},
    {EditStep::Remove, "remove", " CORE|CORE.PORT [NAME...]", Form::CoreOrPort, 0, -1},
    {EditStep::Replace, "replace", " OLD NEW", Form::None, 2, 2},
    {EditStep::ReplacePrefix, "replace-prefix", " OLD NEW", Form::None, 2, 2},
};

constexpr char WildcardOption[] = "--wildcard";

QString usageOf(const Form &form)
{
    return QLatin1String(form.name) + QLatin1String(form.words);
}

const Form *formOf(const QString &name)
{
    const auto form = std::find_if(std::begin(Forms), std::end(Forms), [&name](const Form &known) {
        return name == QLatin1String(known.name);
    });
    return form == std::end(Forms) ? nullptr : form;
}

/// Long steps are cut off: what is wrong is said behind them.
QString shortened(const QString &text)
{
    constexpr int Longest = 120;
    return text.size() <= Longest ? text : text.left(Longest) + QLatin1String("...");
}

/// "0", "tarn_0", "0.in3"
bool parseTarget(const QString &word, EditTarget *target)
{
    static const QRegularExpression pattern(
        QStringLiteral("\\A(?:tarn_)?(-?[0-9]+)(?:\\.(in|out)([0-9]+))?\\z"));
    const QRegularExpressionMatch match = pattern.match(word);
    bool isCore = false;
    bool isPort = true;
    target->core = match.captured(1).toInt(&isCore);
    if (match.capturedLength(2) > 0) {
        const bool out = match.capturedRef(2) == QLatin1String("out");
        target->type = out ? TARN::ProbeTypeOut : TARN::ProbeTypeIn;
        target->port = match.captured(3).toInt(&isPort);
    }
    return isCore && isPort;
}

class Parser
{
public:
    Parser(const QStringList &words, QVector<EditStep> *steps)
        : m_words(words)
        , m_steps(steps)
    {
    }

    bool parse();
    QString error() const { return m_error; }

private:
    bool parseStep();
    bool takeTarget(const Form &form, EditStep *step, QStringList *words);
    QStringList wordsOf(const Form &form);
    bool fail(const EditStep &step, const QString &reason);

    const QStringList &m_words;
    QVector<EditStep> *m_steps;
    int m_next = 0;
    QString m_error;
};

bool Parser::fail(const EditStep &step, const QString &reason)
{
    m_error = stepText(step) + QLatin1String(": ") + reason;
    return false;
}

bool Parser::parse()
{
    while (m_next < m_words.size()) {
        if (!parseStep())
            return false;
    }
    return true;
}

/// Takes the words behind the name of a step.
QStringList Parser::wordsOf(const Form &form)
{
    const int count = form.most + (form.target == Form::None ? 0 : 1);
    QStringList words;
    while (m_next < m_words.size() &&
           (form.most < 0 ? !formOf(m_words.at(m_next)) : words.size() < count))
        words.append(m_words.at(m_next++));
    return words;
}

bool Parser::parseStep()
{
    EditStep step;
    step.number = m_steps->size() + 1;
    step.text = m_words.at(m_next++);
    const Form *form = formOf(step.text);
    if (!form) {
        return fail(step, QStringLiteral("there is no such step; the steps are %1")
                              .arg(editStepNames().join(QLatin1String(", "))));
    }
    QStringList words = wordsOf(*form);
    step.kind = form->kind;
    step.text += words.isEmpty() ? QString() : QLatin1Char(' ') + words.join(QLatin1Char(' '));
    if (step.kind == EditStep::Signals)
        step.wildcard = words.removeAll(QLatin1String(WildcardOption)) > 0;
    if (!takeTarget(*form, &step, &words))
        return false;
    if (words.size() < form->least)
        return fail(step, QStringLiteral("a word is missing; write %1").arg(usageOf(*form)));
    if (words.contains(QString()))
        return fail(step, QStringLiteral("a word is empty"));
    step.names = words;
    m_steps->append(step);
    return true;
}

bool Parser::takeTarget(const Form &form, EditStep *step, QStringList *words)
{
    if (form.target == Form::None)
        return true;
    if (words->isEmpty())
        return fail(*step, QStringLiteral("a word is missing; write %1").arg(usageOf(form)));
    const QString word = words->takeFirst();
    if (!parseTarget(word, &step->target)) {
        return fail(*step, QStringLiteral("\"%1\" is no core, such as 0, and no port, such as "
                                          "0.in3 or 0.out3; write %2")
                               .arg(word, usageOf(form)));
    }
    const bool isPort = step->target.port >= 0;
    if (form.target == Form::Core && isPort)
        return fail(
            *step,
            QStringLiteral("a port is given in place of a core; write %1").arg(usageOf(form)));
    if ((form.target == Form::Port || !words->isEmpty()) && form.target != Form::Core && !isPort)
        return fail(
            *step,
            QStringLiteral("a core is given in place of a port; write %1").arg(usageOf(form)));
    return true;
}

} // namespace

QStringList editStepNames()
{
    QStringList names;
    for (const Form &form : Forms)
        names.append(QLatin1String(form.name));
    return names;
}

QStringList editStepUsages()
{
    QStringList usages;
    for (const Form &form : Forms)
        usages.append(usageOf(form));
    return usages;
}

QString stepText(const EditStep &step)
{
    return QStringLiteral("step %1 (%2)").arg(QString::number(step.number), shortened(step.text));
}

QString portText(TARN::ProbeType type, int port)
{
    return (type == TARN::ProbeTypeOut ? QStringLiteral("out%1") : QStringLiteral("in%1"))
        .arg(port);
}

bool parseSteps(const QStringList &words, QVector<EditStep> *steps, QString *error)
{
    Parser parser(words, steps);
    if (parser.parse())
        return true;
    *error = parser.error();
    return false;
}

} // namespace Tool
