// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace NETWEIR {

class RtlNet
{
public:
    RtlNet(const QString &path, const QString &name, bool driven)
        : m_path(path)
        , m_name(name)
        , m_driven(driven)
    {
    }

    QString name() { return m_name; }
    /// Built anew for each caller.
    QString fullPathName() { return m_path + QLatin1Char('/') + m_name; }
    bool excludedForProbeIn() { return false; }
    bool excludedForProbeOut() { return m_driven; }

private:
    QString m_path;
    QString m_name;
    bool m_driven;
};

} // namespace NETWEIR
