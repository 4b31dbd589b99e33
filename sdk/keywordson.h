// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// No include guard: precedes every block of host headers; keywordsoff.h follows the block.
//
// The plug-in does not use Qt's lower-case keywords, because the list of a port is called
// "signals". The headers of a host may use them.
#ifdef QT_NO_KEYWORDS
#define signals Q_SIGNALS
#define slots Q_SLOTS
#define emit Q_EMIT
#define foreach Q_FOREACH
#define forever Q_FOREVER
#endif
