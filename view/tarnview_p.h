// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class QAction;
class QFileSystemWatcher;

namespace NETWEIR {
class RtlNetlist;
}

namespace TARN {

struct ConfigSnapshot;
class EditHistory;
class Findings;
class TarnCore;
class TarnOptionWidget;
class TarnView;
class UnsavedCopy;

} // namespace TARN

namespace TARN::private_impl {

/// The document behind a TarnView: file, cores and netlist. It owns all three.
///
/// Its functions that show boxes run an event loop in which the view, and this object with it, can
/// go away; they return false then.
class TarnViewPrivate : public QObject
{
    Q_OBJECT

public:
    explicit TarnViewPrivate(TarnView *view);
    ~TarnViewPrivate() override;

    /// Adds a core with that index, or says that there are too many.
    void addOneTarn(int index);
    /// Asks, then removes the core at list position @p index and renumbers the others.
    void removeOneTarn(int index);
    /// Creates the pages of all cores.
    void initTarnOptionWidget();
    /// Deletes all pages and cores.
    void clearTarns();
    /// Makes cores and pages, which are as @p current, equal to @p target. Only what differs
    /// changes; nothing is marked modified. The current core may be another one then.
    void showSnapshot(const ConfigSnapshot &current, const ConfigSnapshot &target);

    /// The core whose index is @p index, or its page, null when there is none. Indexes of a file
    /// may have gaps.
    TarnCore *getTarnByIndex(int index) const;
    TarnOptionWidget *getTarnWidgetByIndex(int index) const;

    /// Calls modificationCallback when the state changes.
    void setModified(bool modified);

    /// Stores the pages, checks and writes the file.
    bool save();

    /// Runs checkConfig() on cores and netlist. @p errors, which may be null, receives one line per
    /// error.
    bool check(QString *errors) const;

    /// Watches filePath and all links that it leads over. While there is no such file, waits for
    /// its return, which counts as a change.
    void watchFile();
    void unwatchFile();

public Q_SLOTS:
    /// Takes over @p netlist, which may be null, hands it to all pages and deletes the former one.
    void setNlsData(NETWEIR::RtlNetlist *netlist);

public:
    TarnView *const q;
    QString filePath;
    QList<TarnCore *> cores; ///< Owned.
    std::unique_ptr<NETWEIR::RtlNetlist> netlist;
    QList<TarnOptionWidget *> optionWidgets; ///< In the order of cores; owned by the view's stack.
    std::unique_ptr<QAction> addAction;
    std::unique_ptr<QAction> removeAction;
    bool modified = false;
    std::function<void(bool)> modificationCallback;
    std::unique_ptr<QFileSystemWatcher> watcher;
    bool fileChangePending = false; ///< A change of the file is noticed and not answered yet.
    std::unique_ptr<EditHistory> history;
    std::unique_ptr<Findings> findings;
    std::unique_ptr<UnsavedCopy> unsaved;

private:
    void removePage(TarnOptionWidget *page);
    void deleteTarn(int position);
    void insertTarn(int position, std::unique_ptr<TarnCore> core);
    void showCheckErrors(const QString &errors);
    void watchFolderOf(const QString &path);
    void onFolderChange();

    QByteArray m_watchedIdentity; ///< fileIdentity() of filePath when watching began.
};

} // namespace TARN::private_impl
