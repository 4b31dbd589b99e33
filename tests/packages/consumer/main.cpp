// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <dev/devicearg.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnetlist.h>
#include <plugin/tarnviewmanager.h>

#include <QApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    NETWEIR::NetlistBuilder builder(QStringLiteral("top"));
    builder.addNet(builder.top(), QStringLiteral("valid"));
    const std::unique_ptr<NETWEIR::RtlNetlist> netlist = builder.take();
    const bool hasNet = netlist->findNet(QStringLiteral("top/valid"));
    const bool hasManager = TARN::TarnViewManager::instance();
    std::printf("net %d, manager %d\n", hasNet, hasManager);
    return hasNet && hasManager ? 0 : 1;
}
