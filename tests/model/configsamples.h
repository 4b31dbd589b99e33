// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/tarncore.h>

#include <QList>
#include <QString>

class QRandomGenerator;

/// Cores for tests, with an owner.
class Cores
{
public:
    Cores() = default;
    explicit Cores(const QList<TARN::TarnCore *> &cores)
        : list(cores)
    {
    }
    ~Cores() { qDeleteAll(list); }
    Cores(Cores &&other) noexcept { list.swap(other.list); }
    Cores &operator=(Cores &&) = delete;

    TARN::TarnCore *add(int index)
    {
        list.append(new TARN::TarnCore(index));
        return list.last();
    }

    QList<TARN::TarnCore *> list;
};

/// Every field of the cores as text, for comparison.
QString coresText(const QList<TARN::TarnCore *> &cores);

/// Two cores in which every field has, somewhere, another value than its default.
Cores sampleCores();

/// Up to four cores with a few ports and signals, the same for the same state of @p random: awkward
/// texts, any numbers, members in members, every flag and kind. A file can hold them.
Cores randomCores(QRandomGenerator *random);
