// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/parts/declaredunit.h>

#include <QString>
#include <QStringList>

#include <vector>

namespace TarnTest {

/// Units from a short text, one a line, which is also their line in the file "a":
///
///     module b u v?        a module that instantiates u and, under a condition, v
///     lib.entity e x.y     an entity of the library lib that instantiates y of the library x
///     backup module c      a module of a library file
///     outside b            a bind statement of b
///
/// Other kinds: lib.configuration, nested (a module), interface.
inline NETWEIR::Internal::DeclaredUnit unitOf(const QString &line, int number)
{
    using namespace NETWEIR::Internal;
    QStringList words = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    DeclaredUnit unit;
    unit.place = {QStringLiteral("a"), number};
    unit.backup = words.first() == QLatin1String("backup");
    if (unit.backup)
        words.removeFirst();
    QString kind = words.takeFirst();
    if (kind.contains(QLatin1Char('.'))) {
        unit.language = Language::Vhdl;
        unit.library = kind.section(QLatin1Char('.'), 0, 0);
        kind = kind.section(QLatin1Char('.'), 1);
    }
    if (kind == QLatin1String("configuration"))
        unit.kind = DeclaredUnit::Configuration;
    else if (kind == QLatin1String("interface"))
        unit.kind = DeclaredUnit::Other;
    else if (kind == QLatin1String("outside"))
        unit.kind = DeclaredUnit::Outside;
    unit.nested = kind == QLatin1String("nested");
    if (unit.kind != DeclaredUnit::Outside)
        unit.name = words.takeFirst();
    for (QString word : words) {
        UnitUse use;
        use.conditional = word.endsWith(QLatin1Char('?'));
        if (use.conditional)
            word.chop(1);
        if (word.contains(QLatin1Char('.')))
            use.library = word.section(QLatin1Char('.'), 0, 0);
        use.unit = word.section(QLatin1Char('.'), -1);
        unit.uses.push_back(use);
    }
    return unit;
}

inline std::vector<NETWEIR::Internal::DeclaredUnit> unitsOf(const QString &text)
{
    std::vector<NETWEIR::Internal::DeclaredUnit> units;
    int number = 0;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        ++number;
        if (!line.trimmed().isEmpty())
            units.push_back(unitOf(line.trimmed(), number));
    }
    return units;
}

} // namespace TarnTest
