// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "extsys_global.h"

#include <QObject>

namespace ExtSys {

/// Root object of a plug-in library. The host creates it through Qt's plug-in instance function and
/// calls initialize(), then extensionsInitialized() once every plug-in is initialised, and at the
/// end shutDown(), in reverse order.
class EXTSYS_EXPORT IPlugin : public QObject
{
    Q_OBJECT

public:
    explicit IPlugin(QObject *parent = nullptr);
    ~IPlugin() override;

    /// Registers what the plug-in offers. False when the plug-in cannot work: the host then calls
    /// neither extensionsInitialized() nor shutDown().
    virtual bool initialize() = 0;

    /// Called after initialize() of every plug-in.
    virtual void extensionsInitialized() = 0;

    /// Undoes everything that initialize() did. The host is still whole.
    virtual void shutDown() = 0;

protected:
    /// Adds @p object to the host's object pool (ObjectPool). The host owns the object from then on
    /// and deletes it after the plug-in's shutDown().
    void addAutoReleasedObject(QObject *object);
};

} // namespace ExtSys

Q_DECLARE_INTERFACE(ExtSys::IPlugin, "ExtSys.IPlugin/1.0")
