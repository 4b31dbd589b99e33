// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "checkrules.h"

#include <algorithm>

namespace Tool {

namespace {

struct RuleText
{
    TARN::Rule rule;
    const char *meaning;
    const char *cause;
    const char *advice;
};

/// In the order of TARN::Rule.
constexpr RuleText RuleTexts[] = {
    {TARN::Rule::NetMissing, "The design has no net or bus of that name.",
     "The net or bus was renamed, moved to another instance or removed, or a macro or an option "
     "leaves it out. Nothing can be connected to its bits of the port.",
     "Put what the design has now in its place: \"tarn edit FILE DESIGN replace OLD NEW\", or "
     "\"replace-prefix OLD NEW\" for all that moved with an instance. A hint names what is alike. "
     "Remove the signal when nothing took its place."},
    {TARN::Rule::BusChanged, "The design has that bus with another range or other bits.",
     "The declaration of the bus changed after it was chosen. The port keeps the former bits: new "
     "ones are not in it, and former ones may be gone.",
     "Replace the bus by that of the design, which the message names: \"tarn edit FILE DESIGN "
     "replace OLD NEW\". Then look at the initial value of a Probe Out port."},
    {TARN::Rule::NotUsable,
     "The net, or a bit of the bus, cannot be connected to a port of that "
     "kind.",
     "A Probe In port cannot read what has no value in the hardware, such as a memory as a whole. "
     "A Probe Out port can drive only wires that nothing in the design drives.",
     "Choose another net. For a Probe Out port add a wire to the design that nothing drives, and "
     "let the logic read it. \"tarn nets --for in\" and \"--for out\" list what can be connected."},
    {TARN::Rule::ClockMissing,
     "The user clock is wanted but not given, or the design has no such net.",
     "The Probe Out ports of the core are to change in step with a user clock, and the core has no "
     "name of a clock, or one that the design does not have.",
     "Set the clock: \"tarn edit FILE DESIGN clock CORE NET\", or switch the synchronisation off: "
     "\"clock CORE none\"."},
    {TARN::Rule::ClockNotUsable, "The user clock has no value in the hardware.",
     "The net exists in the design, but nothing can read it.",
     "Set another clock: \"tarn edit FILE DESIGN clock CORE NET\"."},
    {TARN::Rule::SeveralDrivers,
     "A net is driven more than once, by one Probe Out port or by "
     "several.",
     "Each bit that a Probe Out port holds is driven by it. Two drivers on one net contradict each "
     "other.",
     "Leave the net in one port, and remove it from the others: \"tarn edit FILE remove CORE.PORT "
     "NAME\"."},
    {TARN::Rule::Repeated, "A port holds a bit more than once.",
     "The port has several bits with the same value: two of its buses share bits, or the file was "
     "written by another program or by hand.",
     "Remove one of them: \"tarn edit FILE remove CORE.PORT NAME\"."},
    {TARN::Rule::ValueWidth, "The initial value needs more bits than the port has.",
     "The file was written by another program or by hand. Some bits of the value are lost.",
     "Set a value that fits: \"tarn edit FILE value CORE.PORT 0x...\"."},
    {TARN::Rule::EmptyCore, "No port of the core holds a signal.",
     "The core is new, or all its signals were removed. Such a configuration cannot be saved in "
     "the editor, which the save check says too.",
     "Give a port a signal, or remove the core: \"tarn edit FILE remove CORE\"."},
    {TARN::Rule::EmptyPort, "The port holds no signal.",
     "The port is new, or all its signals were removed. It takes no part in the configuration.",
     "Give the port a signal, or remove it: \"tarn edit FILE remove CORE.PORT\"."},
};

constexpr char SaveCheckMeaning[] = "The editor would refuse to save the configuration.";
constexpr char SaveCheckCause[] =
    "The editor does not save a core without signals, a user clock that is not given, missing or "
    "not usable, a net with several drivers, and nothing at all while the project is set to "
    "another synthesis tool. The message is the one of the editor, letter for letter.";
constexpr char SaveCheckAdvice[] =
    "Mend what the message says. Most of these errors are findings of other rules too, which say "
    "more: then the save check adds its message to theirs.";

QVector<CheckRule> makeRules()
{
    QVector<CheckRule> rules;
    for (const RuleText &text : RuleTexts) {
        rules.append({TARN::ruleId(text.rule), TARN::severityOf(text.rule),
                      QString::fromLatin1(text.meaning), QString::fromLatin1(text.cause),
                      QString::fromLatin1(text.advice)});
    }
    rules.append({QStringLiteral("save-check"), TARN::Severity::Error,
                  QString::fromLatin1(SaveCheckMeaning), QString::fromLatin1(SaveCheckCause),
                  QString::fromLatin1(SaveCheckAdvice)});
    return rules;
}

} // namespace

const QVector<CheckRule> &checkRules()
{
    static const QVector<CheckRule> rules = makeRules();
    return rules;
}

int saveCheckRule()
{
    return checkRules().size() - 1;
}

int ruleWithId(const QString &id)
{
    const QVector<CheckRule> &rules = checkRules();
    const auto found = std::find_if(rules.begin(), rules.end(),
                                    [&id](const CheckRule &rule) { return rule.id == id; });
    return found == rules.end() ? -1 : int(found - rules.begin());
}

QString levelName(TARN::Severity severity)
{
    switch (severity) {
    case TARN::Severity::Note:
        return QStringLiteral("note");
    case TARN::Severity::Warning:
        return QStringLiteral("warning");
    case TARN::Severity::Error:
        break;
    }
    return QStringLiteral("error");
}

} // namespace Tool
