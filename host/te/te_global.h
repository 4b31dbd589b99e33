// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#ifdef TE_LIBRARY
#define TE_EXPORT Q_DECL_EXPORT
#else
#define TE_EXPORT Q_DECL_IMPORT
#endif
