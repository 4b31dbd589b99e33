// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStyledItemDelegate>

#include <functional>

namespace TARN {

/// What is wrong with a row.
struct RowMark
{
    enum Level { None, Warning, Error } level = None;
    QString text; ///< Plain text for the tip of the row.
};

/// Paints a sign, as high as a line of text at most: a red disk with a cross for an error, an amber
/// triangle for a warning, nothing for None.
void paintSign(QPainter *painter, const QRect &place, RowMark::Level level);

/// The colour for the text of a marked row on @p background: the one of a dark and a light shade
/// that is easier to read there. Invalid for None.
QColor markColor(RowMark::Level level, const QColor &background);

/// Marks rows of a view by painting alone: text in red or amber, and a sign behind it. A text that
/// would reach under the sign is elided. The tip of a marked row adds the mark's text to the row's
/// own tip. The items keep their data, and the rows their size.
///
/// Belongs to its view. It asks for the mark of each row that it paints, so that marks have to be
/// cheap; whoever changes them repaints the view.
class RowMarks final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using MarkOf = std::function<RowMark(const QModelIndex &)>;

    /// Does not install itself.
    RowMarks(MarkOf markOf, QAbstractItemView *view);

    // QStyledItemDelegate
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

private:
    MarkOf m_markOf;
};

} // namespace TARN
