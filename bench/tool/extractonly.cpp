// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/designextraction.h>
#include <netweir/rtlnetlist.h>
#include <te/project.h>

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

/// Extracts the design of the project file that the argument names.
int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    TE::Project project;
    QString error;
    if (argc != 2 || !TE::readProject(QFile::decodeName(argv[1]), &project, &error))
        return 2;
    NETWEIR::DesignExtraction extraction(TE::designInfoOf(project));
    QStringList tops;
    QStringList modules;
    QStringList messages;
    extraction.findModules(&tops, &modules, &messages);
    const auto netlist = extraction.buildNetlist(&messages);
    std::puts(netlist ? "extracted" : "failed");
    return netlist ? 0 : 2;
}
