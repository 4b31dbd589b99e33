// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "vhdlstamp.h"

#include "drivenbits.h"
#include "vhdlpartcontent.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/ground/readguard.h>
#include <netweir/netlistbuilder.h>

#include <QStringBuilder> // Names of the exact size.

namespace NETWEIR::Internal {

namespace {

/// Where the names of a scope belong.
struct Target
{
    Hierachy *node = nullptr;
    QString prefix; ///< The labels of the scopes within the node: "g[0].b."
};

class Stamp
{
public:
    Stamp(const VhdlPartContent &content, const DrivenBits &driven, NetlistBuilder *builder)
        : m_content(content)
        , m_driven(driven)
        , m_builder(*builder)
    {
    }

    void addSignals(int scope, const Target &target)
    {
        const WaveScope &declared = m_content.scopeAt(scope);
        for (int i = declared.firstSignal; i < declared.endSignal; ++i) {
            for (const SignalNet &net : itemAt(m_content.nets, i))
                addNet(net, m_content.signalAt(i).firstScalar + net.scalar, target);
        }
    }

private:
    void addNet(const SignalNet &net, qint64 scalar, const Target &target)
    {
        const bool isInner = !target.prefix.isEmpty();
        const QString name = isInner ? QString(target.prefix % net.name) : net.name;
        if (net.kind == SignalNet::Excluded) {
            m_builder.addNet(target.node, name, {true, true});
        } else if (net.kind == SignalNet::Single) {
            m_builder.addNet(target.node, name, {false, m_driven.isDriven(scalar)});
        } else {
            const bool isNumber = net.kind == SignalNet::Number;
            m_marks.clear();
            for (qint64 bit = 0; bit < (isNumber ? 1 : net.width()); ++bit)
                m_marks.push_back({false, m_driven.isDriven(scalar + bit)});
            m_builder.addBus(target.node, name, net.left, net.right, m_marks);
        }
    }

    const VhdlPartContent &m_content;
    const DrivenBits &m_driven;
    NetlistBuilder &m_builder;
    std::vector<NetMarks> m_marks;
};

} // namespace

void stampVhdl(const VhdlPartContent &content, int root, const DrivenBits &driven, Hierachy *node,
               NetlistBuilder *builder, const BorderHandler &border)
{
    Stamp stamp(content, driven, builder);
    const int first = itemAt(content.roots, root).scope;
    const int end = content.scopeAt(first).end;
    std::vector<Target> targets(std::size_t(end - first));
    targets.front() = {node, QString()};
    stamp.addSignals(first, targets.front());
    for (int scope = first + 1; scope < end;) {
        ReadGuard::check();
        const WaveScope &declared = content.scopeAt(scope);
        const ScopeUse &use = itemAt(content.scopes, scope);
        const Target &around = itemAt(targets, declared.parent - first);
        Target &target = itemAt(targets, scope - first);
        const QString name = around.prefix + use.name;
        if (use.kind == ScopeUse::Border)
            border({use.foreignRoot, around.node, name, driven.portsOf(scope), 0, 1, {}});
        if (use.kind == ScopeUse::Border || use.kind == ScopeUse::Hidden) {
            scope = declared.end;
            continue;
        }
        if (use.kind == ScopeUse::Inner)
            target = {around.node, name + QLatin1Char('.')};
        else
            target = {builder->addHierachy(around.node, name, use.unit), QString()};
        stamp.addSignals(scope, target);
        ++scope;
    }
}

} // namespace NETWEIR::Internal
