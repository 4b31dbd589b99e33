// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "objectpool.h"

#include <QPointer>

#include <algorithm>
#include <vector>

namespace ExtSys {

namespace {

struct Entry
{
    QPointer<QObject> object;
    const QObject *plugin;
};

std::vector<Entry> &entries()
{
    // Never destroyed: plug-in objects may outlive the static objects of this library.
    static auto *list = new std::vector<Entry>;
    return *list;
}

} // namespace

void ObjectPool::add(QObject *object, const QObject *plugin)
{
    if (object && !allObjects().contains(object))
        entries().push_back({object, plugin});
}

void ObjectPool::release(const QObject *plugin)
{
    // Taken out first, because a destructor may read or change the pool.
    std::vector<Entry> &all = entries();
    const auto middle = std::stable_partition(
        all.begin(), all.end(), [plugin](const Entry &entry) { return entry.plugin != plugin; });
    const std::vector<Entry> leaving(middle, all.end());
    all.erase(middle, all.end());
    for (auto it = leaving.rbegin(); it != leaving.rend(); ++it)
        delete it->object;
}

QList<QObject *> ObjectPool::allObjects()
{
    QList<QObject *> objects;
    for (const Entry &entry : entries()) {
        if (entry.object)
            objects.append(entry.object);
    }
    return objects;
}

} // namespace ExtSys
