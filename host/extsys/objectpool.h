// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "extsys_global.h"

#include <QList>
#include <QObject>

namespace ExtSys {

/// The objects that plug-ins added with IPlugin::addAutoReleasedObject(). The pool owns each object
/// on behalf of its plug-in. An object that other code deletes leaves the pool.
class EXTSYS_EXPORT ObjectPool
{
public:
    ObjectPool() = delete;

    /// Takes ownership of @p object for @p plugin. An object that is in the pool already keeps its
    /// plug-in.
    static void add(QObject *object, const QObject *plugin);

    /// Deletes the objects of @p plugin, the last one added first.
    static void release(const QObject *plugin);

    /// All objects, in the order of adding.
    static QList<QObject *> allObjects();

    /// The objects of type @p T (a class with Q_OBJECT), in the order of adding.
    template <typename T>
    static QList<T *> objects()
    {
        QList<T *> found;
        for (QObject *object : allObjects()) {
            if (auto *match = qobject_cast<T *>(object))
                found.append(match);
        }
        return found;
    }
};

} // namespace ExtSys
