// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "project.h"

#include "argumentsplitter.h"
#include "options.h"
#include "teconstants.h"
#include "wholefile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHash>

#include <algorithm>

namespace TE {

namespace {

constexpr int DeepestList = 32;
constexpr int MostLists = 1000;
constexpr char SystemVerilogStandard[] = "1800-2017";

/// The arguments that are not files.
enum class ArgumentKind {
    Unknown,
    List,
    ListOfItsFolder,
    IncludePath,
    Macro,
    LibraryFile,
    LibraryFolder,
    LibraryExtension,
    Top,
    Language,
    SystemVerilog,
    VhdlLibrary,
    VhdlStandard
};

struct ArgumentName
{
    const char *name;
    ArgumentKind kind;
};

/// Written with one dash; a second one makes no difference.
constexpr ArgumentName ShortNames[] = {
    {"-f", ArgumentKind::List},           {"-F", ArgumentKind::ListOfItsFolder},
    {"-I", ArgumentKind::IncludePath},    {"-D", ArgumentKind::Macro},
    {"-v", ArgumentKind::LibraryFile},    {"-y", ArgumentKind::LibraryFolder},
    {"-sv", ArgumentKind::SystemVerilog}, {"-sverilog", ArgumentKind::SystemVerilog}};

/// Their value may also follow an equals sign.
constexpr ArgumentName LongNames[] = {
    {"-top", ArgumentKind::Top},           {"-top-module", ArgumentKind::Top},
    {"-language", ArgumentKind::Language}, {"-default-language", ArgumentKind::Language},
    {"-file", ArgumentKind::List},         {"-incdir", ArgumentKind::IncludePath},
    {"-define", ArgumentKind::Macro},      {"-libext", ArgumentKind::LibraryExtension},
    {"-work", ArgumentKind::VhdlLibrary},  {"-std", ArgumentKind::VhdlStandard}};

/// Their names are their values.
constexpr ArgumentName EditionNames[] = {{"-93", ArgumentKind::VhdlStandard},
                                         {"-2008", ArgumentKind::VhdlStandard}};

constexpr ArgumentName PlusNames[] = {{"incdir", ArgumentKind::IncludePath},
                                      {"define", ArgumentKind::Macro},
                                      {"libext", ArgumentKind::LibraryExtension}};

template <int Count>
ArgumentKind find(const ArgumentName (&names)[Count], const QString &name)
{
    const auto found = std::find_if(names, names + Count, [&name](const ArgumentName &known) {
        return name == QLatin1String(known.name);
    });
    return found == names + Count ? ArgumentKind::Unknown : found->kind;
}

/// An argument that is not a file.
struct Setting
{
    ArgumentKind kind = ArgumentKind::Unknown;
    QString name;       ///< For messages.
    QStringList values; ///< Those that the argument itself contains.
    bool takesNext = false;
};

Setting plusSetting(const QString &text)
{
    QStringList parts = text.mid(1).split(QLatin1Char('+'));
    const ArgumentKind kind = find(PlusNames, parts.takeFirst());
    // Generated lists end in a plus sign.
    parts.removeAll(QString());
    return {kind, text, parts};
}

Setting dashSetting(const QString &text)
{
    const QString name = text.mid(text.startsWith(QLatin1String("--")) ? 1 : 0);
    const int equals = name.indexOf(QLatin1Char('='));
    const ArgumentKind shortKind = find(ShortNames, name);
    const ArgumentKind longKind = find(LongNames, name.left(equals));
    const ArgumentKind editionKind = find(EditionNames, name);
    if (shortKind != ArgumentKind::Unknown)
        return {shortKind, text, {}, shortKind != ArgumentKind::SystemVerilog};
    if (editionKind != ArgumentKind::Unknown)
        return {editionKind, text, {name.mid(1)}};
    if (longKind != ArgumentKind::Unknown && equals < 0)
        return {longKind, text, {}, true};
    if (longKind != ArgumentKind::Unknown)
        return {longKind, text, {name.mid(equals + 1)}};
    if (text.startsWith(QLatin1String("-I")) || text.startsWith(QLatin1String("-D")))
        return {find(ShortNames, text.left(2)), text.left(2), {text.mid(2)}};
    return {ArgumentKind::Unknown, text, {}};
}

/// The value of TE::OPT::Verilog_Standard for @p language, null when there is none.
QString standardOf(const QString &language)
{
    for (const char *standard : OPT::VerilogStandards) {
        if (language.startsWith(QLatin1String(standard)))
            return QLatin1String(standard);
    }
    // All editions of SystemVerilog are read as one.
    return language.startsWith(QLatin1String("1800-"))
               ? QString(QLatin1String(SystemVerilogStandard))
               : QString();
}

/// Judges by the extension, which may also be one that only other tools know.
bool looksLikeSource(const QString &path)
{
    static const QStringList others = {QStringLiteral("vg"),  QStringLiteral("vm"),
                                       QStringLiteral("vo"),  QStringLiteral("vp"),
                                       QStringLiteral("svp"), QStringLiteral("verilog")};
    return isDesignSource(fileTypeOf(path)) || others.contains(QFileInfo(path).suffix().toLower());
}

/// Whether @p next looks like the value of the unknown argument @p unknown.
bool isValueOf(const Argument &unknown, const Argument &next)
{
    const auto isOption = [](const QString &text) {
        return text.startsWith(QLatin1Char('-')) || text.startsWith(QLatin1Char('+'));
    };
    return unknown.text.startsWith(QLatin1Char('-')) && !unknown.text.contains(QLatin1Char('=')) &&
           next.line == unknown.line && !isOption(next.text) && !looksLikeSource(next.text);
}

/// The files that @p path stands for. It may contain wildcards behind its last slash.
QStringList filesOf(const QString &path)
{
    const QFileInfo info(path);
    const auto isWildcard = [](QChar c) { return QStringLiteral("*?[").contains(c); };
    const QString name = info.fileName();
    if (std::none_of(name.begin(), name.end(), isWildcard) || info.exists())
        return {path};
    QStringList files;
    const QFileInfoList found =
        info.dir().entryInfoList({name}, QDir::Files | QDir::CaseSensitive, QDir::Name);
    for (const QFileInfo &file : found)
        files.append(file.filePath());
    return files;
}

/// Builds a project from arguments. Every function returns false at the first error and sets
/// error() to what is wrong.
class ArgumentReader
{
    Q_DECLARE_TR_FUNCTIONS(TE::ArgumentReader)

public:
    explicit ArgumentReader(const QString &workingDir);

    bool read(const QVector<Argument> &arguments);
    Project project() const;
    QStringList warnings() const { return m_warnings; }
    QString error() const { return m_error; }

private:
    /// A `-f` or `-F` file that is being read.
    struct List
    {
        QString path;
        QString folder; ///< Where its relative paths start.
        int line = 0;   ///< The line of the argument being read.
    };

    QString placed(const QString &what) const;
    bool fail(const QString &what);
    bool readArgument(const QVector<Argument> &arguments, int *index);
    bool readSetting(const Setting &setting);
    bool apply(ArgumentKind kind, const QString &value);
    bool skipUnknown(const QVector<Argument> &arguments, int *index);
    bool checkVariables(const Argument &argument);
    bool readList(const QString &path, bool startsInItsFolder);
    bool addFiles(const QString &name, bool (ArgumentReader::*add)(const QString &));
    bool addSource(const QString &path);
    bool addLibraryFile(const QString &path);
    bool takeLibrary(QString *library);
    void repeatSource(const ProjectSource &known, const ProjectSource &repeated);
    bool addMacro(const QString &macro);
    bool setLanguage(const QString &language);
    bool setVhdlStandard(const QString &edition);
    bool checkFile(const QString &path);
    QString hintFor(const QString &path) const;
    QString folder() const;
    QString absolute(const QString &path) const;
    QString includePath(const QString &path) const;

    Project m_project;
    QStringList m_includePaths;
    QString m_library = QLatin1String(DefaultVhdlLibrary); ///< Of the next VHDL file, as written.
    QHash<QString, int> m_sources;                         ///< Indexes in the project, by path.
    QVector<List> m_lists;                                 ///< The outermost first.
    int m_listCount = 0;
    QStringList m_warnings;
    QString m_error;
};

ArgumentReader::ArgumentReader(const QString &workingDir)
{
    m_project.workingDir = QDir::cleanPath(QDir(workingDir).absolutePath());
    m_project.name = QFileInfo(m_project.workingDir).fileName();
    if (m_project.name.isEmpty())
        m_project.name = QStringLiteral("project");
}

Project ArgumentReader::project() const
{
    Project project = m_project;
    if (!m_includePaths.isEmpty())
        project.options.insert(QLatin1String(OPT::INCLUDEPATH), m_includePaths);
    return project;
}

/// @p what, preceded by the place of the argument being read.
QString ArgumentReader::placed(const QString &what) const
{
    if (m_lists.isEmpty())
        return what;
    const List &list = m_lists.last();
    return QStringLiteral("%1:%2: %3")
        .arg(QDir::toNativeSeparators(list.path), QString::number(list.line), what);
}

bool ArgumentReader::fail(const QString &what)
{
    m_error = placed(what);
    return false;
}

/// Where relative paths start.
QString ArgumentReader::folder() const
{
    return m_lists.isEmpty() ? m_project.workingDir : m_lists.last().folder;
}

QString ArgumentReader::absolute(const QString &path) const
{
    return QDir::cleanPath(QDir(folder()).absoluteFilePath(path));
}

/// Include paths of a project are relative to its working folder, so most can stay as written.
QString ArgumentReader::includePath(const QString &path) const
{
    return folder() == m_project.workingDir ? path : absolute(path);
}

bool ArgumentReader::read(const QVector<Argument> &arguments)
{
    for (int i = 0; i < arguments.size(); ++i) {
        if (!m_lists.isEmpty())
            m_lists.last().line = arguments.at(i).line;
        if (!readArgument(arguments, &i))
            return false;
    }
    return true;
}

/// Reads the argument at @p index, which moves on when the next argument is its value.
bool ArgumentReader::readArgument(const QVector<Argument> &arguments, int *index)
{
    const Argument &argument = arguments.at(*index);
    const bool isPlus = argument.text.startsWith(QLatin1Char('+'));
    if (!isPlus && !argument.text.startsWith(QLatin1Char('-')))
        return checkVariables(argument) && addFiles(argument.text, &ArgumentReader::addSource);

    Setting setting = isPlus ? plusSetting(argument.text) : dashSetting(argument.text);
    if (setting.kind == ArgumentKind::Unknown)
        return skipUnknown(arguments, index);
    const bool mayHoldVariables = setting.kind == ArgumentKind::Macro;
    if (!mayHoldVariables && !checkVariables(argument))
        return false;
    if (setting.takesNext && *index + 1 < arguments.size()) {
        const Argument &next = arguments.at(++*index);
        if (!mayHoldVariables && !checkVariables(next))
            return false;
        setting.values.append(next.text);
    }
    return readSetting(setting);
}

bool ArgumentReader::readSetting(const Setting &setting)
{
    if (setting.kind == ArgumentKind::SystemVerilog)
        return setLanguage(QLatin1String(SystemVerilogStandard));
    if (setting.values.isEmpty() || setting.values.contains(QString()))
        return fail(tr("%1 needs a value").arg(setting.name));
    return std::all_of(
        setting.values.begin(), setting.values.end(),
        [this, &setting](const QString &value) { return apply(setting.kind, value); });
}

bool ArgumentReader::apply(ArgumentKind kind, const QString &value)
{
    switch (kind) {
    case ArgumentKind::List:
    case ArgumentKind::ListOfItsFolder:
        return readList(value, kind == ArgumentKind::ListOfItsFolder);
    case ArgumentKind::Macro:
        return addMacro(value);
    case ArgumentKind::LibraryFile:
        return addFiles(value, &ArgumentReader::addLibraryFile);
    case ArgumentKind::Language:
        return setLanguage(value);
    case ArgumentKind::VhdlStandard:
        return setVhdlStandard(value);
    case ArgumentKind::VhdlLibrary:
        // Checked when a VHDL file needs it: lists for Verilog only may name a folder here.
        m_library = value;
        return true;
    case ArgumentKind::IncludePath:
        m_includePaths.append(includePath(value));
        return true;
    case ArgumentKind::LibraryFolder:
        m_project.libraryFolders.append(absolute(value));
        return true;
    case ArgumentKind::LibraryExtension:
        m_project.libraryExtensions.append(value);
        return true;
    case ArgumentKind::Top:
        m_project.options.insert(QLatin1String(OPT::TOPMODULE), value);
        return true;
    case ArgumentKind::SystemVerilog:
    case ArgumentKind::Unknown:
        break;
    }
    return false;
}

/// A list may be written for other tools too. On the command line an unknown argument is a mistake.
bool ArgumentReader::skipUnknown(const QVector<Argument> &arguments, int *index)
{
    const Argument &unknown = arguments.at(*index);
    if (m_lists.isEmpty())
        return fail(tr("unknown argument %1").arg(unknown.text));
    QString skipped = unknown.text;
    if (*index + 1 < arguments.size() && isValueOf(unknown, arguments.at(*index + 1)))
        skipped += QLatin1Char(' ') + arguments.at(++*index).text;
    m_warnings.append(placed(tr("the unknown argument %1 is ignored").arg(skipped)));
    return true;
}

bool ArgumentReader::checkVariables(const Argument &argument)
{
    return argument.unsetVariable.isEmpty() ||
           fail(tr("the environment variable %1 is not set").arg(argument.unsetVariable));
}

bool ArgumentReader::readList(const QString &path, bool startsInItsFolder)
{
    const QString absolutePath = absolute(path);
    const QString shown = QDir::toNativeSeparators(absolutePath);
    const auto isThis = [&absolutePath](const List &list) { return list.path == absolutePath; };
    if (std::any_of(m_lists.begin(), m_lists.end(), isThis) || m_lists.size() == DeepestList)
        return fail(tr("the argument file %1 includes itself or is nested too deeply").arg(shown));
    if (++m_listCount > MostLists)
        return fail(tr("there are more than %1 argument files").arg(MostLists));
    QByteArray content;
    QString problem;
    if (!WholeFile::read(absolutePath, &content, &problem))
        return fail(tr("cannot read the argument file %1: %2").arg(shown, problem) +
                    hintFor(absolutePath));

    QVector<Argument> arguments;
    if (!splitArguments(QString::fromUtf8(content), &arguments, &problem)) {
        m_error = QStringLiteral("%1:%2").arg(shown, problem);
        return false;
    }
    m_lists.append(
        {absolutePath, startsInItsFolder ? QFileInfo(absolutePath).path() : m_project.workingDir});
    const QString library = m_library;
    const bool good = read(arguments);
    m_library = library;
    m_lists.removeLast();
    return good;
}

/// Calls @p add for each file that @p name stands for.
bool ArgumentReader::addFiles(const QString &name, bool (ArgumentReader::*add)(const QString &))
{
    const QStringList paths = filesOf(absolute(name));
    if (paths.isEmpty())
        return fail(tr("no file matches %1").arg(QDir::toNativeSeparators(absolute(name))));
    for (const QString &path : paths) {
        if (!checkFile(path) || !(this->*add)(path))
            return false;
    }
    return true;
}

bool ArgumentReader::addSource(const QString &path)
{
    ProjectSource source;
    source.path = path;
    source.type = fileTypeOf(path);
    if (source.type == UnknownFile)
        source.type = VerilogFile;
    if (source.type == VhdlFile && !takeLibrary(&source.library))
        return false;
    const auto known = m_sources.constFind(path);
    if (known != m_sources.constEnd()) {
        repeatSource(m_project.sources.at(*known), source);
        return true;
    }
    m_sources.insert(path, m_project.sources.size());
    m_project.sources.append(source);
    return true;
}

bool ArgumentReader::takeLibrary(QString *library)
{
    QString problem;
    QString name = m_library;
    if (!normalizeVhdlLibrary(&name, &problem))
        return fail(tr("the library \"%1\" %2").arg(m_library, problem));
    *library = name;
    return true;
}

void ArgumentReader::repeatSource(const ProjectSource &known, const ProjectSource &repeated)
{
    if (known.library == repeated.library)
        return;
    m_warnings.append(placed(tr("%1 stays in the library %2, as a file belongs to one library only")
                                 .arg(QDir::toNativeSeparators(known.path), known.library)));
}

bool ArgumentReader::addLibraryFile(const QString &path)
{
    m_project.libraryFiles.append(path);
    if (fileTypeOf(path) == VhdlFile &&
        m_library.compare(QLatin1String(DefaultVhdlLibrary), Qt::CaseInsensitive) != 0)
        m_warnings.append(
            placed(tr("%1 belongs to the library %2, as it is named with -v")
                       .arg(QDir::toNativeSeparators(path), QLatin1String(DefaultVhdlLibrary))));
    return true;
}

bool ArgumentReader::addMacro(const QString &macro)
{
    if (!isMacroDefinition(macro))
        return fail(tr("%1 is not a macro definition, NAME or NAME=VALUE").arg(macro));
    m_project.macros.append(macro);
    return true;
}

bool ArgumentReader::setLanguage(const QString &language)
{
    const QString standard = standardOf(language);
    if (standard.isEmpty())
        return fail(tr("%1 is not an edition of Verilog or SystemVerilog such as %2")
                        .arg(language, QLatin1String(SystemVerilogStandard)));
    m_project.options.insert(QLatin1String(OPT::Verilog_Standard), standard);
    return true;
}

/// Lists for other tools may contain the argument with the edition of another language.
bool ArgumentReader::setVhdlStandard(const QString &edition)
{
    const QString standard = vhdlStandardOf(edition);
    const QString problem = tr("%1 is not an edition of VHDL such as 93 or 2008");
    if (standard.isEmpty() && m_lists.isEmpty())
        return fail(problem.arg(edition));
    if (standard.isEmpty())
        m_warnings.append(placed(problem.arg(edition)));
    else
        m_project.options.insert(QLatin1String(OPT::VHDL_Standard), standard);
    return true;
}

bool ArgumentReader::checkFile(const QString &path)
{
    const QFileInfo info(path);
    if (info.isFile() && info.isReadable())
        return true;
    return fail(tr("cannot read the file %1").arg(QDir::toNativeSeparators(path)) + hintFor(path));
}

/// A hint for a missing file that exists relative to the folder of the list.
QString ArgumentReader::hintFor(const QString &path) const
{
    if (m_lists.isEmpty())
        return {};
    const QString name = QDir(folder()).relativeFilePath(path);
    if (!QFileInfo(QFileInfo(m_lists.last().path).dir(), name).isFile())
        return {};
    return tr(" (paths in a list start in %1 with -f, in the folder of the list with -F)")
        .arg(QDir::toNativeSeparators(m_project.workingDir));
}

} // namespace

bool projectFromArguments(const QStringList &arguments, const QString &workingDir, Project *project,
                          QStringList *warnings, QString *error)
{
    QVector<Argument> given;
    for (const QString &argument : arguments)
        given.append({argument, 0, QString()});
    ArgumentReader reader(workingDir);
    const bool good = reader.read(given);
    *warnings = reader.warnings();
    if (!good) {
        *error = reader.error();
        return false;
    }
    *project = reader.project();
    return true;
}

NamedFile namedFileOf(const QString &path)
{
    if (path.endsWith(QLatin1String(".tarn"), Qt::CaseInsensitive))
        return NamedFile::Config;
    return path.endsWith(QLatin1String(".json"), Qt::CaseInsensitive) ? NamedFile::Project
                                                                      : NamedFile::Source;
}

bool takesNextArgument(const QString &argument)
{
    return argument.startsWith(QLatin1Char('-')) && dashSetting(argument).takesNext;
}

bool isDesignOption(const QString &argument)
{
    if (argument.startsWith(QLatin1Char('+')))
        return plusSetting(argument).kind != ArgumentKind::Unknown;
    return argument.startsWith(QLatin1Char('-')) &&
           dashSetting(argument).kind != ArgumentKind::Unknown;
}

} // namespace TE
