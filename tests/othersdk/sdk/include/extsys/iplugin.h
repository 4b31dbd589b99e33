// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

namespace ExtSys {

class IPlugin : public QObject
{
    Q_OBJECT

public:
    virtual bool initialize() = 0;
    virtual void extensionsInitialized() = 0;
    virtual void shutDown() = 0;

protected:
    void addAutoReleasedObject(QObject *object);
};

} // namespace ExtSys

Q_DECLARE_INTERFACE(ExtSys::IPlugin, "Other.Plugin/3.1")
