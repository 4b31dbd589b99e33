// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "findings.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class QAction;
class QMenu;
class QPushButton;

namespace TARN {

namespace Ui {
class FindingsPane;
}

class FindingsModel;

/// The list of findings below the pages of a view, with buttons that replace what is missing.
///
/// As long as there are findings it is the last entry of its parent's layout, a box of rows, and
/// takes at most a third of the parent's height; otherwise it is hidden and in no layout. Owns its
/// form and the actions of the keys F8 and Shift+F8, which it adds to the parent; the findings must
/// live longer.
class FindingsPane final : public QWidget
{
    Q_OBJECT

public:
    FindingsPane(Findings *findings, QWidget *view);
    ~FindingsPane() override;

    // Show the next or previous place of a finding, from the last one the first.
    void showNext() { showNeighbour(1); }
    void showPrevious() { showNeighbour(-1); }

    /// Lets the Tab key come here from the last widget of @p page, which is the last page so far.
    void setTabBehind(QWidget *page);

    // QWidget
    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user wants to see @p place.
    void chosen(const Place &place);

protected:
    // QObject
    bool eventFilter(QObject *watched, QEvent *event) override;

    // QWidget
    void resizeEvent(QResizeEvent *event) override;

private:
    /// An entry of a menu of replacements.
    struct Offer
    {
        QString text;
        std::function<bool()> run; ///< Returns false when a port would hold too many signals.
    };

    void setUpList();
    void addViewAction(const QString &text, const QKeySequence &key, void (FindingsPane::*slot)());
    void showNeighbour(int step);
    void showPlace(int place);
    void onActivated();
    void onCurrentChanged();
    bool isChosen(const Finding &finding) const;

    void refresh();
    void refreshOffers();
    void setShown(bool shown);
    void passFocusToPage();
    void limitHeight();
    int currentRow() const;
    void setCurrentRow(int row);

    QVector<Offer> offersForCurrent() const;
    Offer offerFor(const Replacement &change) const;
    QVector<Offer> offersForAll() const;
    void setOffering(QPushButton *button, bool offering);
    void fill(QMenu *menu, const QVector<Offer> &offers);
    void onReplaceAllClicked();
    void run(const Offer &offer);

    Findings *m_findings;
    FindingsModel *m_model;
    std::unique_ptr<Ui::FindingsPane> ui;
    QMenu *m_replaceMenu;
    QMenu *m_replaceAllMenu;
    QVector<QAction *> m_viewActions;
    QVector<Offer> m_all; ///< Of the button for several findings.
    Finding m_current;
    int m_place = -1; ///< Which place of the current finding was shown last.
    /// The last one that the user made current or went to. Where it was, and is when it comes back,
    /// is the current one.
    std::optional<Finding> m_chosen;
    bool m_refreshing = false; ///< It is not the user who changes the current finding.
};

} // namespace TARN
