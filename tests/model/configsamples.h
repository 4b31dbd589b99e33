// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/tarncore.h>
#include <probes/signals/signalitem.h>

#include <QList>
#include <QString>

#include <memory>
#include <vector>

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

TARN::SignalItem netItem(const QString &name);

/// A bus of @p width bits, "name[width-1]" first.
TARN::SignalItem busItem(const QString &name, int width);

/// Two cores in which every field has, somewhere, another value than its default.
Cores sampleCores();
