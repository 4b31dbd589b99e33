// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <te/project.h>

#include <QDir>
#include <QTest>

namespace TarnTest {

/// Names of the bundled examples: each is a folder with a project file and a configuration file of
/// that name.
inline QStringList exampleNames()
{
    return {QStringLiteral("motordrive"), QStringLiteral("packetfilter"),
            QStringLiteral("sensorhub")};
}

/// Path of @p file within the folder of the example @p name.
inline QString examplePath(const QString &name, const QString &file)
{
    return QStringLiteral(TARN_EXAMPLES_DIR "/%1/%2").arg(name, file);
}

/// The project of the example @p name; fails the test function and returns an empty one when it
/// cannot be read.
inline TE::Project exampleProject(const QString &name)
{
    TE::Project project;
    QString error;
    if (!TE::readProject(examplePath(name, name + QStringLiteral(".json")), &project, &error))
        QTest::qFail(qPrintable(error), __FILE__, __LINE__);
    return project;
}

/// The enabled Verilog and SystemVerilog sources of @p project, in project order.
inline QStringList designFiles(const TE::Project &project)
{
    QStringList files;
    for (const TE::ProjectSource &source : project.sources) {
        if (source.enabled &&
            (source.type == TE::VerilogFile || source.type == TE::SystemVerilogFile))
            files.append(source.path);
    }
    return files;
}

} // namespace TarnTest
