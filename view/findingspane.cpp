// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "findingspane.h"

#include "findingsmodel.h"
#include "ui_findingspane.h"

#include <widgets/modaldialog.h>

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QEvent>
#include <QHeaderView>
#include <QMenu>
#include <QPointer>
#include <QStyledItemDelegate>

#include <algorithm>
#include <iterator>

namespace TARN {

namespace {

/// The list is as high as its rows, within these limits and a third of the view.
constexpr int FewestRows = 3;
constexpr int MostRows = 8;

/// Rows that are measured for the width of a column.
constexpr int MeasuredRows = 100;

/// Menus do not get wider, in average letters.
constexpr int MenuLetters = 90;

/// Cuts sentences off at their end, where the view has another place for names.
class SentenceDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->textElideMode = Qt::ElideRight;
    }
};

/// @p text as it is, for a button or a menu, where '&' would mark a key.
QString unmarked(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

FindingsPane::FindingsPane(Findings *findings, QWidget *view)
    : QWidget(view)
    , m_findings(findings)
    , m_model(new FindingsModel(findings, this))
    , ui(std::make_unique<Ui::FindingsPane>())
    , m_replaceMenu(new QMenu(this))
    , m_replaceAllMenu(new QMenu(this))
{
    hide();
    ui->setupUi(this);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    setUpList();
    ui->btnReplace->setMenu(m_replaceMenu);
    m_replaceMenu->setToolTipsVisible(true);
    m_replaceAllMenu->setToolTipsVisible(true);
    connect(ui->btnReplaceAll, &QPushButton::clicked, this, &FindingsPane::onReplaceAllClicked);
    addViewAction(tr("&Next Finding"), Qt::Key_F8, &FindingsPane::showNext);
    addViewAction(tr("&Previous Finding"), Qt::SHIFT + Qt::Key_F8, &FindingsPane::showPrevious);
    connect(m_findings, &Findings::changed, this, &FindingsPane::refresh);
    connect(m_findings, &Findings::candidatesChanged, this, &FindingsPane::refreshOffers);
    view->installEventFilter(this);
    refresh();
}

FindingsPane::~FindingsPane() = default;

void FindingsPane::setUpList()
{
    QTreeView *list = ui->listFindings;
    list->setModel(m_model);
    list->setItemDelegateForColumn(FindingsModel::TextColumn, new SentenceDelegate(list));
    list->header()->setResizeContentsPrecision(MeasuredRows);
    list->header()->setSectionResizeMode(FindingsModel::SeverityColumn,
                                         QHeaderView::ResizeToContents);
    list->header()->setSectionsMovable(false);
    connect(list, &QTreeView::activated, this, &FindingsPane::onActivated);
    connect(list->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &FindingsPane::onCurrentChanged);
}

void FindingsPane::addViewAction(const QString &text, const QKeySequence &key,
                                 void (FindingsPane::*slot)())
{
    auto *action = new QAction(text, this);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, slot);
    parentWidget()->addAction(action);
    m_viewActions.append(action);
}

// The current finding

int FindingsPane::currentRow() const
{
    return ui->listFindings->currentIndex().row();
}

void FindingsPane::setCurrentRow(int row)
{
    ui->listFindings->setCurrentIndex(m_model->index(row, 0));
}

void FindingsPane::onCurrentChanged()
{
    const int row = currentRow();
    if (row < 0)
        return;
    m_current = m_model->findingOf(row);
    m_place = -1;
    if (!m_refreshing)
        m_chosen = m_current;
    refreshOffers();
}

void FindingsPane::showNeighbour(int step)
{
    const int count = m_findings->count();
    if (count == 0)
        return;
    // A finding that took the place of the chosen one is the next in either direction.
    int place = 0;
    if (isChosen(m_current))
        place = std::max(m_place, 0) + step;
    if (place < 0 || place > m_current.others.size()) {
        setCurrentRow((currentRow() + step + count) % count);
        place = step > 0 ? 0 : m_current.others.size();
    }
    showPlace(place);
}

bool FindingsPane::isChosen(const Finding &finding) const
{
    return m_chosen && m_chosen->rule == finding.rule && m_chosen->place == finding.place &&
           m_chosen->name == finding.name;
}

/// Shows the first place of the current finding, and at each repetition the next one.
void FindingsPane::onActivated()
{
    if (currentRow() >= 0)
        showPlace((m_place + 1) % (m_current.others.size() + 1));
}

void FindingsPane::showPlace(int place)
{
    m_place = place;
    m_chosen = m_current;
    // A copy: a line that applies its text meanwhile changes the findings.
    const Place chosenPlace = place == 0 ? m_current.place : m_current.others.at(place - 1);
    Q_EMIT chosen(chosenPlace);
}

// Findings come and go

void FindingsPane::refresh()
{
    const int place = m_place;
    m_refreshing = true;
    m_model->reset();
    const int row = m_chosen ? m_model->rowOf(*m_chosen) : std::min(m_findings->count(), 1) - 1;
    setCurrentRow(row);
    m_refreshing = false;
    if (row >= 0 && isChosen(m_current) && m_current.others == m_chosen->others)
        m_place = place;
    for (QAction *action : qAsConst(m_viewActions))
        action->setEnabled(row >= 0);
    refreshOffers();
    setShown(row >= 0);
}

void FindingsPane::setShown(bool shown)
{
    updateGeometry(); // The number of rows has changed.
    if (shown == !isHidden())
        return;
    auto *column = qobject_cast<QBoxLayout *>(parentWidget()->layout());
    if (shown) {
        limitHeight();
        column->addWidget(this);
    } else {
        passFocusToPage();
        column->removeWidget(this);
    }
    setVisible(shown);
}

/// Hiding the list would pass the focus on to what follows the view, whose keys need the focus.
void FindingsPane::passFocusToPage()
{
    if (!isAncestorOf(QApplication::focusWidget()))
        return;
    ui->listFindings->setFocus();
    focusPreviousChild();
}

void FindingsPane::setTabBehind(QWidget *page)
{
    QWidget *last = page;
    while (page->isAncestorOf(last->nextInFocusChain()))
        last = last->nextInFocusChain();
    QWidget *const ours[] = {last, ui->listFindings, ui->btnReplace, ui->btnReplaceAll};
    for (std::size_t i = 1; i < std::size(ours); ++i)
        setTabOrder(ours[i - 1], ours[i]);
}

bool FindingsPane::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        limitHeight();
    return QWidget::eventFilter(watched, event);
}

void FindingsPane::limitHeight()
{
    setMaximumHeight(parentWidget()->height() / 3);
}

void FindingsPane::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    QTreeView *list = ui->listFindings;
    list->resizeColumnToContents(FindingsModel::PlaceColumn);
    const int place = std::min(list->columnWidth(FindingsModel::PlaceColumn), list->width() / 2);
    list->setColumnWidth(FindingsModel::PlaceColumn, place);
}

QSize FindingsPane::sizeHint() const
{
    const int rows = qBound(FewestRows, m_findings->count(), MostRows);
    const QTreeView *list = ui->listFindings;
    const int height = rows * std::max(list->sizeHintForRow(0), 0) +
                       list->header()->sizeHint().height() + 2 * list->frameWidth();
    const QMargins margins = layout()->contentsMargins();
    const QSize usual = QWidget::sizeHint();
    return {usual.width(),
            std::max(height + margins.top() + margins.bottom(), minimumSizeHint().height())};
}

// Replacing

QVector<FindingsPane::Offer> FindingsPane::offersForCurrent() const
{
    QVector<Offer> offers;
    if (currentRow() < 0)
        return offers;
    const QVector<Replacement> candidates = m_findings->candidatesFor(m_current);
    for (const Replacement &by : candidates) {
        if (by.kind == Replacement::Prefix)
            offers.append(offerFor(by));
        else
            offers.append({by.to, [this, finding = m_current, by] {
                               return m_findings->replace(finding, by);
                           }});
    }
    return offers;
}

FindingsPane::Offer FindingsPane::offerFor(const Replacement &change) const
{
    return {tr("All of %1 by %2 (%3 findings)").arg(change.from, change.to).arg(change.explains),
            [this, change] { return m_findings->replaceAll(change); }};
}

QVector<FindingsPane::Offer> FindingsPane::offersForAll() const
{
    QVector<Offer> offers;
    const QVector<Replacement> changes = m_findings->prefixChanges();
    for (const Replacement &change : changes)
        offers.append(offerFor(change));
    const int buses = m_findings->changedBuses();
    if (buses > 1) {
        offers.append({tr("Changed buses by those of the design (%1)").arg(buses),
                       [this] { return m_findings->takeOverBuses(); }});
    }
    return offers;
}

void FindingsPane::refreshOffers()
{
    const QVector<Offer> offers = offersForCurrent();
    fill(m_replaceMenu, offers);
    setOffering(ui->btnReplace, !offers.isEmpty());

    m_all = offersForAll();
    fill(m_replaceAllMenu, m_all);
    const bool single = m_all.size() == 1;
    ui->btnReplaceAll->setMenu(m_all.size() > 1 ? m_replaceAllMenu : nullptr);
    setOffering(ui->btnReplaceAll, !m_all.isEmpty());
    ui->btnReplaceAll->setToolTip(single ? m_all.first().text : QString());
    ui->btnReplaceAll->setAccessibleDescription(
        single ? m_all.first().text : tr("Opens a menu of changes that mend several findings."));
}

/// Enables or disables @p button without letting the focus leave the list with it.
void FindingsPane::setOffering(QPushButton *button, bool offering)
{
    if (!offering && button->hasFocus())
        ui->listFindings->setFocus();
    button->setEnabled(offering);
}

void FindingsPane::fill(QMenu *menu, const QVector<Offer> &offers)
{
    menu->hide(); // What it offers is gone.
    menu->clear();
    const QFontMetrics metrics = menu->fontMetrics();
    for (const Offer &offer : offers) {
        const QString text = metrics.elidedText(offer.text, Qt::ElideMiddle,
                                                MenuLetters * metrics.averageCharWidth());
        QAction *action = menu->addAction(unmarked(text));
        action->setToolTip(offer.text);
        // When the menu is closed: running changes its actions.
        connect(
            action, &QAction::triggered, this, [this, offer] { run(offer); }, Qt::QueuedConnection);
    }
}

void FindingsPane::onReplaceAllClicked()
{
    if (m_all.size() == 1)
        run(Offer(m_all.first()));
}

void FindingsPane::run(const Offer &offer)
{
    const QPointer<FindingsPane> self(this);
    if (!offer.run()) {
        Message warning;
        warning.icon = QMessageBox::Warning;
        warning.title = tr("Warning");
        warning.text = tr("Support 256 signals at most.");
        showMessage(this, warning);
        return;
    }
    if (self && isVisible())
        ui->listFindings->setFocus(); // The next finding is current there.
}

} // namespace TARN
