// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "unittext.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/parts/partelaborator.h>
#include <netweir/internal/parts/unitnames.h>
#include <netweir/netlistbuilder.h>

#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace TarnTest {

/// A unit of a fake language. Its instances have no content of their own; only those of the other
/// language may get some.
struct FakeUnit
{
    NETWEIR::Internal::DeclaredUnit declared;
    std::vector<NETWEIR::Internal::PartPort> ports;
    QStringList instances;
};

/// Units from a text, one a line: the declaration of unittext.h, ports and instances, separated by
/// "|", with commas between the ports and the instances:
///
///     module top | in d 4, out q 1 | u Leaf a<d b<1, l -, v Leaf #W- a<2
///
/// connects the port a of the instance u to the port d, and its port b to something driven ("<0":
/// to something that is not driven, "<2": to two bits). "-" is an instance of the same language.
/// "#W-" gives the instance the generic W of its parent less 1, and there is no instance when that
/// is negative; "#W+" gives it 1 more; "#W=5" sets it.
inline std::vector<FakeUnit> fakeUnitsOf(const QString &text)
{
    using namespace NETWEIR::Internal;
    std::vector<FakeUnit> units;
    int number = 0;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        ++number;
        if (line.trimmed().isEmpty())
            continue;
        const QStringList parts = line.split(QLatin1Char('|'));
        FakeUnit unit;
        unit.declared = unitOf(parts[0].trimmed(), number);
        const QStringList ports =
            parts.value(1).trimmed().split(QStringLiteral(", "), Qt::SkipEmptyParts);
        for (const QString &port : ports) {
            const QStringList words = port.trimmed().split(QLatin1Char(' '));
            const PortDirection direction =
                words[0] == QLatin1String("in") ? PortDirection::Input : PortDirection::Output;
            unit.ports.push_back({words[1], direction, words[2].toInt()});
            unit.declared.ports.push_back({words[1], direction});
        }
        unit.declared.generics = QStringList{QStringLiteral("W")};
        unit.instances = parts.value(2).trimmed().split(QStringLiteral(", "), Qt::SkipEmptyParts);
        for (const QString &instance : qAsConst(unit.instances)) {
            const QStringList words = instance.trimmed().split(QLatin1Char(' '));
            UnitUse use;
            use.unit = words[1];
            use.conditional = instance.contains(QLatin1Char('#'));
            if (use.unit != QLatin1String("-"))
                unit.declared.uses.push_back(use);
        }
        units.push_back(unit);
    }
    return units;
}

/// An elaborated root of a fake language.
struct FakeRoot
{
    FakeUnit unit;
    NETWEIR::Internal::PartRoot root;
};

/// A part of a fake language: the ports of each root as buses, and its instances.
class FakePart final : public NETWEIR::Internal::Part
{
    using PartRoot = NETWEIR::Internal::PartRoot;

public:
    explicit FakePart(std::vector<FakeRoot> roots)
        : m_roots(std::move(roots))
    {
        for (const FakeRoot &root : m_roots) {
            for (const QString &instance : root.unit.instances)
                add(foreignRoot(root, instance));
        }
    }

    const std::vector<PartRoot> &foreignRoots() const override { return m_foreign; }
    QString unitName(int root) const override { return at(root).unit.declared.name; }
    std::vector<NETWEIR::Internal::PartPort> ports(int root) const override
    {
        return at(root).unit.ports;
    }
    bool usesJtagPrimitive() const override { return usesJtag; }

    void build(int root, const NETWEIR::Internal::DrivenPorts &driven, NETWEIR::Hierachy *node,
               NETWEIR::NetlistBuilder *builder,
               const NETWEIR::Internal::BorderHandler &border) const override
    {
        for (const auto &port : at(root).unit.ports) {
            std::vector<NETWEIR::NetMarks> marks;
            for (int bit = 0; bit < port.width; ++bit)
                marks.push_back({false, isDriven(root, port, driven, bit)});
            builder->addBus(node, port.name, int(port.width) - 1, 0, marks);
        }
        for (const QString &text : at(root).unit.instances) {
            const QStringList words = text.trimmed().split(QLatin1Char(' '));
            const PartRoot foreign = foreignRoot(at(root), text);
            if (words[1] == QLatin1String("-")) {
                builder->addHierachy(node, words[0], QStringLiteral("own"));
            } else if (!foreign.unit.isEmpty()) {
                NETWEIR::Internal::BorderInstance instance;
                instance.root = m_numbers.value(keyOf(foreign));
                instance.parent = node;
                instance.name = words[0];
                for (const auto &port : foreign.ports)
                    instance.driven.insert(port.name, connectedBits(root, words, port, driven));
                border(instance);
            }
        }
    }

    bool usesJtag = false;

private:
    const FakeRoot &at(int root) const { return NETWEIR::Internal::itemAt(m_roots, root); }

    static QString keyOf(const PartRoot &root)
    {
        QString key = root.unit;
        for (auto generic = root.generics.begin(); generic != root.generics.end(); ++generic)
            key += ' ' + generic.key() + '=' + generic->text;
        for (const auto &port : root.ports)
            key += ' ' + port.name + ':' + QString::number(port.width);
        return key;
    }

    void add(const PartRoot &root)
    {
        if (!root.unit.isEmpty() && !m_numbers.contains(keyOf(root))) {
            m_numbers.insert(keyOf(root), int(m_foreign.size()));
            m_foreign.push_back(root);
        }
    }

    /// The root of an instance, without a unit when there is no such instance.
    static PartRoot foreignRoot(const FakeRoot &parent, const QString &text)
    {
        const QStringList words = text.trimmed().split(QLatin1Char(' '));
        PartRoot root;
        root.place = {QStringLiteral("a"), parent.unit.declared.place.line, 5};
        if (words[1] == QLatin1String("-"))
            return root;
        root.unit = words[1];
        for (const QString &word : words.mid(2)) {
            if (word.startsWith(QLatin1Char('#'))) {
                const QString name = word.mid(1, 1);
                const int old = parent.root.generics.value(name).text.toInt();
                const int now = word[2] == QLatin1Char('=')   ? word.mid(3).toInt()
                                : word[2] == QLatin1Char('+') ? old + 1
                                                              : old - 1;
                if (now < 0)
                    return PartRoot();
                root.generics.insert(
                    name, {NETWEIR::Internal::GenericValue::Integer, QString::number(now)});
                continue;
            }
            const QString actual = word.section(QLatin1Char('<'), 1);
            NETWEIR::Internal::PartPort port;
            port.name = word.section(QLatin1Char('<'), 0, 0);
            port.width = actual == QLatin1String("2") ? 2 : 1;
            for (const auto &own : parent.unit.ports) {
                if (own.name == actual)
                    port.width = own.width;
            }
            root.ports.push_back(port);
        }
        return root;
    }

    /// As if each output were driven.
    bool isDriven(int root, const NETWEIR::Internal::PartPort &port,
                  const NETWEIR::Internal::DrivenPorts &driven, int bit) const
    {
        if (at(root).root.isTop || port.direction == NETWEIR::Internal::PortDirection::Output)
            return true;
        const std::vector<bool> bits = driven.value(port.name);
        return !bits.empty() && bits[bits.size() == 1 ? 0 : std::size_t(bit)];
    }

    std::vector<bool> connectedBits(int root, const QStringList &words,
                                    const NETWEIR::Internal::PartPort &port,
                                    const NETWEIR::Internal::DrivenPorts &driven) const
    {
        const QString actual = words.filter(port.name + '<').first().section(QLatin1Char('<'), 1);
        std::vector<bool> bits(std::size_t(port.width), actual != QLatin1String("0"));
        for (const auto &own : at(root).unit.ports) {
            for (int bit = 0; own.name == actual && bit < own.width; ++bit)
                bits[std::size_t(bit)] = isDriven(root, own, driven, bit);
        }
        return bits;
    }

    std::vector<FakeRoot> m_roots;
    std::vector<PartRoot> m_foreign;
    QHash<QString, int> m_numbers;
};

/// What a fake elaborator does, and the calls that it got.
struct FakeLanguage
{
    std::vector<FakeUnit> units;
    QStringList found;       ///< Messages of scan().
    QStringList elaborating; ///< Messages of elaborate(). With an error among them it fails.
    QString readError;       ///< Why read() fails, if it does.
    int runs = 1;            ///< Number of calls of elaborate() after which the run is over.
    bool usesJtag = false;
    std::function<void(NETWEIR::Internal::ExtractionProgress *)> whileElaborating =
        [](NETWEIR::Internal::ExtractionProgress *) {};

    QStringList calls;
};

class FakePartElaborator final : public NETWEIR::Internal::PartElaborator
{
public:
    FakePartElaborator(NETWEIR::Internal::Language language, FakeLanguage *fake)
        : m_language(language)
        , m_fake(fake)
    {
    }

    void setForeignUnits(const std::vector<NETWEIR::Internal::DeclaredUnit> *units) override
    {
        m_fake->calls += QStringLiteral("%1 foreign").arg(units->size());
    }

    void scan(NETWEIR::Internal::ExtractionProgress * /*progress*/) override
    {
        m_fake->calls += QStringLiteral("scan");
        for (const FakeUnit &unit : m_fake->units)
            m_units.push_back(unit.declared);
    }

    const std::vector<NETWEIR::Internal::DeclaredUnit> &units() const override { return m_units; }
    QStringList sourceMessages() const override { return m_fake->found; }

    void begin(const std::vector<NETWEIR::Internal::PartRoot> &roots,
               NETWEIR::Internal::ExtractionProgress * /*progress*/) override
    {
        QStringList names;
        m_roots.clear();
        for (const NETWEIR::Internal::PartRoot &root : roots) {
            names += root.unit;
            for (const NETWEIR::Internal::GenericValue &value : root.generics)
                names.last() += '=' + value.text;
            const NETWEIR::Internal::UnitNames units(m_units);
            const int unit = units.find({QString(), root.unit}, m_language);
            m_roots.push_back({NETWEIR::Internal::itemAt(m_fake->units, unit), root});
        }
        m_fake->calls += QStringLiteral("begin(%1)").arg(names.join(QLatin1Char(' ')));
        m_runs = m_fake->runs;
    }

    void elaborate(NETWEIR::Internal::ExtractionProgress *progress, int /*limit*/) override
    {
        m_fake->whileElaborating(progress);
        if (--m_runs == 0)
            m_messages += m_fake->elaborating;
    }

    bool isRunning() const override { return m_runs > 0; }
    bool isElaborated() const override
    {
        return !m_roots.empty() && m_runs == 0 &&
               !NETWEIR::Internal::containsError(m_fake->elaborating);
    }

    std::unique_ptr<NETWEIR::Internal::Part> read(QString *error) override
    {
        m_fake->calls += QStringLiteral("read");
        *error = m_fake->readError;
        if (!error->isEmpty())
            return nullptr;
        auto part = std::make_unique<FakePart>(m_roots);
        part->usesJtag = m_fake->usesJtag;
        return part;
    }

    QStringList messages() const override { return m_messages; }

private:
    const NETWEIR::Internal::Language m_language;
    FakeLanguage *m_fake;
    std::vector<NETWEIR::Internal::DeclaredUnit> m_units;
    std::vector<FakeRoot> m_roots;
    int m_runs = 0;
    QStringList m_messages;
};

} // namespace TarnTest
