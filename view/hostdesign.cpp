// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "hostdesign.h"

#include <sdk/te.h>

namespace TARN::HostDesign {

namespace {

// Verilog, SystemVerilog and VHDL in the numbering of the host.
constexpr int FirstSourceType = 2;
constexpr int LastSourceType = 4;

TE::DesignManager *designManager()
{
    auto *engine = TE::TaskEngine::instance();
    return engine ? engine->designManager() : nullptr;
}

} // namespace

bool isSourceType(int type)
{
    return type >= FirstSourceType && type <= LastSourceType;
}

QMap<QString, QVariant> sourceFileInfo()
{
    auto *manager = designManager();
    return manager ? manager->getSourceFileInfo() : QMap<QString, QVariant>();
}

bool isEnabledSource(const QString &file)
{
    auto *manager = designManager();
    if (!manager)
        return false;
    const auto &info = manager->getFileInfo(file);
    return info.enabled && isSourceType(info.type);
}

QVariant optionValue(const QString &name)
{
    auto *manager = designManager();
    return manager ? manager->getOptionValue(name) : QVariant();
}

QString workingDir()
{
    auto *manager = designManager();
    return manager ? manager->workingDir() : QString();
}

QString resultFile(const QString &id)
{
    auto *engine = TE::TaskEngine::instance();
    auto *manager = engine ? engine->flowManager() : nullptr;
    return manager ? manager->resultFile(id) : QString();
}

} // namespace TARN::HostDesign
