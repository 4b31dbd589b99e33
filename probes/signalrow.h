// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "signalitem.h"

#include <QString>
#include <QTreeWidgetItem>

#include <optional>

namespace TARN {

/// A tree row that shows a SignalItem: text, tool tip, font and colour are computed instead of
/// being stored role by role, which keeps lists of a million rows fast. Derived classes say where
/// the item and the text come from.
///
/// The flags follow from the item alone, not from the row above: when a bus as a whole cannot be
/// used, its free bits can still be chosen.
///
/// In all else it is an ordinary row. Setting a role turns it into a row that stores its roles,
/// with the same values; a clone is a SignalRow of the type QTreeWidgetItem::Type, which every
/// clone of a tree row has.
///
/// A byte is all that it adds to a QTreeWidgetItem, in space that the compiler leaves unused there.
/// Derived classes have three more before a row gets larger.
class ComputedSignalRow : public QTreeWidgetItem
{
public:
    /// Whether the row offers its item under Qt::UserRole. Member rows of a plain list do not.
    enum class Holds { Item, Nothing };

    QVariant data(int column, int role) const override;
    void setData(int column, int role, const QVariant &value) override;
    QTreeWidgetItem *clone() const override;

    /// The item that the row computes Qt::UserRole from. Nothing when it holds none there or stores
    /// its roles.
    std::optional<SignalItem> item() const;

    /// Stores the computed roles as an ordinary row has them, for code that reads the storage of a
    /// row instead of asking it (drag and drop does).
    void storeRoles();
    /// Nothing is stored, so that all roles follow from the item.
    bool computesAll() const { return !m_stored && columnCount() == 0; }

    /// What it was made with. What is stored may be something else.
    Holds holds() const { return m_holdsItem ? Holds::Item : Holds::Nothing; }

protected:
    /// What the roles but texts and item are computed from.
    struct Look
    {
        bool enabled;
        bool usable;
        bool hasDisplayName;
    };

    ComputedSignalRow(Look look, Holds holds, int type);

    Look look() const { return {m_enabled, m_usable, m_hasDisplayName}; }
    virtual SignalItem signal() const = 0;
    virtual QString shownText() const = 0;

private:
    Q_DISABLE_COPY(ComputedSignalRow)

    bool computes(int role) const;
    /// From now on no row above changes the flags. Clears them and all that is stored.
    void ignoreRowsAbove();

    bool m_enabled : 1;
    bool m_usable : 1;
    bool m_hasDisplayName : 1;
    bool m_holdsItem : 1;
    bool m_stored : 1;
};

/// A row of its own for @p item, owned by the caller: a NetRow if that is enough.
ComputedSignalRow *newRowOf(const SignalItem &item, ComputedSignalRow::Holds holds, int type);
ComputedSignalRow *newRowOf(SignalItem &&item, ComputedSignalRow::Holds holds, int type);

/// A row that has any item.
class SignalRow final : public ComputedSignalRow
{
public:
    /// Shows the item's display name or, when that is empty, its name.
    SignalRow(const SignalItem &item, Holds holds, int type);
    /// Shows @p text.
    SignalRow(const SignalItem &item, Holds holds, int type, const QString &text);

private:
    SignalItem signal() const override { return m_item; }
    QString shownText() const override { return m_text; }

    SignalItem m_item;
    QString m_text;
};

/// A row that has an item of which the name says it all: a single net, or a bit of a bus. Most rows
/// are such, and it takes two thirds of the memory of a SignalRow.
class NetRow final : public ComputedSignalRow
{
public:
    /// False when @p item has members, a display name or an unknown kind.
    static bool suits(const SignalItem &item);

    /// For @p item, which must suit, without its name. That is @p name, so that it can be moved.
    NetRow(QString name, const SignalItem &item, Holds holds, int type);

private:
    SignalItem signal() const override;
    QString shownText() const override { return m_name; }

    qint8 m_kind;
    QString m_name;
};

} // namespace TARN
