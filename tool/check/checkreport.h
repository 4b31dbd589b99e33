// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "filecheck.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

namespace Tool {

/// Writes what "tarn check" has found in one of its formats, result by result: there may be half a
/// million of them. For each file beginFile() and then its results, or refuseFile().
class CheckReport
{
public:
    using Write = std::function<void(const QByteArray &text)>;

    explicit CheckReport(Write write);
    virtual ~CheckReport();
    CheckReport(const CheckReport &) = delete;
    CheckReport &operator=(const CheckReport &) = delete;

    virtual void begin() = 0;
    virtual void beginFile(const QString &path) = 0;
    virtual void addResult(const CheckResult &result) = 0;
    virtual void endFile() = 0;
    /// The file cannot be read; the caller has told the user @p reason.
    virtual void refuseFile(const QString &path, const QString &reason) = 0;
    virtual void end(const CheckCounts &counts) = 0;

protected:
    void write(const QByteArray &text) const { m_write(text); }

private:
    Write m_write;
};

/// The report in the format "text", "json" or "sarif".
std::unique_ptr<CheckReport> newReport(const QString &format, CheckReport::Write write);

} // namespace Tool
