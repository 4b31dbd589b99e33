// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "iplugin.h"

#include "objectpool.h"

namespace ExtSys {

IPlugin::IPlugin(QObject *parent)
    : QObject(parent)
{
}

IPlugin::~IPlugin()
{
    ObjectPool::release(this);
}

void IPlugin::addAutoReleasedObject(QObject *object)
{
    ObjectPool::add(object, this);
}

} // namespace ExtSys
