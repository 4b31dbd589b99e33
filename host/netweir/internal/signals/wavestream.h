// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "filestream.h"

#include <QString>

namespace NETWEIR::Internal {

/// Reads the numbers of a wave file.
///
/// Remembers the first fault. After it all numbers are 0, so loops must ask isGood().
class WaveStream
{
public:
    bool open(const QString &path);

    bool isGood() const { return m_error.isEmpty(); }
    /// What is wrong, with the name of the file and the place in it; empty when nothing is.
    const QString &error() const { return m_error; }
    /// Notes that the file is damaged at this place, in the words of @p fault.
    void fail(const QString &fault);

    quint8 byte();
    /// Four bytes.
    qint64 word();
    /// Numbers of any size, seven bits a byte.
    quint64 count();
    qint64 integer();
    void skip(int bytes);

private:
    quint64 bits(unsigned *width, quint8 *last);

    FileStream m_stream;
    QString m_path;
    QString m_error;
};

} // namespace NETWEIR::Internal
