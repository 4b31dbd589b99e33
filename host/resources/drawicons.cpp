// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
// Draws the icons of the host: "drawicons FOLDER" writes every PNG, once in its own size and once
// doubled as "@2x". Run it after a change here and commit the images with it.

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QTextStream>

#include <functional>

namespace {

// Every icon is drawn on a field of 16 by 16 units, lines on half units to stay sharp.
constexpr qreal Field = 16;

const QColor ink(0x3a, 0x45, 0x50);
const QColor steel(0x4b, 0x7b, 0xa8);
const QColor paleSteel(0xd6, 0xe6, 0xf4);
const QColor green(0x3c, 0x9a, 0x4b);
const QColor red(0xc8, 0x3c, 0x37);
const QColor amber(0xf5, 0xb3, 0x25);
const QColor darkAmber(0xa8, 0x6f, 0x08);
const QColor blue(0x2f, 0x76, 0xc4);
const QColor darkBlue(0x1d, 0x51, 0x8c);

QPen line(const QColor &color, qreal width)
{
    return QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

void drawMark(QPainter &painter, const QColor &color, qreal top, qreal bottom)
{
    painter.setPen(line(color, 1.9));
    painter.drawLine(QPointF(8, top), QPointF(8, bottom - 3.1));
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QPointF(8, bottom), 1.15, 1.15);
}

/// A blue disc: look here.
void drawAttention(QPainter &painter)
{
    painter.setPen(line(darkBlue, 1));
    painter.setBrush(blue);
    painter.drawEllipse(QRectF(1, 1, 14, 14));
    drawMark(painter, Qt::white, 4.2, 11.9);
}

/// An amber triangle: something is out of date.
void drawWarning(QPainter &painter)
{
    painter.setPen(line(darkAmber, 1.2));
    painter.setBrush(amber);
    painter.drawPolygon(QPolygonF({{8, 1.6}, {15, 14.2}, {1, 14.2}}));
    drawMark(painter, ink, 6, 12.3);
}

void drawMagnifier(QPainter &painter)
{
    painter.setPen(line(ink, 2.6));
    painter.drawLine(QPointF(10.6, 10.6), QPointF(14, 14));
    painter.setPen(line(steel, 1.6));
    painter.setBrush(paleSteel);
    painter.drawEllipse(QPointF(6.6, 6.6), 4.9, 4.9);
    painter.setPen(line(Qt::white, 1.2));
    painter.setBrush(Qt::NoBrush);
    painter.drawArc(QRectF(3.8, 3.8, 5.6, 5.6), 100 * 16, 70 * 16);
}

/// A block with pins on both sides, as in a schematic.
void drawModule(QPainter &painter)
{
    painter.setPen(line(steel, 1));
    for (const qreal y : {4.5, 7.5, 10.5}) {
        painter.drawLine(QPointF(1, y), QPointF(4, y));
        painter.drawLine(QPointF(12, y), QPointF(15, y));
    }
    painter.setBrush(paleSteel);
    painter.drawRoundedRect(QRectF(3.5, 1.5, 9, 12), 1.2, 1.2);
    painter.setPen(Qt::NoPen);
    painter.setBrush(steel);
    painter.drawEllipse(QPointF(5.8, 3.8), 0.9, 0.9);
}

void drawStroked(QPainter &painter, const QPainterPath &path, const QColor &color)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(line(color.darker(140), 4));
    painter.drawPath(path);
    painter.setPen(line(color, 2.8));
    painter.drawPath(path);
}

void drawAdd(QPainter &painter)
{
    QPainterPath path;
    path.moveTo(8, 3);
    path.lineTo(8, 13);
    path.moveTo(3, 8);
    path.lineTo(13, 8);
    drawStroked(painter, path, green);
}

void drawDelete(QPainter &painter)
{
    QPainterPath path;
    path.moveTo(4, 4);
    path.lineTo(12, 12);
    path.moveTo(12, 4);
    path.lineTo(4, 12);
    drawStroked(painter, path, red);
}

bool save(const QString &path, int size, const std::function<void(QPainter &)> &draw)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / Field, size / Field);
    draw(painter);
    painter.end();
    return image.save(path);
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication app(argc, argv);
    QTextStream err(stderr);
    if (app.arguments().size() != 2) {
        err << "usage: drawicons FOLDER\n";
        return 2;
    }
    struct Icon
    {
        const char *name;
        int size;
        void (*draw)(QPainter &);
    };
    constexpr Icon icons[] = {
        {"add", 22, drawAdd},       {"attention", 24, drawAttention},
        {"delete", 22, drawDelete}, {"magnifier", 16, drawMagnifier},
        {"module", 16, drawModule}, {"warning", 24, drawWarning},
    };
    const QDir folder(app.arguments().at(1));
    for (const Icon &icon : icons) {
        const QString base = folder.filePath(QLatin1String(icon.name));
        if (!save(base + QStringLiteral(".png"), icon.size, icon.draw) ||
            !save(base + QStringLiteral("@2x.png"), icon.size * 2, icon.draw)) {
            err << "cannot write " << base << ".png\n";
            return 1;
        }
    }
    return 0;
}
