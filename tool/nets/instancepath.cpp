// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "instancepath.h"

#include <netweir/hierachy.h>
#include <netweir/rtlnetlist.h>

#include <QStringList>
#include <QVector>

namespace Tool {

namespace {

constexpr int MostNamed = 8; ///< Of the instances that a message lists.

/// A node whose path is the beginning of the one looked for.
struct Step
{
    NETWEIR::Hierachy *node;
    int length; ///< Of its path.
};

/// Whether @p name stands in @p path from @p start to its end or the next slash.
bool fits(const QString &path, int start, const QString &name)
{
    const int end = start + name.size();
    return path.midRef(start).startsWith(name) &&
           (end == path.size() || path.at(end) == QLatin1Char('/'));
}

QString missing(const QString &path, const Step &deepest)
{
    QStringList names;
    for (NETWEIR::Hierachy *child : deepest.node->children()) {
        if (names.size() == MostNamed) {
            names.append(QStringLiteral("..."));
            break;
        }
        names.append(child->instName());
    }
    const QString has =
        names.isEmpty() ? QStringLiteral("it has none") : names.join(QLatin1String(", "));
    return QStringLiteral("there is no instance \"%1\" in %2: %3")
        .arg(path.mid(deepest.length + 1), path.left(deepest.length), has);
}

} // namespace

NETWEIR::Hierachy *findInstance(NETWEIR::RtlNetlist *netlist, const QString &written,
                                QString *error)
{
    const QString path = written.endsWith(QLatin1Char('/')) ? written.chopped(1) : written;
    const QString top = netlist->top()->instName();
    if (!fits(path, 0, top)) {
        *error = QStringLiteral("there is no instance \"%1\": paths begin with the top module, %2")
                     .arg(path, top);
        return nullptr;
    }
    // Escaped names may contain slashes, so more than one child can fit.
    QVector<Step> open = {{netlist->top(), top.size()}};
    Step deepest = open.first();
    while (!open.isEmpty()) {
        const Step step = open.takeLast();
        if (step.length == path.size())
            return step.node;
        if (step.length > deepest.length)
            deepest = step;
        const auto &children = step.node->children();
        for (int i = children.size() - 1; i >= 0; --i) {
            const QString name = children.at(i)->instName();
            if (fits(path, step.length + 1, name))
                open.append({children.at(i), step.length + 1 + name.size()});
        }
    }
    *error = missing(path, deepest);
    return nullptr;
}

} // namespace Tool
