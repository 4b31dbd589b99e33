// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

#include <memory>

namespace NETWEIR {
class RtlNetlist;
} // namespace NETWEIR

namespace NETWEIR::Internal {

class ExtractionProgress;

/// Finds the modules of one design and builds its netlist with the help of a tool. An object reads
/// its design once; it owns the running tool and the files that the tool works on.
class Elaborator
{
public:
    Elaborator() = default;
    Elaborator(const Elaborator &) = delete;
    Elaborator &operator=(const Elaborator &) = delete;
    virtual ~Elaborator() = default;

    /// Reads the sources, elaborates the design if it has one top, and waits for each run of the
    /// elaboration, at most @p limit milliseconds unless that is negative. What still runs then
    /// goes on; the next call waits for it again.
    virtual void elaborate(ExtractionProgress *progress, int limit) = 0;

    /// Candidates for the top module, and the modules of the design. Known after elaborate().
    virtual QStringList tops() const = 0;
    virtual QStringList modules() const = 0;

    /// Builds the netlist of a design that is elaborated. Null when it is not or has no single top,
    /// and on failure.
    virtual std::unique_ptr<RtlNetlist> buildNetlist(ExtractionProgress *progress) = 0;

    /// All that there is to say so far.
    virtual QStringList messages() const = 0;
};

} // namespace NETWEIR::Internal
