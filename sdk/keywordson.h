// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// No include guard: stands before every block of host headers, with keywordsoff.h behind it.
//
// The plug-in does without Qt's lower-case keywords, because a port's list is called "signals". A
// host's headers may use them.
#ifdef QT_NO_KEYWORDS
#define signals Q_SIGNALS
#define slots Q_SLOTS
#define emit Q_EMIT
#define foreach Q_FOREACH
#define forever Q_FOREVER
#endif
