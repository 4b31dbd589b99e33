// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "randomnetlist.h"

#include "dump.h"

#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnetlist.h>

#include <algorithm>
#include <cstdlib>

using NETWEIR::Hierachy;
using NETWEIR::NetlistBuilder;
using NETWEIR::NetMarks;

namespace TarnCompare {

namespace {

const QStringList &stock()
{
    static const QStringList list{"clk",
                                  "data",
                                  "u0",
                                  "g[0].w",
                                  "st.valid",
                                  "mem[3]",
                                  "a/b",
                                  "a//b",
                                  "\\x+y ",
                                  "x y",
                                  "Data",
                                  "reg_%1",
                                  "state_q",
                                  "%1",
                                  "d[%1]",
                                  "m[1][%1]",
                                  "g[%1].u.v",
                                  "very_long_name_of_a_register_in_the_design_%1",
                                  QString::fromUtf8("z\303\274nd"),
                                  QString::fromUtf8("\321\201\320\270\320\263"),
                                  QString::fromUtf8("\360\235\204\236_%1"),
                                  QString(QChar(0xD800)),
                                  QString(QChar(0)),
                                  QString(),
                                  "/",
                                  "[",
                                  "]",
                                  "[3:0]",
                                  ".",
                                  "x[",
                                  "[7]x",
                                  "x[3:0]"};
    return list;
}

class RandomNetlist
{
public:
    explicit RandomNetlist(Choice *choice)
        : m_choice(choice)
        , m_strange(choice->chance(50))
        , m_builder(choice->chance(80) ? QStringLiteral("top") : name())
        , m_nodes{m_builder.top()}
    {
    }

    std::unique_ptr<NETWEIR::RtlNetlist> build()
    {
        const int steps = m_choice->chance(10) ? 4000 : 1 + m_choice->below(200);
        for (int i = 0; i < steps; ++i)
            step();
        m_builder.setUsesJtagPrimitive(m_choice->chance(20));
        return m_builder.take();
    }

private:
    QString name()
    {
        constexpr int Plain = 18;
        const QStringList &names = stock();
        QString result = names.at(m_choice->below(m_strange ? names.size() : Plain));
        if (result.contains(QLatin1String("%1")))
            result = result.arg(m_choice->below(m_choice->chance(50) ? 5 : 100000));
        return result;
    }

    NetMarks marks()
    {
        return {m_choice->chance(20), m_choice->chance(20),
                NETWEIR::ProcessWrites(m_choice->below(4))};
    }

    std::vector<int> identifiers(const QString &name)
    {
        std::vector<int> lengths;
        for (int left = name.size(); left > 0 && lengths.size() < 4;) {
            lengths.push_back(1 + m_choice->below(left));
            left -= lengths.back() + 1;
        }
        return lengths;
    }

    Hierachy *node() { return m_choice->chance(50) ? m_nodes.last() : m_choice->any(m_nodes); }

    void step()
    {
        const int kind = m_choice->below(10);
        if (kind == 0)
            addNode();
        else if (kind < 6)
            addNet();
        else
            addBus();
    }

    void addNode()
    {
        const QString instance = name();
        Hierachy *added = m_builder.addHierachy(node(), instance, name());
        if (m_choice->chance(20))
            m_builder.setVhdl(added, m_choice->chance(50));
        if (m_choice->chance(10))
            m_builder.setIdentifiers(added, identifiers(instance));
        m_nodes.append(added);
    }

    void addNet()
    {
        const QString text = name();
        NETWEIR::RtlNet *net = m_builder.addNet(node(), text, marks());
        if (m_choice->chance(10))
            m_builder.setIdentifiers(net, identifiers(text));
    }

    void addBus()
    {
        const QString text = name();
        int left = m_choice->below(m_choice->chance(5) ? 600 : 20);
        int right = m_choice->chance(70) ? 0 : m_choice->below(20);
        if (m_choice->chance(30))
            std::swap(left, right);
        if (m_choice->chance(10)) {
            const int far = m_choice->any(QVector<int>{-7, -100000, 2147483000, -2147483647});
            left = far + left % 100;
            right = far + right % 100;
        }
        const std::size_t width = std::size_t(std::abs(left - right)) + 1;
        std::vector<NetMarks> all(m_choice->any(QVector<std::size_t>{0, 1, width}));
        std::generate(all.begin(), all.end(), [this] { return marks(); });
        NETWEIR::RtlNetBus *bus = m_builder.addBus(node(), text, left, right, all);
        if (m_choice->chance(10))
            m_builder.setIdentifiers(bus, identifiers(text));
    }

    Choice *m_choice;
    bool m_strange = false; ///< Before the builder, whose first name needs it.
    NetlistBuilder m_builder;
    QVector<Hierachy *> m_nodes;
};

} // namespace

std::unique_ptr<NETWEIR::RtlNetlist> randomNetlist(Choice *choice)
{
    return RandomNetlist(choice).build();
}

} // namespace TarnCompare
