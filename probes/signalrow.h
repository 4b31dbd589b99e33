// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "signalitem.h"

#include <QString>
#include <QTreeWidgetItem>

namespace TARN {

/// A tree row that shows a SignalItem: text, tool tip, font and colour are computed from the item
/// instead of being stored role by role, which keeps lists of a million rows fast.
///
/// The flags follow from the item alone, not from the row above: when a bus as a whole cannot be
/// used, its free bits can still be chosen.
///
/// In all else it is an ordinary row. Setting a role turns it into a row that stores its roles,
/// with the same values; a clone has the type QTreeWidgetItem::Type like every clone of a tree row.
class SignalRow final : public QTreeWidgetItem
{
public:
    /// Whether the row offers its item under Qt::UserRole. Member rows of a plain list do not.
    enum class Holds { Item, Nothing };

    /// Shows the item's display name or, when that is empty, its name.
    SignalRow(const SignalItem &item, Holds holds, int type);
    /// Shows @p text.
    SignalRow(const SignalItem &item, Holds holds, int type, const QString &text);

    QVariant data(int column, int role) const override;
    void setData(int column, int role, const QVariant &value) override;
    QTreeWidgetItem *clone() const override;

    /// Stores the computed roles as an ordinary row has them, for code that reads the storage of a
    /// row instead of asking it (drag and drop does).
    void storeRoles();

private:
    Q_DISABLE_COPY(SignalRow)

    bool computes(int role) const;
    /// From now on no row above changes the flags. Clears them and all that is stored.
    void ignoreRowsAbove();

    SignalItem m_item;
    QString m_text;
    bool m_holdsItem;
    bool m_stored = false;
};

} // namespace TARN
