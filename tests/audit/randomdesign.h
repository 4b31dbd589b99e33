// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/configsnapshot.h>
#include <netweir/rtlnetlist.h>

#include <QRandomGenerator>
#include <QVector>

#include <memory>

namespace NETWEIR {
class Hierachy;
class NetlistBuilder;
} // namespace NETWEIR

namespace TarnTest {

/// A netlist, and what was put into it.
struct KnownDesign
{
    struct Net
    {
        QString name; ///< Full, like all names here.
        bool notIn = false;
        bool notOut = false;
    };
    struct Bus
    {
        QString name;
        QString base;
        QVector<Net> bits;
    };

    QVector<Net> nets; ///< Those of the buses included; names may occur twice.
    QVector<Bus> buses;
    std::unique_ptr<NETWEIR::RtlNetlist> netlist;
};

/// Small designs, configurations that fit them more or less, and edits, all by chance. Names come
/// from a small stock, so most rules are broken somewhere.
class RandomDesign
{
public:
    explicit RandomDesign(quint32 seed)
        : m_random(seed)
    {
    }

    KnownDesign design();
    TARN::ConfigSnapshot config(const KnownDesign &design);
    /// @p config after an edit of a user or a program.
    TARN::ConfigSnapshot edited(const TARN::ConfigSnapshot &config, const KnownDesign &design);

    int below(int limit) { return m_random.bounded(limit); }
    bool chance(int percent) { return below(100) < percent; }

private:
    template <typename Container>
    auto &any(Container &container)
    {
        return container[below(container.size())];
    }
    void addNet(NETWEIR::NetlistBuilder *builder, NETWEIR::Hierachy *node, const QString &path,
                KnownDesign *design);
    void addBus(NETWEIR::NetlistBuilder *builder, NETWEIR::Hierachy *node, const QString &path,
                KnownDesign *design);
    QString anyName(const KnownDesign &design);
    TARN::SignalItem busItem(const KnownDesign &design);
    TARN::SignalItem item(const KnownDesign &design);
    QList<TARN::SignalItem> items(const KnownDesign &design);
    void damage(TARN::SignalItem *bus);
    void fill(TARN::TarnCore *core, const KnownDesign &design);
    void editCores(QList<TARN::TarnCore *> *cores, const KnownDesign &design);
    void editCore(TARN::TarnCore *core, const KnownDesign &design);

    QRandomGenerator m_random;
};

} // namespace TarnTest
