// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLabel>

namespace TARN {

/// A label with the bits of a signal, as high as its row. A page may have thousands, nearly all of
/// them out of sight.
///
/// What a widget does for its style takes most of the time and memory of a label. This one puts it
/// off until it is polished, that is shown or asked for its size. It also has no accessible object
/// until somebody asks for one. Style sheets see a QLabel.
class BitLabel final : public QLabel
{
public:
    /// Hidden, and without a parent.
    explicit BitLabel(const QString &bits);

    /// From hold() to release() the label stays hidden. Views show each widget that they take over,
    /// in sight or not.
    void hold() { m_held = true; }
    void release() { m_held = false; }

    // QObject
    const QMetaObject *metaObject() const override;
    // QWidget
    void setVisible(bool visible) override;

protected:
    bool event(QEvent *event) override;

private:
    bool followStyle(QEvent *polish);
    void keepPalette();
    void followPalette();

    // Few bytes, because there are so many labels.
    bool m_silent : 1; ///< First, because looking up the palette asks for the class.
    bool m_held : 1;
    bool m_followsStyle : 1;
    bool m_keepsPalette : 1;
    quint16 m_palette;   ///< Number of the application's, when this label would have got its style.
    uint m_ownRoles = 0; ///< Of the palette, those that are not kept.
};

} // namespace TARN
