// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "checkreport.h"

namespace Tool {

/// Results as JSON, one on a line. docs/rules.md describes the form, which other programs rely on.
class JsonReport final : public CheckReport
{
public:
    using CheckReport::CheckReport;

    // CheckReport
    void begin() override;
    void beginFile(const QString &path) override;
    void addResult(const CheckResult &result) override;
    void endFile() override;
    void refuseFile(const QString &path, const QString &reason) override;
    void end(const CheckCounts &counts) override;

private:
    void addFile(const QString &path);

    bool m_isFirstFile = true;
    bool m_isFirstResult = true;
};

/// The rules as a list of objects.
QByteArray rulesAsJson();

} // namespace Tool
