// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sdk/core.h>
#include <sdk/qutil.h>

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

class QHBoxLayout;
class QTimer;

namespace NETWEIR {
class RtlNetlist;
}

namespace TARN {

namespace Ui {
class ChangedBanner;
class TarnView;
} // namespace Ui

namespace private_impl {
class TarnViewPrivate;
}

class EditHistory;
class FindingsPane;
class ReloadBanner;
class TarnCore;
class TarnOptionWidget;
struct DesignFault;
struct Place;

/// The editor of one configuration file: the list of its cores on the left, the page of the chosen
/// core on the right, and above them banners that tell of changes of the file and of the design.
///
/// Owns the document (TarnViewPrivate): file, cores and netlist. Boxes, dialogs and the progress of
/// reading the netlist run event loops in which the view itself can go away; operations that show
/// one return false then.
class TarnView final : public Core::IView, public QUtil::IEventHandler
{
    Q_OBJECT

public:
    explicit TarnView(QWidget *parent = nullptr);
    ~TarnView() override;

    /// Loads the file and reads the design's netlist. The path of the synthesis netlist is not
    /// used: signals come from the design's sources. On failure @p errorText, which may be null,
    /// says why, unless a box did so already.
    bool open(const QString &filePath, const QString &netlistPath, QString *errorText);

    /// Checks and writes the file; reports failures itself.
    bool save();

    QString file() const;

    QString deviceName() const { return m_deviceName; }
    void setDeviceName(const QString &name) { m_deviceName = name; }

    bool isModified() const;
    /// Emits modificationStatusChanged() even when nothing changes.
    void setModified(bool modified);
    /// Clears the modified state and takes its mark out of both titles.
    void showUnmodified();

    /// Shows @p page, which the view takes over, in list and stack. Returns the number of pages.
    int addTarnOptionWidget(TarnOptionWidget *page);
    /// Takes @p page, whose core must still exist, out of list and stack and renames the items of
    /// the others.
    void removeTarnOptionWidget(TarnOptionWidget *page);
    /// The same without renaming items, so that it is cheap to take out all pages, from the last to
    /// the first.
    void takeOut(TarnOptionWidget *page);
    /// Shows the page of the core whose index is @p index, if there is one.
    void changeTarnWidget(int index);
    /// Shows the page of the core that is current in the list.
    void showCurrentCore();
    /// Shows core, port and row of @p place, if they exist.
    void showPlace(const Place &place);

    /// Shows @p page, which the view takes over, in the stack.
    void insertPage(int position, TarnOptionWidget *page);
    /// Takes @p page out of the stack.
    void takePage(TarnOptionWidget *page);
    /// Makes the items of the list agree with the cores.
    void showCoreList();

    /// The steps that can be undone. Owned by the view.
    EditHistory *history() const;

    /// Shows @p banner, a child of the view, above the pages.
    void showBanner(QWidget *banner);
    /// Takes @p banner, which may be null, away and deletes it later.
    void removeBanner(QWidget *banner);

    /// Reads the cores again from the file. False when the file is invalid; nothing changes then.
    bool reloadTarnFile();

Q_SIGNALS:
    void modificationStatusChanged(bool modified);

public Q_SLOTS:
    void onModified();
    /// Hides the notice of a changed netlist.
    void onOKBtn();

    // Connected by name.
    void on_treeWidget_clicked(const QModelIndex &index);
    void on_treeWidget_doubleClicked(const QModelIndex &index);
    void on_treeWidget_customContextMenuRequested(const QPoint &pos);

    // Changes of the file on disk.
    void onFileChange();
    void checkForReload();
    void onBannerReload();
    void onBannerCancel();
    void onBannerKeep();
    void onBannerClose();
    void onReloadCancel();

    // The design.
    /// Reads the design's netlist and hands it to all pages; failures are reported in boxes and
    /// leave the view without a netlist.
    bool readRtlNetlist();
    /// A new netlist, owned by the caller, null when the build failed or was cancelled.
    NETWEIR::RtlNetlist *updateRtlNetlist();
    void getRtlModules(QMap<QString, QVariant> &info, QStringList &tops, QStringList &modules,
                       QStringList &messages);
    /// The design's include folders, absolute.
    QStringList includePaths() const;
    void subscribeEvent();
    void unsubscribeEvent();
    void designFileChanged();
    void topModuleChanged();
    void onRtlReload();

    // QUtil::IEventHandler
    void handleIEvent(const QUtil::IEvent *event) override;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    /// Takes over @p cores in place of the former ones and creates their pages; without any, adds
    /// one.
    void showCores(const QList<TarnCore *> &cores);
    void markPages();
    void showTitle(const QString &mark);
    ReloadBanner *sendingBanner() const;
    void answerFileChange();
    bool mayClose();
    bool closeItself();
    void closeContainer();
    void closeUnsaved(ReloadBanner *banner);
    void showDesignBanner(const QString &text);
    void showError(const QString &title, const QString &text);
    void showFault(const DesignFault &fault);

    std::unique_ptr<private_impl::TarnViewPrivate> d;
    std::unique_ptr<Ui::TarnView> ui;
    std::unique_ptr<Ui::ChangedBanner> m_changedBanner;
    FindingsPane *m_findingsPane;
    QHBoxLayout *m_bannerLayout;
    QTimer *m_checkTimer; ///< Several writes in a row are one change.
    QString m_deviceName;
    bool m_designChangePending = false; ///< A change of the design is shown, not answered yet.
};

} // namespace TARN
