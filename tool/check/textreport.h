// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "checkreport.h"

namespace Tool {

/// Results in the form of compilers, "FILE:LINE: error: ... [rule]", so that editors and CI systems
/// jump to the place. What else is known about a result follows in indented lines.
class TextReport final : public CheckReport
{
public:
    using CheckReport::CheckReport;

    // CheckReport
    void begin() override {}
    void beginFile(const QString &path) override;
    void addResult(const CheckResult &result) override;
    void endFile() override {}
    void refuseFile(const QString &, const QString &) override {}
    void end(const CheckCounts &) override {}

private:
    QByteArray m_path;
};

} // namespace Tool
