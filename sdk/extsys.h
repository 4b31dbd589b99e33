// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The life of a plug-in.

#include "keywordson.h"

#include <extsys/iplugin.h>

#include "keywordsoff.h"
