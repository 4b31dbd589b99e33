// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Ends a block of host headers that keywordson.h begins.
#ifdef QT_NO_KEYWORDS
#undef signals
#undef slots
#undef emit
#undef foreach
#undef forever
#endif
