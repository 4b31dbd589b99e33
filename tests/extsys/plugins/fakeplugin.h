// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <extsys/iplugin.h>

/// The root object of one of the small plug-ins of this test. What it is called, what its metadata
/// says and what it does is set by definitions of its target.
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
