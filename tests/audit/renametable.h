// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/tarncore.h>
#include <netweir/rtlnetlist.h>

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

namespace TarnTest {

/// A signal of a port that a new design no longer has, and what it is called there.
struct MissingSignal
{
    QString name;
    TARN::ProbeType type;
    QStringList successors; ///< One of these is the right one; none when there is nothing to offer.
};

/// A change of a prefix that explains several missing signals.
struct PrefixChange
{
    QString from;
    QString to;
    int explains;
};

/// One rename as it happens in designs: the new netlist, and what became of the former signals.
struct Rename
{
    QString title;
    std::shared_ptr<NETWEIR::RtlNetlist> netlist;
    QList<MissingSignal> missing;
    QList<PrefixChange> prefixes;
};

/// True when @p name is that of a bus: it ends with a range.
bool isBusName(const QString &name);

/// The renames of the file at @p path, whose head describes its form. Ends the program with the
/// line in question when the file has another form.
QList<Rename> readRenames(const QString &path);

} // namespace TarnTest
