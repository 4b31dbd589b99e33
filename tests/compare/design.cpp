// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "design.h"

#include "dump.h"
#include "randomnetlist.h"

#include <netweir/designextraction.h>
#include <netweir/rtlnetlist.h>
#include <support/generatednetlist.h>
#include <te/designinfo.h>
#include <te/project.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace TarnCompare {

namespace {

using DesignInfo = QMap<QString, QVariant>;

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// What a test has collected. The folder of the design is "@" in it.
DesignInfo collectedInfo(const QDir &folder)
{
    QByteArray text = contentOf(folder.filePath(QStringLiteral("info.json")));
    text.replace("\"@", '"' + folder.absolutePath().toUtf8());
    return QJsonDocument::fromJson(text).object().toVariantMap();
}

TE::Project listedProject(const QDir &folder, Dump *dump)
{
    TE::Project project;
    QString error;
    QStringList messages;
    if (folder.exists(QStringLiteral("project.json"))) {
        TE::readProject(folder.filePath(QStringLiteral("project.json")), &project, &error);
    } else {
        QStringList arguments;
        const QByteArray words = contentOf(folder.filePath(QStringLiteral("arguments.txt")));
        for (const QString &word :
             QString::fromUtf8(words).split(QRegularExpression("\\s"), Qt::SkipEmptyParts))
            arguments.append(word);
        arguments += {QStringLiteral("-f"), QStringLiteral("design.f")};
        TE::projectFromArguments(arguments, folder.absolutePath(), &project, &messages, &error);
    }
    dump->line(QStringLiteral("LIST %1 %2").arg(quoted(error), quoted(messages)));
    return project;
}

DesignInfo infoOf(const QString &path, Dump *dump)
{
    const QDir folder(path);
    if (folder.exists(QStringLiteral("info.json")))
        return collectedInfo(folder);
    if (QFileInfo(path).isDir())
        return TE::designInfoOf(listedProject(folder, dump));
    TE::Project project;
    QString error;
    TE::readProject(path, &project, &error);
    dump->line(QStringLiteral("PROJECT %1").arg(quoted(error)));
    return TE::designInfoOf(project);
}

/// Changes a few words of @p text.
QByteArray damaged(QByteArray text, Choice *choice)
{
    static const QVector<QByteArray> words{
        "begin",  "end", ";",  "[3:0]",    "module", "wire",  "reg",    "input",   "assign",   "if",
        "0",      "(",   ")",  "=",        "<=",     "inout", "logic",  "process", "port map", "x",
        "`ifdef", "//",  "/*", "generate", "genvar", ",",     "output", "struct"};
    for (int count = 1 + choice->below(2); count > 0; --count) {
        int begin = choice->below(text.size());
        int end = begin;
        while (end < text.size() && !std::isspace(static_cast<unsigned char>(text.at(end))))
            ++end;
        switch (choice->below(3)) {
        case 0:
            text.remove(begin, end - begin);
            break;
        case 1:
            text.replace(begin, end - begin, choice->any(words));
            break;
        default:
            text.insert(begin, choice->any(words) + ' ');
        }
    }
    return text;
}

void damageSource(const DesignInfo &info, const QString &folder, Choice *choice)
{
    const QVariantList files = info.value(QLatin1String(TE::DesignInfo::Files)).toList();
    if (files.isEmpty())
        return;
    const QString path =
        choice->any(files).toMap().value(QLatin1String(TE::DesignInfo::Path)).toString();
    const QByteArray text = contentOf(path);
    QFile file(path);
    if (path.startsWith(folder + QLatin1Char('/')) && QFileInfo(path).isFile() && !text.isEmpty() &&
        file.open(QIODevice::WriteOnly))
        file.write(damaged(text, choice));
}

std::unique_ptr<NETWEIR::RtlNetlist> extract(const DesignInfo &info, Dump *dump)
{
    QStringList tops;
    QStringList modules;
    QStringList messages;
    NETWEIR::DesignExtraction extraction(info);
    extraction.findModules(&tops, &modules, &messages);
    // What the first call says and what the second one says depends on how long they take.
    std::unique_ptr<NETWEIR::RtlNetlist> netlist = extraction.buildNetlist(&messages);
    messages.removeDuplicates();
    dump->line(QStringLiteral("MODULES tops %1 all %2").arg(quoted(tops), quoted(modules)));
    for (const QString &message : qAsConst(messages))
        dump->line(QStringLiteral("SAYS %1").arg(quoted(message)));
    return netlist;
}

} // namespace

std::unique_ptr<NETWEIR::RtlNetlist> readDesign(const QString &name, Dump *dump, Choice *choice)
{
    const QString number = name.section(QLatin1Char(':'), 1);
    if (name.startsWith(QLatin1String("large:")))
        return TarnBench::generatedNetlist(number.toInt());
    if (name.startsWith(QLatin1String("random:"))) {
        Choice seeded(number.toUInt());
        return randomNetlist(&seeded);
    }
    const DesignInfo info = infoOf(name, dump);
    if (choice)
        damageSource(info, QDir(name).absolutePath(), choice);
    return extract(info, dump);
}

} // namespace TarnCompare
