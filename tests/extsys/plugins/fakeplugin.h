// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <extsys/iplugin.h>

/// The root object of the small plug-ins of this test. Compile definitions of each target set its
/// name, metadata and behaviour.
class FAKE_CLASS final : public ExtSys::IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID FAKE_IID)

public:
    ~FAKE_CLASS() override;

    bool initialize() override;
    void extensionsInitialized() override;
    void shutDown() override;
};
