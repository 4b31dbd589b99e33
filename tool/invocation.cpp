// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "invocation.h"

#include "command.h"
#include "wording.h"

#include <te/project.h>

#include <QFileInfo>

#include <algorithm>

namespace Tool {

namespace {

/// Alternatives are separated by bars.
bool isAlternative(const Option &option, const QString &value)
{
    return !option.value.contains(QLatin1Char('|')) ||
           option.value.split(QLatin1Char('|')).contains(value);
}

bool looksLikeOption(const QString &argument)
{
    return argument.size() > 1 && argument.startsWith(QLatin1Char('-'));
}

/// Whether @p argument is more likely a part of the design than the word behind it.
bool isFileOfDesign(const QString &argument)
{
    return (TE::namedFileOf(argument) != TE::NamedFile::Source ||
            TE::fileTypeOf(argument) != TE::UnknownFile) &&
           QFileInfo(argument).isFile();
}

class Parser
{
public:
    Parser(const Command &command, const QStringList &arguments, Invocation *invocation)
        : m_command(command)
        , m_options(allOptions(command))
        , m_arguments(arguments)
        , m_invocation(invocation)
    {
    }

    bool parse();
    QString error() const { return m_error; }

private:
    /// An argument that is no option, or one of the design with its value.
    struct Part
    {
        QStringList arguments;
        bool isOption = false;
    };

    bool parseArgument();
    bool takeOption(const Option &option, const QString &name, const QString *attached);
    bool takeUnknown(const QString &argument);
    void takePlain(const QString &argument);
    bool distribute();
    bool failWithoutWord();
    bool distributeFile(const QString &path);
    bool takeProject(const QString &path);
    bool standsAlone() const;
    bool checkDesign();
    bool checkCounts();
    QString missingStep() const;
    const Option *find(const QString &name) const;
    bool isStep(const QString &argument) const;
    bool fail(const QString &error);

    const Command &m_command;
    const QVector<Option> m_options;
    const QStringList &m_arguments;
    Invocation *m_invocation;
    int m_next = 0;           ///< Index of the next argument.
    bool m_onlyPlain = false; ///< After "--".
    bool m_inSteps = false;
    QVector<Part> m_parts;
    QString m_error;
};

bool Parser::fail(const QString &error)
{
    m_error = error;
    return false;
}

bool Parser::parse()
{
    while (m_next < m_arguments.size()) {
        if (!parseArgument())
            return false;
        if (m_invocation->showHelp)
            return true;
    }
    return distribute() && checkDesign() && (standsAlone() || checkCounts());
}

bool Parser::standsAlone() const
{
    return std::any_of(m_options.begin(), m_options.end(), [this](const Option &option) {
        return option.alone && m_invocation->isSet(option.name);
    });
}

bool Parser::parseArgument()
{
    const QString argument = m_arguments.at(m_next++);
    if (m_onlyPlain) {
        takePlain(argument);
        return true;
    }
    if (argument == QLatin1String("--")) {
        m_onlyPlain = true;
        return true;
    }
    if (argument == QLatin1String("-h") || argument == QLatin1String("--help")) {
        m_invocation->showHelp = true;
        return true;
    }
    const int equals = argument.startsWith(QLatin1String("--")) ? argument.indexOf('=') : -1;
    const QString name = argument.left(equals);
    if (const Option *option = find(name)) {
        const QString attached = argument.mid(equals + 1);
        return takeOption(*option, name, equals < 0 ? nullptr : &attached);
    }
    const bool isPlus = m_command.takesDesign && argument.startsWith(QLatin1Char('+'));
    if (!m_inSteps && (looksLikeOption(argument) || isPlus))
        return takeUnknown(argument);
    takePlain(argument);
    return true;
}

const Option *Parser::find(const QString &name) const
{
    const QString longName = name == QLatin1String("-o") ? QLatin1String(OutputOption) : name;
    const auto found =
        std::find_if(m_options.begin(), m_options.end(),
                     [&longName](const Option &option) { return option.name == longName; });
    return found == m_options.end() ? nullptr : &*found;
}

/// @p attached is what follows the equals sign, null when there is none.
bool Parser::takeOption(const Option &option, const QString &name, const QString *attached)
{
    QString value = attached ? *attached : QString();
    if (option.value.isEmpty()) {
        if (attached)
            return fail(QStringLiteral("%1 takes no value").arg(name));
    } else {
        if (!attached)
            value = m_arguments.value(m_next++);
        if (value.isEmpty())
            return fail(QStringLiteral("%1 needs a value: %2").arg(name, option.value));
        if (!isAlternative(option, value)) {
            // A design may have an option of this name for something else.
            if (m_command.takesDesign && TE::isDesignOption(option.name)) {
                m_parts.append({{name, value}, true});
                return true;
            }
            return fail(QStringLiteral("%1 takes %2, not %3")
                            .arg(name, QString(option.value).replace('|', QLatin1String(" or ")),
                                 quoted(value)));
        }
    }
    if (!option.repeated && !option.value.isEmpty() && m_invocation->isSet(option.name))
        return fail(QStringLiteral("%1 is given twice").arg(name));
    m_invocation->options[option.name].append(value);
    return true;
}

bool Parser::takeUnknown(const QString &argument)
{
    if (!m_command.takesDesign || !TE::isDesignOption(argument))
        return fail(QStringLiteral("unknown option %1").arg(argument));
    Part part = {{argument}, true};
    if (TE::takesNextArgument(argument)) {
        if (m_next == m_arguments.size())
            return fail(QStringLiteral("%1 needs a value").arg(argument));
        part.arguments.append(m_arguments.at(m_next++));
    }
    m_parts.append(part);
    return true;
}

bool Parser::isStep(const QString &argument) const
{
    return m_command.words == Command::Words::Steps && m_command.stepNames.contains(argument);
}

void Parser::takePlain(const QString &argument)
{
    m_inSteps = m_inSteps || isStep(argument);
    if (m_inSteps)
        m_invocation->words.append(argument);
    else
        m_parts.append({{argument}, false});
}

/// Says for each part what it is: this may depend on what follows.
bool Parser::distribute()
{
    if (m_command.words == Command::Words::LastIsWord) {
        const auto last = std::find_if(m_parts.rbegin(), m_parts.rend(),
                                       [](const Part &part) { return !part.isOption; });
        if (last == m_parts.rend() && standsAlone())
            return true;
        if (last == m_parts.rend())
            return failWithoutWord();
        if (!m_onlyPlain && isFileOfDesign(last->arguments.first()))
            return failWithoutWord();
        m_invocation->words.append(last->arguments);
        m_parts.erase(last.base() - 1);
    }
    for (const Part &part : qAsConst(m_parts)) {
        if (part.isOption)
            m_invocation->design.arguments.append(part.arguments);
        else if (!distributeFile(part.arguments.first()))
            return false;
    }
    return true;
}

bool Parser::failWithoutWord()
{
    return fail(QStringLiteral("no %1 is given").arg(m_command.synopsis.section(' ', -1)));
}

bool Parser::distributeFile(const QString &path)
{
    if (path.isEmpty())
        return fail(QStringLiteral("the name of a file is empty"));
    const TE::NamedFile kind = TE::namedFileOf(path);
    if (!m_command.takesDesign || kind == TE::NamedFile::Config) {
        m_invocation->files.append(path);
        return true;
    }
    if (kind == TE::NamedFile::Project)
        return takeProject(path);
    // After "--" a file may begin like an option of the design.
    const bool needsFolder = path.startsWith(QLatin1Char('-')) || path.startsWith(QLatin1Char('+'));
    m_invocation->design.arguments.append(needsFolder ? QLatin1String("./") + path : path);
    return true;
}

bool Parser::takeProject(const QString &path)
{
    if (!m_invocation->design.projectFile.isEmpty())
        return fail(QStringLiteral("only one project file can be read"));
    m_invocation->design.projectFile = path;
    return true;
}

bool Parser::checkDesign()
{
    const DesignArguments &design = m_invocation->design;
    return design.projectFile.isEmpty() || design.arguments.isEmpty() ||
           fail(QStringLiteral("a project file and design arguments cannot be combined"));
}

bool Parser::checkCounts()
{
    const QStringList &files = m_invocation->files;
    const Command::Files wanted = m_command.files;
    if (wanted == Command::Files::None && !files.isEmpty())
        return fail(QStringLiteral("the command takes no file %1").arg(quoted(files.first())));
    if (wanted == Command::Files::One && files.size() > 1)
        return fail(
            QStringLiteral("only one file can be given, not also %1").arg(quoted(files.at(1))));
    if (wanted != Command::Files::None && files.isEmpty())
        return fail(m_command.takesDesign ? QStringLiteral("no \".tarn\" file is given")
                                          : QStringLiteral("no file is given"));
    if (m_command.words == Command::Words::Steps && m_invocation->words.isEmpty())
        return fail(QStringLiteral("%1; the steps are %2")
                        .arg(missingStep(), m_command.stepNames.join(QLatin1String(", "))));
    return true;
}

/// A word that is no file was probably meant as a step.
QString Parser::missingStep() const
{
    for (const QString &argument : qAsConst(m_invocation->design.arguments)) {
        if (!looksLikeOption(argument) && !QFileInfo::exists(argument))
            return QStringLiteral("there is no step %1").arg(quoted(argument));
    }
    return QStringLiteral("no step is given");
}

} // namespace

bool parseInvocation(const Command &command, const QStringList &arguments, Invocation *invocation,
                     QString *error)
{
    Parser parser(command, arguments, invocation);
    if (parser.parse())
        return true;
    *error = parser.error();
    return false;
}

} // namespace Tool
