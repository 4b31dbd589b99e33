// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// The end of a block of host headers that keywordson.h began.
#ifdef QT_NO_KEYWORDS
#undef signals
#undef slots
#undef emit
#undef foreach
#undef forever
#endif
