// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "rtlextraction.h"

#include "hierachy.h"
#include "rtlnetbus.h"
#include "rtlnetlist.h"

#include <netweir/internal/extraction.h>
#include <netweir/internal/ground/messages.h>
#include <netweir/internal/tool/extractionprogress.h>

#include <QCoreApplication>
#include <QDebug>

#include <new>

namespace NETWEIR {

using namespace Internal;

namespace {

/// The design of the last catchRtlModules(). Deleted before the application, because it may own a
/// running process.
std::shared_ptr<Extraction> &lastExtraction()
{
    static std::shared_ptr<Extraction> last;
    static const bool registered = [] {
        qAddPostRoutine([] { last.reset(); });
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

/// Runs @p step of an extraction. Without enough memory returns false and adds a message, because
/// no exception may leave the library.
template <typename Step>
bool runWithinMemory(const Step &step, QStringList *messages)
{
    try {
        step();
        return true;
    } catch (const std::bad_alloc &) {
        messages->append(errorMessage(Text::tr("There is not enough memory to read the design.")));
        return false;
    }
}

} // namespace

void catchRtlModules(QStringList &tops, QStringList &modules, QStringList &messages,
                     QMap<QString, QVariant> &info, QWidget *parent)
{
    auto extraction = std::make_shared<Extraction>(readDesignSources(info));
    QStringList found;
    const auto findModules = [&] {
        ExtractionProgress progress(parent);
        extraction->findModules(&progress, &tops, &modules, &found);
    };
    if (!runWithinMemory(findModules, &found))
        extraction.reset();
    // Callers show messages only when there is an error among them.
    if (!containsError(found))
        logMessages(found);
    messages += found;
    // Not earlier: another one may have come and gone while this one waited.
    lastExtraction() = extraction;
}

void catchRtlNetsWithProgressDialog(RtlNetlist **netlist, QStringList &messages, QWidget *parent)
{
    *netlist = nullptr;
    // Kept alive here, because a call from the event loop may replace the last design.
    const std::shared_ptr<Extraction> extraction = lastExtraction();
    QStringList found;
    std::unique_ptr<RtlNetlist> result;
    const auto buildNetlist = [&] {
        ExtractionProgress progress(parent);
        result = extraction->buildNetlist(&progress, &found);
    };
    if (!extraction)
        found.append(errorMessage(Text::tr("No design has been read.")));
    else if (!runWithinMemory(buildNetlist, &found) && lastExtraction() == extraction)
        lastExtraction().reset();
    logMessages(found);
    messages += found;
    if (result)
        reportNetlist(*result, extraction->spentMilliseconds());
    *netlist = result.release();
}

} // namespace NETWEIR
