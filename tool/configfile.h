// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>

namespace TARN {
class TarnCore;
} // namespace TARN

namespace Tool {

class Console;

/// The cores of a configuration. Owns them.
class OwnedCores
{
public:
    OwnedCores() = default;
    /// Takes ownership of @p cores.
    explicit OwnedCores(const QList<TARN::TarnCore *> &cores)
        : m_cores(cores)
    {
    }
    ~OwnedCores();
    OwnedCores(OwnedCores &&other) noexcept { m_cores.swap(other.m_cores); }
    OwnedCores &operator=(OwnedCores &&other) noexcept;

    const QList<TARN::TarnCore *> &list() const { return m_cores; }

    /// Appends @p core and takes ownership of it.
    void append(TARN::TarnCore *core) { m_cores.append(core); }

    /// Removes and deletes the core at list position @p i.
    void removeAt(int i);

private:
    QList<TARN::TarnCore *> m_cores;
};

/// Reads the configuration file at @p path. Returns false after an error message.
bool readConfig(const QString &path, Console *console, OwnedCores *cores);

/// Replaces the file at @p path with the configuration. Returns false after an error message; then
/// the file is as it was.
bool writeConfig(const OwnedCores &cores, const QString &path, Console *console);

} // namespace Tool
