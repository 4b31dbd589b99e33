// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#ifdef QUTIL_LIBRARY
#define QUTIL_EXPORT Q_DECL_EXPORT
#else
#define QUTIL_EXPORT Q_DECL_IMPORT
#endif
