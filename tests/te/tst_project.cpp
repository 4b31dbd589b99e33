// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <te/project.h>

#include <support/files.h>
#include <support/testcase.h>
#include <te/designmanager.h>
#include <te/teconstants.h>

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace TE;
using TarnTest::readFile;
using TarnTest::writeFile;

namespace {

/// Every field of @p project as text, to compare whole.
QString text(const Project &project)
{
    QStringList lines = {project.filePath, project.name, project.workingDir};
    for (const ProjectSource &source : project.sources) {
        lines.append(QStringLiteral("%1 %2 %3")
                         .arg(source.path, QString::number(source.type),
                              source.enabled ? QStringLiteral("on") : QStringLiteral("off")));
        if (source.library != QLatin1String(DefaultVhdlLibrary))
            lines.last() += QStringLiteral(" in ") + source.library;
    }
    for (auto it = project.options.begin(); it != project.options.end(); ++it) {
        lines.append(QStringLiteral("%1=%2 %3")
                         .arg(it.key(), QString::fromLatin1(it.value().typeName()),
                              it.value().type() == QVariant::StringList
                                  ? it.value().toStringList().join(QLatin1Char('|'))
                                  : it.value().toString()));
    }
    lines += project.libraryFiles + project.macros;
    lines += project.libraryFolders + project.libraryExtensions;
    const DEV::DeviceArg &device = project.device;
    lines += QStringList{device.family, device.package, device.speedGrade, device.deviceName};
    return lines.join(QLatin1Char('\n'));
}

const QByteArray FullProject = R"({
    "device": {
        "family": "KX",
        "name": "KX70-FBG484-2",
        "package": "FBG484",
        "speedGrade": "-2"
    },
    "libraryExtensions": [
        ".v",
        ".vlib"
    ],
    "libraryFiles": [
        "lib/cells.v"
    ],
    "libraryFolders": [
        "lib",
        "/usr/share/cells"
    ],
    "macros": [
        "SIM",
        "WIDTH=8"
    ],
    "name": "blinky",
    "options": {
        "Extraction_Timeout": 30,
        "IncludePath": [
            "rtl/include",
            "/usr/share/inc"
        ],
        "Synthesize_tool": "Synplify",
        "Verilog_Standard": "1364-2001"
    },
    "sources": [
        {
            "enabled": true,
            "file": "rtl/top.v",
            "type": "Verilog"
        },
        {
            "enabled": false,
            "file": "/opt/ip/fifo.sv",
            "type": "VHDL"
        }
    ],
    "top": "top",
    "version": 1
}
)";

const QByteArray VhdlProject = R"({
    "device": {
        "family": "",
        "name": "",
        "package": "",
        "speedGrade": ""
    },
    "libraryFiles": [
    ],
    "macros": [
    ],
    "name": "blinky",
    "options": {
        "VHDL_Standard": "1076-1993"
    },
    "sources": [
        {
            "enabled": true,
            "file": "rtl/top.vhd",
            "type": "VHDL"
        },
        {
            "enabled": true,
            "file": "cells/fifo.vhd",
            "library": "dsp_cells",
            "type": "VHDL"
        }
    ],
    "top": "",
    "version": 1
}
)";

/// Calls @p action as a user to whom file permissions apply.
template <typename Action>
void asOrdinaryUser(Action action)
{
    const uid_t user = geteuid();
    if (user == 0)
        QCOMPARE(seteuid(65534), 0);
    action();
    QCOMPARE(seteuid(user), 0);
}

} // namespace

class TestProject : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void typeFollowsFromExtension_data();
    void typeFollowsFromExtension();
    void typeNamesAreUnique();
    void knowsProjectFiles_data();
    void knowsProjectFiles();
    void findsProjectFiles();
    void readsEveryField();
    void missingKeysGiveDefaults();
    void readsLibrariesOfVhdlFiles_data();
    void readsLibrariesOfVhdlFiles();
    void readsEditionsOfVhdl_data();
    void readsEditionsOfVhdl();
    void writesWhatItRead_data();
    void writesWhatItRead();
    void writesLibrariesOfVhdlFilesOnly();
    void writesPathsBelowItsFolderRelative();
    void refusesWithReasonAndPlace_data();
    void refusesWithReasonAndPlace();
    void refusesFileThatCannotBeRead();
    void writingReplacesThroughLinkAndKeepsPermissions();
    void failedWriteKeepsOldFile();
    void fullDiskKeepsOldFile();
    void survivesMutatedFiles();
    void optionsOfAPlainProjectHaveDefaults();
    void designInfoOfAnEmptyProject();
    void designInfoIsThatOfTheDesignManager();

private:
    QString path(const QString &name) const { return m_dir.filePath(name); }

    QTemporaryDir m_dir;
};

void TestProject::typeFollowsFromExtension_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("type");
    const QList<QPair<QString, int>> rows = {
        {"a.v", VerilogFile},        {"a.vh", VerilogFile},
        {"a.sv", SystemVerilogFile}, {"a.svh", SystemVerilogFile},
        {"a.vhd", VhdlFile},         {"a.vhdl", VhdlFile},
        {"a.tarn", TarnFile},        {"a.sdc", ConstraintFile},
        {"a.pdc", ConstraintFile},   {"/x.v/a.SV", SystemVerilogFile},
        {"a.b.v", VerilogFile},      {"a.txt", UnknownFile},
        {"v", UnknownFile},          {"", UnknownFile}};
    for (const auto &row : rows)
        QTest::newRow(qPrintable(row.first + QLatin1Char(' '))) << row.first << row.second;
}

void TestProject::typeFollowsFromExtension()
{
    QFETCH(QString, path);
    QTEST(fileTypeOf(path), "type");
}

void TestProject::typeNamesAreUnique()
{
    const QStringList names = fileTypeNames();
    QCOMPARE(names,
             QStringList({"Other", "Constraint", "Verilog", "SystemVerilog", "VHDL", "TARN"}));
    for (int type = 0; type < names.size(); ++type) {
        QCOMPARE(fileTypeName(type), names.at(type));
        QCOMPARE(fileTypeFromName(names.at(type)), type);
    }
    QCOMPARE(fileTypeFromName(QStringLiteral("verilog")), -1);
    QCOMPARE(fileTypeName(99), QStringLiteral("Other"));
}

void TestProject::knowsProjectFiles_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isProject");
    const auto add = [](const char *name, const char *content, bool isProject) {
        QTest::newRow(name) << QByteArray(content) << isProject;
    };
    add("the least", R"({"version": 1})", true);
    add("known keys", R"({"version": 1, "name": "n", "top": "t"})", true);
    add("a later version", R"({"version": 2, "sources": [], "colours": 3})", true);
    add("sources and an unknown key", R"({"version": 1, "sources": [], "colour": 1})", true);
    add("wrong types", R"({"version": 1, "sources": 2})", true);
    add("no version", R"({"sources": []})", false);
    add("a version in a string", R"({"version": "1.0.0", "name": "package"})", false);
    add("other keys", R"({"version": 6, "configurePresets": []})", false);
    add("a list", R"([{"version": 1}])", false);
    add("broken", R"({"version": 1)", false);
    add("empty", "", false);
}

void TestProject::knowsProjectFiles()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, isProject);
    QTemporaryDir folder;
    const QString path = folder.filePath("p.json");
    writeFile(path, content);
    QCOMPARE(isProjectFile(path), isProject);
    QCOMPARE(isProjectFile(folder.path()), false);
    QCOMPARE(isProjectFile(folder.filePath("none.json")), false);
}

void TestProject::findsProjectFiles()
{
    QTemporaryDir folder;
    for (const char *name : {"b.json", "a.json", "C.JSON", "a.txt", "sub/d.json"})
        writeFile(folder.filePath(name), R"({"version": 1})");
    for (const char *name : {"other.json", "bad.json"})
        writeFile(folder.filePath(name), "{");
    QStringList others;
    QCOMPARE(projectFilesIn(folder.path(), &others),
             QStringList({folder.filePath("C.JSON"), folder.filePath("a.json"),
                          folder.filePath("b.json")}));
    QCOMPARE(others, QStringList({"bad.json", "other.json"}));
    QCOMPARE(projectFilesIn(folder.path(), nullptr).size(), 3);
    QCOMPARE(projectFilesIn(folder.filePath("none"), &others), QStringList());
}

void TestProject::readsEveryField()
{
    writeFile(path("full/p.json"), FullProject);
    Project project;
    QString error;
    QVERIFY2(readProject(path("full/p.json"), &project, &error), qPrintable(error));
    const QString folder = path("full");
    QCOMPARE(text(project), QStringList({folder + "/p.json",
                                         "blinky",
                                         folder,
                                         folder + "/rtl/top.v 2 on",
                                         "/opt/ip/fifo.sv 4 off",
                                         "Extraction_Timeout=int 30",
                                         "IncludePath=QStringList rtl/include|/usr/share/inc",
                                         "Synthesize_tool=QString Synplify",
                                         "TopModule=QString top",
                                         "Verilog_Standard=QString 1364-2001",
                                         folder + "/lib/cells.v",
                                         "SIM",
                                         "WIDTH=8",
                                         folder + "/lib",
                                         "/usr/share/cells",
                                         ".v",
                                         ".vlib",
                                         "KX",
                                         "FBG484",
                                         "-2",
                                         "KX70-FBG484-2"})
                                .join('\n'));
}

void TestProject::missingKeysGiveDefaults()
{
    writeFile(path("small.x.json"),
              R"({"version": 1, "sources": [{"file": "a/../b.sv"}, {"file": "c.txt"}]})");
    Project project;
    QString error;
    QVERIFY2(readProject(path("small.x.json"), &project, &error), qPrintable(error));
    QCOMPARE(text(project),
             QStringList({path("small.x.json"), "small.x", m_dir.path(), path("b.sv") + " 3 on",
                          path("c.txt") + " 0 on", "", "", "", ""})
                 .join('\n'));
}

void TestProject::readsLibrariesOfVhdlFiles_data()
{
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<QString>("library");
    const auto row = [](const QByteArray &keys, const char *library) {
        QTest::newRow(keys.constData()) << keys << QString::fromLatin1(library);
    };
    row(R"("file": "a.vhd")", "work");
    row(R"("file": "a.vhdl", "library": "work")", "work");
    row(R"("file": "a.vhd", "library": "WORK")", "work");
    row(R"("file": "a.vhd", "library": "DSP_Cells_2")", "dsp_cells_2");
    row(R"("file": "a.txt", "type": "VHDL", "library": "l")", "l");
    row(R"("file": "a.vhd", "enabled": false, "library": "ieee_extra")", "ieee_extra");
}

void TestProject::readsLibrariesOfVhdlFiles()
{
    QFETCH(QByteArray, keys);
    writeFile(path("library.json"), "{\"version\": 1, \"sources\": [{" + keys + "}]}");
    Project project;
    QString error;
    QVERIFY2(readProject(path("library.json"), &project, &error), qPrintable(error));
    QTEST(project.sources.value(0).library, "library");
}

void TestProject::readsEditionsOfVhdl_data()
{
    QTest::addColumn<QString>("edition");
    QTest::addColumn<QString>("standard");
    for (const char *edition :
         {"1076-1993", "93", "1993", "93c", "87", "1987", "VHDL-93", "vhdl93", "VHDL 1987"})
        QTest::newRow(edition) << QString::fromLatin1(edition) << "1076-1993";
    for (const char *edition : {"1076-2008", "08", "2008", "VHDL-2008", "vhdl08", "VHDL 2008", "02",
                                "2002", "1076-2002", "2000", "19", "2019"})
        QTest::newRow(edition) << QString::fromLatin1(edition) << "1076-2008";
}

void TestProject::readsEditionsOfVhdl()
{
    QFETCH(QString, edition);
    writeFile(path("edition.json"),
              "{\"version\": 1, \"options\": {\"VHDL_Standard\": \"" + edition.toUtf8() + "\"}}");
    Project project;
    QString error;
    QVERIFY2(readProject(path("edition.json"), &project, &error), qPrintable(error));
    QTEST(project.options.value(QLatin1String(OPT::VHDL_Standard)).toString(), "standard");
}

void TestProject::writesWhatItRead_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("every field but those of VHDL") << FullProject;
    QTest::newRow("VHDL") << VhdlProject;
}

void TestProject::writesWhatItRead()
{
    QFETCH(QByteArray, content);
    writeFile(path("same/p.json"), content);
    Project project;
    QString error;
    QVERIFY(readProject(path("same/p.json"), &project, &error));
    QVERIFY2(writeProject(project, &error), qPrintable(error));
    QCOMPARE(readFile(path("same/p.json")), content);
    QCOMPARE(QDir(path("same")).entryList(QDir::Files | QDir::Hidden), QStringList("p.json"));
}

void TestProject::writesLibrariesOfVhdlFilesOnly()
{
    Project project;
    project.filePath = path("types.json");
    project.name = QStringLiteral("p");
    for (const int type : {VerilogFile, VhdlFile}) {
        ProjectSource source{path(QString::number(type)), type};
        source.library = QStringLiteral("cells");
        project.sources.append(source);
    }
    QString error;
    QVERIFY2(writeProject(project, &error), qPrintable(error));
    QCOMPARE(readFile(project.filePath).count("\"library\": \"cells\""), 1);
    QVERIFY2(readProject(project.filePath, &project, &error), qPrintable(error));
}

void TestProject::writesPathsBelowItsFolderRelative()
{
    Project project;
    project.filePath = path("folder/p.json");
    project.name = QStringLiteral("p");
    project.workingDir = path("elsewhere");
    QDir().mkpath(path("folder"));
    project.sources = {{path("folder/sub/a.v"), VerilogFile, true},
                       {path("folder2/b.v"), VerilogFile, true}};
    project.libraryFiles = QStringList{path("folder/l.v")};
    QString error;
    QVERIFY2(writeProject(project, &error), qPrintable(error));
    const QByteArray content = readFile(project.filePath);
    QVERIFY(content.contains("\"sub/a.v\""));
    QVERIFY(content.contains('"' + path("folder2/b.v").toUtf8() + '"'));
    QVERIFY(content.contains("\"l.v\""));
    QVERIFY2(!content.contains("libraryFolders") && !content.contains("libraryExtensions"),
             "what is not used is not in the file, so that older applications read it");
}

void TestProject::refusesWithReasonAndPlace_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char *name, const QByteArray &content, const char *reason) {
        QTest::newRow(name) << content << QString::fromLatin1(reason);
    };
    row("empty", "", ":1:1: illegal value");
    row("syntax", "{\n  \"version\": 1,\n  oops\n}", ":3:4: unterminated object");
    row("garbage after", "{\"version\": 1} x", ":1:16: garbage at the end of the document");
    row("no object", "[1]", ": a project file holds one JSON object");
    row("no version", "{}",
        ": version: must be 1, the version of project files that this application reads");
    row("newer version", "{\"version\": 2}",
        ": version: must be 1, the version of project files that this application reads");
    row("text version", "{\"version\": \"1\"}",
        ": version: must be 1, the version of project files that this application reads");
    row("unknown key", "{\"version\": 1, \"source\": []}",
        ": source: unknown key; known keys: version, name, top, sources, options, libraryFiles, "
        "macros, device, libraryFolders, libraryExtensions");
    row("empty name", "{\"version\": 1, \"name\": \"\"}",
        ": name: must not be empty or contain '/'");
    row("path as name", "{\"version\": 1, \"name\": \"a/b\"}",
        ": name: must not be empty or contain '/'");
    row("top is no string", "{\"version\": 1, \"top\": 3}", ": top: must be a string");
    row("control character", "{\"version\": 1, \"top\": \"a\\nb\"}",
        ": top: must not contain control characters");
    row("sources no list", "{\"version\": 1, \"sources\": {}}", ": sources: must be a list");
    row("source no object", "{\"version\": 1, \"sources\": [\"a.v\"]}",
        ": sources[0]: must be an object");
    row("source without file", "{\"version\": 1, \"sources\": [{\"file\": \"a.v\"}, {}]}",
        ": sources[1].file: must be a path");
    row("file no text", "{\"version\": 1, \"sources\": [{\"file\": 1}]}",
        ": sources[0].file: must be a string");
    row("unknown source key",
        "{\"version\": 1, \"sources\": [{\"file\": \"a.v\", \"enable\": true}]}",
        ": sources[0].enable: unknown key; known keys: file, type, enabled, library");
    row("unknown type", "{\"version\": 1, \"sources\": [{\"file\": \"a.v\", \"type\": \"C\"}]}",
        ": sources[0].type: must be one of Other, Constraint, Verilog, SystemVerilog, VHDL, TARN");
    row("type no text", "{\"version\": 1, \"sources\": [{\"file\": \"a.v\", \"type\": 2}]}",
        ": sources[0].type: must be one of Other, Constraint, Verilog, SystemVerilog, VHDL, TARN");
    row("enabled no flag", "{\"version\": 1, \"sources\": [{\"file\": \"a.v\", \"enabled\": 1}]}",
        ": sources[0].enabled: must be true or false");
    row("library no text", R"({"version": 1, "sources": [{"file": "a.vhd", "library": 1}]})",
        ": sources[0].library: must be a string");
    row("library of Verilog", R"({"version": 1, "sources": [{"file": "a.v", "library": "work"}]})",
        ": sources[0].library: only VHDL files have a library; the type of this file is Verilog");
    row("library of no design source",
        R"({"version": 1, "sources": [{"file": "a.vhd", "type": "Other", "library": "l"}]})",
        ": sources[0].library: only VHDL files have a library; the type of this file is Other");
    for (const char *library :
         {"", "1a", "_a", "a_", "a__b", "a b", "a.b", "a-b", "../a", "\\\\a\\\\", "bücher"}) {
        row(qPrintable(QStringLiteral("library ") + library),
            QByteArray(R"({"version": 1, "sources": [{"file": "a.vhd", "library": ")") + library +
                "\"}]}",
            ": sources[0].library: must be a VHDL identifier: letters, digits and single "
            "underscores, with a letter first");
    }
    for (const char *library : {"ieee", "STD"}) {
        row(library,
            QByteArray(R"({"version": 1, "sources": [{"file": "a.vhd", "library": ")") + library +
                "\"}]}",
            ": sources[0].library: is reserved for the packages of the standard; choose another "
            "name, and use it in the library clauses too");
    }
    for (const char *standard : {"1076", "1164", "vhdl", "1076-08-1", "c++11", "VHDL_2008"}) {
        row(standard,
            QByteArray(R"({"version": 1, "options": {"VHDL_Standard": ")") + standard + "\"}}",
            qPrintable(QStringLiteral(": options.VHDL_Standard: must be one of 1076-1993, "
                                      "1076-2008, not \"%1\"")
                           .arg(QLatin1String(standard))));
    }
    row("VHDL standard no text", R"({"version": 1, "options": {"VHDL_Standard": 2008}})",
        ": options.VHDL_Standard: must be a string");
    row("source twice",
        "{\"version\": 1, \"sources\": [{\"file\": \"/a.v\"}, {\"file\": \"/b/../a.v\"}]}",
        ": sources[1].file: /a.v is listed twice");
    row("options no object", "{\"version\": 1, \"options\": []}", ": options: must be an object");
    row("unknown option", "{\"version\": 1, \"options\": {\"TopModule\": \"t\"}}",
        ": options.TopModule: unknown key; known keys: Extraction_Timeout, IncludePath, "
        "Synthesize_tool, VHDL_Standard, Verilog_Standard");
    row("unknown standard", "{\"version\": 1, \"options\": {\"Verilog_Standard\": \"2005\"}}",
        ": options.Verilog_Standard: must be one of 1364-1995, 1364-2001, 1364-2005, 1800-2017, "
        "not \"2005\"");
    row("unknown tool", "{\"version\": 1, \"options\": {\"Synthesize_tool\": \"x\"}}",
        ": options.Synthesize_tool: must be one of OstraSynthesis, Synplify, not \"x\"");
    row("tool no text", "{\"version\": 1, \"options\": {\"Synthesize_tool\": [\"x\"]}}",
        ": options.Synthesize_tool: must be a string");
    row("include path no list", "{\"version\": 1, \"options\": {\"IncludePath\": \"inc\"}}",
        ": options.IncludePath: must be a list of strings");
    row("include path of numbers", "{\"version\": 1, \"options\": {\"IncludePath\": [\"a\", 1]}}",
        ": options.IncludePath[1]: must be a string");
    for (const char *timeout : {"0", "-5", "1.5", "86401", "\"x\"", "null", "[]", "1e300"}) {
        row(timeout,
            QByteArray("{\"version\": 1, \"options\": {\"Extraction_Timeout\": ") + timeout + "}}",
            ": options.Extraction_Timeout: must be a whole number of seconds from 1 to 86400");
    }
    row("library file no text", "{\"version\": 1, \"libraryFiles\": [\"a\", {}]}",
        ": libraryFiles[1]: must be a string");
    row("library folder no path", "{\"version\": 1, \"libraryFolders\": [\"\"]}",
        ": libraryFolders[0]: must be a path");
    row("library extensions no list", "{\"version\": 1, \"libraryExtensions\": \".v\"}",
        ": libraryExtensions: must be a list of strings");
    row("empty library file", "{\"version\": 1, \"libraryFiles\": [\"\"]}",
        ": libraryFiles[0]: must be a path");
    row("macros no list", "{\"version\": 1, \"macros\": \"A\"}",
        ": macros: must be a list of strings");
    row("bad macro", "{\"version\": 1, \"macros\": [\"A=\", \"1A\"]}",
        ": macros[1]: must be NAME or NAME=VALUE");
    row("device no object", "{\"version\": 1, \"device\": \"KX\"}", ": device: must be an object");
    row("unknown device key", "{\"version\": 1, \"device\": {\"deviceName\": \"KX\"}}",
        ": device.deviceName: unknown key; known keys: family, package, speedGrade, name");
    row("device field no text", "{\"version\": 1, \"device\": {\"family\": 7}}",
        ": device.family: must be a string");
}

void TestProject::refusesWithReasonAndPlace()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);
    writeFile(path("bad.json"), content);
    Project project;
    project.name = QStringLiteral("untouched");
    const QString before = text(project);
    QString error;
    QVERIFY(!readProject(path("bad.json"), &project, &error));
    QCOMPARE(error, path("bad.json") + reason);
    QCOMPARE(text(project), before);
}

void TestProject::refusesFileThatCannotBeRead()
{
    Project project;
    QString error;
    QVERIFY(!readProject(path("none.json"), &project, &error));
    QCOMPARE(error, QStringLiteral("Cannot read the project %1: No such file or directory")
                        .arg(path("none.json")));
    QVERIFY(!readProject(m_dir.path(), &project, &error));
    QCOMPARE(error, QStringLiteral("Cannot read the project %1: it is a folder").arg(m_dir.path()));
    ::mkfifo(QFile::encodeName(path("pipe.json")).constData(), 0600);
    QVERIFY(!readProject(path("pipe.json"), &project, &error));
    QCOMPARE(error, QStringLiteral("Cannot read the project %1: it is a pipe or a device")
                        .arg(path("pipe.json")));
    QFile large(path("large.json"));
    QVERIFY(large.open(QIODevice::WriteOnly) && large.resize(64 * 1024 * 1024 + 1));
    QVERIFY(!readProject(large.fileName(), &project, &error));
    QCOMPARE(error,
             QStringLiteral("Cannot read the project %1: it is too large").arg(path("large.json")));
}

void TestProject::writingReplacesThroughLinkAndKeepsPermissions()
{
    writeFile(path("linked/real.json"), FullProject);
    const QFile::Permissions permissions = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser |
                                           QFile::WriteUser | QFile::ReadGroup;
    QVERIFY(QFile::setPermissions(path("linked/real.json"), permissions));
    QVERIFY(QFile::link(path("linked/real.json"), path("linked/link.json")));
    Project project;
    QString error;
    QVERIFY(readProject(path("linked/link.json"), &project, &error));
    project.name = QStringLiteral("renamed");
    QVERIFY2(writeProject(project, &error), qPrintable(error));
    QVERIFY(QFileInfo(path("linked/link.json")).isSymLink());
    QVERIFY(readFile(path("linked/real.json")).contains("\"renamed\""));
    QCOMPARE(QFile::permissions(path("linked/real.json")), permissions);
}

void TestProject::failedWriteKeepsOldFile()
{
    writeFile(path("locked/p.json"), FullProject);
    Project project;
    QString error;
    QVERIFY(readProject(path("locked/p.json"), &project, &error));
    project.name = QStringLiteral("renamed");
    QVERIFY(QFile::setPermissions(m_dir.path(), QFile::Permissions(0x7755)));
    QVERIFY(QFile::setPermissions(path("locked"), QFile::Permissions(0x5555)));
    bool written = true;
    asOrdinaryUser([&] { written = writeProject(project, &error); });
    QVERIFY(QFile::setPermissions(path("locked"), QFile::Permissions(0x7755)));
    QVERIFY(!written);
    QCOMPARE(error,
             QStringLiteral("Cannot save the project %1: Permission denied").arg(project.filePath));
    QCOMPARE(readFile(path("locked/p.json")), FullProject);

    project.filePath = path("no/such/folder/p.json");
    QVERIFY(!writeProject(project, &error));
    QVERIFY(error.startsWith(QStringLiteral("Cannot save the project ") + project.filePath));
}

void TestProject::fullDiskKeepsOldFile()
{
    writeFile(path("full/p.json"), FullProject);
    Project project;
    QString error;
    QVERIFY(readProject(path("full/p.json"), &project, &error));
    for (int i = 0; i < 5000; ++i)
        project.macros.append(QStringLiteral("M%1").arg(i));

    // A limit on file sizes stops the write like a full disk.
    rlimit former;
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &former), 0);
    rlimit small = former;
    small.rlim_cur = 4096;
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
    const bool written = writeProject(project, &error);
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &former), 0);

    QVERIFY(!written);
    QCOMPARE(error,
             QStringLiteral("Cannot save the project %1: File too large").arg(project.filePath));
    QCOMPARE(readFile(path("full/p.json")), FullProject);
    QCOMPARE(QDir(path("full")).entryList(QDir::Files | QDir::Hidden), QStringList("p.json"));
}

/// For any bytes, the reader either refuses with a reason or gives a project that stays the same
/// when it is written and read again.
void TestProject::survivesMutatedFiles()
{
    std::mt19937 random(20);
    const QList<QByteArray> pieces = {
        "\"",    "{",  "}",       "[",  "]",    ",",       ":",        "null",           "true",
        "1e999", "-1", "\\u0000", "\\", "\xff", "\\ud800", "\"file\"", "\"version\": 1", "[[[["};
    int accepted = 0;
    for (int round = 0; round < 1000; ++round) {
        QByteArray content = FullProject;
        for (int change = int(random() % 3); change >= 0; --change) {
            const int at = int(random() % unsigned(content.size()));
            const int length = int(random() % 4);
            content.replace(at, length, pieces.at(int(random() % unsigned(pieces.size()))));
        }
        writeFile(path("fuzz.json"), content);
        Project project;
        QString error;
        if (!readProject(path("fuzz.json"), &project, &error)) {
            QVERIFY(error.startsWith(path("fuzz.json")));
            QVERIFY(error.size() > path("fuzz.json").size() + 4);
            QCOMPARE(text(project), text(Project()));
            continue;
        }
        ++accepted;
        QVERIFY2(writeProject(project, &error), qPrintable(error));
        Project again;
        QVERIFY2(readProject(path("fuzz.json"), &again, &error), qPrintable(error));
        QCOMPARE(text(again), text(project));
    }
    QVERIFY(accepted > 20);
    QVERIFY(accepted < 900);
}

void TestProject::optionsOfAPlainProjectHaveDefaults()
{
    Project project;
    QCOMPARE(optionValueOf(project, OPT::SYNTHESIZE_TOOL), QVariant("OstraSynthesis"));
    QCOMPARE(optionValueOf(project, OPT::MACROS), QVariant(QStringList()));
    QCOMPARE(optionValueOf(project, "Colour"), QVariant());
    project.options = {{OPT::SYNTHESIZE_TOOL, "Synplify"}, {"Colour", 3}};
    project.macros = QStringList("A=1");
    project.libraryFolders = QStringList("/cells");
    QCOMPARE(optionValueOf(project, OPT::SYNTHESIZE_TOOL), QVariant("Synplify"));
    QCOMPARE(optionValueOf(project, OPT::MACROS), QVariant(QStringList("A=1")));
    QCOMPARE(optionValueOf(project, OPT::LIBRARYFOLDERS), QVariant(QStringList("/cells")));
    QCOMPARE(optionValueOf(project, "Colour"), QVariant(3));
}

void TestProject::designInfoOfAnEmptyProject()
{
    const QMap<QString, QVariant> expected = {{"Top", QString()},
                                              {"Files", QVariantList()},
                                              {"IncludePaths", QStringList()},
                                              {"Macros", QStringList()},
                                              {"LibraryFiles", QStringList()},
                                              {"LibraryFolders", QStringList()},
                                              {"LibraryExtensions", QStringList({".v", ".sv"})},
                                              {"Standard", "1364-2005"},
                                              {"VhdlStandard", "1076-2008"},
                                              {"Timeout", 120}};
    QCOMPARE(designInfoOf(Project()), expected);
}

void TestProject::designInfoIsThatOfTheDesignManager()
{
    Project project;
    project.workingDir = QStringLiteral("/w");
    project.sources = {{"/w/a.v", VerilogFile, true},
                       {"/w/b.vhd", VhdlFile, true, "cells"},
                       {"/w/off.v", VerilogFile, false},
                       {"/w/x.tarn", TarnFile, true}};
    project.options = {{OPT::TOPMODULE, "main"},
                       {OPT::INCLUDEPATH, QStringList({"inc/../h", "/abs", "."})},
                       {OPT::EXTRACTION_TIMEOUT, 5}};
    const QMap<QString, QVariant> info = designInfoOf(project);
    const QVariantList files = {
        QVariantMap{{"Path", "/w/a.v"}, {"Type", int(VerilogFile)}},
        QVariantMap{{"Path", "/w/b.vhd"}, {"Type", int(VhdlFile)}, {"Library", "cells"}}};
    QCOMPARE(info.value("Files").toList(), files);
    QCOMPARE(info.value("IncludePaths").toStringList(), QStringList({"/w/h", "/abs", "/w"}));
    QCOMPARE(info.value("Top"), QVariant("main"));
    QCOMPARE(info.value("Timeout"), QVariant(5));

    DesignManager manager;
    QCOMPARE(manager.getSourceFileInfo(), (QMap<QString, QVariant>()));
    manager.setProject(project);
    QCOMPARE(manager.getSourceFileInfo(), info);
}

TARN_TEST_MAIN(TestProject)
#include "tst_project.moc"
