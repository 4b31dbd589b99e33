// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "stepexecution.h"

#include "editedconfig.h"
#include "signalchoice.h"

#include <audit/counterpart.h>
#include <audit/replacement.h>
#include <model/limittexts.h>
#include <model/portbits.h>
#include <model/portlimits.h>
#include <probes/signalmerge.h>
#include <tool/wording.h>

#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace Tool {

namespace {

using TARN::ProbeType;
using TARN::ProbeTypeIn;
using TARN::ProbeTypeOut;
using TARN::SignalItem;
using Items = QList<SignalItem>;

constexpr char NoClock[] = "none";

/// "tarn_0, tarn_1"
QString coreNames(const EditedConfig &config)
{
    QStringList names;
    for (const TARN::TarnCore *core : config.cores())
        names.append(QStringLiteral("tarn_%1").arg(core->index));
    return names.join(QLatin1String(", "));
}

/// Removes what has one of the @p names; these are then left that nothing has.
Items without(const Items &items, QStringList *names)
{
    const QSet<QString> all(names->cbegin(), names->cend());
    QSet<QString> found;
    Items left;
    for (const SignalItem &item : items) {
        if (all.contains(item.name))
            found.insert(item.name);
        else
            left.append(item);
    }
    names->erase(std::remove_if(names->begin(), names->end(),
                                [&found](const QString &name) { return found.contains(name); }),
                 names->end());
    return left;
}

/// At least so many bits of @p chosen are new in a port that has @p shown.
int newBits(const Items &chosen, const Items &shown)
{
    QSet<QString> names;
    for (const SignalItem &item : shown)
        names.insert(item.name);
    int bits = -TARN::widthOf(shown); // Those that a bus there has.
    for (const SignalItem &item : chosen)
        bits += names.contains(item.name) ? 0 : item.width();
    return bits;
}

/// The bus that has a bit of that name, null when there is none.
const SignalItem *busWith(const Items &items, const QString &bit)
{
    const auto bus = std::find_if(items.cbegin(), items.cend(), [&bit](const SignalItem &item) {
        return std::any_of(item.members.cbegin(), item.members.cend(),
                           [&bit](const SignalItem &member) { return member.name == bit; });
    });
    return bus == items.cend() ? nullptr : &*bus;
}

/// How often a name is used in a configuration.
struct Uses
{
    int ins = 0;
    int outs = 0;
    int clocks = 0;
};

int countIn(const QVector<std::shared_ptr<const TARN::PortSnapshot>> &ports, const QString &name)
{
    int count = 0;
    for (const auto &port : ports) {
        count += int(std::count_if(port->signals.cbegin(), port->signals.cend(),
                                   [&](const SignalItem &item) { return item.name == name; }));
    }
    return count;
}

Uses usesOf(const TARN::ConfigSnapshot &config, const QString &name)
{
    Uses uses;
    for (const TARN::ConfigSnapshot::Core &core : config.cores) {
        uses.ins += countIn(core.content->probeIns, name);
        uses.outs += countIn(core.content->probeOuts, name);
        uses.clocks += core.content->syncUserClock && core.content->userClock == name ? 1 : 0;
    }
    return uses;
}

} // namespace

StepExecution::StepExecution(EditedConfig *config, DesignReader readDesign)
    : m_config(config)
    , m_readDesign(std::move(readDesign))
{
}

bool StepExecution::fail(const QString &error)
{
    m_error = error;
    return false;
}

bool StepExecution::execute(const EditStep &step)
{
    m_error.clear();
    m_warnings.clear();
    return findTarget(step) && executeKind(step);
}

bool StepExecution::executeKind(const EditStep &step)
{
    switch (step.kind) {
    case EditStep::AddCore:
        return m_config->addCore(&m_error);
    case EditStep::AddIn:
        return m_config->addPort(m_core, ProbeTypeIn, &m_error);
    case EditStep::AddOut:
        return m_config->addPort(m_core, ProbeTypeOut, &m_error);
    case EditStep::Signals:
        return addSignals(step);
    case EditStep::Value:
        return setValue(step.names.first());
    case EditStep::Clock:
        return setClock(step.names.first());
    case EditStep::Remove:
        return remove(step);
    case EditStep::Replace:
        return replace(step.names.first(), step.names.last());
    case EditStep::ReplacePrefix:
        return replacePrefix(step.names.first(), step.names.last());
    }
    return false;
}

bool StepExecution::findTarget(const EditStep &step)
{
    const bool hasTarget = step.kind != EditStep::AddCore && step.kind != EditStep::Replace &&
                           step.kind != EditStep::ReplacePrefix;
    if (!hasTarget)
        return true;
    m_target = step.target;
    m_core = m_config->positionOf(m_target.core);
    if (m_core < 0) {
        return fail(QStringLiteral("there is no core %1; the file has %2")
                        .arg(QString::number(m_target.core), coreNames(*m_config)));
    }
    if (m_target.port < 0)
        return true;
    const int count = m_config->portCount(m_core, m_target.type);
    if (m_target.port < count)
        return true;
    const bool out = m_target.type == ProbeTypeOut;
    return fail(QStringLiteral("tarn_%1 has no port %2; it has %3")
                    .arg(QString::number(m_target.core), portText(m_target.type, m_target.port),
                         counted(count, out ? QStringLiteral("Probe Out port")
                                            : QStringLiteral("Probe In port"))));
}

bool StepExecution::addSignals(const EditStep &step)
{
    SignalChoice *choice = m_readDesign();
    if (!choice)
        return false;
    const Items shown = m_config->port(m_core, m_target.type, m_target.port).signals;
    QStringList names = step.names;
    names.removeDuplicates();
    Items chosen;
    for (const QString &name : qAsConst(names)) {
        // What is there already can make that many bits of the found ones superfluous.
        const Items present = shown + chosen;
        const int most = TARN::MaxPortSignals + TARN::widthOf(present);
        const std::optional<Items> found =
            step.wildcard ? choice->findMatches(name, m_target.type, present, most, &m_error)
                          : findName(choice, name, m_target.type);
        if (!found)
            return false;
        chosen = TARN::mergedSignals(chosen, *found);
        // However many names follow.
        if (newBits(chosen, shown) > TARN::MaxPortSignals)
            return fail(QString::fromLatin1(TARN::LimitTexts::TooManySignals));
    }
    return m_config->setSignals(m_core, m_target.type, m_target.port,
                                TARN::mergedSignals(shown, chosen), &m_error);
}

/// Nothing after an error.
std::optional<Items> StepExecution::findName(SignalChoice *choice, const QString &name,
                                             ProbeType type)
{
    QString warning;
    const std::optional<SignalItem> item = choice->findName(name, type, &warning, &m_error);
    if (!warning.isEmpty())
        m_warnings.append(warning);
    return item ? std::optional<Items>(Items{*item}) : std::nullopt;
}

bool StepExecution::setValue(const QString &value)
{
    if (m_target.type != ProbeTypeOut)
        return fail(QStringLiteral("only Probe Out ports have initial values"));
    const int width = TARN::widthOf(m_config->port(m_core, ProbeTypeOut, m_target.port).signals);
    if (width == 0)
        return fail(QStringLiteral("the port has no signals; add some first"));
    static const QRegularExpression pattern(QStringLiteral("\\A0x([0-9A-Fa-f]+)\\z"));
    const QRegularExpressionMatch match = pattern.match(value);
    if (!match.hasMatch()) {
        return fail(QStringLiteral("%1 is no value; write \"0x\" and hexadecimal digits")
                        .arg(quoted(value)));
    }
    const int digits = TARN::valueDigits(width);
    if (match.capturedLength(1) != digits) {
        return fail(QStringLiteral("the value has %1; a port with %2 takes %3")
                        .arg(counted(match.capturedLength(1), QStringLiteral("digit")),
                             counted(width, QStringLiteral("bit")), QString::number(digits)));
    }
    return m_config->setValue(m_core, m_target.port, value, &m_error);
}

bool StepExecution::setClock(const QString &net)
{
    if (net == QLatin1String(NoClock)) {
        m_config->setClock(m_core, QString());
        return true;
    }
    SignalChoice *choice = m_readDesign();
    if (!choice || !choice->checkClock(net, &m_error))
        return false;
    m_config->setClock(m_core, net);
    return true;
}

bool StepExecution::remove(const EditStep &step)
{
    if (m_target.port < 0)
        return m_config->removeCore(m_core, &m_error);
    if (step.names.isEmpty())
        return m_config->removePort(m_core, m_target.type, m_target.port, &m_error);
    return removeSignals(step.names);
}

bool StepExecution::removeSignals(const QStringList &names)
{
    const Items shown = m_config->port(m_core, m_target.type, m_target.port).signals;
    QStringList missing = names;
    const Items left = without(shown, &missing);
    if (missing.isEmpty())
        return m_config->setSignals(m_core, m_target.type, m_target.port, left, &m_error);
    const QString name = missing.first();
    if (const SignalItem *bus = busWith(shown, name)) {
        return fail(QStringLiteral("%1 is a bit of %2; only the whole bus can be removed")
                        .arg(quoted(name), quoted(bus->name)));
    }
    return fail(QStringLiteral("the port has no signal %1; \"tarn show\" lists those it has")
                    .arg(quoted(name)));
}

bool StepExecution::replace(const QString &from, const QString &to)
{
    const TARN::ConfigSnapshot current = m_config->snapshot();
    const Uses uses = usesOf(current, from);
    if (uses.ins + uses.outs + uses.clocks == 0) {
        return fail(QStringLiteral("no port has a signal %1, and no core synchronises with it; "
                                   "\"tarn show\" lists the signals")
                        .arg(quoted(from)));
    }
    SignalChoice *choice = m_readDesign();
    if (!choice || (uses.clocks > 0 && !choice->checkClock(to, &m_error)) ||
        (uses.ins > 0 && !findName(choice, to, ProbeTypeIn)) ||
        (uses.outs > 0 && !findName(choice, to, ProbeTypeOut)))
        return false;
    TARN::ConfigSnapshot target = current;
    if (TARN::replaceName(&target, from, to, choice->names()) < 0)
        return fail(QString::fromLatin1(TARN::LimitTexts::TooManySignals));
    m_config->apply(current, target);
    return true;
}

bool StepExecution::replacePrefix(const QString &from, const QString &to)
{
    SignalChoice *choice = m_readDesign();
    if (!choice)
        return false;
    const TARN::ConfigSnapshot current = m_config->snapshot();
    TARN::ConfigSnapshot target = current;
    const int replaced = TARN::replacePrefix(&target, from, to, choice->names());
    if (replaced < 0)
        return fail(QString::fromLatin1(TARN::LimitTexts::TooManySignals));
    if (replaced == 0) {
        return fail(QStringLiteral("nothing is replaced: no signal below %1 is missing in the "
                                   "design and has a usable counterpart below %2")
                        .arg(quoted(from), quoted(to)));
    }
    m_config->apply(current, target);
    return true;
}

} // namespace Tool
