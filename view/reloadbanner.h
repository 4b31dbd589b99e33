// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

#include <memory>

namespace TARN {

namespace Ui {
class ReloadBanner;
}

/// The bar inside a view that tells of a change made elsewhere and offers two answers. The view
/// acts on its signals and removes it.
class ReloadBanner final : public QWidget
{
    Q_OBJECT

public:
    enum CheckType {
        Changed = 0, ///< Offers reload() and cancel().
        Removed = 1, ///< Offers keepIt() and closeIt().
    };

    ReloadBanner(CheckType type, const QString &filePath, QWidget *parent);
    ~ReloadBanner() override;

    /// Replaces the message.
    void setText(const QString &text);

Q_SIGNALS:
    void reload();
    void cancel();
    void keepIt();
    void closeIt();

private:
    void initChanged(const QString &nativePath);
    void initRemoved(const QString &nativePath);

    std::unique_ptr<Ui::ReloadBanner> ui;
};

} // namespace TARN
