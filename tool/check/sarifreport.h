// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "checkreport.h"

#include <QVector>

namespace Tool {

/// Results as a SARIF 2.1.0 log, which CI systems show beside the sources. One result on a line.
///
/// Files below the current folder have relative URIs, so that the log means the same on another
/// machine; all others have absolute ones.
class SarifReport final : public CheckReport
{
public:
    using CheckReport::CheckReport;

    // CheckReport
    void begin() override;
    void beginFile(const QString &path) override;
    void addResult(const CheckResult &result) override;
    void endFile() override {}
    void refuseFile(const QString &path, const QString &reason) override;
    void end(const CheckCounts &counts) override;

    /// A configuration, one of the artifacts of the log.
    struct File
    {
        int number;      ///< Its position among the artifacts.
        QByteArray uri;  ///< Relative to the current folder, or absolute.
        QString refusal; ///< Why it cannot be read; empty when it was.
    };

private:
    void writeArtifacts() const;
    void writeInvocation() const;

    QVector<File> m_files;
    bool m_isFirstResult = true;
};

} // namespace Tool
