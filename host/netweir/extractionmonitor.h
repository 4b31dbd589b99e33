// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "netweir_global.h"

#include <QString>

namespace NETWEIR {

namespace Internal {
class ExtractionProgress;
} // namespace Internal

/// Follows an extraction, which can take minutes, and may cancel it. The extraction calls it,
/// always on the thread of its own caller, and does not own it. A monitor is for one call at a
/// time.
class NETWEIR_EXPORT ExtractionMonitor
{
public:
    ExtractionMonitor();
    ExtractionMonitor(const ExtractionMonitor &) = delete;
    ExtractionMonitor &operator=(const ExtractionMonitor &) = delete;
    virtual ~ExtractionMonitor();

    /// The extraction now does what @p phase says, translated: "Reading sources".
    virtual void phaseChanged(const QString &phase) = 0;

    /// Called five times a second while the extraction waits in an event loop, with the time since
    /// the beginning of the call.
    virtual void ticked(qint64 elapsedMilliseconds) = 0;

    /// True when the extraction is to end, with an error that says so. The extraction asks after
    /// each call of the two functions above and of wake(); a true answer is final.
    virtual bool isCancelled() const = 0;

    /// Called before each wait in an event loop. Returns for how many milliseconds of it user input
    /// shall wait too; the extraction then asks again. 0 lets all input through.
    virtual int inputDelay() { return 0; }

    /// Makes an extraction that waits ask isCancelled() at once instead of after the next tick. For
    /// calls from its event loop.
    void wake();

private:
    friend class Internal::ExtractionProgress;

    Internal::ExtractionProgress *m_progress = nullptr; ///< Of the running call.
};

} // namespace NETWEIR
