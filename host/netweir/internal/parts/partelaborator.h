// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "declaredunit.h"
#include "part.h"
#include "partroot.h"

#include <QStringList>

#include <memory>
#include <vector>

namespace NETWEIR::Internal {

class ExtractionProgress;

/// Checks, scans and elaborates the sources of one language with its own tool. Owns the running
/// tool and its files.
///
/// The calls come in this order: setForeignUnits() with what is known of the other language,
/// scan(), setForeignUnits() again, then any number of times begin(), elaborate() until it no
/// longer runs, and read(). A part that was read does not depend on the files of its elaboration.
class PartElaborator
{
public:
    PartElaborator() = default;
    PartElaborator(const PartElaborator &) = delete;
    PartElaborator &operator=(const PartElaborator &) = delete;
    virtual ~PartElaborator() = default;

    /// The units that the sources of the other language declare. Instances of them are borders and
    /// not instances of unknown modules; UnitNames says which names mean them. What they use counts
    /// as used here. The units stay valid as long as this object.
    virtual void setForeignUnits(const std::vector<DeclaredUnit> *units) = 0;

    /// Checks and scans the sources.
    virtual void scan(ExtractionProgress *progress) = 0;

    /// The units of the sources, in their order. Known after scan().
    virtual const std::vector<DeclaredUnit> &units() const = 0;

    /// What is wrong with the sources themselves, known after scan(). Nothing about tops, units
    /// that are declared twice, or circles of instances: that is known only over all languages.
    virtual QStringList sourceMessages() const = 0;

    /// Prepares the elaboration of @p roots, each of which is a unit of this language. Without
    /// roots only looks for errors in the sources, as far as that is possible.
    virtual void begin(const std::vector<PartRoot> &roots, ExtractionProgress *progress) = 0;

    /// Elaborates. Waits for each run of the tool, at most @p limit milliseconds unless that is
    /// negative. A run that takes longer continues; the next call waits for it again. Afterwards
    /// the design is running, elaborated or failed with an error among messages().
    virtual void elaborate(ExtractionProgress *progress, int limit) = 0;
    virtual bool isRunning() const = 0;
    virtual bool isElaborated() const = 0;

    /// Reads the elaborated roots. Null on failure, with the reason in @p error (no complete
    /// message). Runs in a thread, below a ReadGuard, so it may throw ReadingEnded.
    virtual std::unique_ptr<Part> read(QString *error) = 0;

    /// The messages of all elaborations so far.
    virtual QStringList messages() const = 0;
};

} // namespace NETWEIR::Internal
