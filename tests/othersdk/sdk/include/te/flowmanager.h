// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace TE {

class FlowManager
{
public:
    QString resultFile(const QString &id);
};

} // namespace TE
