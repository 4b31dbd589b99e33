// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QString;

/// Opens @p file in the plug-in for the device @p deviceName. False without a view manager.
bool openInPlugin(const QString &file, const QString &deviceName);

/// Closes the view of @p file; false when there is none.
bool closeInPlugin(const QString &file);

/// How many views the plug-in has open, -1 without a view manager.
int viewsInPlugin();
