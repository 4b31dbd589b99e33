// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "faultreport.h"

#include "elaborationroots.h"
#include "faulthints.h"
#include "piecenames.h"

#include <netweir/internal/modules/designscan.h>
#include <netweir/internal/modules/stubs.h>
#include <netweir/internal/sources/preprocessedtext.h>

#include <algorithm>

namespace NETWEIR::Internal {

FaultReport::FaultReport(const DesignSources &sources, const PreprocessedText &text,
                         const DesignScan &scan, const Stubs &stubs, const ElaborationRoots &roots)
    : m_sources(sources)
    , m_text(text)
    , m_scan(scan)
    , m_stubs(stubs)
    , m_roots(roots)
{
}

QStringList FaultReport::userMessages(const QVector<ToolMessage> &messages) const
{
    QStringList result;
    if (std::any_of(messages.begin(), messages.end(),
                    [](const ToolMessage &message) { return message.error; }))
        result = m_scan.packages().suspicions();
    for (const ToolMessage &message : messages) {
        if (isBadUnknownPin(message))
            result.append(
                errorMessage(placeOf(message),
                             Text::tr("An interface or an array is connected to a module that no "
                                      "file defines. Add the file that defines the module.")));
    }
    return result + toUserMessages(explained(messages),
                                   [this](const ToolMessage &message) { return placeOf(message); });
}

QVector<ToolMessage> FaultReport::explained(QVector<ToolMessage> messages) const
{
    const QSet<QByteArray> names = m_scan.knownNames();
    FaultHints hints(m_sources, m_text.texts(), names);
    for (ToolMessage &message : messages) {
        const TextLine line = textLineOf(message);
        if (!message.error)
            continue;
        hints.explain(&message, line);
        if (line.text >= 0 && m_scan.packages().usesMissing(line.text))
            message.followsUp = true;
    }
    return messages;
}

/// Pins of stubs are vectors. The elaborator connects neither interfaces nor unpacked arrays to
/// them.
bool FaultReport::isBadUnknownPin(const ToolMessage &message) const
{
    return message.text.startsWith("Illegal input port connection '") &&
           m_stubs.isUnknownAt(textLineOf(message));
}

Place FaultReport::placeOf(const ToolMessage &message) const
{
    if (message.file == WrapperFile)
        return m_roots.placeAt(message.line);
    Place place = m_text.place(textLineOf(message));
    place.column = message.column;
    return place;
}

} // namespace NETWEIR::Internal
