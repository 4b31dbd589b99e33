// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDateTime>
#include <QString>
#include <QWidget>

#include <memory>

namespace TARN {

namespace Ui {
class ReloadBanner;
}

/// The bar inside a view that tells of a copy of unsaved changes. It looks like a ReloadBanner. Its
/// owner acts on the signals and removes it.
class UnsavedBanner final : public QWidget
{
    Q_OBJECT

public:
    explicit UnsavedBanner(QWidget *parent);
    ~UnsavedBanner() override;

    /// A copy that was written at @p time was found. Offers restore() and discard(). Says so when
    /// the file itself, written at @p fileTime, is newer.
    void showFound(const QString &filePath, const QDateTime &time, const QDateTime &fileTime);
    /// A copy was found that can not be read. Offers to take note of it: dismissed().
    void showUnreadable(const QString &filePath, const QString &reason);
    /// The changes can not be kept in a copy. Offers closeAnyway() and dismissed().
    void showNotKept(const QString &filePath, const QString &reason);

Q_SIGNALS:
    void restore();
    void discard();
    void closeAnyway();
    void dismissed();

private:
    void setText(const QString &text, const QString &filePath, const QString &detail);

    std::unique_ptr<Ui::ReloadBanner> ui;
};

} // namespace TARN
