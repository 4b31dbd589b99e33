// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "plugin_global.h"

#include <QList>
#include <QObject>
#include <QString>

#include <memory>

namespace Core {
class IView;
}
namespace DEV {
struct DeviceArg;
}

namespace TARN {

class TarnView;

namespace Impl {
struct TarnViewManager_Private;
}

/// Opens, finds and closes the editor views, at most one per file, and drives the host's Save
/// command while one of them is active.
///
/// The only instance is created when the library is loaded and deleted by deinit(). It owns the
/// Save action. Views belong to the host's view manager, which tells of their end. Look-ups walk
/// the open views.
class TARN_PLUGIN_EXPORT TarnViewManager final : public QObject
{
    Q_OBJECT

public:
    /// Null after deinit().
    static TarnViewManager *instance();

    /// The instance, created again after deinit(): a host may start the plug-in again.
    static TarnViewManager *ensureInstance();

    /// Registers the Save action and follows the host's active view. Does nothing the second time.
    void initialize();

    /// Deletes the manager and its action; open views stay.
    void deinit();

    /// Opens @p filePath in a new view, or shows the view that has it open already. A failure is
    /// shown to the user; the result is true in every case.
    bool openTarnView(const QString &filePath, const DEV::DeviceArg &device);

    /// Asks the view of @p filePath to close. False when there is none.
    bool closeTarnView(const QString &filePath);

    /// Every open view, in order of opening.
    QList<TarnView *> tarnViews() const;

public Q_SLOTS:
    void onCurrentViewChanged(Core::IView *view);
    /// Follows the modification state of the view that sends it.
    void onTarnViewModified(bool modified);
    void onActSave();
    void onTarnViewClosed(Core::IView *view);

private:
    TarnViewManager();
    ~TarnViewManager() override;

    void addView(TarnView *view, const DEV::DeviceArg &device);
    void updateActions();
    TarnView *findView(const QString &filePath) const;

    static TarnViewManager *s_instance;

    std::unique_ptr<Impl::TarnViewManager_Private> d;
};

} // namespace TARN
