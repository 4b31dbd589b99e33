// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/testcase.h>

#include <extsys/objectpool.h>

#include <QPointer>
#include <QTest>
#include <QTimer>

using ExtSys::ObjectPool;

class TestObjectPool : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void findsByTypeInOrderOfAdding();
    void releasesOnlyTheObjectsOfThePluginLastFirst();
    void deletedObjectsLeaveByThemselves();
    void anObjectIsOwnedOnce();
    void destructorsMayUseThePool();

private:
    QObject m_pluginA;
    QObject m_pluginB;
};

void TestObjectPool::findsByTypeInOrderOfAdding()
{
    auto *first = new QTimer;
    auto *plain = new QObject;
    auto *last = new QTimer;
    ObjectPool::add(first, &m_pluginA);
    ObjectPool::add(plain, &m_pluginB);
    ObjectPool::add(last, &m_pluginB);
    ObjectPool::add(nullptr, &m_pluginB);
    QCOMPARE(ObjectPool::objects<QTimer>(), QList<QTimer *>({first, last}));
    QCOMPARE(ObjectPool::allObjects(), QList<QObject *>({first, plain, last}));
    ObjectPool::release(&m_pluginA);
    ObjectPool::release(&m_pluginB);
    QCOMPARE(ObjectPool::allObjects(), QList<QObject *>());
}

void TestObjectPool::releasesOnlyTheObjectsOfThePluginLastFirst()
{
    QStringList deleted;
    const auto add = [&deleted](const QString &name, const QObject *plugin) {
        auto *object = new QObject;
        connect(object, &QObject::destroyed, [&deleted, name] { deleted.append(name); });
        ObjectPool::add(object, plugin);
    };
    add(QStringLiteral("a1"), &m_pluginA);
    add(QStringLiteral("b1"), &m_pluginB);
    add(QStringLiteral("a2"), &m_pluginA);
    ObjectPool::release(&m_pluginA);
    QCOMPARE(deleted, QStringList({"a2", "a1"}));
    ObjectPool::release(&m_pluginA);
    QCOMPARE(deleted.size(), 2);
    ObjectPool::release(&m_pluginB);
    QCOMPARE(deleted, QStringList({"a2", "a1", "b1"}));
}

void TestObjectPool::deletedObjectsLeaveByThemselves()
{
    auto *object = new QObject;
    ObjectPool::add(object, &m_pluginA);
    delete object;
    QCOMPARE(ObjectPool::allObjects(), QList<QObject *>());
    ObjectPool::release(&m_pluginA);
}

void TestObjectPool::anObjectIsOwnedOnce()
{
    QPointer<QObject> object = new QObject;
    ObjectPool::add(object, &m_pluginA);
    ObjectPool::add(object, &m_pluginB);
    ObjectPool::release(&m_pluginB);
    QVERIFY(object);
    ObjectPool::release(&m_pluginA);
    QVERIFY(!object);
}

void TestObjectPool::destructorsMayUseThePool()
{
    QPointer<QObject> survivor;
    auto *object = new QObject;
    auto *victim = new QObject;
    connect(object, &QObject::destroyed, [&] {
        survivor = new QObject;
        ObjectPool::add(survivor, &m_pluginB);
        ObjectPool::release(&m_pluginA);
    });
    connect(object, &QObject::destroyed, victim, &QObject::deleteLater);
    ObjectPool::add(victim, &m_pluginA);
    ObjectPool::add(object, &m_pluginA);
    ObjectPool::release(&m_pluginA);
    QVERIFY(survivor);
    QCOMPARE(ObjectPool::allObjects(), QList<QObject *>{survivor});
    ObjectPool::release(&m_pluginB);
}

QTEST_GUILESS_MAIN(TestObjectPool)
#include "tst_objectpool.moc"
