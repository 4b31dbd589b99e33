// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "fakeextraction.h"

#include <support/windowtest.h>

#include <view/tarnview.h>

#include <QList>
#include <QPointer>
#include <QString>
#include <QTemporaryDir>

#include <memory>

class QTreeWidget;

namespace TARN {
class ReloadBanner;
class TarnOptionWidget;
} // namespace TARN

namespace TarnTest {

/// A view in a container of its own, as the host shows it. Both may be deleted at any time.
struct ShownView
{
    QPointer<QWidget> container;
    QPointer<TARN::TarnView> view;

    TARN::TarnView *operator->() const { return view; }
};

/// Base of the tests of the view. Every test function starts with a project of one source, a design
/// that is read without errors, and an empty folder; unexpected boxes fail it.
class ViewTest : public WindowTest
{
    Q_OBJECT

protected:
    ViewTest();
    ~ViewTest() override;

    /// Absolute path of the file @p name in the test's folder.
    QString path(const QString &name) const;

    /// Writes a configuration with a core of each index, each with one Probe In port on "top/clk".
    QString writeConfig(const QString &name, const QList<int> &indexes) const;
    /// Writes a configuration without cores.
    QString writeEmptyConfig(const QString &name) const;
    /// Replaces the project by one with these sources.
    void setProject(const QStringList &sources, const QString &top = QString()) const;

    /// Makes a view and opens the file in it.
    ShownView show(const QString &filePath);
    static QTreeWidget *treeOf(const TARN::TarnView *view);
    static QString treeTextOf(const TARN::TarnView *view);
    static QList<TARN::TarnOptionWidget *> pagesOf(const TARN::TarnView *view);
    static TARN::TarnOptionWidget *currentPageOf(const TARN::TarnView *view);
    static QList<TARN::ReloadBanner *> bannersOf(const TARN::TarnView *view);
    static void clickBanner(const TARN::TarnView *view, const QString &button);
    /// Opens the context menu on the core at @p row, on empty space for -1.
    static void openMenu(const TARN::TarnView *view, int row);

    FakeExtraction &extraction() { return FakeExtraction::instance(); }

protected Q_SLOTS:
    void init();
    void cleanup();

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QList<QPointer<QWidget>> m_containers;
};

/// The critical box that reports a failure.
ModalScript::Box errorBox(const QString &title, const QString &text);

} // namespace TarnTest
