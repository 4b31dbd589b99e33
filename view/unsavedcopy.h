// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/configsnapshot.h>
#include <model/snapshotwriter.h>
#include <model/unsavedfile.h>

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QString>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

namespace TARN {

class UnsavedBanner;

namespace private_impl {
class TarnViewPrivate;
}

/// Keeps the unsaved changes of a view on the disk, for a crash of the host and for the moment when
/// the view closes itself, and offers what earlier programs left there.
///
/// After an edit the copy is written in slices, which queue themselves in the event loop. Writing
/// takes a twentieth of the time at most. An edit that had to wait is written with a later one, or
/// when the user leaves the view or its window. Every orderly end of the view removes the copy.
///
/// Belongs to the private object of the view. Its banners belong to the view.
class UnsavedCopy final : public QObject
{
    Q_OBJECT

public:
    explicit UnsavedCopy(private_impl::TarnViewPrivate *document);
    /// Removes the copy.
    ~UnsavedCopy() override;

    /// The view shows what its file holds, and the history has begun. Offers the copies of earlier
    /// programs, one after the other. Before this call nothing is written.
    void begin();
    /// An orderly end of the view: removes the copy, and lets go of the others, which stay. Nothing
    /// is written until the next begin().
    void end();

    /// The view was saved. Its copy goes, and the one that is offered.
    void setSaved();
    /// The view was filled from its file again. Its copy goes.
    void setReloaded();
    /// Writes the changes, typed text included, down to the disk and leaves that copy behind: the
    /// view is about to close itself. Without changes there is no copy. When it can be written
    /// nowhere, a banner says so and offers to close the view nevertheless; false then.
    bool leaveBehind();

    // QObject
    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The user gives up changes that can not be kept.
    void closeWanted();

private:
    void onChanged();
    void onFocusChanged();
    void onLeaving();

    bool isStale() const;
    bool isDue() const;
    void queueSlice();
    void writeSlice();
    void finishWriting();
    bool write(const SnapshotWriter &writer, Durability durability, QString *error);
    void remove();
    void remove(UnsavedFile *file);
    void reportNotKept(const QString &reason);
    void report(const QString &problem);

    void offerNext();
    bool isWorthOffering(QString *error);
    void showOffer(const QString &error);
    void restoreOffered();
    void discardOffered();
    UnsavedFile takeOffered();
    void showNotKept(const QString &reason);
    void closeAnyway();
    void removeBanner(QPointer<UnsavedBanner> *banner);

    private_impl::TarnViewPrivate *const d;
    bool m_begun = false;
    bool m_hasFocus = false; ///< A widget of the view.
    ConfigSnapshot m_saved;  ///< What the file holds.

    UnsavedFile m_file;       ///< The copy of this view.
    ConfigSnapshot m_written; ///< What it holds.
    std::unique_ptr<SnapshotWriter> m_writer;
    bool m_queued = false;
    std::chrono::nanoseconds m_spent{0};        ///< For the writing that is going on.
    std::chrono::nanoseconds m_lastDuration{0}; ///< Of the last one that came to its end.
    QElapsedTimer m_sinceWriting;               ///< Since that end.
    QString m_problem;                          ///< Reported last, and not solved since.

    std::vector<UnsavedFile> m_found;        ///< Of earlier programs; the first one is offered.
    std::optional<ConfigSnapshot> m_offered; ///< What it holds, if it can be read.
    QPointer<UnsavedBanner> m_offer;
    QPointer<UnsavedBanner> m_notKept;
};

} // namespace TARN
