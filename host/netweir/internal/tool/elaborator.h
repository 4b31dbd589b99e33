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

/// Finds the modules of a design and builds its netlist with an external tool. Reads the design
/// once. Owns the running tool and its files.
class Elaborator
{
public:
    Elaborator() = default;
    Elaborator(const Elaborator &) = delete;
    Elaborator &operator=(const Elaborator &) = delete;
    virtual ~Elaborator() = default;

    /// Reads the sources, elaborates the design if it has one top, and waits for each run, at most
    /// @p limit milliseconds unless that is negative. A run that takes longer continues; the next
    /// call waits for it again.
    virtual void elaborate(ExtractionProgress *progress, int limit) = 0;

    /// Candidates for the top module, and the modules of the design. Known after elaborate().
    virtual QStringList tops() const = 0;
    virtual QStringList modules() const = 0;

    /// Builds the netlist of the elaborated design. Null on failure, and when the design is not
    /// elaborated.
    virtual std::unique_ptr<RtlNetlist> buildNetlist(ExtractionProgress *progress) = 0;

    /// All messages so far. Every failure has an error among them, except that the design has no
    /// single top.
    virtual QStringList messages() const = 0;
};

} // namespace NETWEIR::Internal
