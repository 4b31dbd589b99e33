// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sdk/extsys.h>

namespace TARN {

/// Root object of the plug-in library, created by the host through Qt's plug-in instance function.
/// Owns nothing: the wizard goes to the host, the view manager lives on its own.
class TarnInserterPlugin final : public ExtSys::IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "TARN.TarnInserterPlugin/1.0")
    Q_INTERFACES(ExtSys::IPlugin)

public:
    // ExtSys::IPlugin
    bool initialize() override;
    void extensionsInitialized() override;
    void shutDown() override;
};

} // namespace TARN
