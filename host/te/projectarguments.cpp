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
#include <QSet>

namespace TE {

namespace {

constexpr int DeepestFile = 32;
constexpr int MostFiles = 1000;

/// Collects a project from arguments. Every function returns false at the first thing that is
/// wrong, with error() set to what it is.
class ArgumentReader
{
    Q_DECLARE_TR_FUNCTIONS(TE::ArgumentReader)

public:
    explicit ArgumentReader(const QString &workingDir);

    bool read(const QStringList &arguments);
    Project project() const;
    QString error() const { return m_error; }

private:
    bool fail(const QString &what);
    bool readOption(const QString &option, const QString &value);
    bool readPlus(const QString &argument);
    bool readFile(const QString &path);
    bool addSource(const QString &path);
    bool addLibraryFile(const QString &path);
    bool addMacro(const QString &macro);
    bool checkFile(const QString &path);
    QString absolute(const QString &path) const;

    Project m_project;
    QStringList m_includePaths;
    QSet<QString> m_sources;
    QStringList m_openFiles; ///< The `-f` files being read, the outermost first.
    int m_fileCount = 0;     ///< Of `-f` files.
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

bool ArgumentReader::fail(const QString &what)
{
    m_error =
        m_openFiles.isEmpty()
            ? what
            : QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(m_openFiles.last()), what);
    return false;
}

QString ArgumentReader::absolute(const QString &path) const
{
    return QDir::cleanPath(QDir(m_project.workingDir).absoluteFilePath(path));
}

bool ArgumentReader::read(const QStringList &arguments)
{
    static const QStringList withValue = {QStringLiteral("-f"), QStringLiteral("-I"),
                                          QStringLiteral("-D"), QStringLiteral("-v"),
                                          QStringLiteral("--top")};
    for (int i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments.at(i);
        bool good = false;
        if (withValue.contains(argument)) {
            if (++i == arguments.size())
                return fail(tr("%1 needs a value").arg(argument));
            good = readOption(argument, arguments.at(i));
        } else if (argument.startsWith(QLatin1String("-I")) ||
                   argument.startsWith(QLatin1String("-D"))) {
            good = readOption(argument.left(2), argument.mid(2));
        } else if (argument.startsWith(QLatin1Char('+'))) {
            good = readPlus(argument);
        } else if (argument.startsWith(QLatin1Char('-'))) {
            return fail(tr("unknown argument %1").arg(argument));
        } else {
            good = addSource(argument);
        }
        if (!good)
            return false;
    }
    return true;
}

bool ArgumentReader::readOption(const QString &option, const QString &value)
{
    if (value.isEmpty())
        return fail(tr("%1 needs a value").arg(option));
    if (option == QLatin1String("-f"))
        return readFile(value);
    if (option == QLatin1String("-v"))
        return addLibraryFile(value);
    if (option == QLatin1String("-D"))
        return addMacro(value);
    if (option == QLatin1String("-I"))
        m_includePaths.append(value);
    else
        m_project.options.insert(QLatin1String(OPT::TOPMODULE), value);
    return true;
}

bool ArgumentReader::readPlus(const QString &argument)
{
    const QStringList parts = argument.mid(1).split(QLatin1Char('+'));
    const bool isInclude = parts.first() == QLatin1String("incdir");
    if (!isInclude && parts.first() != QLatin1String("define"))
        return fail(tr("unknown argument %1").arg(argument));
    const QStringList values = parts.mid(1);
    if (values.isEmpty() || values.contains(QString()))
        return fail(tr("%1 needs a value").arg(argument));
    for (const QString &value : values) {
        if (isInclude)
            m_includePaths.append(value);
        else if (!addMacro(value))
            return false;
    }
    return true;
}

bool ArgumentReader::readFile(const QString &path)
{
    const QString absolutePath = absolute(path);
    const QString shown = QDir::toNativeSeparators(absolutePath);
    if (m_openFiles.contains(absolutePath) || m_openFiles.size() == DeepestFile)
        return fail(tr("the argument file %1 includes itself or is nested too deep").arg(shown));
    if (++m_fileCount > MostFiles)
        return fail(tr("there are more than %1 argument files").arg(MostFiles));
    QByteArray content;
    QString problem;
    if (!readWholeFile(absolutePath, &content, &problem))
        return fail(tr("cannot read the argument file %1: %2").arg(shown, problem));

    QStringList arguments;
    if (!splitArguments(QString::fromUtf8(content), &arguments, &problem)) {
        m_error = QStringLiteral("%1:%2").arg(shown, problem);
        return false;
    }
    m_openFiles.append(absolutePath);
    const bool good = read(arguments);
    m_openFiles.removeLast();
    return good;
}

bool ArgumentReader::addSource(const QString &path)
{
    ProjectSource source;
    source.path = absolute(path);
    if (m_sources.contains(source.path))
        return true;
    if (!checkFile(source.path))
        return false;
    source.type = fileTypeOf(source.path);
    if (source.type == UnknownFile)
        source.type = VerilogFile;
    m_sources.insert(source.path);
    m_project.sources.append(source);
    return true;
}

bool ArgumentReader::addLibraryFile(const QString &path)
{
    const QString absolutePath = absolute(path);
    if (!checkFile(absolutePath))
        return false;
    m_project.libraryFiles.append(absolutePath);
    return true;
}

bool ArgumentReader::addMacro(const QString &macro)
{
    if (!isMacroDefinition(macro))
        return fail(tr("%1 is no macro definition: NAME or NAME=VALUE").arg(macro));
    m_project.macros.append(macro);
    return true;
}

bool ArgumentReader::checkFile(const QString &path)
{
    const QFileInfo info(path);
    if (info.isFile() && info.isReadable())
        return true;
    return fail(tr("cannot read the file %1").arg(QDir::toNativeSeparators(path)));
}

} // namespace

bool projectFromArguments(const QStringList &arguments, const QString &workingDir, Project *project,
                          QString *error)
{
    ArgumentReader reader(workingDir);
    if (!reader.read(arguments)) {
        *error = reader.error();
        return false;
    }
    *project = reader.project();
    return true;
}

} // namespace TE
