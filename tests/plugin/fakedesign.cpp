// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "fakedesign.h"

#include <netweir/netlistbuilder.h>
#include <netweir/rtlextraction.h>
#include <netweir/rtlnetlist.h>
#include <te/designmanager.h>
#include <te/taskengine.h>

#include <QDir>

QStringList FakeDesign::messages;
std::function<void()> FakeDesign::whileBuilding;

FakeDesign::FakeDesign(const QString &folder)
{
    TE::ProjectSource source;
    source.path = QDir(folder).absoluteFilePath(QStringLiteral("top.v"));
    source.type = TE::VerilogFile;
    TE::Project project;
    project.name = QStringLiteral("fake");
    project.workingDir = QDir(folder).absolutePath();
    project.sources = {source};
    TE::TaskEngine::instance()->designManager()->setProject(project);
    messages.clear();
    whileBuilding = nullptr;
}

FakeDesign::~FakeDesign()
{
    TE::TaskEngine::instance()->designManager()->closeProject();
}

namespace NETWEIR {

void catchRtlModules(QStringList &tops, QStringList &modules, QStringList &messages,
                     QMap<QString, QVariant> &, QWidget *)
{
    tops.append(QStringLiteral("top"));
    modules.append(QStringLiteral("top"));
    messages.append(FakeDesign::messages);
}

void catchRtlNetsWithProgressDialog(RtlNetlist **netlist, QStringList &, QWidget *)
{
    if (FakeDesign::whileBuilding)
        FakeDesign::whileBuilding();
    NetlistBuilder builder(QStringLiteral("top"));
    NetMarks driven;
    driven.excludedForProbeOut = true;
    builder.addNet(builder.top(), QStringLiteral("clk"), driven);
    builder.addNet(builder.top(), QStringLiteral("a"));
    builder.addBus(builder.top(), QStringLiteral("d"), 3, 0);
    *netlist = builder.take().release();
}

} // namespace NETWEIR
