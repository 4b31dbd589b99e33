// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCryptographicHash>
#include <QRandomGenerator>
#include <QString>
#include <QStringList>

#include <cstdio>

namespace TarnCompare {

/// @p text in quotes, with all but printable ASCII characters as numbers: two texts look alike only
/// when they are equal.
QString quoted(const QString &text);
QString quoted(const QStringList &texts);

/// A file of lines.
class Dump
{
public:
    /// Ends the program when the file cannot be written.
    explicit Dump(const QString &path);
    ~Dump();
    Q_DISABLE_COPY(Dump)

    /// Every line has this text, a temporary folder of the program, as "@".
    void hide(const QString &folder) { m_hidden = folder; }

    void line(const QString &text);

private:
    std::FILE *m_file;
    QString m_hidden;
};

/// Lines that may make the dump too long: of many only the first ones and a digest are written.
class LongText
{
public:
    void line(const QString &text);
    void writeTo(Dump *dump) const;

private:
    QStringList m_first;
    int m_count = 0;
    QCryptographicHash m_digest{QCryptographicHash::Sha1};
};

/// Choices that are the same for the same seed.
class Choice
{
public:
    explicit Choice(quint32 seed)
        : m_random(seed)
    {
    }

    /// 0 for a limit below 2.
    int below(int limit) { return limit < 2 ? 0 : m_random.bounded(limit); }
    bool chance(int percent) { return below(100) < percent; }
    template <typename List>
    auto any(const List &list)
    {
        return list.at(below(list.size()));
    }
    QRandomGenerator *generator() { return &m_random; }

private:
    QRandomGenerator m_random;
};

} // namespace TarnCompare
