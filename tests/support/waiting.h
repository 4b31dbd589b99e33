// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QObject;

namespace TarnTest {

/// Runs what is due by now: posted events and timers without an interval.
void runDueEvents();

/// Waits until every watcher of files in this process was told of the changes made so far. False
/// when the system does not tell.
bool waitForFileNotices();

/// Waits until the changes of files made so far have all their consequences in @p watching, which
/// collects them with timers below it: they are noticed, and no timer runs any more.
bool settle(const QObject *watching);

} // namespace TarnTest
