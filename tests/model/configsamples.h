// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/tarncore.h>

#include <QList>
#include <QString>

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
