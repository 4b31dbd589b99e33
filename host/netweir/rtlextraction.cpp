// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "rtlextraction.h"

#include "designextraction.h"
#include "hierachy.h"
#include "rtlnetbus.h"
#include "rtlnetlist.h"

#include <netweir/internal/dialog/extractiondialog.h>

#include <QCoreApplication>
#include <QDebug>

#include <memory>

namespace NETWEIR {

namespace {

/// The design of the last catchRtlModules(), no design before the first. Deleted before the
/// application, because it may own a running process.
std::shared_ptr<DesignExtraction> &lastExtraction()
{
    static auto last = std::make_shared<DesignExtraction>();
    static const bool registered = [] {
        qAddPostRoutine([] { last = std::make_shared<DesignExtraction>(); });
        return true;
    }();
    Q_UNUSED(registered)
    return last;
}

void logMessages(const QStringList &messages)
{
    for (const QString &message : messages)
        qDebug().noquote() << message;
}

void reportNetlist(const RtlNetlist &netlist, qint64 milliseconds)
{
    int nets = 0;
    int buses = 0;
    int nodes = 0;
    QList<Hierachy *> pending(netlist.top() ? QList<Hierachy *>{netlist.top()}
                                            : QList<Hierachy *>());
    while (!pending.isEmpty()) {
        const Hierachy *node = pending.takeLast();
        ++nodes;
        nets += node->nets().size();
        buses += node->buses().size();
        for (const RtlNetBus *bus : node->buses())
            nets += bus->nets().size();
        pending += node->children();
    }
    qDebug().noquote().nospace() << "netlist read: top " << netlist.top()->instName() << ", "
                                 << nets << " nets, " << buses << " buses, " << nodes << " nodes, "
                                 << QString::number(double(milliseconds) / 1000, 'f', 2) << " s";
}

} // namespace

void catchRtlModules(QStringList &tops, QStringList &modules, QStringList &messages,
                     QMap<QString, QVariant> &info, QWidget *parent)
{
    const auto extraction = std::make_shared<DesignExtraction>(info);
    QStringList found;
    bool succeeded = false;
    {
        Internal::ExtractionDialog dialog(parent);
        succeeded = extraction->findModules(&tops, &modules, &found, &dialog);
    }
    // Callers show messages only when there is an error among them.
    if (succeeded)
        logMessages(found);
    messages += found;
    // Not earlier: another one may have come and gone while this one waited.
    lastExtraction() = extraction;
}

void catchRtlNetsWithProgressDialog(RtlNetlist **netlist, QStringList &messages, QWidget *parent)
{
    *netlist = nullptr;
    // Kept alive here, because a call from the event loop may replace the last design.
    const std::shared_ptr<DesignExtraction> extraction = lastExtraction();
    QStringList found;
    std::unique_ptr<RtlNetlist> result;
    {
        Internal::ExtractionDialog dialog(parent);
        result = extraction->buildNetlist(&found, &dialog);
    }
    logMessages(found);
    messages += found;
    if (result)
        reportNetlist(*result, extraction->spentMilliseconds());
    *netlist = result.release();
}

} // namespace NETWEIR
