// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

/// A root object with accepted metadata that is not an ExtSys::IPlugin.
class FirstPlugin final : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "Test.Plugin/1.0")
};
