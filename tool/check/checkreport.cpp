// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "checkreport.h"

#include "jsonreport.h"
#include "sarifreport.h"
#include "textreport.h"

#include <utility>

namespace Tool {

CheckReport::CheckReport(Write write)
    : m_write(std::move(write))
{
}

CheckReport::~CheckReport() = default;

std::unique_ptr<CheckReport> newReport(const QString &format, CheckReport::Write write)
{
    if (format == QLatin1String("json"))
        return std::make_unique<JsonReport>(std::move(write));
    if (format == QLatin1String("sarif"))
        return std::make_unique<SarifReport>(std::move(write));
    return std::make_unique<TextReport>(std::move(write));
}

} // namespace Tool
