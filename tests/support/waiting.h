// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QObject;

namespace TarnTest {

/// Runs the posted events and the timers without an interval.
void runDueEvents();

/// Waits until every file watcher of this process has its notices of the changes so far. False when
/// they do not come.
bool waitForFileNotices();

/// Waits until @p watching has dealt with all changes of files so far: its watchers have their
/// notices, and no timer below it runs any more. After that these changes have no more effects.
/// False when that takes too long.
bool settle(const QObject *watching);

} // namespace TarnTest
