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

protected:
    /// What the roles but texts and item are computed from.
    struct Look
    {
        bool enabled;
        bool usable;
        bool hasDisplayName;
    };

    ComputedSignalRow(Look look, Holds holds, int type);

    virtual SignalItem signal() const = 0;
    virtual QString shownText() const = 0;

private:
    Q_DISABLE_COPY(ComputedSignalRow)

    bool computes(int role) const;
    /// From now on no row above changes the flags. Clears them and all that is stored.
    void ignoreRowsAbove();

    Look m_look;
    bool m_holdsItem;
    bool m_stored = false;
};

/// A row that has its item.
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

} // namespace TARN
