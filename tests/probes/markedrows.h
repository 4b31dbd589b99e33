// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <audit/designnames.h>
#include <audit/signalmarks.h>
#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>

#include <QApplication>
#include <QHelpEvent>
#include <QImage>
#include <QString>
#include <QToolTip>
#include <QTreeWidget>

#include <memory>

namespace TarnTest {

/// top: clk, rst (not for Probe Out), d[3:0] (d[0] not for Probe In), and their marks.
struct MarkedDesign
{
    std::unique_ptr<NETWEIR::RtlNetlist> netlist = build();
    TARN::DesignNames names{netlist.get()};
    TARN::SignalMarks marks;

    MarkedDesign() { marks.setNames(&names); }

    static std::unique_ptr<NETWEIR::RtlNetlist> build()
    {
        NETWEIR::NetlistBuilder builder("top");
        builder.addNet(builder.top(), "clk");
        builder.addNet(builder.top(), "rst", {false, true});
        builder.addBus(builder.top(), "d", 3, 0, {{}, {}, {}, {true, false}});
        return builder.take();
    }
};

/// The colour of the sign in @p image, empty when there is none.
inline QString signIn(const QImage &image)
{
    int red = 0;
    int amber = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            red += qRed(pixel) > 180 && qGreen(pixel) < 30 && qBlue(pixel) < 30;
            amber += qRed(pixel) > 240 && qAbs(qGreen(pixel) - 176) < 15 && qBlue(pixel) < 30;
        }
    }
    if (red > 20)
        return QStringLiteral("red");
    return amber > 20 ? QStringLiteral("amber") : QString();
}

/// A line "text: colour" for each row in sight of @p tree with a sign.
inline QString marksOf(QTreeWidget *tree)
{
    QString text;
    for (QTreeWidgetItemIterator row(tree); *row; ++row) {
        const QRect place = tree->visualItemRect(*row);
        const QString sign =
            place.isEmpty() ? QString() : signIn(tree->viewport()->grab(place).toImage());
        if (!sign.isEmpty())
            text += QStringLiteral("%1: %2\n").arg((*row)->text(0), sign);
    }
    return text;
}

/// The tip that appears over @p row.
inline QString tipOver(QTreeWidget *tree, const QTreeWidgetItem *row)
{
    QToolTip::hideText();
    const QPoint place = tree->visualItemRect(row).center();
    QHelpEvent event(QEvent::ToolTip, place, tree->viewport()->mapToGlobal(place));
    QApplication::sendEvent(tree->viewport(), &event);
    const QString tip = QToolTip::text();
    QToolTip::hideText();
    return tip;
}

} // namespace TarnTest
