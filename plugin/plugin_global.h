// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#ifdef TARN_PLUGIN_LIBRARY
#define TARN_PLUGIN_EXPORT Q_DECL_EXPORT
#else
#define TARN_PLUGIN_EXPORT Q_DECL_IMPORT
#endif
