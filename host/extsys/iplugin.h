// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "extsys_global.h"

#include <QObject>

namespace ExtSys {

/// Root object of a plug-in library. The host creates it through the standard Qt plug-in instance
/// function and drives its life: initialize(), then extensionsInitialized() once every plug-in is
/// initialised, and shutDown() in reverse order at the end.
class EXTSYS_EXPORT IPlugin : public QObject
{
    Q_OBJECT

public:
    explicit IPlugin(QObject *parent = nullptr);
    ~IPlugin() override;

    /// Registers what the plug-in offers. False means that the plug-in cannot work; the host then
    /// neither calls extensionsInitialized() nor shutDown().
    virtual bool initialize() = 0;

    /// Called after initialize() of every plug-in.
    virtual void extensionsInitialized() = 0;

    /// Takes back everything that initialize() set up, while the host is still whole.
    virtual void shutDown() = 0;

protected:
    /// Puts @p object into the host's object pool (ObjectPool). The host owns it from then on and
    /// deletes it after the plug-in's shutDown().
    void addAutoReleasedObject(QObject *object);
};

} // namespace ExtSys

Q_DECLARE_INTERFACE(ExtSys::IPlugin, "ExtSys.IPlugin/1.0")
