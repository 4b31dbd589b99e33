// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFileSystemWatcher>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <memory>
#include <vector>

namespace TE {

/// Reports changes of files on disk, each file once for a burst of changes.
///
/// A file that is replaced has changed, once; one that is gone has changed when it is still missing
/// after a while, and again when it returns. While it is missing the nearest folder that exists is
/// watched for its return, and that of what a link names. Costs one kernel watch a file; a change
/// costs time by the number of changed and missing files, not by that of watched ones.
class SourceWatcher : public QObject
{
    Q_OBJECT

public:
    explicit SourceWatcher(QObject *parent = nullptr);
    ~SourceWatcher() override;

    /// Watches exactly @p paths (absolute) from now on and forgets unreported changes.
    void setFiles(const QStringList &paths);
    void addFile(const QString &path);
    void removeFile(const QString &path);

Q_SIGNALS:
    /// The content of @p path is another one than before, or gone.
    void fileModified(const QString &path);

private:
    /// Some of the watched files. QFileSystemWatcher searches linearly, hence more than one.
    struct Shard
    {
        QFileSystemWatcher watcher;
        int count = 0;
    };

    Shard *shardWithRoom();
    void rearm(const QString &path);
    void onFileChanged(const QString &path);
    void check();
    void reportVanished();
    void report(const QSet<QString> &paths);
    void takeReturned(QSet<QString> *modified);
    void watchFoldersOfMissing();
    void startTimer();

    std::vector<std::unique_ptr<Shard>> m_shards;
    QHash<QString, Shard *> m_files; ///< Every file that is to be watched, missing ones included.
    QFileSystemWatcher m_folders;
    QSet<QString> m_changed; ///< Since the last check.
    QSet<QString> m_missing;
    QSet<QString> m_vanished; ///< Those missing ones whose absence is yet to be reported.
    QTimer m_timer;
    QTimer m_absence; ///< Runs from the last file that vanished on.
};

} // namespace TE
