// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#ifdef EXTSYS_LIBRARY
#define EXTSYS_EXPORT Q_DECL_EXPORT
#else
#define EXTSYS_EXPORT Q_DECL_IMPORT
#endif
