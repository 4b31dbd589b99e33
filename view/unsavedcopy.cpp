// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "unsavedcopy.h"

#include "edithistory.h"
#include "tarnview.h"
#include "tarnview_p.h"
#include "unsavedbanner.h"

#include <model/tarnconfig.h>
#include <model/tarncore.h>

#include <QApplication>
#include <QDebug>
#include <QDir>
#include <QEvent>
#include <QFileInfo>

#include <utility>

namespace TARN {

namespace {

/// How long typing may have to wait for a slice.
constexpr std::chrono::milliseconds SliceBudget{5};
/// Writing takes at most one part in so many of the time.
constexpr int LeastPause = 20;

/// What the view would show after opening the file at @p path, sharing with @p former.
std::optional<ConfigSnapshot> contentOf(const QString &path, const ConfigSnapshot &former,
                                        QString *error)
{
    bool ok = false;
    QList<TarnCore *> cores = readTARNConfigFromXml(path, &ok, error);
    if (!ok)
        return std::nullopt;
    if (cores.isEmpty())
        cores.append(new TarnCore(0));
    const ConfigSnapshot content = snapshotOf(cores, former);
    qDeleteAll(cores);
    return content;
}

} // namespace

UnsavedCopy::UnsavedCopy(private_impl::TarnViewPrivate *document)
    : d(document)
    , m_file(QString())
{
    connect(d->history.get(), &EditHistory::changed, this, &UnsavedCopy::onChanged);
    connect(qApp, &QApplication::aboutToQuit, this, &UnsavedCopy::end);
    connect(qApp, &QApplication::focusChanged, this, &UnsavedCopy::onFocusChanged);
    if (d->q) // A document may be without a view.
        d->q->installEventFilter(this);
}

UnsavedCopy::~UnsavedCopy()
{
    remove();
}

void UnsavedCopy::begin()
{
    end();
    m_begun = true;
    m_saved = d->history->current();
    m_file = UnsavedFile(d->filePath);
    m_found = UnsavedFile::find(d->filePath);
    offerNext();
}

void UnsavedCopy::end()
{
    m_begun = false;
    remove();
    removeBanner(&m_offer);
    removeBanner(&m_notKept);
    m_offered.reset();
    m_found.clear();
}

void UnsavedCopy::setSaved()
{
    m_saved = d->history->current();
    remove();
    removeBanner(&m_notKept);
    if (m_offered)
        discardOffered();
}

void UnsavedCopy::setReloaded()
{
    m_saved = d->history->current();
    remove();
}

bool UnsavedCopy::leaveBehind()
{
    if (!m_begun)
        return true;
    d->history->commitTyping();
    const ConfigSnapshot &current = d->history->current();
    if (sameObjects(current, m_saved))
        return true;
    SnapshotWriter writer(current);
    writer.finish();
    QString error;
    // What is there already is as good, but for a power failure.
    if (!write(writer, Durability::PowerFailure, &error) && !sameObjects(current, m_written)) {
        reportNotKept(error);
        showNotKept(error);
        return false;
    }
    m_written = current;
    m_file.release();
    return true;
}

// Writing

void UnsavedCopy::onChanged()
{
    if (!m_begun)
        return;
    const bool writing = m_writer != nullptr;
    m_writer.reset();
    if (sameObjects(d->history->current(), m_saved))
        remove();
    else if (writing || isDue())
        queueSlice();
}

bool UnsavedCopy::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Hide || event->type() == QEvent::WindowDeactivate)
        onLeaving();
    return QObject::eventFilter(watched, event);
}

/// The widgets that the signal names may be deleted already.
void UnsavedCopy::onFocusChanged()
{
    const QWidget *widget = QApplication::focusWidget();
    const bool hasFocus = d->q && widget && d->q->isAncestorOf(widget);
    if (m_hasFocus && !hasFocus)
        onLeaving();
    m_hasFocus = hasFocus;
}

/// The line that loses the focus may yet complete an edit, and is heard first.
void UnsavedCopy::onLeaving()
{
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (isStale() && !m_queued)
                writeSlice();
        },
        Qt::QueuedConnection);
}

bool UnsavedCopy::isStale() const
{
    if (!m_begun)
        return false;
    const ConfigSnapshot &current = d->history->current();
    return !sameObjects(current, m_saved) && !sameObjects(current, m_written);
}

bool UnsavedCopy::isDue() const
{
    return !m_sinceWriting.isValid() ||
           m_sinceWriting.nsecsElapsed() >= LeastPause * m_lastDuration.count();
}

void UnsavedCopy::queueSlice()
{
    if (m_queued)
        return;
    m_queued = true;
    QMetaObject::invokeMethod(this, &UnsavedCopy::writeSlice, Qt::QueuedConnection);
}

void UnsavedCopy::writeSlice()
{
    m_queued = false;
    if (!isStale()) {
        m_writer.reset();
        return;
    }
    if (!m_writer) {
        m_writer = std::make_unique<SnapshotWriter>(d->history->current());
        m_spent = std::chrono::nanoseconds(0);
    }
    QElapsedTimer timer;
    timer.start();
    if (!m_writer->isFinished())
        m_writer->step(SliceBudget);
    const bool isLast = m_writer->isFinished() && !timer.hasExpired(SliceBudget.count());
    if (isLast)
        finishWriting();
    m_spent += std::chrono::nanoseconds(timer.nsecsElapsed());
    if (!isLast) {
        queueSlice();
        return;
    }
    m_lastDuration = m_spent;
    m_sinceWriting.start();
}

void UnsavedCopy::finishWriting()
{
    QString error;
    if (write(*m_writer, Durability::EndOfProcess, &error)) {
        m_written = d->history->current();
        m_problem.clear();
    } else {
        reportNotKept(error);
    }
    m_writer.reset();
}

/// Writes what @p writer, which is finished, has made.
bool UnsavedCopy::write(const SnapshotWriter &writer, Durability durability, QString *error)
{
    *error = writer.errorText();
    return error->isEmpty() && m_file.write(writer.content(), durability, error);
}

/// What is to be kept is in the file, or no longer wanted.
void UnsavedCopy::remove()
{
    m_writer.reset();
    m_written = ConfigSnapshot();
    remove(&m_file);
}

void UnsavedCopy::remove(UnsavedFile *file)
{
    QString error;
    if (!file->remove(&error))
        report(QStringLiteral("Can not remove a copy of unsaved changes, ") + error);
}

/// Says it once, not with each edit.
void UnsavedCopy::reportNotKept(const QString &reason)
{
    report(QStringLiteral("Can not keep the unsaved changes of %1: ")
               .arg(QDir::toNativeSeparators(d->filePath)) +
           reason);
}

void UnsavedCopy::report(const QString &problem)
{
    if (problem == m_problem)
        return;
    m_problem = problem;
    qDebug().noquote().nospace() << problem;
}

// Copies of earlier programs

void UnsavedCopy::offerNext()
{
    while (!m_found.empty()) {
        QString error;
        if (isWorthOffering(&error)) {
            showOffer(error);
            return;
        }
        remove(&m_found.front());
        m_found.erase(m_found.begin());
    }
}

/// Reads the first copy. False when it holds what the file holds; @p error tells why it can not be
/// read.
bool UnsavedCopy::isWorthOffering(QString *error)
{
    m_offered = contentOf(m_found.front().copyPath(), m_saved, error);
    return !m_offered || !sameObjects(*m_offered, m_saved);
}

void UnsavedCopy::showOffer(const QString &error)
{
    m_offer = new UnsavedBanner(d->q);
    if (m_offered) {
        m_offer->showFound(d->filePath, m_found.front().time(),
                           QFileInfo(d->filePath).lastModified());
    } else {
        m_offer->showUnreadable(d->filePath, error);
    }
    connect(m_offer, &UnsavedBanner::restore, this, &UnsavedCopy::restoreOffered);
    connect(m_offer, &UnsavedBanner::discard, this, &UnsavedCopy::discardOffered);
    connect(m_offer, &UnsavedBanner::dismissed, this, [this] {
        takeOffered();
        offerNext();
    });
    d->q->showBanner(m_offer);
}

/// The copy becomes the one of this view, so that a crash right now loses nothing.
void UnsavedCopy::restoreOffered()
{
    const ConfigSnapshot content = *m_offered;
    UnsavedFile file = takeOffered();
    remove();
    m_file = std::move(file);
    m_written = content;
    const QPointer<UnsavedCopy> self(this);
    d->history->apply(content, tr("Restore Unsaved Changes"));
    if (self)
        offerNext();
}

void UnsavedCopy::discardOffered()
{
    UnsavedFile file = takeOffered();
    remove(&file);
    offerNext();
}

UnsavedFile UnsavedCopy::takeOffered()
{
    UnsavedFile file = std::move(m_found.front());
    m_found.erase(m_found.begin());
    m_offered.reset();
    removeBanner(&m_offer);
    return file;
}

void UnsavedCopy::showNotKept(const QString &reason)
{
    removeBanner(&m_notKept);
    m_notKept = new UnsavedBanner(d->q);
    m_notKept->showNotKept(d->filePath, reason);
    connect(m_notKept, &UnsavedBanner::dismissed, this, [this] { removeBanner(&m_notKept); });
    connect(m_notKept, &UnsavedBanner::closeAnyway, this, &UnsavedCopy::closeAnyway);
    d->q->showBanner(m_notKept);
}

/// An earlier copy, which could not be replaced, stays.
void UnsavedCopy::closeAnyway()
{
    removeBanner(&m_notKept);
    m_file.release();
    m_saved = d->history->current();
    Q_EMIT closeWanted();
}

void UnsavedCopy::removeBanner(QPointer<UnsavedBanner> *banner)
{
    if (*banner)
        d->q->removeBanner(*banner);
    banner->clear();
}

} // namespace TARN
