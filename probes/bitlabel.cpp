// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "bitlabel.h"

#include "valuetree.h"

#include <QApplication>
#include <QEvent>
#include <QPalette>
#include <QVector>

namespace TARN {

namespace {

/// The different palettes that the application has had while there were labels.
Q_GLOBAL_STATIC(QVector<QPalette>, palettes)

/// The number of the palette that the application has for @p label.
quint16 paletteNumberFor(const QLabel *label)
{
    const QPalette palette = QApplication::palette(label);
    const int known = palettes->indexOf(palette);
    if (known == -1)
        palettes->append(palette);
    else
        palettes->replace(known, palette); // The same object is compared quickly.
    return quint16(known == -1 ? palettes->size() - 1 : known);
}

} // namespace

BitLabel::BitLabel(const QString &bits)
    : m_silent(false)
    , m_held(false)
    , m_followsStyle(false)
    , m_keepsPalette(false)
    , m_palette(paletteNumberFor(this))
{
    setFixedHeight(ValueTree::RowHeight); // By itself it would make its row a pixel higher.
    m_silent = true;
    setText(bits);
    m_silent = false;
    hide();
}

const QMetaObject *BitLabel::metaObject() const
{
    // A new text is announced by the accessible object of the label, which is made for that by its
    // class. There is none for a plain object, and nobody to tell of a text that was never shown.
    return m_silent ? &QObject::staticMetaObject : QLabel::metaObject();
}

void BitLabel::setVisible(bool visible)
{
    if (!m_held || !visible)
        QLabel::setVisible(visible);
}

bool BitLabel::event(QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange)
        followPalette();
    if (m_followsStyle)
        return QLabel::event(event);
    switch (event->type()) {
    case QEvent::ParentChange:
    case QEvent::PolishRequest:
    case QEvent::StyleChange:
        return true;
    case QEvent::Polish:
        return followStyle(event);
    default:
        return QLabel::event(event);
    }
}

bool BitLabel::followStyle(QEvent *polish)
{
    m_followsStyle = true;
    const bool polished = QLabel::event(polish);
    QEvent missed(QEvent::StyleChange);
    QLabel::event(&missed);
    if (m_palette != paletteNumberFor(this))
        keepPalette();
    return polished;
}

void BitLabel::keepPalette()
{
    // Where there are style sheets, widgets that have their style do not follow the application's
    // palette. Labels that come into sight now must not look different from those beside them.
    m_ownRoles = palette().resolve();
    QPalette kept = palette().resolve(palettes->at(m_palette));
    kept.resolve(~0U);
    setPalette(kept);
    m_keepsPalette = true;
}

void BitLabel::followPalette()
{
    m_palette = paletteNumberFor(this);
    if (!m_keepsPalette)
        return;
    m_keepsPalette = false;
    QPalette own = palette();
    own.resolve(m_ownRoles);
    setPalette(own);
}

} // namespace TARN
