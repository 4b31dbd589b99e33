// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "checkcommand.h"

#include "checkreport.h"
#include "checkrules.h"
#include "filecheck.h"
#include "jsonreport.h"

#include <audit/candidates.h>
#include <audit/designnames.h>
#include <model/configlines.h>
#include <model/designreading.h>
#include <model/tarnconfig.h>
#include <netweir/rtlnetlist.h>
#include <te/project.h>
#include <te/teconstants.h>
#include <tool/command.h>
#include <tool/configfile.h>
#include <tool/console.h>
#include <tool/design.h>
#include <tool/invocation.h>
#include <tool/wording.h>

#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <chrono>
#include <memory>
#include <utility>
#include <vector>

namespace Tool {

namespace {

constexpr char FormatOption[] = "--format";
constexpr char IgnoreOption[] = "--ignore";
constexpr char RulesOption[] = "--rules";
constexpr char StrictOption[] = "--strict";

constexpr std::chrono::milliseconds SearchSlice{20};

/// A configuration to check.
struct CheckedFile
{
    QString path;
    OwnedCores cores;
    TARN::ConfigLines lines;
    QString error; ///< Why it cannot be read; empty when it was.
};

CheckedFile readFile(const QString &path, Console *console)
{
    CheckedFile file;
    file.path = path;
    bool ok = false;
    file.cores = OwnedCores(TARN::readTARNConfigFromXml(path, &ok, &file.error, &file.lines));
    if (!ok)
        console->error(file.error);
    return file;
}

/// A file that is named twice is read once.
std::vector<CheckedFile> readFiles(const QStringList &paths, Console *console)
{
    std::vector<CheckedFile> files;
    QSet<QString> known;
    for (const QString &path : paths) {
        const QString absolute = QFileInfo(path).absoluteFilePath();
        if (known.contains(absolute))
            continue;
        known.insert(absolute);
        files.push_back(readFile(path, console));
    }
    return files;
}

/// The rules of --ignore as positions in checkRules(). Returns false after an error message.
bool readIgnored(const QStringList &ids, Console *console, QSet<int> *ignored)
{
    for (const QString &id : ids) {
        const int rule = ruleWithId(id);
        if (rule == -1) {
            console->error(QStringLiteral("there is no rule \"%1\" to ignore; tarn check --rules "
                                          "lists the rules")
                               .arg(id));
            return false;
        }
        ignored->insert(rule);
    }
    return true;
}

int showRules(const QString &format, Console *console)
{
    if (format == QLatin1String("sarif")) {
        console->error(QStringLiteral("--rules has the formats text and json only"));
        return Failure;
    }
    if (format == QLatin1String("json")) {
        console->write(rulesAsJson());
        return Success;
    }
    for (const CheckRule &rule : checkRules()) {
        const QString line = QStringLiteral("%1 %2 %3\n")
                                 .arg(rule.id, -16)
                                 .arg(levelName(rule.severity), -8)
                                 .arg(rule.meaning);
        console->write(line.toUtf8());
    }
    return Success;
}

/// "2 errors, 1 note"
QString textOf(const CheckCounts &counts)
{
    QStringList parts;
    if (counts.errors > 0)
        parts += counted(counts.errors, QStringLiteral("error"));
    if (counts.warnings > 0)
        parts += counted(counts.warnings, QStringLiteral("warning"));
    if (counts.notes > 0)
        parts += counted(counts.notes, QStringLiteral("note"));
    return parts.isEmpty() ? QStringLiteral("nothing found") : parts.join(QLatin1String(", "));
}

/// Checks files that were read against a design that was read, and reports them.
class Checking
{
public:
    /// @p refusal is why nothing at all can be saved; may be empty.
    Checking(NETWEIR::RtlNetlist *netlist, const QString &refusal, const QSet<int> &ignored)
        : m_names(netlist)
        , m_refusal(refusal)
        , m_ignored(ignored)
    {
    }

    /// Reports the results of @p file, of which nothing is left then. Stops on interruption.
    void check(CheckedFile *file, Console *console, CheckReport *report, CheckCounts *counts);

private:
    const TARN::DesignNames m_names;
    const QString m_refusal;
    const QSet<int> m_ignored;
};

void Checking::check(CheckedFile *file, Console *console, CheckReport *report, CheckCounts *counts)
{
    const FileCheck check(file->cores.list(), std::move(file->lines), m_names, m_refusal,
                          m_ignored);
    file->cores = OwnedCores();
    // One for each file, because what was found for others would have an influence.
    TARN::CandidateSearch search(m_names);
    search.setMissing(check.missing());
    while (!console->isInterrupted() && !search.step(SearchSlice)) {
    }
    report->beginFile(file->path);
    for (int i = 0; i < check.count() && !console->isInterrupted(); ++i)
        report->addResult(check.at(i, search));
    report->endFile();
    *counts += check.counts();
}

QString refusalOf(const TE::Project &project)
{
    return TARN::saveRefusal(
        TE::optionValueOf(project, QLatin1String(TE::OPT::SYNTHESIZE_TOOL)).toString());
}

/// Writes the report of @p files. @p checking may be null when none of them could be read.
CheckCounts writeReport(std::vector<CheckedFile> *files, Checking *checking, const QString &format,
                        Console *console)
{
    CheckCounts counts;
    const auto report =
        newReport(format, [console](const QByteArray &text) { console->write(text); });
    report->begin();
    for (CheckedFile &file : *files) {
        if (file.error.isEmpty())
            checking->check(&file, console, report.get(), &counts);
        else
            report->refuseFile(file.path, file.error);
    }
    report->end(counts);
    return counts;
}

/// "2 errors, 1 note in 1 file; 1 file cannot be read"
QString summary(const CheckCounts &counts, int files, int refused)
{
    const QString file = QStringLiteral("file");
    const QString unread = counted(refused, file) + QLatin1String(" cannot be read");
    if (refused == files)
        return unread;
    const QString text = textOf(counts) + QLatin1String(" in ") + counted(files - refused, file);
    return refused == 0 ? text : text + QLatin1String("; ") + unread;
}

int exitCode(const CheckCounts &counts, int refused, bool strict)
{
    if (refused > 0)
        return Failure;
    const bool found = counts.errors > 0 || counts.warnings > 0 || (strict && counts.notes > 0);
    return found ? Found : Success;
}

int runCheck(const Invocation &invocation, Console *console)
{
    const QString format = invocation.value(QLatin1String(FormatOption));
    if (invocation.isSet(QLatin1String(RulesOption)))
        return showRules(format, console);
    QSet<int> ignored;
    if (!readIgnored(invocation.values(QLatin1String(IgnoreOption)), console, &ignored))
        return Failure;
    // First, because it is quick and may show that the design is not needed.
    std::vector<CheckedFile> files = readFiles(invocation.files, console);
    const auto refused = int(std::count_if(
        files.begin(), files.end(), [](const CheckedFile &file) { return !file.error.isEmpty(); }));
    Design design;
    std::unique_ptr<Checking> checking;
    if (refused < int(files.size())) {
        if (!readDesign(invocation, console, &design))
            return Failure;
        checking =
            std::make_unique<Checking>(design.netlist.get(), refusalOf(design.project), ignored);
    }
    const CheckCounts counts = writeReport(&files, checking.get(), format, console);
    if (console->isInterrupted())
        return Failure;
    console->keepOutput();
    console->tell(summary(counts, int(files.size()), refused));
    return exitCode(counts, refused, invocation.isSet(QLatin1String(StrictOption)));
}

Command makeCommand()
{
    Command command;
    command.name = QStringLiteral("check");
    command.synopsis = QStringLiteral("[DESIGN] FILE...");
    command.summary = QStringLiteral("check whether configurations fit the design");
    command.description = QStringLiteral(
        "Says what in the configurations does not fit the design, and why the editor\n"
        "would refuse to save them. The exit code is 0 when there is no error and no\n"
        "warning, 1 when there is one, and 2 when a file or the design cannot be read.\n"
        "Notes are shown; they count with --strict only.");
    command.options = {
        {QLatin1String(FormatOption), QStringLiteral("text|json|sarif"),
         QStringLiteral("form of the results; text, as compilers write it, is the default")},
        {QLatin1String(IgnoreOption), QStringLiteral("RULE"),
         QStringLiteral("leave out the results of that rule"), true},
        {QLatin1String(StrictOption), QString(), QStringLiteral("let notes count, too")},
        {QLatin1String(RulesOption), QString(),
         QStringLiteral("list the rules with their severity and meaning"), false, true}};
    command.takesDesign = true;
    command.hasOutput = true;
    command.files = Command::Files::Many;
    command.run = runCheck;
    return command;
}

} // namespace

const Command &checkCommand()
{
    static const Command command = makeCommand();
    return command;
}

} // namespace Tool
