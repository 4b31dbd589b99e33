// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#ifdef NETWEIR_LIBRARY
#define NETWEIR_EXPORT Q_DECL_EXPORT
#else
#define NETWEIR_EXPORT Q_DECL_IMPORT
#endif
