// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/testcase.h>
#include <widgets/rowmarks.h>

#include <QApplication>
#include <QHelpEvent>
#include <QImage>
#include <QTest>
#include <QToolTip>
#include <QTreeWidget>

#include <cmath>
#include <functional>

using TARN::RowMark;
using TARN::RowMarks;

namespace {

constexpr int Marked = 1;

/// A tree as the page of a core has it, whose second row gets @p mark. No row is current, none has
/// the focus.
class MarkedTree : public QTreeWidget
{
public:
    explicit MarkedTree(const RowMark &mark, const QString &text = QStringLiteral("top/state"))
    {
        setHeaderHidden(true);
        setUniformRowHeights(true);
        setStyleSheet("QTreeWidget::item { height: 20px;}QTreeWidget{ icon-size: 17px; }");
        for (int i = 0; i < 3; ++i)
            new QTreeWidgetItem(this, {text});
        const auto markOf = [mark](const QModelIndex &index) {
            return index.row() == Marked ? mark : RowMark();
        };
        setItemDelegate(new RowMarks(markOf, this));
        resize(260, 90);
    }

    QImage imageOf(int row)
    {
        const QPixmap all = viewport()->grab();
        return all.copy(visualItemRect(topLevelItem(row))).toImage();
    }

    void tipAt(int row)
    {
        const QPoint place = visualItemRect(topLevelItem(row)).center();
        QHelpEvent event(QEvent::ToolTip, place, viewport()->mapToGlobal(place));
        QApplication::sendEvent(viewport(), &event);
    }
};

/// The columns of @p image with pixels unlike its last one, first and last.
QPair<int, int> inkOf(const QImage &image, const std::function<bool(QRgb)> &counts)
{
    QPair<int, int> columns(-1, -1);
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            if (!counts(image.pixel(x, y)))
                continue;
            columns.first = columns.first < 0 ? x : columns.first;
            columns.second = x;
        }
    }
    return columns;
}

bool isRed(QRgb pixel)
{
    return qRed(pixel) > qGreen(pixel) + 60 && qRed(pixel) > qBlue(pixel) + 60;
}

double brightness(const QColor &color)
{
    const auto part = [](double value) { return std::pow(value, 2.2); };
    return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) +
           0.0722 * part(color.blueF());
}

const RowMark Error{RowMark::Error, "Gone."};
const RowMark Warning{RowMark::Warning, "Grew."};

} // namespace

Q_DECLARE_METATYPE(TARN::RowMark)

class TestRowMarks : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void onlyMarkedRowsLookDifferent()
    {
        MarkedTree tree(Error);
        MarkedTree plain({});
        QCOMPARE(tree.imageOf(0), plain.imageOf(0));
        QCOMPARE(tree.imageOf(2), plain.imageOf(2));
        QVERIFY(tree.imageOf(Marked) != plain.imageOf(Marked));
        QVERIFY(inkOf(plain.imageOf(Marked), isRed).first == -1);
    }

    void sizesStay()
    {
        MarkedTree tree(Warning);
        const QModelIndex index = tree.model()->index(Marked, 0);
        const QStyledItemDelegate usual;
        QStyleOptionViewItem option;
        option.initFrom(&tree);
        option.widget = &tree;
        QCOMPARE(tree.itemDelegate()->sizeHint(option, index), usual.sizeHint(option, index));
        QCOMPARE(tree.visualItemRect(tree.topLevelItem(Marked)).height(), 20);
    }

    void signFollowsTheText()
    {
        MarkedTree tree(Error);
        const QImage row = tree.imageOf(Marked);
        const auto red = inkOf(row, isRed);
        const int text = tree.fontMetrics().horizontalAdvance("top/state");
        QVERIFY2(red.first >= 0 && red.first < 10, "The text is not red.");
        QVERIFY2(red.second > text + 10 && red.second < text + 40,
                 qPrintable(QString::number(red.second)));
    }

    void longTextMakesRoom_data()
    {
        QTest::addColumn<Qt::TextElideMode>("mode");
        QTest::newRow("end") << Qt::ElideRight;
        QTest::newRow("middle") << Qt::ElideMiddle;
        QTest::newRow("start") << Qt::ElideLeft;
    }
    void longTextMakesRoom()
    {
        QFETCH(Qt::TextElideMode, mode);
        const QString name(QStringLiteral("top/u_core/") + QString(60, 'm'));
        MarkedTree tree(Error, name);
        MarkedTree narrow(Error);
        tree.setTextElideMode(mode);
        const QImage full = tree.imageOf(Marked);
        const QImage usual = narrow.imageOf(Marked);
        const int last = inkOf(full, isRed).second;
        const int usualLast = inkOf(usual, isRed).second;
        QVERIFY(last < full.width());
        QVERIFY(last > full.width() - 30); // An elided text leaves up to a letter of its room.
        // The sign and its gap as behind a short text: nothing shows through.
        constexpr int Width = 16;
        QCOMPARE(full.copy(last - Width + 1, 0, Width, 20),
                 usual.copy(usualLast - Width + 1, 0, Width, 20));
    }

    void signGoesToTheOtherSideOfRightToLeftText()
    {
        MarkedTree tree(Error);
        tree.setLayoutDirection(Qt::RightToLeft);
        const QImage row = tree.imageOf(Marked);
        const auto red = inkOf(row, isRed);
        const int text = tree.fontMetrics().horizontalAdvance("top/state");
        QVERIFY(red.second > row.width() - 10);
        QVERIFY(red.first < row.width() - text - 10);
    }

    void signShowsInSelectedRows()
    {
        MarkedTree tree(Error);
        MarkedTree plain({});
        for (MarkedTree *each : {&tree, &plain})
            each->topLevelItem(Marked)->setSelected(true);
        const QImage row = tree.imageOf(Marked);
        const QImage unmarked = plain.imageOf(Marked);
        const int text = tree.fontMetrics().horizontalAdvance("top/state");
        QVERIFY(inkOf(row, isRed).first > text);
        QCOMPARE(row.copy(0, 0, text, 20), unmarked.copy(0, 0, text, 20));
    }

    void colorsAreReadable_data()
    {
        QTest::addColumn<QColor>("background");
        QTest::newRow("white") << QColor(Qt::white);
        QTest::newRow("alternate") << QColor(247, 247, 247);
        QTest::newRow("dark") << QColor(49, 54, 59);
        QTest::newRow("black") << QColor(Qt::black);
    }
    void colorsAreReadable()
    {
        QFETCH(QColor, background);
        for (const RowMark::Level level : {RowMark::Warning, RowMark::Error}) {
            const double one = brightness(TARN::markColor(level, background)) + 0.05;
            const double other = brightness(background) + 0.05;
            QVERIFY(qMax(one, other) / qMin(one, other) >= 4.5);
        }
        QVERIFY(!TARN::markColor(RowMark::None, background).isValid());
    }

    void darkPaletteGetsTheLightShade()
    {
        MarkedTree tree(Warning);
        QPalette palette = tree.palette();
        palette.setColor(QPalette::Base, Qt::black);
        tree.setPalette(palette);
        const QColor light = TARN::markColor(RowMark::Warning, Qt::black);
        const auto isText = [light](QRgb pixel) { return pixel == light.rgb(); };
        QVERIFY(inkOf(tree.imageOf(Marked), isText).first >= 0);
    }

    void tipAddsTheText_data()
    {
        QTest::addColumn<RowMark>("mark");
        QTest::addColumn<QString>("own");
        QTest::addColumn<QString>("tip");
        QTest::newRow("both") << Error << "top/state"
                              << "top/state\nGone.";
        QTest::newRow("no tip of its own") << Error << ""
                                           << "Gone.";
        QTest::newRow("no text") << RowMark{RowMark::Error, {}} << "top/state"
                                 << "top/state";
        QTest::newRow("angle brackets") << Error << "top/a<b>c"
                                        << "<p>top/a&lt;b&gt;c<br>\nGone.</p>";
        QTest::newRow("no mark") << RowMark{RowMark::None, "x"} << "top/state"
                                 << "top/state";
    }
    void tipAddsTheText()
    {
        QFETCH(RowMark, mark);
        QFETCH(QString, own);
        MarkedTree tree(mark);
        tree.topLevelItem(Marked)->setToolTip(0, own);
        tree.show();
        QToolTip::hideText();
        tree.tipAt(Marked);
        QTEST(QToolTip::text(), "tip");
        QToolTip::hideText();
    }
};

TARN_TEST_MAIN(TestRowMarks)
#include "tst_rowmarks.moc"
