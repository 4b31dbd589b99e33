// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#ifdef DEV_LIBRARY
#define DEV_EXPORT Q_DECL_EXPORT
#else
#define DEV_EXPORT Q_DECL_IMPORT
#endif
