// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "signalrow.h"

#include <QApplication>
#include <QBrush>
#include <QFont>
#include <QPalette>

#include <iterator>
#include <utility>

namespace TARN {

namespace {

/// A row to copy flags from.
QTreeWidgetItem rowWith(Qt::ItemFlags flags)
{
    QTreeWidgetItem row;
    row.setFlags(flags);
    return row;
}

} // namespace

ComputedSignalRow::ComputedSignalRow(Look look, Holds holds, int type)
    : QTreeWidgetItem(type)
    , m_enabled(look.enabled)
    , m_usable(look.usable)
    , m_hasDisplayName(look.hasDisplayName)
    , m_holdsItem(holds == Holds::Item)
    , m_stored(false)
{
    static const QTreeWidgetItem usable;
    static const QTreeWidgetItem unusable =
        rowWith(usable.flags() & ~(Qt::ItemIsSelectable | Qt::ItemIsEnabled));
    ignoreRowsAbove();
    QTreeWidgetItem::operator=(look.enabled ? usable : unusable);
}

void ComputedSignalRow::ignoreRowsAbove()
{
    // A row passes "enabled" and "disabled" on to the rows below it, except to those that were
    // disabled by themselves. That is why this one is disabled here: a later assignment changes its
    // flags, but it still counts as disabled by itself. The assignment here keeps setFlags() from
    // looking for children.
    static const QTreeWidgetItem disabled = rowWith(Qt::NoItemFlags);
    QTreeWidgetItem::operator=(disabled);
    setFlags(Qt::NoItemFlags);
}

bool ComputedSignalRow::computes(int role) const
{
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
    case Qt::ToolTipRole:
    case Qt::ForegroundRole:
        return true;
    case Qt::FontRole:
        return m_hasDisplayName;
    case Qt::UserRole:
        return m_holdsItem;
    default:
        return false;
    }
}

QVariant ComputedSignalRow::data(int column, int role) const
{
    if (m_stored || column != 0 || !computes(role))
        return QTreeWidgetItem::data(column, role);
    switch (role) {
    case Qt::UserRole:
        return QVariant::fromValue(signal());
    case Qt::FontRole: {
        QFont font;
        font.setItalic(true);
        return font;
    }
    case Qt::ForegroundRole:
        if (!m_enabled)
            return QBrush(Qt::gray);
        return m_usable ? QApplication::palette().windowText() : QBrush(Qt::red);
    default:
        return shownText();
    }
}

void ComputedSignalRow::setData(int column, int role, const QVariant &value)
{
    if (computes(role))
        storeRoles();
    QTreeWidgetItem::setData(column, role, value);
}

QTreeWidgetItem *ComputedSignalRow::clone() const
{
    auto *copy =
        new SignalRow(signal(), m_holdsItem ? Holds::Item : Holds::Nothing, Type, shownText());
    copy->m_stored = m_stored;
    copy->QTreeWidgetItem::operator=(*this); // What is stored, and the flags.
    for (int i = 0; i < childCount(); ++i)
        copy->addChild(child(i)->clone());
    return copy;
}

std::optional<SignalItem> ComputedSignalRow::item() const
{
    return m_holdsItem && !m_stored ? std::make_optional(signal()) : std::nullopt;
}

void ComputedSignalRow::storeRoles()
{
    if (m_stored)
        return;
    constexpr int roles[] = {Qt::DisplayRole, Qt::ToolTipRole, Qt::FontRole, Qt::ForegroundRole,
                             Qt::UserRole};
    QVariant computed[std::size(roles)];
    for (std::size_t i = 0; i < std::size(roles); ++i)
        computed[i] = computes(roles[i]) ? data(0, roles[i]) : QVariant();
    m_stored = true;
    for (std::size_t i = 0; i < std::size(roles); ++i) {
        if (computed[i].isValid())
            QTreeWidgetItem::setData(0, roles[i], computed[i]);
    }
}

ComputedSignalRow *newRowOf(const SignalItem &item, ComputedSignalRow::Holds holds, int type)
{
    if (NetRow::suits(item))
        return new NetRow(item.name, item, holds, type);
    return new SignalRow(item, holds, type);
}

ComputedSignalRow *newRowOf(SignalItem &&item, ComputedSignalRow::Holds holds, int type)
{
    if (NetRow::suits(item))
        return new NetRow(std::move(item.name), item, holds, type);
    return new SignalRow(item, holds, type);
}

SignalRow::SignalRow(const SignalItem &item, Holds holds, int type)
    : SignalRow(item, holds, type, item.displayName.isEmpty() ? item.name : item.displayName)
{
}

SignalRow::SignalRow(const SignalItem &item, Holds holds, int type, const QString &text)
    : ComputedSignalRow({item.enabled, item.usable, !item.displayName.isEmpty()}, holds, type)
    , m_item(item)
    , m_text(text)
{
}

bool NetRow::suits(const SignalItem &item)
{
    return item.displayName.isNull() && item.members.isEmpty() && item.kind >= SignalItem::Unset &&
           item.kind <= SignalItem::Bus;
}

NetRow::NetRow(QString name, const SignalItem &item, Holds holds, int type)
    : ComputedSignalRow({item.enabled, item.usable, false}, holds, type)
    , m_kind(qint8(item.kind))
    , m_name(std::move(name))
{
}

SignalItem NetRow::signal() const
{
    SignalItem item;
    item.name = m_name;
    item.enabled = look().enabled;
    item.usable = look().usable;
    item.kind = m_kind;
    return item;
}

} // namespace TARN
