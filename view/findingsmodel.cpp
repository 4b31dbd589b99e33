// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "findingsmodel.h"

#include "findings.h"

#include <widgets/rowmarks.h>

#include <QApplication>
#include <QPainter>
#include <QPixmap>
#include <QTextDocument>

#include <algorithm>
#include <tuple>

namespace TARN {

namespace {

constexpr int SignSize = 13; // Pixels.

/// Whether @p a is listed before @p b.
bool isBefore(const Finding &a, const Finding &b)
{
    const bool aDriven = a.rule == Rule::SeveralDrivers;
    const bool bDriven = b.rule == Rule::SeveralDrivers;
    if (aDriven || bDriven)
        return aDriven == bDriven ? a.name < b.name : bDriven;
    const auto key = [](const Finding &finding) {
        const Place &place = finding.place;
        const bool inPort = place.port >= 0;
        return std::make_tuple(place.core, inPort, inPort ? place.type : ProbeTypeIn, place.port,
                               place.signal, finding.rule, place.bit);
    };
    return key(a) < key(b);
}

/// The sign as it is, also in selected rows.
QIcon signOf(RowMark::Level level)
{
    const double ratio = qApp->devicePixelRatio();
    QPixmap sign(QSize(SignSize, SignSize) * ratio);
    sign.setDevicePixelRatio(ratio);
    sign.fill(Qt::transparent);
    QPainter painter(&sign);
    paintSign(&painter, QRect(0, 0, SignSize, SignSize), level);
    QIcon icon(sign);
    icon.addPixmap(sign, QIcon::Selected);
    return icon;
}

/// @p text for a tip, which must not take the angle brackets of a name for markup.
QString plainTip(const QString &text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal) : text;
}

} // namespace

FindingsModel::FindingsModel(const Findings *findings, QObject *parent)
    : QAbstractTableModel(parent)
    , m_findings(findings)
    , m_errorSign(signOf(RowMark::Error))
    , m_warningSign(signOf(RowMark::Warning))
    , m_rows(findings->count())
{
}

void FindingsModel::reset()
{
    beginResetModel();
    m_rows = m_findings->count();
    m_cachedRow = -1;
    endResetModel();
}

const Finding &FindingsModel::findingOf(int row) const
{
    if (row != m_cachedRow) {
        m_cached = m_findings->at(row);
        m_cachedRow = row;
    }
    return m_cached;
}

int FindingsModel::rowOf(const Finding &finding) const
{
    int first = 0;
    int last = m_rows;
    while (first < last) {
        const int middle = first + (last - first) / 2;
        if (isBefore(findingOf(middle), finding))
            first = middle + 1;
        else
            last = middle;
    }
    return std::min(first, m_rows - 1);
}

int FindingsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int FindingsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant FindingsModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return textOf(index.row(), index.column());
    case Qt::ToolTipRole:
        return plainTip(textOf(index.row(), index.column()));
    case Qt::DecorationRole:
        if (index.column() == SeverityColumn)
            return isError(index.row()) ? m_errorSign : m_warningSign;
        break;
    default:
        break;
    }
    return {};
}

bool FindingsModel::isError(int row) const
{
    return severityOf(findingOf(row).rule) == Severity::Error;
}

QString FindingsModel::textOf(int row, int column) const
{
    const Finding &finding = findingOf(row);
    switch (column) {
    case SeverityColumn:
        return isError(row) ? tr("Error") : tr("Warning");
    case PlaceColumn: {
        QString text = m_findings->placeText(finding.place);
        if (!finding.name.isEmpty())
            text = tr("%1, %2").arg(text, finding.name);
        return finding.others.isEmpty() ? text
                                        : tr("%1 and %2 more").arg(text).arg(finding.others.size());
    }
    default:
        return finding.text;
    }
}

QVariant FindingsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case SeverityColumn:
        return tr("Severity");
    case PlaceColumn:
        return tr("Place");
    default:
        return tr("Finding");
    }
}

} // namespace TARN
