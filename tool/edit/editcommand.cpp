// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "editcommand.h"

#include "configchanges.h"
#include "editedconfig.h"
#include "signalchoice.h"
#include "stepexecution.h"

#include <model/configcheck.h>
#include <model/configwriter.h>
#include <model/designreading.h>
#include <model/filestate.h>
#include <model/tarnconfig.h>
#include <netweir/hierachy.h>
#include <netweir/rtlnetlist.h>
#include <te/project.h>
#include <te/teconstants.h>
#include <tool/command.h>
#include <tool/configfile.h>
#include <tool/console.h>
#include <tool/design.h>
#include <tool/invocation.h>

#include <QDir>
#include <QFileInfo>

#include <optional>

namespace Tool {

namespace {

constexpr char NewOption[] = "--new";
constexpr char CheckOption[] = "--check";
constexpr char DryRunOption[] = "--dry-run";

QString shown(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

/// A dangling link is something, too.
bool isThere(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

/// The content of the file that holds the cores, null when there can be none.
QByteArray contentOf(const OwnedCores &cores)
{
    return TARN::ConfigWriter(cores.list()).content();
}

/// One run of the command.
class Edit
{
public:
    Edit(const Invocation &invocation, Console *console)
        : m_invocation(invocation)
        , m_console(console)
        , m_path(invocation.files.first())
        , m_isNew(invocation.isSet(QLatin1String(NewOption)))
    {
    }

    bool run();

private:
    bool readFile();
    bool execute(const QVector<EditStep> &steps);
    SignalChoice *design();
    bool finish();
    bool check();
    bool write();
    bool fail(const QString &error);

    const Invocation &m_invocation;
    Console *const m_console;
    const QString m_path;
    const bool m_isNew;
    QByteArray m_fileState;
    QByteArray m_formerContent;
    TARN::ConfigSnapshot m_former;
    std::optional<EditedConfig> m_config;
    Design m_design;
    std::unique_ptr<SignalChoice> m_choice; ///< Null as long as the design is not needed.
};

bool Edit::fail(const QString &error)
{
    m_console->error(error);
    return false;
}

bool Edit::run()
{
    QVector<EditStep> steps;
    QString error;
    if (!parseSteps(m_invocation.words, &steps, &error))
        return fail(error);
    return readFile() && execute(steps) && finish();
}

bool Edit::readFile()
{
    OwnedCores cores;
    if (m_isNew && isThere(m_path))
        return fail(QStringLiteral("%1 exists; leave out %2 to change it")
                        .arg(shown(m_path), QLatin1String(NewOption)));
    if (!m_isNew) {
        if (!isThere(m_path))
            return fail(QStringLiteral("there is no file %1; %2 creates it")
                            .arg(shown(m_path), QLatin1String(NewOption)));
        TARN::finishTARNFile(m_path);
        m_fileState = TARN::fileState(m_path);
        if (!readConfig(m_path, m_console, &cores))
            return false;
        m_formerContent = contentOf(cores);
        m_former = TARN::snapshotOf(cores.list());
    }
    m_config.emplace(std::move(cores));
    return true;
}

bool Edit::execute(const QVector<EditStep> &steps)
{
    StepExecution execution(&*m_config, [this] { return design(); });
    for (const EditStep &step : steps) {
        if (m_console->isInterrupted())
            return false;
        const bool done = execution.execute(step);
        const QString place = stepText(step) + QLatin1String(": ");
        for (const QString &warning : execution.warnings())
            m_console->warn(place + warning);
        if (!done)
            return execution.error().isEmpty() ? false : fail(place + execution.error());
    }
    return true;
}

SignalChoice *Edit::design()
{
    if (!m_choice && readDesign(m_invocation, m_console, &m_design))
        m_choice = std::make_unique<SignalChoice>(m_design.netlist.get());
    return m_choice.get();
}

bool Edit::finish()
{
    const bool checked = m_invocation.isSet(QLatin1String(CheckOption));
    if ((checked || !m_invocation.design.isEmpty()) && !design())
        return false;
    m_config->storeValues();
    if (m_choice)
        m_config->setModules(m_design.netlist->top()->instName());
    if (m_invocation.isSet(QLatin1String(DryRunOption))) {
        const QByteArray changes = changesText(m_former, *m_config);
        m_console->write(changes.isEmpty() ? QByteArray("no changes\n") : changes);
        return !checked || check();
    }
    return (!checked || check()) && write();
}

bool Edit::check()
{
    const QString tool = TE::optionValueOf(m_design.project, TE::OPT::SYNTHESIZE_TOOL).toString();
    const QString refusal = TARN::saveRefusal(tool);
    if (!refusal.isEmpty())
        return fail(refusal);
    const QStringList errors = TARN::checkConfig(m_config->cores(), m_design.netlist.get());
    for (const QString &error : errors)
        m_console->error(error);
    if (!errors.isEmpty())
        m_console->error(QStringLiteral("%1 is not written; mend these errors by further steps")
                             .arg(shown(m_path)));
    return errors.isEmpty();
}

bool Edit::write()
{
    const QByteArray content = contentOf(m_config->owned());
    if (!m_isNew && !content.isNull() && content == m_formerContent)
        return true;
    if (m_console->isInterrupted())
        return false;
    const bool changed = m_isNew ? isThere(m_path) : TARN::fileState(m_path) != m_fileState;
    if (changed)
        return fail(QStringLiteral("another program has written %1 meanwhile; it is not replaced. "
                                   "Run the command again")
                        .arg(shown(m_path)));
    return writeConfig(m_config->owned(), m_path, m_console);
}

int runEdit(const Invocation &invocation, Console *console)
{
    return Edit(invocation, console).run() ? Success : Failure;
}

QString description()
{
    QString text = QStringLiteral(
        "Changes a configuration as the editor would, in steps that are made in order,\n"
        "and then writes the file. When one of them is refused, nothing is written. The\n"
        "design is read when a step needs it, or when it is named.\n"
        "\n"
        "CORE is the number of a core, PORT a port of it: \"0.in3\". NAME is the full name\n"
        "of a net or bus, \"top/u0/data[7:0]\", or a pattern for such names. VALUE is \"0x\"\n"
        "and as many hexadecimal digits as the bits of the port need.\n"
        "\n"
        "A file without cores gets core 0, as in the editor.\n"
        "\n"
        "Steps:\n");
    const QStringList usages = editStepUsages();
    for (const QString &usage : usages)
        text += QLatin1String("  ") + usage + QLatin1Char('\n');
    text.chop(1);
    return text;
}

Command makeCommand()
{
    Command command;
    command.name = QStringLiteral("edit");
    command.synopsis = QStringLiteral("FILE [DESIGN] STEP...");
    command.summary = QStringLiteral("change a configuration");
    command.description = description();
    command.options = {
        {QLatin1String(NewOption), QString(), QStringLiteral("create FILE, which must not exist")},
        {QLatin1String(CheckOption), QString(),
         QStringLiteral("write nothing that the editor would not save")},
        {QLatin1String(DryRunOption), QString(),
         QStringLiteral("print what would change, and write nothing")},
    };
    command.takesDesign = true;
    command.words = Command::Words::Steps;
    command.stepNames = editStepNames();
    command.run = runEdit;
    return command;
}

} // namespace

const Command &editCommand()
{
    static const Command command = makeCommand();
    return command;
}

} // namespace Tool
