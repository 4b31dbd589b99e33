// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configwriter.h"

#include "configdocument.h"
#include "tarncore.h"

#include <algorithm>

namespace TARN {

ConfigWriter::ConfigWriter(const QList<TarnCore *> &cores)
    : m_cores(cores)
{
}

QByteArray ConfigWriter::content()
{
    m_error.clear();
    if (m_cores.contains(nullptr)) {
        m_error = QStringLiteral("the list of cores holds a null pointer");
        return QByteArray();
    }
    ConfigDocument document;
    const auto add = [&document](const TarnCore *core) { return addCore(*core, &document); };
    QByteArray content;
    if (std::all_of(m_cores.cbegin(), m_cores.cend(), add))
        content = document.finish();
    m_error = document.errorText();
    return content;
}

bool ConfigWriter::addCore(const TarnCore &core, ConfigDocument *document)
{
    const auto addIn = [document](const ProbeIn *port) {
        return document->addProbeIn(port->index, port->signals);
    };
    const auto addOut = [document](const ProbeOut *port) {
        return document->addProbeOut(port->index, port->signals, port->initialValue);
    };
    const bool added =
        document->beginCore(core.index, core.module, core.userClock, core.syncUserClock) &&
        std::all_of(core.probeIns.cbegin(), core.probeIns.cend(), addIn) &&
        std::all_of(core.probeOuts.cbegin(), core.probeOuts.cend(), addOut);
    document->endCore();
    return added;
}

} // namespace TARN
